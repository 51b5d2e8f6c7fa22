// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/testcertificates.h"

#include <QSignalSpy>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Calls");
const QString OpenSsl = QStringLiteral("qca-norvel-openssl");
constexpr int OtherKeys = 8;

} // namespace

/// What writing costs in calls: the same whatever else the token holds, and nothing is searched for
/// once something was written, because tokens read themselves anew then.
class TestWriteCalls : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void costsNoMoreOnAFullToken_data();
    void costsNoMoreOnAFullToken();
    void objectsOfOthersAreFound();

private:
    using Calls = QList<QByteArray>;
    bool generate();
    bool perform(const QString &operation, int number);
    Calls callsOf(const QString &operation, int number);

    std::unique_ptr<FaultyToken> m_token;
    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<PinPrompt> m_prompt;
    std::unique_ptr<Stores> m_stores;
    QCA::KeyStore *m_store = nullptr;
};

void TestWriteCalls::initTestCase()
{
    m_token = std::make_unique<FaultyToken>(StoreName);
    if (!m_token->token().isValid())
        QFAIL(qPrintable(m_token->token().problem()));
    m_authority = std::make_unique<TestAuthority>();
    m_token->useInThisProcess();
    m_qca = std::make_unique<QCA::Initializer>();
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_stores = std::make_unique<Stores>();
    m_store = m_stores->waitFor(StoreName);
    QVERIFY(m_store);
    QVERIFY(generate()); // logs in, too
}

bool TestWriteCalls::generate()
{
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(m_store->id(), QStringLiteral("made"));
    QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
    generator.createEC(QStringLiteral("ec-secp384r1"), QStringLiteral("qca-norvel-gost"));
    return (!finished.isEmpty() || finished.wait(20000)) && !generator.key().isNull();
}

bool TestWriteCalls::perform(const QString &operation, int number)
{
    if (operation == QLatin1String("generate"))
        return generate();
    const QString file = m_authority->bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("EC"), QStringLiteral("-pkeyopt"),
         QStringLiteral("ec_paramgen_curve:P-256")},
        QStringLiteral("/CN=%1").arg(number), QStringLiteral("x"), QStringLiteral("bundle"));
    const auto bundle = QCA::KeyBundle::fromFile(file, QCA::SecureArray("x"), nullptr, OpenSsl);
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

QTEST_GUILESS_MAIN(TestWriteCalls)
#include "tst_writecalls.moc"
