// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QTimer>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Writing");
const QString Pkcs11 = QStringLiteral("qca-norvel-pkcs11");
const QString Gost = QStringLiteral("qca-norvel-gost");
const QString OpenSsl = QStringLiteral("qca-norvel-openssl");

} // namespace

/// Everything that changes a token or uses its keys, on SoftHSM, checked by other tools.
class TestWriting : public TokenFixture {
    Q_OBJECT
public:
    TestWriting()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void generation_data();
    void generation();
    void generationWithoutTarget();
    void generationNeverFreezesTheLoop();
    void abandonedGeneration();
    void rawSignature();
    void digestSignatures_data();
    void digestSignatures();
    void ecSignature();
    void requests_data();
    void requests();
    void bareKeyIsFound();
    void importOfCertificate();
    void importOfBundle_data();
    void importOfBundle();
    void removalOfBundle();
    void removalKeepsASharedKey();
    void unknownEntry();

private:
    QCA::PrivateKey generate(const QString &algorithm, const QString &label);
    QCA::KeyStoreEntry entryWithId(const QString &id) const
    {
        return withId(m_stores->entries(StoreName), id);
    }
    bool opensslVerifies(const QCA::PrivateKey &key, const QByteArray &data,
                         const QByteArray &signature, const QStringList &options);
};

void TestWriting::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    // SoftHSM itself, with nothing in front of it.
    m_token->token().useInThisProcess();
    QVERIFY(start(0));
}

/// Each test leaves the token empty of entries, and bare keys are removed by hand.
void TestWriting::cleanup()
{
    const auto entries = m_stores->entries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries)
        QVERIFY(m_stores->remove(m_store, entry.id()));
    QVERIFY(m_stores->waitForEntries(StoreName, 0));
}

QCA::PrivateKey TestWriting::generate(const QString &algorithm, const QString &label)
{
    constexpr int Patience = 60000;
    return algorithm == QLatin1String("ec")
        ? generateCurve(QStringLiteral("ec-secp384r1"), label, Patience)
        : generateRsa(algorithm.toInt(), 3, label, Patience);
}

bool TestWriting::opensslVerifies(const QCA::PrivateKey &key, const QByteArray &data,
                                  const QByteArray &signature, const QStringList &options)
{
    const auto write = [&](const QString &name, const QByteArray &bytes) {
        QFile file(m_authority->file(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    };
    if (!write(QStringLiteral("key.der"), Trivex::encodedPublicKey(key))
        || !write(QStringLiteral("data"), data) || !write(QStringLiteral("signature"), signature))
        return false;
    const QStringList command = {
        QStringLiteral("pkeyutl"),  QStringLiteral("-verify"),  QStringLiteral("-pubin"),
        QStringLiteral("-keyform"), QStringLiteral("DER"),      QStringLiteral("-inkey"),
        QStringLiteral("key.der"),  QStringLiteral("-sigfile"), QStringLiteral("signature"),
        QStringLiteral("-in"),      QStringLiteral("data"),
    };
    return m_authority->openssl(command + options).contains("Signature Verified Successfully");
}

void TestWriting::generation_data()
{
    QTest::addColumn<QString>("algorithm");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("bits");
    QTest::addColumn<QString>("provider");
    QTest::newRow("RSA 2048") << "2048" << int(Trivex::RsaKey) << 2048 << Pkcs11;
    QTest::newRow("RSA 3072") << "3072" << int(Trivex::RsaKey) << 3072 << Pkcs11;
    QTest::newRow("RSA 4096") << "4096" << int(Trivex::RsaKey) << 4096 << Pkcs11;
    QTest::newRow("P-384") << "ec" << int(Trivex::EllipticCurveKey) << 384 << Gost;
}

void TestWriting::generation()
{
    QFETCH(QString, algorithm);
    QFETCH(int, type);
    QFETCH(int, bits);
    QFETCH(QString, provider);
    const int before = m_token->token().objectCount();
    const QCA::PrivateKey key = generate(algorithm, QStringLiteral("Ключ"));
    QVERIFY(!key.isNull());
    QVERIFY(key.isPrivate());
    QVERIFY(!key.canExport());
    QCOMPARE(key.provider()->name(), provider);
    QCOMPARE(Trivex::keyType(key), type);
    QCOMPARE(key.bitSize(), bits);
    QCOMPARE(Trivex::keyStoreIdOf(key), m_store->id());
    if (type == Trivex::RsaKey)
        QCOMPARE(key.toRSA().e(), QCA::BigInteger(3));
    QCOMPARE(m_token->token().objectCount(), before + 2);
    const QByteArray listing = m_token->token().tool({QStringLiteral("--list-objects")});
    QVERIFY(listing.contains("Ключ"));
    QVERIFY(listing.contains("sensitive, always sensitive, never extractable"));
    // A key without a certificate is no entry.
    QVERIFY(m_stores->entries(StoreName).isEmpty());
    // Its certificate makes it one, which can be removed.
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Generated")).isEmpty());
    cleanup();
    QCOMPARE(m_token->token().objectCount(), before);
}

void TestWriting::generationWithoutTarget()
{
    const int before = m_token->token().objectCount();
    Trivex::KeyGenerator generator;
    QVERIFY(generator.createRSA(2048, 3, Pkcs11).isNull());
    generator.setTarget(QStringLiteral("no such store"), QStringLiteral("x"));
    QVERIFY(generator.createRSA(2048, 3, Pkcs11).isNull());
    generator.setTarget(m_store->id(), QStringLiteral("x"));
    QVERIFY(generator.createEC(QStringLiteral("no-such-curve"), Gost).isNull());
    QVERIFY(generator.createRSA(17, 3, Pkcs11).isNull());
    QCOMPARE(m_token->token().objectCount(), before);
}

void TestWriting::generationNeverFreezesTheLoop()
{
    // Of the loop, while the token works: a second or more of a key, or of a frozen window.
    int beats = 0;
    QTimer beat;
    connect(&beat, &QTimer::timeout, this,
            [&] { beats += Trivex::TokenMonitor::token(m_store->id()).busy; });
    beat.start(2);
    const QCA::PrivateKey key = generate(QStringLiteral("3072"), QStringLiteral("beat"));
    QVERIFY(!key.isNull());
    QVERIFY2(beats >= 5, qPrintable(QString::number(beats)));
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Beat")).isEmpty());
}

void TestWriting::abandonedGeneration()
{
    const int before = m_token->token().objectCount();
    {
        Trivex::KeyGenerator generator;
        generator.setBlockingEnabled(false);
        generator.setTarget(m_store->id(), QStringLiteral("abandoned"));
        generator.createRSA(3072, 3, Pkcs11);
        QVERIFY(generator.isBusy());
    }
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).busy);
    QCOMPARE(m_token->token().objectCount(), before);
}

