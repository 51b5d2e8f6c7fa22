// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/derwriter.h"
#include "qca/base/catalogues.h"
#include "qca/describe/structure.h"
#include "qca/describe/words.h"
#include "tests/support/testcertificates.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"
#include "tests/x509/describing.h"

#include <QCryptographicHash>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

/// Certificates, requests and lists in words.
class TestDescribe : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void everyFileAsAnything();
    void numbersAndFingerprints();
    void keys_data();
    void keys();
    void gostKeys();
    void unknownKey();
    void signatures_data();
    void signatures();
    void request();
    void revocationList();
    void longListsAreCounted();
    void allTextIsBounded();
    void hugeListIsQuick();
    void namesOfStrangersAreOneLine();
    void yearsAreToldWhole();
};

void TestDescribe::initTestCase()
{
    installCatalogues(QStringLiteral("trivex-app"), this);
    QCOMPARE(qtTrId("trivex-app-extensions"), QStringLiteral("Extensions"));
}

void TestDescribe::everyFileAsAnything()
{
    const QStringList files = Corpus::files();
    QVERIFY(files.size() > 100);
    for (const QString &file : files) {
        const QByteArray contents = Corpus::read(file);
        for (const QByteArray &der : {derOf(contents), contents}) {
            for (const ShownKind kind : {ShownKind::Certificate, ShownKind::Request,
                                         ShownKind::RevocationList, ShownKind::PublicKey}) {
                const QVector<ShownGroup> groups = describe(kind, der);
                QVERIFY2(groups.size() >= 2, qPrintable(file));
                for (const ShownGroup &group : groups) {
                    QVERIFY(!group.title.isEmpty() && !group.rows.isEmpty());
                    for (const ShownRow &row : group.rows)
                        QVERIFY2(!row.label.isEmpty() && !row.value.isEmpty(), qPrintable(file));
                }
            }
            QVERIFY(!structureText(der).isEmpty() || der.isEmpty());
        }
    }
}

void TestDescribe::numbersAndFingerprints()
{
    TrivexTest::Parts parts;
    parts.serial = hex("00c3ff");
    const QByteArray der = TrivexTest::certificate(parts);
    const auto groups = describe(ShownKind::Certificate, der);
    const QVector<ShownRow> general = rowsOf(groups, ShownTopic::General);
    QCOMPARE(valueIn(general, QStringLiteral("Version")), QStringLiteral("3"));
    QCOMPARE(valueIn(general, QStringLiteral("Serial number")), QStringLiteral("00:C3:FF"));
    QCOMPARE(valueIn(general, QStringLiteral("Serial number, decimal")), QStringLiteral("50175"));
    const QVector<ShownRow> prints = rowsOf(groups, ShownTopic::Fingerprints);
    for (const auto &one : {std::make_pair("SHA-256", QCryptographicHash::Sha256),
                            std::make_pair("SHA-1", QCryptographicHash::Sha1)}) {
        const QByteArray digest = QCryptographicHash::hash(der, one.second).toHex(':').toUpper();
        QCOMPARE(valueIn(prints, QLatin1String(one.first)), QString::fromLatin1(digest));
    }
    QCOMPARE(valueIn(rowsOf(groups, ShownTopic::Validity), QStringLiteral("until")),
             timeText(QDateTime(QDate(2049, 12, 31), QTime(23, 59, 59), Qt::UTC)));
}

void TestDescribe::keys_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("value");
    QTest::newRow("RSA") << QStringLiteral("RSA -pkeyopt rsa_keygen_bits:1024")
                         << QStringLiteral("RSA, 1024 bits") << QStringLiteral("Exponent")
                         << QStringLiteral("65537");
    QTest::newRow("P-256") << QStringLiteral("EC -pkeyopt ec_paramgen_curve:P-256")
                           << QStringLiteral("Elliptic Curve, 256 bits") << QStringLiteral("Curve")
                           << QStringLiteral("P-256 (prime256v1)");
    QTest::newRow("P-521") << QStringLiteral("EC -pkeyopt ec_paramgen_curve:P-521")
                           << QStringLiteral("Elliptic Curve, 521 bits") << QStringLiteral("Curve")
                           << QStringLiteral("P-521 (secp521r1)");
    QTest::newRow("other curve") << QStringLiteral("EC -pkeyopt ec_paramgen_curve:sect283k1")
                                 << QStringLiteral("Elliptic Curve, 288 bits")
                                 << QStringLiteral("Curve")
                                 << QStringLiteral("sect283k1 (1.3.132.0.16)");
    QTest::newRow("Ed25519") << QStringLiteral("ed25519") << QStringLiteral("Ed25519, 256 bits")
                             << QString() << QString();
}

