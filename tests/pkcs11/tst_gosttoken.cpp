// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"
#include "certificates/keystoreentry.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "qca/x509/certificateinfo.h"
#include "signing/signverify.h"
#include "tests/pkcs11/tokenfixture.h"

#include <QDirIterator>
#include <QProcess>

#include <openssl/crypto.h>
#include <openssl/evp.h>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Гост");
const QString Pkcs11 = QStringLiteral("qca-norvel-pkcs11");
const QString Gost = QStringLiteral("qca-norvel-gost");
const QString OpenSsl = QStringLiteral("qca-norvel-openssl");
const QByteArray Data = "Подписанные данные";

bool hasEngine()
{
    QProcess process;
    process.start(QStringLiteral("openssl"),
                  {QStringLiteral("genpkey"), QStringLiteral("-engine"), QStringLiteral("gost"),
                   QStringLiteral("-algorithm"), QStringLiteral("gost2012_256"),
                   QStringLiteral("-pkeyopt"), QStringLiteral("paramset:A")});
    return process.waitForFinished(10000) && process.exitCode() == 0;
}

QTestData &newRow(std::initializer_list<const char *> words)
{
    QByteArray name;
    for (const char *word : words)
        name.append(word).append(' ');
    return QTest::newRow(name.trimmed().constData());
}

QCA::SignatureAlgorithm signatureFor(const QCA::PKey &key)
{
    return QCA::SignatureAlgorithm(Trivex::keyType(key) == Trivex::Gost2012Key512
                                       ? Trivex::Gost2012Signature512
                                       : Trivex::Gost2012Signature256);
}

} // namespace

/// GOST keys on a token with the mechanisms of TC26, checked by the openssl program with its engine
/// "gost". Run twice: with that engine in this process, and with TRIVEX_NO_GOST_ENGINE.
class TestGostToken : public TokenFixture {
    Q_OBJECT
public:
    TestGostToken()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void processHasTheEngineOrNot();
    void generation_data();
    void generation();
    void unknownNames();
    void wrongAndMissingPin();
    void failedGenerationLeavesNothing();
    void tokenWithoutTheMechanism();
    void pairingBeforeLogin_data();
    void pairingBeforeLogin();
    void lyingToken_data();
    void lyingToken();
    void signature_data();
    void signature();
    void unusableSignature();
    void requests_data();
    void requests();
    void bareKeyIsFound();
    void keyOf2001();
    void importOfBundle_data();
    void importOfBundle();
    void bundleThatFailsHalfWay();
    void restoredEntrySigns();
    void selfSigned();
    void signVerifyNeedsRsa();

private:
    QCA::PrivateKey generate(const QString &curve, const QString &label)
    {
        return generateCurve(curve, label, 60000);
    }
    QCA::KeyStoreEntry entryWithId(const QString &id) const
    {
        return withId(m_stores->currentEntries(StoreName), id);
    }
    int keyObjects() const;
    bool write(const QString &name, const QByteArray &bytes) const;
    bool opensslVerifies(const QByteArray &publicInfo, const QByteArray &signature);
    QString bundle(const QString &algorithm, const QString &set) const;
};

void TestGostToken::initTestCase()
{
    if (!hasEngine()) {
        qInfo("SKIP the openssl engine gost (libengine-gost-openssl) is not installed");
        QSKIP("the openssl engine gost is not installed");
    }
    // The engine is for the openssl programs: this process has read its configuration by then.
    OPENSSL_init_crypto(OPENSSL_INIT_LOAD_CONFIG, nullptr);
    QVERIFY(makeToken());
    QVERIFY(write(QStringLiteral("openssl.cnf"),
                  "openssl_conf = conf\n[conf]\nengines = engines\n[engines]\ngost = gost\n"
                  "[gost]\nengine_id = gost\ndefault_algorithms = ALL\n"
                  "[req]\ndistinguished_name = name\n[name]\n"));
    qputenv("OPENSSL_CONF", QFile::encodeName(m_authority->file(QStringLiteral("openssl.cnf"))));
    m_token->useInThisProcess();
    qputenv("TRIVEX_FAULTY_GOST",
            QFile::encodeName(m_token->token().path() + QStringLiteral("/gost")));
    QVERIFY(start(0));
}