void TestWriting::rawSignature()
{
    QCA::PrivateKey key = generate(QStringLiteral("2048"), QStringLiteral("raw"));
    QVERIFY(!key.isNull());
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Raw")).isEmpty());
    const QByteArray text = QByteArray(64, 'a');
    QCA::RSAPrivateKey rsa = key.toRSA();
    rsa.startSign(QCA::EMSA3_Raw, QCA::DefaultFormat);
    rsa.update(text);
    const QByteArray signature = rsa.signature();
    QCOMPARE(signature.size(), 256);
    QVERIFY(
        opensslVerifies(key, text, signature,
                        {QStringLiteral("-pkeyopt"), QStringLiteral("rsa_padding_mode:pkcs1")}));
    QCA::RSAPublicKey publicKey = key.toRSA().toPublicKey().toRSA();
    publicKey.startVerify(QCA::EMSA3_Raw, QCA::DefaultFormat);
    publicKey.update(text);
    QVERIFY(publicKey.validSignature(signature));
    // Too long for the padding.
    rsa.startSign(QCA::EMSA3_Raw, QCA::DefaultFormat);
    rsa.update(QByteArray(300, 'a'));
    QVERIFY(rsa.signature().isEmpty());
}

void TestWriting::digestSignatures_data()
{
    QTest::addColumn<int>("algorithm");
    QTest::addColumn<QString>("digest");
    QTest::newRow("SHA-1") << int(QCA::EMSA3_SHA1) << "sha1";
    QTest::newRow("SHA-224") << int(QCA::EMSA3_SHA224) << "sha224";
    QTest::newRow("SHA-256") << int(QCA::EMSA3_SHA256) << "sha256";
    QTest::newRow("SHA-384") << int(QCA::EMSA3_SHA384) << "sha384";
    QTest::newRow("SHA-512") << int(QCA::EMSA3_SHA512) << "sha512";
}

void TestWriting::digestSignatures()
{
    QFETCH(int, algorithm);
    QFETCH(QString, digest);
    QCA::PrivateKey key = generate(QStringLiteral("2048"), QStringLiteral("digest"));
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Digest")).isEmpty());
    const QByteArray data("some data");
    const QByteArray signature =
        key.signMessage(data, QCA::SignatureAlgorithm(algorithm), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(key, data, signature,
                            {QStringLiteral("-rawin"), QStringLiteral("-digest"), digest}));
}

