// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "qca/x509/infotypes.h"
#include "qca/x509/requestcontext.h"
#include "tests/x509/corpus.h"
#include "tests/x509/requestsubject.h"

#include <QtTest>

using namespace Trivex;
using TrivexTest::requestSubject;

class TestRequests : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void reads();
    void readsWhatStockDecoded();
    void creates_data();
    void creates();
    void writesStringTypes();
    void writesRussianStringTypes_data();
    void writesRussianStringTypes();
    void refusesKeysThatCantSign();
    void servesSpkac();
    void signsWithForeignKeys();

private:
    QCA::Initializer m_initializer;
};

namespace {

QCA::CertificateOptions options()
{
    QCA::CertificateOptions options(QCA::PKCS10);
    QCA::CertificateInfoOrdered info;
    const auto add = [&info](const QCA::CertificateInfoType &type, const QString &value) {
        info.append(QCA::CertificateInfoPair(type, value));
    };
    add(infoType(CommonNameInfo), QStringLiteral("Пётр Петров"));
    add(infoType(OrganizationInfo), QStringLiteral("ООО «Ромашка»"));
    add(infoType(CountryInfo), QStringLiteral("RU"));
    add(infoType(EmailLegacyInfo), QStringLiteral("petrov@example.ru"));
    add(infoType(InnleInfo), QStringLiteral("1234567890"));
    add(infoType(IdentificationKindInfo), QStringLiteral("0"));
    add(infoType(LocalityInfo), QString());
    options.setInfoOrdered(info);
    options.setConstraints({QCA::DigitalSignature, QCA::KeyEncipherment, QCA::ClientAuth});
    options.setChallenge(QStringLiteral("вызов"));
    return options;
}

QCA::PrivateKey key(const QString &file, const QString &provider = opensslProviderName())
{
    return QCA::PrivateKey::fromPEM(QString::fromLatin1(Corpus::read(file)), {}, nullptr, provider);
}

} // namespace

void TestRequests::reads()
{
    const QCA::CertificateRequest request = QCA::CertificateRequest::fromPEM(
        QString::fromLatin1(Corpus::read(QStringLiteral("request-rsa.csr"))));
    QCOMPARE(request.provider()->name(), opensslProviderName());
    QCOMPARE(infoValue(requestSubject(request), CommonNameInfo), QStringLiteral("Заявка"));
    QCOMPARE(infoValue(requestSubject(request), OgrnInfo), QStringLiteral("1234567890123"));
    QCOMPARE(request.constraints().size(), 1);
    QVERIFY(
        isSamePublicKey(requestPublicKey(request), key(QStringLiteral("rsa.key")).toPublicKey()));
    const QCA::CertificateRequest curve = QCA::CertificateRequest::fromPEM(
        QString::fromLatin1(Corpus::read(QStringLiteral("request-ec.csr"))));
    QCOMPARE(keyType(requestPublicKey(curve)), int(EllipticCurveKey));
    QCOMPARE(request.signatureAlgorithm(), QCA::EMSA3_SHA256);
    // QCA has no name for those of curves.
    QCOMPARE(curve.signatureAlgorithm(), QCA::SignatureUnknown);
    QCOMPARE(keyType(requestPublicKey(QCA::CertificateRequest::fromPEM(
                 QString::fromLatin1(Corpus::read(QStringLiteral("request-ed25519.csr")))))),
             int(OtherKey));
    QVERIFY(QCA::CertificateRequest::fromDER("nothing").isNull());
    QCOMPARE(QCA::CertificateRequest::fromDER(request.toDER()), request);
}

void TestRequests::readsWhatStockDecoded()
{
    const QString stock = QStringLiteral("qca-ossl");
    if (!QCA::isSupported("csr", stock))
        QSKIP("no stock provider");
    const auto read = [](const char *file, const QString &provider) {
        return QCA::CertificateRequest::fromPEM(
            QString::fromLatin1(Corpus::read(QString::fromLatin1(file))), nullptr, provider);
    };
    for (const char *file : {"request-rsa.csr", "request-ec.csr", "request-ed25519.csr"}) {
        const QCA::CertificateRequest foreign = read(file, stock);
        const QCA::CertificateRequest own = read(file, opensslProviderName());
        QCOMPARE(foreign.provider()->name(), stock);
        QCOMPARE(requestSubject(foreign), requestSubject(own));
        QCOMPARE(keyType(requestPublicKey(foreign)), keyType(requestPublicKey(own)));
        QVERIFY(keyType(requestPublicKey(own)) != UnknownKey);
        QCOMPARE(ownRequest(foreign), own);
    }
}

void TestRequests::creates_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("algorithm");
    const auto row = [](const char *file, const char *algorithm) {
        QTest::newRow(file) << QString::fromLatin1(file) << QByteArray(algorithm);
    };
    row("rsa.key", "sha256WithRSAEncryption");
    row("ec-256.key", "ecdsa-with-SHA256");
    row("ec-384.key", "ecdsa-with-SHA384");
    row("ec-521.key", "ecdsa-with-SHA512");
    row("ed25519.key", "ED25519");
    row("dsa.key", "dsa_with_SHA256");
}