/// Each test leaves the token empty: bundles go with their keys, bare keys are removed by hand.
void TestGostToken::cleanup()
{
    if (!m_store)
        return;
    m_token->control();
    m_prompt->setPin(TestToken::pin());
    m_prompt->resetCount();
    const auto entries = m_stores->currentEntries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries)
        QVERIFY(m_stores->remove(m_store, entry.id()));
    QVERIFY(m_stores->waitForEntries(StoreName, 0));
    QCOMPARE(keyObjects(), 0);
    m_token->forget();
}

int TestGostToken::keyObjects() const
{
    QDirIterator files(m_token->token().path() + QStringLiteral("/gost"), {QStringLiteral("*.key")},
                       QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    for (; files.hasNext(); files.next())
        ++count;
    return count;
}

bool TestGostToken::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(m_authority->file(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool TestGostToken::opensslVerifies(const QByteArray &publicInfo, const QByteArray &signature)
{
    const QString pem = m_authority->file(QStringLiteral("key.pem"));
    if (!write(QStringLiteral("key.der"), publicInfo) || !write(QStringLiteral("data"), Data)
        || !write(QStringLiteral("signature"), signature)
        || m_authority
               ->openssl({QStringLiteral("pkey"), QStringLiteral("-pubin"),
                          QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-in"),
                          QStringLiteral("key.der"), QStringLiteral("-out"), pem})
               .isNull())
        return false;
    const QString digest = signature.size() == 128 ? QStringLiteral("-md_gost12_512")
                                                   : QStringLiteral("-md_gost12_256");
    return m_authority
        ->openssl({QStringLiteral("dgst"), digest, QStringLiteral("-verify"), pem,
                   QStringLiteral("-signature"), QStringLiteral("signature"),
                   QStringLiteral("data")})
        .contains("Verified OK");
}

void TestGostToken::processHasTheEngineOrNot()
{
    const QCA::PrivateKey key = generate(QStringLiteral("gost2012-256"), QStringLiteral("engine"));
    const bool wanted = !qEnvironmentVariableIsSet("TRIVEX_NO_GOST_ENGINE");
    QCOMPARE(EVP_get_digestbyname("md_gost12_256") != nullptr, wanted);
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Engine")).isEmpty());
}

void TestGostToken::generation_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("bits");
    for (const char *name :
         {"gost2012-256", "id-GostR3410-2001-CryptoPro-A-ParamSet",
          "id-GostR3410-2001-CryptoPro-B-ParamSet", "id-GostR3410-2001-CryptoPro-C-ParamSet",
          "id-GostR3410-2001-CryptoPro-XchA-ParamSet", "id-GostR3410-2001-CryptoPro-XchB-ParamSet",
          "id-tc26-gost-3410-2012-256-paramSetA", "id-tc26-gost-3410-2012-256-paramSetB",
          "id-tc26-gost-3410-2012-256-paramSetC", "id-tc26-gost-3410-2012-256-paramSetD"})
        QTest::newRow(name) << int(Trivex::Gost2012Key256) << 256;
    for (const char *name :
         {"gost2012-512", "id-tc26-gost-3410-2012-512-paramSetA",
          "id-tc26-gost-3410-2012-512-paramSetB", "id-tc26-gost-3410-2012-512-paramSetC"})
        QTest::newRow(name) << int(Trivex::Gost2012Key512) << 512;
}

void TestGostToken::generation()
{
    QFETCH(int, type);
    QFETCH(int, bits);
    QCA::PrivateKey key =
        generate(QString::fromLatin1(QTest::currentDataTag()), QStringLiteral("Ключ"));
    QVERIFY(!key.isNull());
    QVERIFY(key.isPrivate());
    QVERIFY(!key.canExport());
    QCOMPARE(key.provider()->name(), Gost);
    QCOMPARE(Trivex::keyType(key), type);
    QCOMPARE(key.bitSize(), bits);
    QCOMPARE(Trivex::keyStoreIdOf(key), m_store->id());
    QCOMPARE(keyObjects(), 2);
    QVERIFY(m_stores->currentEntries(StoreName).isEmpty());
    const QByteArray signature = key.signMessage(Data, signatureFor(key), QCA::DefaultFormat);
    QCOMPARE(signature.size(), bits / 4);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
    const QString id = issueAndImport(key, QStringLiteral("/CN=Гост"));
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCOMPARE(entry.name(), QStringLiteral("Ключ"));
    QVERIFY(Trivex::isSamePublicKey(entry.keyBundle().privateKey().toPublicKey(),
                                    Trivex::publicKeyOf(key)));
}

void TestGostToken::unknownNames()
{
    for (const char *name : {"gost2012-1024", "gost", "GOST2012-256",
                             "id-tc26-gost-3410-2012-256-paramSetE", "ec-gost2012-256"})
        QVERIFY(generate(QString::fromLatin1(name), QStringLiteral("x")).isNull());
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 0);
    // What it meant before, it means still.
    const QCA::PrivateKey curve = generate(QStringLiteral("ec-secp384r1"), QStringLiteral("x"));
    QCOMPARE(Trivex::keyType(curve), int(Trivex::EllipticCurveKey));
    QCOMPARE(keyObjects(), 0);
    QVERIFY(!issueAndImport(curve, QStringLiteral("/CN=Curve")).isEmpty());
}

void TestGostToken::wrongAndMissingPin()
{
    QVERIFY(m_token->replug(m_store->id()));
    for (const QByteArray &pin : {QByteArray("000000"), QByteArray()}) {
        for (const char *name : {"gost2012-256", "gost2012-512"}) {
            m_token->forget();
            m_prompt->setPin(pin);
            QVERIFY(generate(QString::fromLatin1(name), QStringLiteral("x")).isNull());
            QCOMPARE(m_token->count("C_Login"), pin.isEmpty() ? 0 : 1);
            QCOMPARE(m_token->count("C_GenerateKeyPair"), 0);
        }
    }
    QCOMPARE(keyObjects(), 0);
    m_token->forget();
    m_prompt->setPin(TestToken::pin());
    const QCA::PrivateKey key = generate(QStringLiteral("gost2012-512"), QStringLiteral("x"));
    QCOMPARE(m_token->count("C_Login"), 1);
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Right")).isEmpty());
}

void TestGostToken::failedGenerationLeavesNothing()
{
    for (const char *order : {"fail-after C_GenerateKeyPair * CKR_DEVICE_ERROR",
                              "fail C_GenerateKeyPair * CKR_DEVICE_MEMORY"}) {
        m_token->control(order);
        QVERIFY(generate(QStringLiteral("gost2012-512"), QStringLiteral("x")).isNull());
        QCOMPARE(keyObjects(), 0);
    }
}

void TestGostToken::tokenWithoutTheMechanism()
{
    m_token->control("fail C_GetMechanismInfo * CKR_MECHANISM_INVALID");
    QVERIFY(generate(QStringLiteral("gost2012-256"), QStringLiteral("x")).isNull());
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 0);
}

