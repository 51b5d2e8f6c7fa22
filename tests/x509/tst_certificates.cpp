// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"
#include "qca/keys/gostengine.h"
#include "qca/keys/keys.h"
#include "qca/x509/certificatedata.h"
#include "qca/x509/certificateinfo.h"
#include "qca/x509/infotypes.h"
#include "qca/x509/makecertificate.h"
#include "tests/x509/corpus.h"
#include "tests/x509/expectedproperties.h"
#include "tests/x509/opensslcertificate.h"
#include "tests/x509/opensslview.h"

#include <QtTest>

using namespace Trivex;

class TestCertificates : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void agreesWithOpenssl_data();
    void agreesWithOpenssl();
    void decodesStrings_data();
    void decodesStrings();
    void knowsIdentifiers();
    void readsSerials_data();
    void readsSerials();
    void readsDates_data();
    void readsDates();
    void readsExtensions();
    void numbersSignatures_data();
    void numbersSignatures();
    void refusesNothingThatOpensslShows();
    void servesCrashers();
    void validates();
    void makesSelfSigned();
    void reencodes();
    void emptyContext();

private:
    QCA::Initializer m_initializer;
};

void TestCertificates::initTestCase()
{
    if (QProcess::execute(QStringLiteral("openssl"), {QStringLiteral("version")}) != 0)
        QSKIP("no openssl command");
    QVERIFY(QCA::findProvider(opensslProviderName()));
    QCOMPARE(QCA::Certificate().isNull(), true);
    QCOMPARE(Corpus::certificate(QStringLiteral("serial-one.der")).provider()->name(),
             opensslProviderName());
}

void TestCertificates::agreesWithOpenssl_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("signer");
    QTest::addColumn<int>("keyType");
    const auto certificates = Corpus::certificates();
    QVERIFY(certificates.size() > 80);
    for (const auto &entry : certificates)
        QTest::newRow(qPrintable(entry.file)) << entry.file << entry.signer << entry.keyType;
}

void TestCertificates::agreesWithOpenssl()
{
    QFETCH(QString, file);
    QFETCH(QString, signer);
    QFETCH(int, keyType);
    const QByteArray der = Corpus::read(file);
    const QCA::Certificate certificate = QCA::Certificate::fromDER(der);
    QVERIFY(!certificate.isNull());
    QCOMPARE(certificate.toDER(), der);
    QCOMPARE(Trivex::keyType(certificate.subjectPublicKey()), keyType);
    QCOMPARE(certificate.isSelfSigned(),
             signer == QLatin1String("self")
                 || (signer == QLatin1String("engine") && loadGostEngine()));
    OpensslCertificate expected;
    if (!readWithOpenssl(Corpus::path(file), &expected)) {
        // The few that libcrypto can't read at all are ours alone; see the tests by field.
        QVERIFY(isUnprintable(file) || hasShortTimes(file));
        return;
    }
    compareNames(certificate, expected, file);
    compareDates(certificate, expected);
    compareKeys(certificate, expected, file);
    compareExtensions(certificate, expected);
}

void TestCertificates::decodesStrings_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QString &expected) {
        QTest::newRow(name) << QStringLiteral("string-%1.der").arg(QLatin1String(name)) << expected;
    };
    row("utf8", QStringLiteral("Иванов Пётр €"));
    row("printable", QStringLiteral("Ivanov"));
    row("ia5", QStringLiteral("ivanov@example"));
    row("numeric", QStringLiteral("1234567890"));
    row("visible", QStringLiteral("Visible ~ text"));
    row("bmp", QStringLiteral("Иванов 日本"));
    row("bmp-surrogates", QStringLiteral("𝄞 clef"));
    row("universal", QStringLiteral("Иванов 𝄞"));
    row("t61", QStringLiteral("Müller Ärger"));
    row("t61-utf8", QStringLiteral("Кириллица в T61"));
    row("empty", QString());
    row("nul", QString::fromLatin1("good.example\0.evil.example", 26));
    row("bad-utf8", QString::fromUtf8("broken \xff\xfe utf8"));
    row("bmp-odd", QStringLiteral("П"));
    row("universal-bad", QStringLiteral("\uFFFD\uFFFDA"));
}

void TestCertificates::decodesStrings()
{
    QFETCH(QString, file);
    QFETCH(QString, expected);
    const QCA::Certificate certificate = Corpus::certificate(file);
    QVERIFY(!certificate.isNull());
    QCOMPARE(certificate.commonName(), expected);
    QCOMPARE(certificate.subjectInfo().value(infoType(CommonNameInfo)), expected);
    QCOMPARE(makeCertificate(certificate.toDER()).commonName(), expected);
}

