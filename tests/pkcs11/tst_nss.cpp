// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "qca/keys/keymaterial.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokenadministration.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/administering.h"
#include "tests/pkcs11/extracted.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/testcertificates.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("NSS Certificate DB");
const QString OpenSsl = QStringLiteral("qca-norvel-openssl");
const QString SoftToken = QStringLiteral(TRIVEX_NSS_SOFTOKEN);
const QByteArray Pin("nss-pin-1");

bool makeDatabase(const QString &directory, const QStringList &password)
{
    return QProcess::execute(QStringLiteral("certutil"),
                             QStringList{QStringLiteral("-N"), QStringLiteral("-d"),
                                         QStringLiteral("sql:") + directory}
                                 + password)
        == 0;
}

/// As a database is before anybody has chosen a password: no program of NSS leaves one so.
bool forgetPassword(const QString &directory)
{
    const QString script = QStringLiteral(
        "import sqlite3, sys\n"
        "database = sqlite3.connect(sys.argv[1])\n"
        "sys.exit(database.execute(\"delete from metaData where id='password'\").rowcount != 1\n"
        "         or database.commit())\n");
    return QProcess::execute(QStringLiteral("python3"),
                             {QStringLiteral("-c"), script, directory + QStringLiteral("/key4.db")})
        == 0;
}

} // namespace

/// The same flows on another implementation of PKCS#11 than SoftHSM: NSS's software token, which
/// takes its database from parameters of C_Initialize.
class TestNss : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void whole_data();
    void whole();
    void bundle_data();
    void bundle();
    void refusedExponent();
    void wrongPin();
    void firstPin();
    void pinForAnEmptyOne();
    void keyLeaves_data();
    void keyLeaves();

private:
    /// The module with that database, of which nobody is logged in.
    bool restart(const QString &directory, const QByteArray &pin);
    Trivex::TokenError::Kind administer(Trivex::TokenAdministration::Kind kind,
                                        const QByteArray &pin, const QByteArray &newPin);
    /// Whether that PIN, and no question less, is what a write needs.
    bool needsPin(const QString &directory, const QByteArray &pin);
    QCA::PrivateKey generate(const QString &algorithm, int exponent = 65537);
    QCA::KeyStoreEntry entryWithId(const QString &id);
    void removeAll();

    QTemporaryDir m_directory;
    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<PinPrompt> m_prompt;
    std::unique_ptr<Stores> m_stores;
    QCA::KeyStore *m_store = nullptr;
};

void TestNss::initTestCase()
{
    if (!QFile::exists(SoftToken)
        || QStandardPaths::findExecutable(QStringLiteral("certutil")).isEmpty()) {
        qInfo("SKIP NSS (libnss3, libnss3-tools) is not installed");
        QSKIP("NSS is not installed");
    }
    const QString pinFile = m_directory.filePath(QStringLiteral("pin"));
    QFile file(pinFile);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(Pin) > 0);
    file.close();
    QVERIFY(makeDatabase(m_directory.path(), {QStringLiteral("-f"), pinFile}));
    m_authority = std::make_unique<TestAuthority>();
    QVERIFY2(restart(m_directory.path(), Pin),
             m_stores ? qPrintable(m_stores->names().join(QLatin1Char(' '))) : "");
}

bool TestNss::restart(const QString &directory, const QByteArray &pin)
{
    m_store = nullptr;
    m_stores.reset();
    m_qca.reset();
    m_prompt.reset();
    const QString modules =
        QStringLiteral("%1|configdir='sql:%2' certPrefix='' keyPrefix='' secmod='secmod.db' flags=")
            .arg(SoftToken, directory);
    qputenv("TRIVEX_PKCS11_MODULES", modules.toUtf8());
    m_qca = std::make_unique<QCA::Initializer>();
    m_prompt = std::make_unique<PinPrompt>(pin);
    m_stores = std::make_unique<Stores>();
    m_store = m_stores->waitFor(StoreName);
    return m_store
        && QTest::qWaitFor([&] { return Trivex::TokenMonitor::token(m_store->id()).isRead; });
}

QCA::PrivateKey TestNss::generate(const QString &algorithm, int exponent)
{
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(m_store->id(), QStringLiteral("made"));
    QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
    if (algorithm == QLatin1String("ec"))
        generator.createEC(QStringLiteral("ec-secp384r1"), QStringLiteral("qca-norvel-gost"));
    else
        generator.createRSA(algorithm.toInt(), exponent, QStringLiteral("qca-norvel-pkcs11"));
    return !finished.isEmpty() || finished.wait(60000) ? generator.key() : QCA::PrivateKey();
}

