// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <openssl/x509.h>

#include <atomic>

#include <dlfcn.h>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Calls");
const QString OpenSsl = QStringLiteral("qca-norvel-openssl");
constexpr int OtherKeys = 8;

/// How often a public key was decoded in this process.
std::atomic<int> decodedKeys{0};

} // namespace

/// Stands in front of libcrypto's: the linker takes the program's functions first.
extern "C" Q_DECL_EXPORT EVP_PKEY *d2i_PUBKEY(EVP_PKEY **key, const unsigned char **data,
                                              long length)
{
    using Decode = EVP_PKEY *(*)(EVP_PKEY **, const unsigned char **, long);
    static const auto decode = reinterpret_cast<Decode>(dlsym(RTLD_NEXT, "d2i_PUBKEY"));
    ++decodedKeys;
    return decode(key, data, length);
}

/// What writing costs in calls: the same whatever else the token holds, and nothing is searched for
/// once something was written, because tokens read themselves anew then.
class TestWriteCalls : public TokenFixture {
    Q_OBJECT
public:
    TestWriteCalls()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void costsNoMoreOnAFullToken_data();
    void costsNoMoreOnAFullToken();
    void objectsOfOthersAreFound();
    void signingDecodesNoKey();

private:
    using Calls = QList<QByteArray>;
    bool generate()
    {
        return !generateCurve(QStringLiteral("ec-secp384r1"), QStringLiteral("made")).isNull();
    }
    bool perform(const QString &operation, int number);
    Calls callsOf(const QString &operation, int number);
};

void TestWriteCalls::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    m_token->useInThisProcess();
    QVERIFY(start(0));
    QVERIFY(generate()); // logs in, too
}

bool TestWriteCalls::perform(const QString &operation, int number)
{
    if (operation == QLatin1String("generate"))
        return generate();
    const QCA::KeyBundle bundle = makeCurveBundle(QStringLiteral("/CN=%1").arg(number));
    const bool isBundle = operation == QLatin1String("write bundle");
    return !(isBundle ? m_stores->write(m_store, bundle)
                      : m_stores->write(m_store, bundle.certificateChain().primary()))
                .isEmpty();
}

/// Without those of the looks at the slots, which come at any time.
TestWriteCalls::Calls TestWriteCalls::callsOf(const QString &operation, int number)
{
    m_token->forget();
    if (!perform(operation, number))
        return {};
    Calls calls = m_token->calls();
    calls.removeAll("C_GetSlotList");
    calls.removeAll("C_GetTokenInfo");
    return calls;
}

void TestWriteCalls::costsNoMoreOnAFullToken_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QByteArray>("change");
    QTest::newRow("certificate") << "write certificate" << QByteArray("C_CreateObject");
    QTest::newRow("bundle") << "write bundle" << QByteArray("C_CreateObject");
    QTest::newRow("generation") << "generate" << QByteArray("C_GenerateKeyPair");
}

void TestWriteCalls::costsNoMoreOnAFullToken()
{
    QFETCH(QString, operation);
    QFETCH(QByteArray, change);
    QVERIFY(perform(operation, 0)); // the root of the bundles is there from now on
    const Calls before = callsOf(operation, 1);
    for (int i = 0; i < OtherKeys; ++i)
        QVERIFY(generate());
    const Calls after = callsOf(operation, 2);
    QVERIFY(before.contains(change));
    QCOMPARE(after, before);
    QVERIFY(!before.mid(before.indexOf(change)).contains("C_FindObjectsInit"));
}

/// What another program has written since the token was read is not written again.
void TestWriteCalls::objectsOfOthersAreFound()
{
    const TestAuthority another(QStringLiteral("Another Root"));
    TestToken &token = m_token->token();
    QVERIFY(token.writeObject(QStringLiteral("cert"), another.certificate(), QStringLiteral("77"),
                              QStringLiteral("theirs")));
    const int before = token.objectCount();
    const auto root = QCA::Certificate::fromDER(another.certificate(), nullptr, OpenSsl);
    const QString id = m_stores->write(m_store, root);
    QCOMPARE(token.objectCount(), before);
    const auto entries = m_stores->currentEntries(StoreName);
    QVERIFY(std::any_of(entries.begin(), entries.end(), [&](const QCA::KeyStoreEntry &entry) {
        return entry.id() == id && entry.name() == QLatin1String("theirs");
    }));
}

/// The key is there, decoded: neither a signature nor the check of a request's takes another one.
void TestWriteCalls::signingDecodesNoKey()
{
    QCA::PrivateKey key = generateRsa(2048, 65537, QStringLiteral("signer"));
    QVERIFY(!key.isNull());
    QVERIFY(!signature(key).isEmpty());
    decodedKeys = 0;
    QVERIFY(!signature(key).isEmpty());
    QCOMPARE(int(decodedKeys), 0);
    QCA::CertificateOptions options(QCA::PKCS10);
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, QStringLiteral("A request"));
    options.setInfo(info);
    const QCA::CertificateRequest request(options, key, QStringLiteral("qca-norvel-pkcs11"));
    QVERIFY(!request.isNull());
    QCOMPARE(int(decodedKeys), 0);
}

QTEST_GUILESS_MAIN(TestWriteCalls)
#include "tst_writecalls.moc"