void TestCertificates::knowsIdentifiers()
{
    const QCA::Certificate certificate = Corpus::certificate(QStringLiteral("identifiers.der"));
    const QCA::CertificateInfo subject = certificate.subjectInfo();
    QCOMPARE(subject.size(), 17);
    QCOMPARE(infoValue(subject, InnInfo), QStringLiteral("123456789012"));
    QCOMPARE(infoValue(subject, OgrnInfo), QStringLiteral("1234567890123"));
    QCOMPARE(infoValue(subject, SnilsInfo), QStringLiteral("12345678901"));
    QCOMPARE(infoValue(subject, InnleInfo), QStringLiteral("1234567890"));
    QCOMPARE(infoValue(subject, OgrnipInfo), QStringLiteral("123456789012345"));
    QCOMPARE(infoValue(subject, IdentificationKindInfo), QStringLiteral("0"));
    QCOMPARE(infoValue(subject, StateInfo), QStringLiteral("г. Москва"));
    QCOMPARE(infoValue(subject, CountryInfo), QStringLiteral("RU"));
    QCOMPARE(infoValue(subject, EmailInfo), QStringLiteral("petrov@example.ru"));
    const QCA::CertificateInfoType title(QStringLiteral("2.5.4.12"), QCA::CertificateInfoType::DN);
    QCOMPARE(subject.value(title), QStringLiteral("Директор"));
}

void TestCertificates::readsSerials_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const QByteArray &hex) {
        QTest::newRow(name) << QStringLiteral("serial-%1.der").arg(QLatin1String(name))
                            << QByteArray::fromHex(hex);
    };
    row("one", "05");
    row("zero", "00");
    row("eight", "1122334455667788");
    row("sixteen", "7f112233445566778899aabbccddeeff");
    row("twenty", "00c3112233445566778899aabbccddeeff00112233");
    row("top-bit", "00c3");
    row("negative", "c3");
    row("forty", QByteArray(80, '7'));
}

void TestCertificates::readsSerials()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, expected);
    QCOMPARE(Corpus::certificate(file).serialNumber().toArray().toByteArray(), expected);
}

void TestCertificates::readsDates_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const auto row = [](const char *name, const char *before, const char *after) {
        QTest::newRow(name) << QStringLiteral("date-%1.der").arg(QLatin1String(name))
                            << QString::fromLatin1(before) << QString::fromLatin1(after);
    };
    row("1950", "1950-01-01T00:00:00Z", "2049-12-31T23:59:59Z");
    row("1900", "1900-01-01T00:00:00Z", "1949-12-31T23:59:59Z");
    row("2050", "2020-01-01T00:00:00Z", "2050-01-01T00:00:00Z");
    row("9999", "2050-01-02T03:04:05Z", "9999-12-31T23:59:59Z");
    row("no-seconds", "2020-01-02T03:04:00Z", "2050-01-02T03:04:00Z");
    row("fraction", "2020-01-02T03:04:05Z", "2050-01-02T03:04:05Z");
    row("offset", "2020-01-02T00:04:05Z", "2050-01-02T04:34:05Z");
    row("1969", "1969-12-31T23:59:59Z", "2049-12-31T23:59:59Z");
    row("leap", "2000-02-29T12:00:00Z", "2400-02-29T12:00:00Z");
    row("no-year", "", "");
    row("broken", "", "");
}

void TestCertificates::readsDates()
{
    QFETCH(QString, name);
    QFETCH(QString, before);
    QFETCH(QString, after);
    const QCA::Certificate certificate = Corpus::certificate(name);
    QCOMPARE(certificate.notValidBefore().toString(Qt::ISODate), before);
    QCOMPARE(certificate.notValidAfter().toString(Qt::ISODate), after);
}