void TestDescribe::keys()
{
    QFETCH(QString, arguments);
    QFETCH(QString, kind);
    QFETCH(QString, label);
    QFETCH(QString, value);
    const QByteArray key = Corpus::openssl(
        QStringLiteral("genpkey -algorithm %1").arg(arguments).split(QLatin1Char(' ')));
    const QByteArray der =
        Corpus::openssl(QStringLiteral("pkey -pubout -outform DER").split(QLatin1Char(' ')), key);
    QVERIFY(!der.isEmpty());
    const QVector<ShownRow> rows =
        rowsOf(describe(ShownKind::PublicKey, der), ShownTopic::PublicKey);
    QCOMPARE(valueIn(rows, QStringLiteral("Kind and size")), kind);
    if (!label.isEmpty())
        QCOMPARE(valueIn(rows, label), value);
}

void TestDescribe::gostKeys()
{
    const auto groups = describe(ShownKind::Certificate,
                                 derOf(Corpus::read(QStringLiteral("gost-2012-512-octets.der"))));
    const QVector<ShownRow> rows = rowsOf(groups, ShownTopic::PublicKey);
    QCOMPARE(valueIn(rows, QStringLiteral("Kind and size")),
             QStringLiteral("GOST R 34.10-2012, 512 bits"));
    QVERIFY(valueIn(rows, QStringLiteral("Curve"))
                .startsWith(QStringLiteral("GOST R 34.10-2012 (512 bits), parameter set ")));
}

/// A key of an algorithm that nobody knows: its OID, its parameters and its bytes.
void TestDescribe::unknownKey()
{
    const QByteArray der =
        derElement(0x30,
                   derElement(0x30, Der::writeOid("1.2.3.4.5") + derElement(0x02, "\x05"))
                       + derElement(0x03, hex("0001020304")));
    const QVector<ShownRow> rows =
        rowsOf(describe(ShownKind::PublicKey, der), ShownTopic::PublicKey);
    QCOMPARE(valueIn(rows, QStringLiteral("Kind and size")), QStringLiteral("1.2.3.4.5"));
    QCOMPARE(valueIn(rows, QStringLiteral("Parameters")), QStringLiteral("02:01:05"));
    QCOMPARE(valueIn(rows, QStringLiteral("Key")), QStringLiteral("01:02:03:04"));
}

void TestDescribe::signatures_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("text");
    QTest::newRow("MD5") << QStringLiteral("signature-md5.der") << QStringLiteral("RSA with MD5");
    QTest::newRow("SHA-1") << QStringLiteral("signature-sha1.der")
                           << QStringLiteral("RSA with SHA-1");
    QTest::newRow("SHA-512") << QStringLiteral("signature-sha512.der")
                             << QStringLiteral("RSA with SHA-512");
    QTest::newRow("unknown") << QStringLiteral("signature-1.2.3.4.6.der")
                             << QStringLiteral("1.2.3.4.6");
}

void TestDescribe::signatures()
{
    QFETCH(QString, file);
    QFETCH(QString, text);
    const auto groups = describe(ShownKind::Certificate, derOf(Corpus::read(file)));
    QCOMPARE(valueIn(rowsOf(groups, ShownTopic::General), QStringLiteral("signature")), text);
}

