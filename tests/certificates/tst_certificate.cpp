// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"
#include "certificates/certificatetext.h"
#include "qca/base/providers.h"
#include "tests/certificates/certificatefactory.h"
#include "tests/support/marktranslator.h"

#include <QFile>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

#include <sys/stat.h>
#include <unistd.h>

using TrivexTest::CertificateFactory;

namespace {

/// Puts something at a path.
using Make = std::function<bool(const char *path)>;

} // namespace

Q_DECLARE_METATYPE(Make)

class TestCertificate : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void hexText_data();
    void hexText();
    void signatureText_data();
    void signatureText();
    void nullCertificateIsEmpty();
    void fields();
    void signedSerial();
    void severalValues();
    void addressFallsBackToLocality();
    void ellipticCurve();
    void root();
    void fileNameAndExport();
    void exportFails();
    void exportToNoFile_data();
    void exportToNoFile();
    void hostileNames();
    void namelessExport_data();
    void namelessExport();
    void loading();
    void hugeFile();
    void assignmentKeepsFileName();
    void overriddenGettersCount();
    void keyBundle();

private:
    const TrivexTest::MarkTranslator m_marks;
    QCA::Initializer m_qca;
    CertificateFactory m_factory;
};

void TestCertificate::initTestCase()
{
    QVERIFY2(m_factory.isValid(), "the openssl program is needed");
    Trivex::rankProviders();
    QVERIFY(QCA::findProvider(Trivex::opensslProviderName()));
}

void TestCertificate::hexText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *hex, const char *text) {
        QTest::newRow(name) << QByteArray::fromHex(hex) << QString::fromLatin1(text);
    };
    row("empty", "", "");
    row("plain", "014a0f", "01:4A:0F");
    row("single", "05", "5");
    row("single without zero", "15", "15");
    row("negative", "00c3", "00:-3D:");
    row("smallest", "80", "-80:");
    row("minus one is two characters wide", "ff", "-1");
    row("two short ones", "ffff", "-1:-1");
    row("zero", "00", "0");
}

void TestCertificate::hexText()
{
    QFETCH(QByteArray, bytes);
    QTEST(Trivex::hexText(bytes, QLatin1Char(':')), "text");
}

void TestCertificate::signatureText_data()
{
    QTest::addColumn<QString>("text");
    const char *const texts[] = {
        "tr:trivex-p-la-unknown_signing_alg",
        "SHA1, tr:trivex-p-la-with EMSA1",
        "SHA1, tr:trivex-p-la-with EMSA3",
        "MD5, tr:trivex-p-la-with EMSA3",
        "MD2, tr:trivex-p-la-with EMSA3",
        "RIPEMD160, tr:trivex-p-la-with EMSA3",
        "tr:trivex-p-la-without_dest",
        "SHA224, tr:trivex-p-la-with EMSA3",
        "SHA256, tr:trivex-p-la-with EMSA3",
        "SHA384, tr:trivex-p-la-with EMSA3",
        "SHA512, tr:trivex-p-la-with EMSA3",
        "ECDSA, tr:trivex-p-la-with SHA256",
        "ECDSA, tr:trivex-p-la-with SHA384",
        "GOST R 34.11-94, tr:trivex-p-la-with GOST R 34.10-2001",
        "GOST R 34.10-2012, tr:trivex-p-la-with GOST R 34.11-2012 (256 bit)",
        "GOST R 34.10-2012, tr:trivex-p-la-with GOST R 34.11-2012 (512 bit)",
        "tr:trivex-p-la-unknown_signing_alg",
    };
    for (int i = 0; i < 17; ++i)
        QTest::newRow(qPrintable(QString::number(i))) << QString::fromLatin1(texts[i]);
    QTest::newRow("-1") << QStringLiteral("tr:trivex-p-la-unknown_signing_alg");
    QTest::newRow("100000") << QStringLiteral("tr:trivex-p-la-unknown_signing_alg");
}

void TestCertificate::signatureText()
{
    const int number = QByteArray(QTest::currentDataTag()).toInt();
    QTEST(Trivex::signatureText(number), "text");
}

void TestCertificate::nullCertificateIsEmpty()
{
    Certificate certificate;
    certificate.setFileName(QStringLiteral("name"));
    const QMetaObject *meta = certificate.metaObject();
    QCOMPARE(meta->propertyCount() - meta->propertyOffset(), 30);
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const QVariant value = property.read(&certificate);
        if (qstrcmp(property.name(), "isNull") == 0)
            QCOMPARE(value, QVariant(true));
        else if (property.type() == QVariant::Bool)
            QCOMPARE(value, QVariant(false));
        else if (property.type() == QVariant::DateTime)
            QVERIFY(!value.toDateTime().isValid());
        else
            QVERIFY2(value.toString().isEmpty(), property.name());
    }
    QSignalSpy exported(&certificate, &Certificate::fileExported);
    QVERIFY(!certificate.exportToFile(QDir::tempPath()));
    QCOMPARE(exported.count(), 0);
    // The name was not kept for later either.
    certificate.setCertificate(m_factory.selfSigned(QStringLiteral("/CN=Later")));
    QCOMPARE(certificate.fileName(), QStringLiteral("Later.crt"));
}