void TestCertificates::readsExtensions()
{
    const QCA::Certificate certificate = Corpus::certificate(QStringLiteral("extensions.der"));
    QVERIFY(certificate.isCA());
    QCOMPARE(certificate.pathLimit(), 3);
    const QCA::Constraints constraints = certificate.constraints();
    QCOMPARE(constraints.size(), 9);
    for (const auto known :
         {QCA::DigitalSignature, QCA::NonRepudiation, QCA::KeyCertificateSign, QCA::CRLSign,
          QCA::DecipherOnly, QCA::ServerAuth, QCA::ClientAuth, QCA::EmailProtection})
        QVERIFY(constraints.contains(QCA::ConstraintType(known)));
    QCOMPARE(constraints.last().id(), QStringLiteral("1.2.643.2.2.34.6"));
    const QCA::CertificateInfo subject = certificate.subjectInfo();
    QCOMPARE(subject.value(QCA::Email), QStringLiteral("mail@example.org"));
    QCOMPARE(subject.value(QCA::DNS), QStringLiteral("example.org"));
    QCOMPARE(subject.value(QCA::URI), QStringLiteral("https://example.org/"));
    QCOMPARE(subject.value(QCA::XMPP), QStringLiteral("romeo@example.org"));
    QStringList addresses = subject.values(QCA::IPAddress);
    addresses.sort();
    QCOMPARE(addresses, QStringList({QStringLiteral("192.0.2.1"), QStringLiteral("2001:db8::1")}));
    QCOMPARE(certificate.policies(),
             QStringList({QStringLiteral("1.2.643.100.113.1"), QStringLiteral("2.5.29.32.0")}));
    QCOMPARE(certificate.crlLocations(),
             QStringList({QStringLiteral("http://example.org/a.crl"),
                          QStringLiteral("http://example.org/b.crl")}));
    QCOMPARE(certificate.issuerLocations(),
             QStringList(QStringLiteral("http://example.org/ca.crt")));
    QCOMPARE(certificate.ocspLocations(), QStringList(QStringLiteral("http://example.org/ocsp")));
}

void TestCertificates::numbersSignatures_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("number");
    QTest::newRow("rsa") << QStringLiteral("identifiers.der") << int(QCA::EMSA3_SHA256);
    QTest::newRow("p256") << QStringLiteral("ec-256.der") << int(EcdsaSha256Signature);
    QTest::newRow("p384") << QStringLiteral("ec-384.der") << int(EcdsaSha384Signature);
    QTest::newRow("p521") << QStringLiteral("ec-521.der") << int(UnknownSignature);
    QTest::newRow("refused") << QStringLiteral("signature-refused.der")
                             << int(EcdsaSha256Signature);
    QTest::newRow("ed25519") << QStringLiteral("ed25519.der") << int(UnknownSignature);
    QTest::newRow("pss") << QStringLiteral("rsa-pss.der") << int(UnknownSignature);
    if (Corpus::hasGost()) {
        QTest::newRow("gost2001") << QStringLiteral("gost-2001.der") << int(Gost2001Signature);
        QTest::newRow("gost256") << QStringLiteral("gost-2012-256.der")
                                 << int(Gost2012Signature256);
        QTest::newRow("gost512") << QStringLiteral("gost-2012-512.der")
                                 << int(Gost2012Signature512);
    }
}

void TestCertificates::numbersSignatures()
{
    QFETCH(QString, file);
    QFETCH(int, number);
    const QCA::Certificate certificate = Corpus::certificate(file);
    QVERIFY(int(certificate.signatureAlgorithm()) <= int(QCA::EMSA3_SHA512));
    QCOMPARE(signatureAlgorithm(certificate), number);
}

void TestCertificates::refusesNothingThatOpensslShows()
{
    // The system's own roots, which nobody here has made.
    const QList<QCA::Certificate> roots = QCA::systemStore().certificates();
    if (roots.isEmpty())
        QSKIP("no system certificates");
    for (const QCA::Certificate &root : roots) {
        QCOMPARE(root.provider()->name(), opensslProviderName());
        QVERIFY(root.isCA());
        QVERIFY2(root.isSelfSigned(), qPrintable(root.commonName()));
        QVERIFY(root.notValidAfter().isValid());
    }
}

void TestCertificates::servesCrashers()
{
    const QCA::Certificate constraints = Corpus::certificate(QStringLiteral("crashers/badbc.pem"));
    QVERIFY(!constraints.isNull());
    QVERIFY(!constraints.isCA());
    QCOMPARE(constraints.commonName(), QStringLiteral("Тест"));
    QVERIFY(!Corpus::certificate(QStringLiteral("crashers/cert-bad-aki.der")).isNull());
    const QCA::Certificate late =
        Corpus::certificate(QStringLiteral("crashers/cert-expires-2059.der"));
    QCOMPARE(late.notValidAfter().date(), QDate(2059, 9, 29));
    // None of them brings down what works on native objects.
    for (const QCA::Certificate &certificate : {constraints, late}) {
        certificate.isIssuerOf(constraints);
        QCA::CertificateCollection trusted;
        trusted.addCertificate(certificate);
        constraints.validate(trusted, QCA::CertificateCollection());
    }
}