void TestDescribe::request()
{
    const TrivexTest::TestAuthority authority;
    const QByteArray der = authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
         QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-subj"), QStringLiteral("/CN=Asker"),
         QStringLiteral("-addext"), QStringLiteral("subjectAltName=DNS:example.org"),
         QStringLiteral("-outform"), QStringLiteral("DER")});
    QVERIFY(!der.isEmpty());
    const auto groups = describe(ShownKind::Request, der);
    QCOMPARE(valueIn(rowsOf(groups, ShownTopic::General), QStringLiteral("Version")),
             QStringLiteral("1"));
    QCOMPARE(valueIn(rowsOf(groups, ShownTopic::Holder), QStringLiteral("Name")),
             QStringLiteral("Asker"));
    QCOMPARE(valueIn(rowsOf(groups, ShownTopic::Extensions),
                     QStringLiteral("Other names of the holder")),
             QStringLiteral("DNS: example.org"));
    QCOMPARE(valueIn(rowsOf(groups, ShownTopic::PublicKey), QStringLiteral("Kind and size")),
             QStringLiteral("Ed25519, 256 bits"));
}

void TestDescribe::revocationList()
{
    const auto element = [](const char *time) { return derElement(0x17, time); };
    const QByteArray reason =
        derElement(0x30, TrivexTest::extension(hex("551d15"), derElement(0x0A, hex("01"))));
    const QByteArray entries =
        derElement(0x30, derElement(0x02, hex("0102")) + element("200101000000Z") + reason)
        + derElement(0x30, derElement(0x02, hex("05")) + element("200101000000Z"));
    const QByteArray algorithm = derElement(0x30, Der::writeOid("1.2.840.113549.1.1.11"));
    const QByteArray number = TrivexTest::extension(hex("551d14"), hex("02020100"));
    const QByteArray body =
        derElement(0x30,
                   derElement(0x02, hex("01")) + algorithm + TrivexTest::commonName("Issuer")
                       + element("200101000000Z") + element("300101000000Z")
                       + derElement(0x30, entries) + derElement(0xA0, derElement(0x30, number)));
    const auto groups =
        describe(ShownKind::RevocationList,
                 derElement(0x30, body + algorithm + derElement(0x03, hex("0001"))));
    QCOMPARE(valueIn(rowsOf(groups, ShownTopic::General), QStringLiteral("Version")),
             QStringLiteral("2"));
    QCOMPARE(valueIn(rowsOf(groups, ShownTopic::Extensions), QStringLiteral("Number of the list")),
             QStringLiteral("256"));
    const QVector<ShownRow> rows = rowsOf(groups, ShownTopic::Entries);
    QCOMPARE(valueIn(rows, QStringLiteral("Number")), QStringLiteral("2"));
    const QString when = timeText(QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC));
    QCOMPARE(valueIn(rows, QStringLiteral("Serial numbers, and when")),
             QStringLiteral("01:02  %1  Reason: the key is known to others\n05  %1").arg(when));
}

void TestDescribe::longListsAreCounted()
{
    QByteArray names;
    for (int i = 0; i < 5000; ++i)
        names += derElement(0x82, "host" + QByteArray::number(i) + ".example.org");
    const QString lines = extensionValue("2.5.29.17", derElement(0x30, names));
    QCOMPARE(lines.count(QLatin1Char('\n')), MaxShownLines);
    QVERIFY2(lines.endsWith(QString::fromUtf8("\n… and 4000 more")), qPrintable(lines.right(40)));
    QByteArray extensions;
    for (int i = 0; i < 1000; ++i)
        extensions += TrivexTest::extension(dotted("1.2.3") + char(i % 100), hex("0500"));
    const auto rows = rowsOf(describe(ShownKind::Certificate, certificateWith(extensions)),
                             ShownTopic::Extensions);
    QCOMPARE(rows.size(), MaxShownRows + 1);
    QCOMPARE(rows.last().value, QStringLiteral("and %1 more").arg(1000 - MaxShownRows));
    TrivexTest::Parts parts;
    parts.subject = TrivexTest::name(TrivexTest::attribute(hex("550403"), "x"), 10000);
    const auto names10000 = rowsOf(describe(ShownKind::Certificate, TrivexTest::certificate(parts)),
                                   ShownTopic::Holder);
    QCOMPARE(names10000.last().value, QStringLiteral("and %1 more").arg(10000 - MaxShownRows));
}