void TestRequests::creates()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, algorithm);
    const QCA::CertificateRequest request(options(), key(file), opensslProviderName());
    QVERIFY(!request.isNull());
    const QByteArray pem = request.toPEM().toLatin1();
    const QByteArray text =
        Corpus::openssl({QStringLiteral("req"), QStringLiteral("-verify"), QStringLiteral("-text"),
                         QStringLiteral("-nameopt"), QStringLiteral("oid,utf8,sep_multiline")},
                        pem);
    QVERIFY2(!text.isEmpty(), "openssl req -verify refuses it");
    QVERIFY(text.contains("Signature Algorithm: " + algorithm));
    QVERIFY(text.contains("2.5.4.3=Пётр Петров"));
    QVERIFY(text.contains("2.5.4.10=ООО «Ромашка»"));
    QVERIFY(text.contains("1.2.643.100.4=1234567890"));
    QVERIFY(text.contains("Digital Signature, Key Encipherment"));
    QVERIFY(!text.contains("2.5.4.7="));
    // And it reads back as it was asked for.
    const QCA::CertificateInfo subject =
        requestSubject(QCA::CertificateRequest::fromPEM(request.toPEM()));
    QCOMPARE(infoValue(subject, CommonNameInfo), QStringLiteral("Пётр Петров"));
    QCOMPARE(infoValue(subject, IdentificationKindInfo), QStringLiteral("0"));
    QCOMPARE(request.challenge(), QStringLiteral("вызов"));
    QVERIFY(isSamePublicKey(requestPublicKey(request), key(file).toPublicKey()));
}

void TestRequests::writesStringTypes()
{
    const QCA::CertificateRequest request(options(), key(QStringLiteral("rsa.key")),
                                          opensslProviderName());
    const QByteArray parsed = Corpus::openssl(
        {QStringLiteral("asn1parse"), QStringLiteral("-inform"), QStringLiteral("DER")},
        request.toDER());
    QVERIFY(parsed.contains("PRINTABLESTRING   :RU"));
    QVERIFY(parsed.contains("IA5STRING         :petrov@example.ru"));
    QVERIFY(parsed.contains("NUMERICSTRING     :1234567890"));
}

void TestRequests::writesRussianStringTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("written");
    const auto row = [](const char *name, int type, const char *value, const char *written) {
        QTest::newRow(name) << type << QString::fromUtf8(value)
                            << QByteArray(written) + ':' + value;
    };
    row("INN", InnInfo, "500100732259", "NUMERICSTRING     ");
    row("INNLE", InnleInfo, "7707083893", "NUMERICSTRING     ");
    row("SNILS", SnilsInfo, "11223344595", "NUMERICSTRING     ");
    row("OGRN", OgrnInfo, "1027700132195", "NUMERICSTRING     ");
    row("OGRNIP", OgrnipInfo, "304500116000157", "NUMERICSTRING     ");
    row("SNILS with hyphens", SnilsInfo, "112-233-445 95", "UTF8STRING        ");
    row("country", CountryInfo, "RU", "PRINTABLESTRING   ");
    row("mail address", EmailLegacyInfo, "ivanov@example.ru", "IA5STRING         ");
    row("state", StateInfo, "77 г. Москва", "UTF8STRING        ");
    row("organization", OrganizationInfo, "Company", "UTF8STRING        ");
}

void TestRequests::writesRussianStringTypes()
{
    QFETCH(int, type);
    QFETCH(QString, value);
    QFETCH(QByteArray, written);
    QCA::CertificateOptions asked(QCA::PKCS10);
    QCA::CertificateInfoOrdered info;
    info.append(QCA::CertificateInfoPair(infoType(type), value));
    asked.setInfoOrdered(info);
    const QCA::CertificateRequest request(asked, key(QStringLiteral("rsa.key")),
                                          opensslProviderName());
    const QByteArray parsed = Corpus::openssl(
        {QStringLiteral("asn1parse"), QStringLiteral("-inform"), QStringLiteral("DER")},
        request.toDER());
    QVERIFY2(parsed.contains(written), parsed.constData());
}

void TestRequests::refusesKeysThatCantSign()
{
    QVERIFY(QCA::CertificateRequest(options(), key(QStringLiteral("dh.key")), opensslProviderName())
                .isNull());
    RequestContext context(nullptr);
    const QCA::PublicKey half = key(QStringLiteral("rsa.key")).toPublicKey();
    QVERIFY(
        !context.createRequest(options(), *static_cast<const QCA::PKeyContext *>(half.context())));
    QVERIFY(context.toDER().isEmpty());
    QVERIFY(context.toPEM().isEmpty());
    QVERIFY(context.props());
}

void TestRequests::servesSpkac()
{
    const QByteArray text = Corpus::read(QStringLiteral("request.spkac"));
    const QCA::CertificateRequest request =
        QCA::CertificateRequest::fromString(QString::fromLatin1(text));
    QCOMPARE(int(request.format()), int(QCA::SPKAC));
    QCOMPARE(request.challenge(), QStringLiteral("hello"));
    QVERIFY(
        isSamePublicKey(requestPublicKey(request), key(QStringLiteral("rsa.key")).toPublicKey()));
    QCA::CertificateOptions spkac(QCA::SPKAC);
    spkac.setChallenge(QStringLiteral("again"));
    const QCA::CertificateRequest made(spkac, key(QStringLiteral("rsa.key")),
                                       opensslProviderName());
    const QByteArray shown = Corpus::openssl({QStringLiteral("spkac"), QStringLiteral("-verify")},
                                             made.toString().toLatin1() + '\n');
    QVERIFY(shown.contains("Challenge String: again"));
}

void TestRequests::signsWithForeignKeys()
{
    const QString stock = QStringLiteral("qca-ossl");
    if (!QCA::findProvider(stock))
        QSKIP("no stock provider");
    const QCA::CertificateRequest request(options(), key(QStringLiteral("rsa.key"), stock),
                                          opensslProviderName());
    QVERIFY(!Corpus::openssl({QStringLiteral("req"), QStringLiteral("-verify")},
                             request.toPEM().toLatin1())
                 .isEmpty());
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestRequests test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requests.moc"