void TestCertificate::fields()
{
    const auto wrapped = m_factory.selfSigned(
        QStringLiteral("/CN=Иванов/emailAddress=i@example.org/O=Ромашка/OU=Отдел/L=Омск"
                       "/ST=Омская область/C=RU/street=Ленина 1/1.2.643.3.131.1.1=123456789012"
                       "/1.2.643.100.1=1027700132195/1.2.643.100.3=11223344595"
                       "/INNLE=7707083893/1.2.643.100.5=304500116000157"
                       "/IdKind=0"),
        {QStringLiteral("-set_serial"), QStringLiteral("0x014A0F"), QStringLiteral("-sha256")});
    QVERIFY(!wrapped.isNull());
    const Certificate certificate(wrapped);
    const auto value = [&](const char *name) { return certificate.property(name).toString(); };
    QCOMPARE(value("commonName"), QStringLiteral("Иванов"));
    QCOMPARE(value("subjectName"), QStringLiteral("Иванов"));
    QCOMPARE(value("issuer"), QStringLiteral("Иванов"));
    QCOMPARE(value("serialNumber"), QStringLiteral("01:4A:0F"));
    QCOMPARE(value("subjectEmail"), QStringLiteral("i@example.org"));
    QCOMPARE(value("subjectOrganization"), QStringLiteral("Ромашка"));
    QCOMPARE(value("publicKeyMarker"), QStringLiteral("Ромашка"));
    QCOMPARE(value("subjectOrganizationalUnit"), QStringLiteral("Отдел"));
    QCOMPARE(value("subjectLocality"), QStringLiteral("Омск"));
    QCOMPARE(value("subjectCountry"), QStringLiteral("Омская область"));
    QCOMPARE(value("subjectCountryCode"), QStringLiteral("RU"));
    QCOMPARE(value("subjecAddress"), QStringLiteral("Ленина 1"));
    QCOMPARE(value("subjectInn"), QStringLiteral("123456789012"));
    QCOMPARE(value("subjectOgrn"), QStringLiteral("1027700132195"));
    QCOMPARE(value("subjectSnils"), QStringLiteral("11223344595"));
    QCOMPARE(value("subjectInnle"), QStringLiteral("7707083893"));
    QCOMPARE(value("subjectOgrnip"), QStringLiteral("304500116000157"));
    QCOMPARE(value("subjectIdentificationKind"), QStringLiteral("0"));
    QCOMPARE(value("signatureType"), QStringLiteral("Not qualified"));
    QCOMPARE(value("signatureAlgorithm"), QStringLiteral("SHA256, tr:trivex-p-la-with EMSA3"));
    QCOMPARE(value("publicKeyTypeAlgorithm"), QStringLiteral("RSA"));
    QCOMPARE(value("publicKeyId"), Trivex::hexText(wrapped.subjectKeyId(), QLatin1Char(':')));
    QVERIFY(!value("publicKeyId").isEmpty());
    QCOMPARE(value("privateKeyAvailability"),
             QStringLiteral("tr:trivex-p-la-private_not_available"));
    QVERIFY(value("privateKeyLocation").isEmpty());
    QVERIFY(value("privateKeyManufacturer").isEmpty());
    QVERIFY(certificate.notValidBefore() < certificate.notValidAfter());
    QVERIFY(!certificate.isNull());
}

void TestCertificate::signedSerial()
{
    // 0xC3 takes a leading zero byte, because a serial number is signed.
    const Certificate certificate(m_factory.selfSigned(
        QStringLiteral("/CN=A"), {QStringLiteral("-set_serial"), QStringLiteral("0xC3")}));
    QCOMPARE(certificate.serialNumber(), QStringLiteral("00:-3D:"));
}

void TestCertificate::severalValues()
{
    const Certificate certificate(
        m_factory.selfSigned(QStringLiteral("/CN=A/O=First/O=Second/L=Here/L=There")));
    QStringList organizations = {QStringLiteral("First"), QStringLiteral("Second")};
    QVERIFY(organizations.removeOne(certificate.subjectOrganization())); // one, not both
    QCOMPARE(certificate.publicKeyMarker(), certificate.subjectOrganization());
    const QStringList places = {QStringLiteral("Here"), QStringLiteral("There")};
    QVERIFY(places.contains(certificate.subjectLocality()));
    QCOMPARE(certificate.subjecAddress(), certificate.subjectLocality());
}