void TestWriting::ecSignature()
{
    QCA::PrivateKey key = generate(QStringLiteral("ec"), QStringLiteral("curve"));
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Curve")).isEmpty());
    const QByteArray data("some data");
    for (const QString &digest : {QStringLiteral("sha256"), QStringLiteral("sha512")}) {
        const auto algorithm =
            digest == QLatin1String("sha256") ? QCA::EMSA3_SHA256 : QCA::EMSA3_SHA512;
        const QByteArray signature = key.signMessage(data, algorithm, QCA::DefaultFormat);
        QVERIFY(opensslVerifies(key, data, signature,
                                {QStringLiteral("-rawin"), QStringLiteral("-digest"), digest}));
        QVERIFY(key.toPublicKey().verifyMessage(data, signature, algorithm, QCA::DefaultFormat));
    }
    QCOMPARE(key.signMessage(data, QCA::EMSA3_SHA256, QCA::IEEE_1363).size(), 96);
}

void TestWriting::requests_data()
{
    QTest::addColumn<QString>("algorithm");
    QTest::newRow("RSA") << "2048";
    QTest::newRow("P-384") << "ec";
}

void TestWriting::requests()
{
    QFETCH(QString, algorithm);
    const QCA::PrivateKey key = generate(algorithm, QStringLiteral("request"));
    QVERIFY(!key.isNull());
    QCA::CertificateInfo subject;
    subject.insert(QCA::CommonName, QStringLiteral("Анна Ивановна"));
    subject.insert(QCA::Country, QStringLiteral("RU"));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(subject);
    const QCA::CertificateRequest request(options, key, Pkcs11);
    QVERIFY(!request.isNull());
    QCOMPARE(request.provider()->name(), Pkcs11);
    const QString file = m_authority->file(QStringLiteral("request.csr"));
    QVERIFY(request.toPEMFile(file));
    QVERIFY(!m_authority
                 ->openssl({QStringLiteral("req"), QStringLiteral("-verify"),
                            QStringLiteral("-noout"), QStringLiteral("-in"), file})
                 .isNull());
    const QByteArray issued = m_authority->issueForRequest(file);
    QVERIFY(!issued.isEmpty());
    const QString id =
        m_stores->write(m_store, QCA::Certificate::fromDER(issued, nullptr, OpenSsl));
    QTRY_VERIFY(!entryWithId(id).isNull());
    QCOMPARE(entryWithId(id).type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(Trivex::isSamePublicKey(entryWithId(id).keyBundle().privateKey().toPublicKey(),
                                    request.subjectPublicKey()));
}

void TestWriting::bareKeyIsFound()
{
    const QCA::PrivateKey key = generate(QStringLiteral("ec"), QStringLiteral("bare"));
    const QCA::PrivateKey found = Trivex::findTokenKey(m_store->id(), Trivex::publicKeyOf(key));
    QVERIFY(!found.isNull());
    QVERIFY(Trivex::isSamePublicKey(Trivex::publicKeyOf(found), Trivex::publicKeyOf(key)));
    QCA::PrivateKey usable = found;
    QVERIFY(!usable.signMessage(QByteArray("x"), QCA::EMSA3_SHA256, QCA::DefaultFormat).isEmpty());
    QVERIFY(
        Trivex::findTokenKey(QStringLiteral("no such store"), Trivex::publicKeyOf(key)).isNull());
    QVERIFY(Trivex::findTokenKey(m_store->id(), QCA::PublicKey()).isNull());
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Bare")).isEmpty());
}

void TestWriting::importOfCertificate()
{
    const auto root = QCA::Certificate::fromDER(m_authority->certificate(), nullptr, OpenSsl);
    QVERIFY(!root.isNull());
    const QString id = m_stores->write(m_store, root);
    QVERIFY(!id.isEmpty());
    QTRY_VERIFY(!entryWithId(id).isNull());
    QCOMPARE(entryWithId(id).type(), QCA::KeyStoreEntry::TypeCertificate);
    QCOMPARE(entryWithId(id).name(), QStringLiteral("Test Root"));
    QCOMPARE(entryWithId(id).certificate().toDER(), m_authority->certificate());
    // Once more changes nothing.
    QCOMPARE(m_stores->write(m_store, root), id);
    QCOMPARE(m_stores->entries(StoreName).size(), 1);
    QCOMPARE(m_stores->write(m_store, QCA::Certificate()), QString());
}

void TestWriting::importOfBundle_data()
{
    QTest::addColumn<QStringList>("keyArguments");
    QTest::addColumn<int>("type");
    const QString algorithm = QStringLiteral("-algorithm");
    const QString option = QStringLiteral("-pkeyopt");
    QTest::newRow("RSA") << QStringList{algorithm, QStringLiteral("RSA"), option,
                                        QStringLiteral("rsa_keygen_bits:2048")}
                         << int(Trivex::RsaKey);
    QTest::newRow("P-384") << QStringList{algorithm, QStringLiteral("EC"), option,
                                          QStringLiteral("ec_paramgen_curve:P-384")}
                           << int(Trivex::EllipticCurveKey);
    QTest::newRow("P-256") << QStringList{algorithm, QStringLiteral("EC"), option,
                                          QStringLiteral("ec_paramgen_curve:P-256")}
                           << int(Trivex::EllipticCurveKey);
    QTest::newRow("Ed25519") << QStringList{algorithm, QStringLiteral("ED25519")}
                             << int(Trivex::OtherKey);
}

void TestWriting::importOfBundle()
{
    QFETCH(QStringList, keyArguments);
    QFETCH(int, type);
    const int before = m_token->token().objectCount();
    const QString file = m_authority->bundle(keyArguments, QStringLiteral("/CN=Пётр"),
                                             QStringLiteral("пароль"), QStringLiteral("Мой ключ"));
    QVERIFY(!file.isEmpty());
    QCA::ConvertResult result;
    const auto bundle =
        QCA::KeyBundle::fromFile(file, QStringLiteral("пароль").toUtf8(), &result, OpenSsl);
    QVERIFY(!bundle.isNull());
    const QString id = m_stores->write(m_store, bundle);
    QVERIFY(!id.isEmpty());
    QTRY_VERIFY(!entryWithId(id).isNull());
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCOMPARE(entry.name(), QStringLiteral("Мой ключ"));
    QCOMPARE(entry.keyBundle().certificateChain().size(), 2);
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    QCOMPARE(Trivex::keyType(key), type);
    const QByteArray data("data");
    const QByteArray signature = key.signMessage(data, QCA::EMSA3_SHA256, QCA::DefaultFormat);
    QVERIFY(opensslVerifies(key, data, signature,
                            type == Trivex::OtherKey
                                ? QStringList{QStringLiteral("-rawin")}
                                : QStringList{QStringLiteral("-rawin"), QStringLiteral("-digest"),
                                              QStringLiteral("sha256")}));
    QVERIFY(m_token->token().tool({QStringLiteral("--list-objects")}).contains("sensitive"));
    QCOMPARE(m_token->token().objectCount(), before + 4);
    // A second time adds nothing.
    QCOMPARE(m_stores->write(m_store, bundle), id);
    QCOMPARE(m_token->token().objectCount(), before + 4);
    cleanup();
    QCOMPARE(m_token->token().objectCount(), before);
}

void TestWriting::removalOfBundle()
{
    const int before = m_token->token().objectCount();
    const QString id = issueAndImport(generate(QStringLiteral("2048"), QStringLiteral("gone")),
                                      QStringLiteral("/CN=Gone"));
    QVERIFY(!id.isEmpty());
    QVERIFY(m_stores->remove(m_store, id));
    QTRY_VERIFY(m_stores->entries(StoreName).isEmpty());
    QCOMPARE(m_token->token().objectCount(), before);
}

void TestWriting::removalKeepsASharedKey()
{
    QCA::PrivateKey key = generate(QStringLiteral("2048"), QStringLiteral("shared"));
    const QString first = issueAndImport(key, QStringLiteral("/CN=First"));
    const QString second = issueAndImport(key, QStringLiteral("/CN=Second"));
    QVERIFY(!first.isEmpty() && !second.isEmpty() && first != second);
    QVERIFY(m_stores->remove(m_store, first));
    QVERIFY(m_stores->waitForEntries(StoreName, 1));
    QCOMPARE(m_stores->entries(StoreName).first().type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(!key.signMessage(QByteArray("x"), QCA::EMSA3_SHA256, QCA::DefaultFormat).isEmpty());
}

void TestWriting::unknownEntry()
{
    QVERIFY(!m_stores->remove(m_store, QStringLiteral("no such entry")));
}

QTEST_GUILESS_MAIN(TestWriting)
#include "tst_writing.moc"