void TestGostToken::pairingBeforeLogin_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QByteArray>("orders");
    const QByteArray wrapped = "gost wrapped no-digest-parameters";
    for (const char *curve :
         {"gost2012-256", "gost2012-512", "id-tc26-gost-3410-2012-256-paramSetB",
          "id-tc26-gost-3410-2012-512-paramSetC"}) {
        const QString name = QString::fromLatin1(curve);
        QTest::newRow(curve) << name << QByteArray();
        newRow({curve, "on another token"}) << name << wrapped;
    }
}

void TestGostToken::pairingBeforeLogin()
{
    QFETCH(QString, curve);
    QFETCH(QByteArray, orders);
    const QCA::PrivateKey made = generate(curve, QStringLiteral("pair"));
    const QString id = issueAndImport(made, QStringLiteral("/CN=Pair"));
    QVERIFY(!id.isEmpty());
    m_token->control(orders + "\nremove");
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).present);
    m_token->forget();
    m_token->control(orders);
    QTRY_VERIFY(Trivex::TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).loading);
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    QCOMPARE(Trivex::keyType(key), Trivex::keyType(made));
    QCOMPARE(m_token->count("C_Login"), 0);
    const Certificate shown(entry.certificate());
    QVERIFY(shown.publicKeyTypeAlgorithm().startsWith(QLatin1String("GOST R 34.10-2012")));
    const QByteArray signature = key.signMessage(Data, signatureFor(key), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
    QCOMPARE(m_token->count("C_Login"), 1);
}