void TestCertificate::addressFallsBackToLocality()
{
    const Certificate certificate(m_factory.selfSigned(QStringLiteral("/CN=A/L=Тверь")));
    QCOMPARE(certificate.subjecAddress(), QStringLiteral("Тверь"));
}

void TestCertificate::ellipticCurve()
{
    const Certificate certificate(
        m_factory.selfSigned(QStringLiteral("/CN=EC"), {}, QStringLiteral("ec")));
    QCOMPARE(certificate.publicKeyTypeAlgorithm(), QStringLiteral("Elliptic Curve"));
    const Certificate edwards(
        m_factory.selfSigned(QStringLiteral("/CN=Ed"), {}, QStringLiteral("ed25519")));
    QCOMPARE(edwards.publicKeyTypeAlgorithm(), QStringLiteral("ED25519"));
    QCOMPARE(edwards.signatureAlgorithm(), QStringLiteral("tr:trivex-p-la-unknown_signing_alg"));
}

void TestCertificate::root()
{
    QVERIFY(Certificate(m_factory.selfSigned(QStringLiteral("/CN=Root"))).isRoot());
    const Certificate namesake(m_factory.issuedByNamesake(QStringLiteral("/CN=Root")));
    QCOMPARE(namesake.commonName(), namesake.issuer());
    QVERIFY(!namesake.isRoot());
    const Certificate nameless(m_factory.selfSigned(QStringLiteral("/O=No name")));
    QVERIFY(!nameless.isNull());
    QVERIFY(!nameless.isRoot());
}

void TestCertificate::fileNameAndExport()
{
    QTemporaryDir directory;
    Certificate certificate(m_factory.selfSigned(
        QStringLiteral("/CN=Ivanov"), {QStringLiteral("-set_serial"), QStringLiteral("5")}));
    QCOMPARE(certificate.serialNumber(), QStringLiteral("5"));
    QCOMPARE(certificate.fileName(), QStringLiteral("Ivanov.crt"));
    QSignalSpy exported(&certificate, &Certificate::fileExported);
    QVERIFY(certificate.exportToFile(directory.path()));
    QCOMPARE(exported.count(), 1);
    const QString path = directory.filePath(QStringLiteral("Ivanov.crt"));
    QCOMPARE(QCA::Certificate::fromPEMFile(path), certificate.certificate());
    certificate.setFileName(QStringLiteral("other.pem"));
    QCOMPARE(certificate.fileName(), QStringLiteral("other.pem"));
}

void TestCertificate::exportFails()
{
    Certificate certificate(m_factory.selfSigned(QStringLiteral("/CN=A")));
    QSignalSpy exported(&certificate, &Certificate::fileExported);
    QTest::ignoreMessage(QtWarningMsg, "File:  \"/nowhere/at/all/A.crt\"  not exported!");
    QVERIFY(!certificate.exportToFile(QStringLiteral("/nowhere/at/all")));
    QCOMPARE(exported.count(), 0);
}

void TestCertificate::exportToNoFile_data()
{
    QTest::addColumn<Make>("make");
    QTest::newRow("pipe") << Make([](const char *path) { return mkfifo(path, 0600) == 0; });
    QTest::newRow("no room") << Make(
        [](const char *path) { return symlink("/dev/full", path) == 0; });
    QTest::newRow("directory") << Make([](const char *path) { return mkdir(path, 0700) == 0; });
    QTest::newRow("loop") << Make([](const char *path) { return symlink(path, path) == 0; });
}

void TestCertificate::exportToNoFile()
{
    QFETCH(Make, make);
    QTemporaryDir directory;
    Certificate certificate(m_factory.selfSigned(QStringLiteral("/CN=A")));
    QSignalSpy exported(&certificate, &Certificate::fileExported);
    QVERIFY(make(QFile::encodeName(directory.filePath(certificate.fileName())).constData()));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("A.crt\"  not exported!")));
    QVERIFY(!certificate.exportToFile(directory.path()));
    QCOMPARE(exported.count(), 0);
}

void TestCertificate::hostileNames()
{
    QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir(QStringLiteral("in")));
    Certificate certificate(m_factory.selfSigned(QStringLiteral("/CN=..\\/..\\/evil")));
    QCOMPARE(certificate.commonName(), QStringLiteral("../../evil"));
    QVERIFY(!certificate.fileName().contains(QLatin1Char('/')));
    QVERIFY(certificate.exportToFile(directory.filePath(QStringLiteral("in"))));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList());
    certificate.setFileName(QStringLiteral("../up.crt"));
    QVERIFY(certificate.exportToFile(directory.filePath(QStringLiteral("in"))));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList());
    QCOMPARE(QDir(directory.filePath(QStringLiteral("in"))).entryList(QDir::Files).size(), 2);
}