QCA::KeyStoreEntry TestNss::entryWithId(const QString &id)
{
    const auto entries = m_stores->currentEntries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries) {
        if (entry.id() == id)
            return entry;
    }
    return {};
}

void TestNss::removeAll()
{
    const auto entries = m_stores->currentEntries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries)
        QVERIFY(m_stores->remove(m_store, entry.id()));
    QVERIFY(m_stores->currentEntries(StoreName).isEmpty());
}

void TestNss::whole_data()
{
    QTest::addColumn<QString>("algorithm");
    QTest::newRow("RSA") << "2048";
    QTest::newRow("P-384") << "ec";
}

/// Key, request, certificate, signature, removal.
void TestNss::whole()
{
    QFETCH(QString, algorithm);
    Trivex::TokenMonitor monitor;
    QString problem;
    connect(
        &monitor, &Trivex::TokenMonitor::failed, &monitor, [&](const Trivex::TokenError &error) {
            problem = QStringLiteral("%1 0x%2").arg(error.function).arg(error.returnValue, 0, 16);
        });
    QCA::PrivateKey key = generate(algorithm);
    QVERIFY2(!key.isNull(), qPrintable(problem));
    QVERIFY(key.isPrivate() && !key.canExport());
    QCA::CertificateInfo subject;
    subject.insert(QCA::CommonName, QStringLiteral("Нина"));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(subject);
    const QCA::CertificateRequest request(options, key, QStringLiteral("qca-norvel-pkcs11"));
    QVERIFY(!request.isNull());
    const QString file = m_authority->file(QStringLiteral("request.csr"));
    QVERIFY(request.toPEMFile(file));
    const QByteArray issued = m_authority->issueForRequest(file);
    QVERIFY(!issued.isEmpty());
    const QString id =
        m_stores->write(m_store, QCA::Certificate::fromDER(issued, nullptr, OpenSsl));
    QVERIFY(!id.isEmpty());
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QVERIFY(!entry.isNull());
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCA::PrivateKey listed = entry.keyBundle().privateKey();
    const QByteArray data("data");
    const QByteArray signature = listed.signMessage(data, QCA::EMSA3_SHA256, QCA::DefaultFormat);
    QVERIFY(request.subjectPublicKey().verifyMessage(data, signature, QCA::EMSA3_SHA256,
                                                     QCA::DefaultFormat));
    removeAll();
    QVERIFY(Trivex::findTokenKey(m_store->id(), request.subjectPublicKey()).isNull());
}

void TestNss::bundle_data()
{
    QTest::addColumn<QStringList>("keyArguments");
    const QString algorithm = QStringLiteral("-algorithm");
    const QString option = QStringLiteral("-pkeyopt");
    QTest::newRow("RSA") << QStringList{algorithm, QStringLiteral("RSA"), option,
                                        QStringLiteral("rsa_keygen_bits:2048")};
    QTest::newRow("P-256") << QStringList{algorithm, QStringLiteral("EC"), option,
                                          QStringLiteral("ec_paramgen_curve:P-256")};
}

void TestNss::bundle()
{
    QFETCH(QStringList, keyArguments);
    const QString file = m_authority->bundle(keyArguments, QStringLiteral("/CN=Bundle"),
                                             QStringLiteral("x"), QStringLiteral("bundle"));
    const auto bundle = QCA::KeyBundle::fromFile(file, QCA::SecureArray("x"), nullptr, OpenSsl);
    QVERIFY(!bundle.isNull());
    const QString id = m_stores->write(m_store, bundle);
    QVERIFY(!id.isEmpty());
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QVERIFY(!entry.isNull());
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCOMPARE(entry.keyBundle().certificateChain().size(), 2);
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    const QByteArray data("data");
    const QByteArray signature = key.signMessage(data, QCA::EMSA3_SHA256, QCA::DefaultFormat);
    QVERIFY(
        key.toPublicKey().verifyMessage(data, signature, QCA::EMSA3_SHA256, QCA::DefaultFormat));
    removeAll();
}

/// This token makes no keys with the exponent 3, and is asked for the common one.
void TestNss::refusedExponent()
{
    Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    const QCA::PrivateKey key = generate(QStringLiteral("2048"), 3);
    QVERIFY(!key.isNull());
    QCOMPARE(Trivex::publicKeyOf(key).toRSA().e(), QCA::BigInteger(65537));
    QCOMPARE(failed.count(), 0);
}