void TestGostToken::lyingToken_data()
{
    QTest::addColumn<QByteArray>("order");
    for (const char *attribute : {"CKA_GOSTR3410_PARAMS", "CKA_GOSTR3411_PARAMS", "CKA_VALUE"}) {
        for (const char *lie : {"beyond 64", "moved"})
            newRow({attribute, lie})
                << QByteArray("lie ").append(attribute).append(" * ").append(lie);
    }
}

/// What can't be believed makes no key; the token is read and used all the same.
void TestGostToken::lyingToken()
{
    QFETCH(QByteArray, order);
    const QString id = issueAndImport(generate(QStringLiteral("gost2012-512"), QString()),
                                      QStringLiteral("/CN=Lie"));
    QVERIFY(!id.isEmpty());
    m_token->control(QByteArray(order).append("\nremove"));
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).present);
    m_token->control(order);
    QTRY_VERIFY(Trivex::TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).loading);
    m_stores->currentEntries(StoreName);
    QVERIFY(m_token->replug(m_store->id()));
    QCOMPARE(entryWithId(id).type(), QCA::KeyStoreEntry::TypeKeyBundle);
}

void TestGostToken::signature_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QByteArray>("habit");
    for (const char *curve : {"gost2012-256", "gost2012-512"}) {
        for (const char *habit : {"", "digest-only", "no-digest", "message-only"})
            newRow({curve, habit}) << QString::fromLatin1(curve) << QByteArray(habit);
    }
}

void TestGostToken::signature()
{
    QFETCH(QString, curve);
    QFETCH(QByteArray, habit);
    QCA::PrivateKey key = generate(curve, QStringLiteral("signs"));
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Signs")).isEmpty());
    if (!habit.isEmpty())
        m_token->control("gost " + habit);
    const QByteArray signature = key.signMessage(Data, signatureFor(key), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
    const bool verifies =
        key.toPublicKey().verifyMessage(Data, signature, signatureFor(key), QCA::DefaultFormat);
    QCOMPARE(verifies, !qEnvironmentVariableIsSet("TRIVEX_NO_GOST_ENGINE"));
    QVERIFY(!key.toPublicKey().verifyMessage(QByteArray(Data).append('x'), signature,
                                             signatureFor(key), QCA::DefaultFormat));
    // In pieces, and through a copy.
    key.startSign(signatureFor(key), QCA::DefaultFormat);
    key.update(Data.left(3));
    QCA::PrivateKey copy = key;
    copy.update(Data.mid(3));
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), copy.signature()));
}

void TestGostToken::unusableSignature()
{
    QCA::PrivateKey key = generate(QStringLiteral("gost2012-256"), QStringLiteral("unusable"));
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Unusable")).isEmpty());
    // Of a digest that is as long, a signature can be made; of others it can't.
    QVERIFY(key.signMessage(Data, QCA::EMSA3_SHA1, QCA::DefaultFormat).isEmpty());
    QVERIFY(key.signMessage(Data, QCA::SignatureUnknown, QCA::DefaultFormat).isEmpty());
    QVERIFY(key.signMessage(Data, QCA::EMSA3_Raw, QCA::DefaultFormat).isEmpty());
    QVERIFY(key.toRSA().isNull());
}

void TestGostToken::requests_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QString>("algorithm");
    QTest::addColumn<QByteArray>("habit");
    const QString with256 = QStringLiteral("GOST R 34.10-2012 with GOST R 34.11-2012 (256 bit)");
    const QString with512 = QStringLiteral("GOST R 34.10-2012 with GOST R 34.11-2012 (512 bit)");
    for (const char *habit : {"", "gost message-only", "gost no-digest"}) {
        const QByteArray name(habit);
        newRow({"256", habit}) << QStringLiteral("gost2012-256") << with256 << name;
        newRow({"256 B", habit}) << QStringLiteral("id-tc26-gost-3410-2012-256-paramSetB")
                                 << with256 << name;
        newRow({"512", habit}) << QStringLiteral("gost2012-512") << with512 << name;
    }
}