void TestCertificate::namelessExport_data()
{
    QTest::addColumn<QString>("subject");
    QTest::newRow("without a common name") << QStringLiteral("/O=Nameless");
    QTest::newRow("of blanks") << QStringLiteral("/O=Nameless/CN=  ");
    QTest::newRow("no subject at all") << QStringLiteral("/");
}

void TestCertificate::namelessExport()
{
    QFETCH(QString, subject);
    QTemporaryDir directory;
    Certificate certificate(m_factory.selfSigned(subject));
    QVERIFY(!certificate.isNull());
    QCOMPARE(certificate.fileName(), QStringLiteral("certificate.crt"));
    QVERIFY(certificate.exportToFile(directory.path()));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList(QStringLiteral("certificate.crt")));
}

void TestCertificate::loading()
{
    Certificate certificate;
    QVERIFY(!certificate.loadFromFile(QStringLiteral("/nowhere")));
    QVERIFY(certificate.isNull());
    const QString path = m_factory.authority().certificateFile();
    QVERIFY(certificate.loadFromFile(path));
    QCOMPARE(certificate.fileName(), QFileInfo(path).fileName());
    QVERIFY(!certificate.loadFromFile(path)); // the same again
    const QString broken = m_factory.file(QStringLiteral("broken.pem"));
    QFile file(broken);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("-----BEGIN CERTIFICATE-----\nAAAA\n-----END CERTIFICATE-----\n");
    file.close();
    QVERIFY(!certificate.loadFromFile(broken));
    QVERIFY(!certificate.isNull());
    QVERIFY(!Certificate(path).isNull());
}

void TestCertificate::hugeFile()
{
    QFile file(m_factory.file(QStringLiteral("huge.pem")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QFile good(m_factory.authority().certificateFile());
    QVERIFY(good.open(QIODevice::ReadOnly));
    file.write(good.readAll());
    Certificate certificate;
    // Sparse, so that it takes no room.
    QVERIFY(file.resize(16 * 1024 * 1024));
    QVERIFY(certificate.loadFromFile(file.fileName()));
    certificate.setCertificate(QCA::Certificate());
    for (const qint64 size : {qint64(16 * 1024 * 1024 + 1), qint64(3) << 29, qint64(5) << 30}) {
        QVERIFY(file.resize(size));
        QVERIFY(!certificate.loadFromFile(file.fileName()));
        QVERIFY(certificate.isNull());
    }
}

void TestCertificate::assignmentKeepsFileName()
{
    Certificate one(m_factory.selfSigned(QStringLiteral("/CN=One")));
    one.setFileName(QStringLiteral("one.pem"));
    const Certificate two(m_factory.selfSigned(QStringLiteral("/CN=Two")));
    one = two;
    QCOMPARE(one.commonName(), QStringLiteral("Two"));
    QCOMPARE(one.fileName(), QStringLiteral("one.pem"));
}

void TestCertificate::overriddenGettersCount()
{
    class Renamed : public Certificate {
    public:
        using Certificate::Certificate;
        QString commonName() const override { return QStringLiteral("other"); }
        QString subjectLocality() const override { return QStringLiteral("elsewhere"); }
    };
    Renamed certificate(m_factory.selfSigned(QStringLiteral("/CN=Root/L=Here")));
    QCOMPARE(certificate.fileName(), QStringLiteral("other.crt"));
    QCOMPARE(certificate.subjecAddress(), QStringLiteral("elsewhere"));
    QVERIFY(!certificate.isRoot());
    const QTemporaryDir directory;
    QVERIFY(certificate.exportToFile(directory.path()));
    QVERIFY(QFile::exists(directory.filePath(QStringLiteral("other.crt"))));
}

void TestCertificate::keyBundle()
{
    const QCA::KeyBundle bundle = m_factory.bundle(QStringLiteral("/CN=Key/O=Maker"));
    QVERIFY(!bundle.isNull());
    const Certificate certificate(bundle.certificateChain().first(), bundle);
    QCOMPARE(certificate.privateKeyAvailability(),
             QStringLiteral("tr:trivex-p-la-private_available"));
    QCOMPARE(certificate.privateKeyLocation(), QStringLiteral("tr:trivex-me-softhsm"));
    QCOMPARE(certificate.privateKeyManufacturer(), QStringLiteral("Maker"));
}

QTEST_GUILESS_MAIN(TestCertificate)
#include "tst_certificate.moc"