void TestNss::wrongPin()
{
    // A module that is started anew is not logged in.
    QVERIFY(restart(m_directory.path(), "wrong"));
    const auto root = QCA::Certificate::fromDER(m_authority->certificate(), nullptr, OpenSsl);
    QCOMPARE(m_stores->write(m_store, root), QString());
    QCOMPARE(m_prompt->count(), 1);
    m_prompt->setPin(Pin);
    QVERIFY(!m_stores->write(m_store, root).isEmpty());
    removeAll();
}

Trivex::TokenError::Kind TestNss::administer(Trivex::TokenAdministration::Kind kind,
                                             const QByteArray &pin, const QByteArray &newPin)
{
    return TrivexTest::administer(m_store->id(), administration(kind, pin, newPin)).error.kind;
}

bool TestNss::needsPin(const QString &directory, const QByteArray &pin)
{
    if (!restart(directory, pin))
        return false;
    const auto root = QCA::Certificate::fromDER(m_authority->certificate(), nullptr, OpenSsl);
    return !m_stores->write(m_store, root).isEmpty() && m_prompt->count() == 1;
}

/// A new database, whose token has neither a user's PIN nor one of an administrator.
void TestNss::firstPin()
{
    using Trivex::PinState;
    using Trivex::TokenAdministration;
    const QTemporaryDir directory;
    QVERIFY(makeDatabase(directory.path(), {QStringLiteral("--empty-password")}));
    QVERIFY(forgetPassword(directory.path()));
    QVERIFY(restart(directory.path(), Pin));
    const Trivex::TokenStatus before = Trivex::TokenMonitor::token(m_store->id());
    QCOMPARE(before.pinState, PinState::NotSet);
    QVERIFY(before.pinMayBeEmpty);
    QCOMPARE(administer(TokenAdministration::SetPin, "no", Pin), Trivex::TokenError::WrongPin);
    QCOMPARE(administer(TokenAdministration::SetPin, "", Pin), Trivex::TokenError::NoError);
    QTRY_COMPARE(Trivex::TokenMonitor::token(m_store->id()).pinState, PinState::Normal);
    QVERIFY(needsPin(directory.path(), Pin));
    // From now on there is one, and an empty one is not even tried.
    QCOMPARE(administer(TokenAdministration::SetPin, "", "another"),
             Trivex::TokenError::PinMissing);
}

/// A database whose user chose to have no PIN.
void TestNss::pinForAnEmptyOne()
{
    using Trivex::TokenAdministration;
    const QTemporaryDir directory;
    QVERIFY(makeDatabase(directory.path(), {QStringLiteral("--empty-password")}));
    QVERIFY(restart(directory.path(), Pin));
    QVERIFY(!Trivex::TokenMonitor::token(m_store->id()).facts.needsLogin);
    QCOMPARE(administer(TokenAdministration::ChangePin, "", Pin), Trivex::TokenError::NoError);
    QVERIFY(needsPin(directory.path(), Pin));
}

void TestNss::keyLeaves_data()
{
    bundle_data();
}

/// What this token calls padding is another one than that of SoftHSM's mechanism of that number.
void TestNss::keyLeaves()
{
    QFETCH(QStringList, keyArguments);
    const QString file = m_authority->bundle(keyArguments, QStringLiteral("/CN=Leaves"),
                                             QStringLiteral("x"), QStringLiteral("leaves"));
    const QTemporaryDir directory;
    QVERIFY(makeDatabase(directory.path(),
                         {QStringLiteral("-f"), m_directory.filePath(QStringLiteral("pin"))}));
    if (QStandardPaths::findExecutable(QStringLiteral("pk12util")).isEmpty())
        QSKIP("SKIP pk12util is not installed");
    QCOMPARE(QProcess::execute(QStringLiteral("pk12util"),
                               {QStringLiteral("-i"), file, QStringLiteral("-d"),
                                QStringLiteral("sql:") + directory.path(), QStringLiteral("-k"),
                                m_directory.filePath(QStringLiteral("pin")), QStringLiteral("-W"),
                                QStringLiteral("x")}),
             0);
    QVERIFY(restart(directory.path(), Pin));
    const auto bundle = QCA::KeyBundle::fromFile(file, QCA::SecureArray("x"), nullptr, OpenSsl);
    const QByteArray publicInfo = Trivex::encodedPublicKey(bundle.privateKey());
    QVERIFY(!publicInfo.isEmpty());
    const Trivex::ExtractedKey key = extracted(m_store->id(), publicInfo);
    QCOMPARE(key.error.kind, Trivex::TokenError::NoError);
    QCOMPARE(Trivex::KeyMaterial::fromPrivateInfo(key.privateInfo).publicInfo(), publicInfo);
}

QTEST_GUILESS_MAIN(TestNss)
#include "tst_nss.moc"
