// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
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

private:
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
    const QString database = QStringLiteral("sql:") + m_directory.path();
    QCOMPARE(QProcess::execute(QStringLiteral("certutil"),
                               {QStringLiteral("-N"), QStringLiteral("-d"), database,
                                QStringLiteral("-f"), pinFile}),
             0);
    const QString modules =
        QStringLiteral("%1|configdir='%2' certPrefix='' keyPrefix='' secmod='secmod.db' flags=")
            .arg(SoftToken, database);
    qputenv("TRIVEX_PKCS11_MODULES", modules.toUtf8());
    m_authority = std::make_unique<TestAuthority>();
    m_qca = std::make_unique<QCA::Initializer>();
    m_prompt = std::make_unique<PinPrompt>(Pin);
    m_stores = std::make_unique<Stores>();
    m_store = m_stores->waitFor(StoreName);
    QVERIFY2(m_store, qPrintable(m_stores->names().join(QLatin1Char(' '))));
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).loading);
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
    m_stores.reset();
    m_qca.reset();
    m_prompt.reset();
    m_qca = std::make_unique<QCA::Initializer>();
    m_prompt = std::make_unique<PinPrompt>("wrong");
    m_stores = std::make_unique<Stores>();
    m_store = m_stores->waitFor(StoreName);
    QVERIFY(m_store);
    const auto root = QCA::Certificate::fromDER(m_authority->certificate(), nullptr, OpenSsl);
    QCOMPARE(m_stores->write(m_store, root), QString());
    QCOMPARE(m_prompt->count(), 1);
    m_prompt->setPin(Pin);
    QVERIFY(!m_stores->write(m_store, root).isEmpty());
    removeAll();
}

QTEST_GUILESS_MAIN(TestNss)
#include "tst_nss.moc"