/// However much there is of everything, the window can show it at once.
void TestDescribe::allTextIsBounded()
{
    QByteArray names;
    for (int i = 0; i < 900; ++i)
        names += derElement(0x82, QByteArray(20, 'x'));
    QByteArray extensions;
    for (int i = 0; i < 50; ++i)
        extensions += TrivexTest::extension(dotted("2.5.29.17"), derElement(0x30, names));
    int size = 0;
    const auto groups = describe(ShownKind::Certificate, certificateWith(extensions));
    for (const ShownGroup &group : groups) {
        for (const ShownRow &row : group.rows)
            size += row.value.size();
    }
    QVERIFY2(size > MaxShownText / 2 && size < MaxShownText + 50 * (MaxShownBehind + 1),
             qPrintable(QString::number(size)));
    QCOMPARE(groups.last().topic, ShownTopic::Signature);
}

/// The largest list that is read at all, and nesting as deep as it goes.
void TestDescribe::hugeListIsQuick()
{
    QByteArray entries =
        derElement(0x30, derElement(0x02, hex("0102")) + derElement(0x17, "200101000000Z"));
    while (entries.size() < 12 * 1024 * 1024)
        entries += entries;
    const QByteArray algorithm = derElement(0x30, Der::writeOid("1.2.840.113549.1.1.11"));
    const QByteArray body =
        derElement(0x30,
                   algorithm + TrivexTest::commonName("Issuer") + derElement(0x17, "200101000000Z")
                       + derElement(0x30, entries));
    const QByteArray der = derElement(0x30, body + algorithm + derElement(0x03, hex("0001")));
    QByteArray deep;
    for (int i = 0; i < 4000; ++i)
        deep = derElement(i % 2 ? 0x04 : 0x30, deep);
    QElapsedTimer timer;
    timer.start();
    const auto groups = describe(ShownKind::RevocationList, der);
    structureText(der);
    const QString nested = structureText(deep);
    QVERIFY2(timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(valueIn(rowsOf(groups, ShownTopic::Entries), QStringLiteral("Number")).toInt()
            > 400000);
    QCOMPARE(nested.count(QLatin1Char('\n')), 64);
}

void TestDescribe::namesOfStrangersAreOneLine()
{
    TrivexTest::Parts parts;
    parts.subject = TrivexTest::commonName("two\nlines\xE2\x80\xAE");
    const auto rows = rowsOf(describe(ShownKind::Certificate, TrivexTest::certificate(parts)),
                             ShownTopic::Holder);
    QCOMPARE(rows.first().value, QString::fromUtf8("two\uFFFDlines\uFFFD"));
    QCOMPARE(extensionValue("2.5.29.17", derElement(0x30, derElement(0x82, "a\nb"))),
             QString::fromUtf8("DNS: a\uFFFDb"));
}

void TestDescribe::yearsAreToldWhole()
{
    // Half of the locales write two digits of a year in short dates, and certificates hold for a
    // hundred years.
    const QDateTime years[] = {QDateTime({1936, 11, 23}, {12, 0}),
                               QDateTime({2036, 11, 23}, {12, 0}),
                               QDateTime({2136, 11, 23}, {12, 0})};
    const auto restore = qScopeGuard([before = QLocale()] { QLocale::setDefault(before); });
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    QVERIFY(locales.size() > 100);
    for (const QLocale &locale : locales) {
        QLocale::setDefault(locale);
        QSet<QString> dates;
        QSet<QString> times;
        for (const QDateTime &year : years) {
            dates += dateText(year);
            times += timeText(year);
        }
        QVERIFY2(dates.size() == 3, qPrintable(locale.name()));
        QVERIFY2(times.size() == 3, qPrintable(locale.name()));
    }
    QCOMPARE(dateText({}), QString());
    QCOMPARE(timeText(QDateTime()), QString());
}

int main(int argc, char **argv)
{
    qputenv("LC_ALL", "C.UTF-8");
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestDescribe test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_describe.moc"