void TestGostToken::requests()
{
    QFETCH(QString, curve);
    QFETCH(QString, algorithm);
    QFETCH(QByteArray, habit);
    const QCA::PrivateKey key = generate(curve, QStringLiteral("request"));
    QVERIFY(!key.isNull());
    m_token->control(habit);
    QCA::CertificateInfo subject;
    subject.insert(QCA::CommonName, QStringLiteral("Анна Ивановна"));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(subject);
    const QCA::CertificateRequest request(options, key, Pkcs11);
    QVERIFY(!request.isNull());
    const QString file = m_authority->file(QStringLiteral("request.csr"));
    QVERIFY(request.toPEMFile(file));
    const QByteArray text = m_authority->openssl({QStringLiteral("req"), QStringLiteral("-verify"),
                                                  QStringLiteral("-noout"), QStringLiteral("-text"),
                                                  QStringLiteral("-in"), file});
    QVERIFY(!text.isNull());
    QVERIFY2(text.contains("Signature Algorithm: " + algorithm.toUtf8()), text.constData());
    m_token->control();
    const QByteArray issued = m_authority->issueForRequest(file);
    QVERIFY(!issued.isEmpty());
    const QString id =
        m_stores->write(m_store, QCA::Certificate::fromDER(issued, nullptr, OpenSsl));
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(Trivex::isSamePublicKey(entry.keyBundle().privateKey().toPublicKey(),
                                    request.subjectPublicKey()));
}

void TestGostToken::bareKeyIsFound()
{
    for (const char *curve : {"gost2012-256", "gost2012-512"}) {
        const QCA::PrivateKey key = generate(QString::fromLatin1(curve), QStringLiteral("bare"));
        QVERIFY(m_token->replug(m_store->id()));
        QCA::PrivateKey found = Trivex::findTokenKey(m_store->id(), Trivex::publicKeyOf(key));
        QVERIFY(!found.isNull());
        QVERIFY(Trivex::isSamePublicKey(Trivex::publicKeyOf(found), Trivex::publicKeyOf(key)));
        QVERIFY(!found.signMessage(Data, signatureFor(key), QCA::DefaultFormat).isEmpty());
        QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Bare")).isEmpty());
        cleanup();
    }
}

QString TestGostToken::bundle(const QString &algorithm, const QString &set) const
{
    return m_authority->bundle({QStringLiteral("-algorithm"), algorithm, QStringLiteral("-pkeyopt"),
                                QStringLiteral("paramset:") + set},
                               QStringLiteral("/CN=Пётр"), QStringLiteral("пароль"),
                               QStringLiteral("Мой ключ"));
}

/// Only its certificate tells it from one of 2012 where the token names no digest.
void TestGostToken::keyOf2001()
{
    const QString file = bundle(QStringLiteral("gost2001"), QStringLiteral("A"));
    const auto read =
        QCA::KeyBundle::fromFile(file, QStringLiteral("пароль").toUtf8(), nullptr, OpenSsl);
    for (const QByteArray &orders : {QByteArray(), QByteArray("gost no-digest-parameters")}) {
        m_token->control(orders);
        const QString id = m_stores->write(m_store, read);
        QVERIFY(!id.isEmpty());
        QCA::PrivateKey key = entryWithId(id).keyBundle().privateKey();
        QCOMPARE(Trivex::keyType(key), int(Trivex::Gost2001Key));
        const QByteArray signature = key.signMessage(
            Data, QCA::SignatureAlgorithm(Trivex::Gost2001Signature), QCA::DefaultFormat);
        QCOMPARE(signature.size(), 64);
        QVERIFY(m_stores->remove(m_store, id));
        QCOMPARE(keyObjects(), 0);
    }
}

void TestGostToken::importOfBundle_data()
{
    QTest::addColumn<QString>("algorithm");
    QTest::addColumn<QString>("set");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("orders");
    const auto add = [](const char *algorithm, const char *set, int type, const char *orders) {
        newRow({algorithm, set, orders}) << QString::fromLatin1(algorithm)
                                         << QString::fromLatin1(set) << type << QByteArray(orders);
    };
    for (const char *orders : {"", "gost wrapped no-digest-parameters"}) {
        add("gost2012_256", "A", Trivex::Gost2012Key256, orders);
        add("gost2012_256", "TCA", Trivex::Gost2012Key256, orders);
        add("gost2012_512", "A", Trivex::Gost2012Key512, orders);
        add("gost2012_512", "C", Trivex::Gost2012Key512, orders);
    }
}