void TestCertificates::validates()
{
    const QCA::Certificate root = Corpus::certificate(QStringLiteral("extensions.der"));
    const QCA::Certificate leaf = Corpus::certificate(QStringLiteral("issued.der"));
    const QCA::Certificate other = Corpus::certificate(QStringLiteral("ec-384.der"));
    QVERIFY(root.isIssuerOf(leaf));
    QVERIFY(!leaf.isIssuerOf(root));
    QVERIFY(!other.isIssuerOf(leaf));
    QCA::CertificateCollection trusted;
    trusted.addCertificate(root);
    const QCA::CertificateCollection none;
    QCOMPARE(int(leaf.validate(trusted, none)), int(QCA::ValidityGood));
    QCOMPARE(int(QCA::CertificateChain(leaf).validate(none)), int(QCA::ErrorUntrusted));
    QCOMPARE(int(other.validate(trusted, none)), int(QCA::ErrorSelfSigned));
    QCA::CertificateCollection lists;
    lists.addCRL(QCA::CRL::fromPEM(QString::fromLatin1(Corpus::read(QStringLiteral("list.pem")))));
    QCOMPARE(int(leaf.validate(trusted, lists)), int(QCA::ErrorRevoked));
    QCA::CertificateChain chain;
    chain << leaf << root;
    QCOMPARE(int(chain.validate(trusted)), int(QCA::ValidityGood));
    // A certificate that names itself as its issuer, but is signed by somebody else.
    const QCA::Certificate foreign = Corpus::certificate(QStringLiteral("name-foreign-signer.der"));
    QVERIFY(!foreign.isSelfSigned());
    QVERIFY(!foreign.isIssuerOf(foreign));
}

void TestCertificates::makesSelfSigned()
{
    QCA::KeyGenerator generator;
    const QCA::PrivateKey key = generator.createRSA(2048, 65537, opensslProviderName());
    QCA::CertificateOptions options;
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, QStringLiteral("Своё имя"));
    info.insert(QCA::Country, QStringLiteral("RU"));
    info.insert(infoType(OgrnInfo), QStringLiteral("1234567890123"));
    options.setInfo(info);
    options.setSerialNumber(QCA::BigInteger(200));
    options.setValidityPeriod(QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5), Qt::UTC),
                              QDateTime(QDate(2060, 1, 2), QTime(3, 4, 5), Qt::UTC));
    options.setAsCA(2);
    const QCA::Certificate certificate(options, key, opensslProviderName());
    QVERIFY(!certificate.isNull());
    QVERIFY(certificate.isSelfSigned());
    QVERIFY(certificate.isCA());
    QCOMPARE(certificate.commonName(), QStringLiteral("Своё имя"));
    QCOMPARE(infoValue(certificate.subjectInfo(), OgrnInfo), QStringLiteral("1234567890123"));
    QCOMPARE(certificate.notValidAfter().date(), QDate(2060, 1, 2));
    const QByteArray shown =
        Corpus::openssl({QStringLiteral("x509"), QStringLiteral("-noout"), QStringLiteral("-text")},
                        certificate.toPEM().toLatin1());
    QVERIFY(shown.contains("CA:TRUE, pathlen:2"));
    QVERIFY(shown.contains("Jan  2 03:04:05 2060 GMT"));
    QVERIFY(QCA::Certificate(options, QCA::PrivateKey(Corpus::path(QStringLiteral("dh.key"))),
                             opensslProviderName())
                .isNull());
}

void TestCertificates::reencodes()
{
    const QCA::Certificate certificate = Corpus::certificate(QStringLiteral("identifiers.der"));
    QCA::ConvertResult result = QCA::ErrorDecode;
    QCOMPARE(QCA::Certificate::fromPEM(certificate.toPEM(), &result), certificate);
    QCOMPARE(result, QCA::ConvertGood);
    // Bytes behind the certificate are not part of it.
    const QByteArray der = certificate.toDER();
    QCOMPARE(QCA::Certificate::fromDER(der + "tail").toDER(), der);
    QVERIFY(QCA::Certificate::fromDER(QByteArray(), &result).isNull());
    QCOMPARE(result, QCA::ErrorDecode);
}

void TestCertificates::emptyContext()
{
    QVERIFY(makeCertificate(QByteArray()).isNull());
    QVERIFY(makeCertificate("no certificate").isNull());
    QVERIFY(!CertificateData::fromDer(QByteArray(4, '\x30')));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestCertificates test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_certificates.moc"