void TestGostToken::importOfBundle()
{
    QFETCH(QString, algorithm);
    QFETCH(QString, set);
    QFETCH(int, type);
    QFETCH(QByteArray, orders);
    m_token->control(orders);
    const QString file = bundle(algorithm, set);
    QVERIFY(!file.isEmpty());
    QCA::ConvertResult result;
    const auto read =
        QCA::KeyBundle::fromFile(file, QStringLiteral("пароль").toUtf8(), &result, OpenSsl);
    QVERIFY(!read.isNull());
    const QString id = m_stores->write(m_store, read);
    QVERIFY(!id.isEmpty());
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCOMPARE(entry.name(), QStringLiteral("Мой ключ"));
    QCOMPARE(entry.keyBundle().certificateChain().size(), 2);
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    QCOMPARE(Trivex::keyType(key), type);
    QVERIFY(!key.canExport());
    const QByteArray signature = key.signMessage(Data, signatureFor(key), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
    QCOMPARE(keyObjects(), 2);
    // A second time adds nothing.
    QCOMPARE(m_stores->write(m_store, read), id);
    QCOMPARE(keyObjects(), 2);
}

void TestGostToken::bundleThatFailsHalfWay()
{
    const auto read =
        QCA::KeyBundle::fromFile(bundle(QStringLiteral("gost2012_256"), QStringLiteral("A")),
                                 QStringLiteral("пароль").toUtf8(), nullptr, OpenSsl);
    for (const char *order :
         {"fail C_CreateObject 2 CKR_DEVICE_ERROR", "fail-after C_CreateObject 2 CKR_DEVICE_ERROR",
          "fail C_CreateObject 3 CKR_DEVICE_ERROR"}) {
        m_token->control(order);
        QVERIFY(m_stores->write(m_store, read).isEmpty());
        QCOMPARE(keyObjects(), 0);
    }
}

void TestGostToken::restoredEntrySigns()
{
    const QString id = issueAndImport(generate(QStringLiteral("gost2012-512"), QString()),
                                      QStringLiteral("/CN=Restored"));
    QVERIFY(!id.isEmpty());
    const auto entry = QCA::KeyStoreEntry(entryWithId(id).toString());
    QVERIFY(!entry.isNull());
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    const QByteArray signature = key.signMessage(Data, signatureFor(key), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
}

void TestGostToken::selfSigned()
{
    QCA::PrivateKey key = generate(QStringLiteral("gost2012-512"), QStringLiteral("self"));
    QCA::CertificateInfo subject;
    subject.insert(QCA::CommonName, QStringLiteral("Self"));
    QCA::CertificateOptions options;
    options.setInfo(subject);
    options.setValidityPeriod(QDateTime::currentDateTime(),
                              QDateTime::currentDateTime().addDays(1));
    options.setSerialNumber(QCA::BigInteger(1));
    const QCA::Certificate certificate(options, key, OpenSsl);
    QVERIFY(!certificate.isNull());
    if (!qEnvironmentVariableIsSet("TRIVEX_NO_GOST_ENGINE"))
        QVERIFY(certificate.isSelfSigned());
    const QString file = m_authority->file(QStringLiteral("self.pem"));
    QVERIFY(certificate.toPEMFile(file));
    QVERIFY(m_authority
                ->openssl({QStringLiteral("verify"), QStringLiteral("-check_ss_sig"),
                           QStringLiteral("-CAfile"), file, file})
                .contains(": OK"));
    const QString id = m_stores->write(m_store, certificate);
    QCOMPARE(entryWithId(id).type(), QCA::KeyStoreEntry::TypeKeyBundle);
}

void TestGostToken::signVerifyNeedsRsa()
{
    const QString id =
        issueAndImport(generate(QStringLiteral("gost2012-256"), QStringLiteral("signer")),
                       QStringLiteral("/CN=Signer"));
    KeyStoreEntry entry(entryWithId(id));
    SignVerify signer;
    SignVerify verifier;
    const QString file = m_authority->file(QStringLiteral("data.sig"));
    QVERIFY(write(QStringLiteral("data.sig"), QByteArray(64, 'x')));
    signer.sign(Data, m_authority->file(QStringLiteral("new.sig")), &entry);
    verifier.verify(Data, file, &entry);
    QTRY_COMPARE(verifier.error(), int(SignVerify::ErrorVerify));
    QTRY_COMPARE(signer.error(), int(SignVerify::ErrorSign));
    QVERIFY(!QFile::exists(m_authority->file(QStringLiteral("new.sig"))));
}

QTEST_GUILESS_MAIN(TestGostToken)
#include "tst_gosttoken.moc"
