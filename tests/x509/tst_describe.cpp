// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/derwriter.h"
#include "qca/asn1/pem.h"
#include "qca/base/catalogues.h"
#include "qca/describe/description.h"
#include "qca/describe/structure.h"
#include "qca/describe/words.h"
#include "tests/support/testcertificates.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QtTest>

using namespace Trivex;
using TrivexTest::derElement;
using TrivexTest::hex;

namespace {

constexpr auto Cyrillic = "\xD0\xA2\xD0\xB5\xD0\xBA\xD1\x81\xD1\x82"; // "Текст"

QByteArray derOf(const QByteArray &contents)
{
    const QList<PemBlock> blocks = readPem(contents);
    return blocks.isEmpty() ? contents : blocks.first().data;
}

QVector<ShownRow> rowsOf(const QVector<ShownGroup> &groups, ShownTopic topic)
{
    for (const ShownGroup &group : groups) {
        if (group.topic == topic)
            return group.rows;
    }
    return {};
}

/// The value of the row with this label or identifier.
QString valueIn(const QVector<ShownRow> &rows, const QString &label)
{
    for (const ShownRow &row : rows) {
        if (row.label == label || row.id == label.toLatin1())
            return row.value;
    }
    return QStringLiteral("no row ") + label;
}

QByteArray dotted(const char *text)
{
    return Der::writeOid(text).mid(2);
}

QByteArray certificateWith(const QByteArray &extensions)
{
    TrivexTest::Parts parts;
    parts.extensions = extensions;
    return TrivexTest::certificate(parts);
}

QString extensionValue(const char *oid, const QByteArray &value)
{
    const QByteArray der = certificateWith(TrivexTest::extension(dotted(oid), value));
    return valueIn(rowsOf(describe(ShownKind::Certificate, der), ShownTopic::Extensions),
                   QLatin1String(oid));
}

/// What openssl prints of the extensions: their lines with the name, without the values.
QStringList printedExtensions(const QByteArray &der, bool *isRead)
{
    const QString text = QString::fromUtf8(Corpus::openssl(
        QStringLiteral("x509 -inform DER -noout -text").split(QLatin1Char(' ')), der));
    static const QRegularExpression name(QStringLiteral("^ {12}\\S.*: ?(critical)?$"));
    *isRead = !text.isEmpty();
    QStringList found;
    bool isInside = false;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (line == QLatin1String("        X509v3 extensions:"))
            isInside = true;
        else if (isInside && line.startsWith(QLatin1String("    Signature Algorithm")))
            isInside = false;
        else if (isInside && name.match(line).hasMatch())
            found += line.trimmed();
    }
    return found;
}

} // namespace

/// Certificates, requests and lists in words.
class TestDescribe : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void everyCertificateHasEveryExtension();
    void everyFileAsAnything();
    void commonExtensions();
    void leafExtensions();
    void otherExtensions_data();
    void otherExtensions();
    void unknownExtension();
    void damagedExtensions_data();
    void damagedExtensions();
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

void TestDescribe::everyCertificateHasEveryExtension()
{
    int compared = 0;
    int read = 0;
    const QList<Corpus::Certificate> certificates = Corpus::certificates();
    for (const Corpus::Certificate &one : certificates) {
        const QByteArray der = derOf(Corpus::read(one.file));
        const QVector<ShownGroup> groups = describe(ShownKind::Certificate, der);
        QVERIFY2(!rowsOf(groups, ShownTopic::General).isEmpty(), qPrintable(one.file));
        QVERIFY2(!rowsOf(groups, ShownTopic::PublicKey).isEmpty(), qPrintable(one.file));
        QCOMPARE(rowsOf(groups, ShownTopic::Validity).size(), 2);
        bool isRead = false;
        const QStringList printed = printedExtensions(der, &isRead);
        const QVector<ShownRow> rows = rowsOf(groups, ShownTopic::Extensions);
        QVERIFY2(rows.size() == printed.size() || !isRead,
                 qPrintable(one.file + QLatin1Char('\n') + printed.join(QLatin1Char('\n'))));
        for (int i = 0; i < printed.size(); ++i) {
            QCOMPARE(rows.at(i).label.endsWith(QStringLiteral(" (critical)")),
                     printed.at(i).endsWith(QStringLiteral("critical")));
            QVERIFY(!rows.at(i).value.isEmpty());
            ++compared;
        }
        read += isRead ? 1 : 0;
    }
    QVERIFY2(read > 100 && compared > 90, qPrintable(QString::number(compared)));
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

void TestDescribe::commonExtensions()
{
    const auto groups =
        describe(ShownKind::Certificate, derOf(Corpus::read(QStringLiteral("extensions.der"))));
    const QVector<ShownRow> rows = rowsOf(groups, ShownTopic::Extensions);
    QCOMPARE(valueIn(rows, QStringLiteral("Basic constraints (critical)")),
             QStringLiteral("Certification authority: yes\nAuthorities below it at most: 3"));
    QCOMPARE(valueIn(rows, QStringLiteral("Key usage (critical)")),
             QStringLiteral("digital signature, non-repudiation, signing certificates, signing "
                            "lists of revoked certificates, agreement for decrypting only"));
    QCOMPARE(valueIn(rows, QStringLiteral("Purposes")),
             QStringLiteral("Web server\nClient of a server\nProtecting e-mail\n"
                            "1.2.643.2.2.34.6"));
    QCOMPARE(valueIn(rows, QStringLiteral("Other names of the holder")),
             QStringLiteral("E-mail: mail@example.org\nDNS: example.org\n"
                            "URI: https://example.org/\nIP address: 192.0.2.1\n"
                            "IP address: 2001:db8::1\nXMPP address: romeo@example.org"));
    QCOMPARE(valueIn(rows, QStringLiteral("Certificate policies")),
             QStringLiteral("Signature tool of class KS1 (1.2.643.100.113.1)\n"
                            "Any policy (2.5.29.32.0)"));
    QCOMPARE(valueIn(rows, QStringLiteral("Lists of revoked certificates")),
             QStringLiteral("URI: http://example.org/a.crl\nURI: http://example.org/b.crl"));
    QCOMPARE(valueIn(rows, QStringLiteral("Addresses of the issuer")),
             QStringLiteral("Certificate of the issuer: URI: http://example.org/ca.crt\n"
                            "OCSP: URI: http://example.org/ocsp"));
}

void TestDescribe::leafExtensions()
{
    const auto groups = describe(ShownKind::Certificate,
                                 derOf(Corpus::read(QStringLiteral("extensions-leaf.der"))));
    const QVector<ShownRow> rows = rowsOf(groups, ShownTopic::Extensions);
    QCOMPARE(valueIn(rows, QStringLiteral("Key identifier")), QStringLiteral("80:FF:00:7F"));
    QCOMPARE(valueIn(rows, QStringLiteral("Basic constraints")),
             QStringLiteral("Certification authority: no"));
    QCOMPARE(valueIn(rows, QStringLiteral("Certificate policies")),
             QStringLiteral("Signature tool of class KS2 (1.2.643.100.113.2)\n1.3.5.8\n"
                            "Rules: http://example.org/cps\nNotice: ")
                 + QString::fromUtf8(Cyrillic));
    QCOMPARE(valueIn(rows, QStringLiteral("Lists of revoked certificates")),
             QStringLiteral("URI: http://example.org/1.crl\nURI: ldap://example.org/2\n"
                            "Only for: the key is known to others\n"
                            "Issuer of the list: Directory name: CN=Issuer"));
    QVERIFY(valueIn(rows, QStringLiteral("Issuer's key identifier"))
                .contains(QStringLiteral("\nIts issuer: Directory name: CN=The other half")));
    QCOMPARE(valueIn(rows, QStringLiteral("Other names of the issuer")),
             QStringLiteral("E-mail: issuer@example.org"));
}

void TestDescribe::otherExtensions_data()
{
    QTest::addColumn<QByteArray>("oid");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *oid, const QByteArray &value,
                        const QString &text) {
        QTest::newRow(name) << QByteArray(oid) << value << text;
    };
    const auto sequence = [](const QByteArray &content) { return derElement(0x30, content); };
    row("name constraints", "2.5.29.30",
        sequence(derElement(0xA0, sequence(derElement(0x82, ".example.org")))
                 + derElement(0xA1, sequence(derElement(0x87, hex("0a000000ff000000"))))),
        QStringLiteral("Permitted: DNS: .example.org\nExcluded: IP address: 10.0.0.0/255.0.0.0"));
    row("policy constraints", "2.5.29.36", hex("3006800100810102"),
        QStringLiteral("Certificates to skip before a policy is required: 0\n"
                       "Certificates to skip before mappings count no more: 2"));
    row("policy mappings", "2.5.29.33",
        sequence(sequence(Der::writeOid("1.2.3") + Der::writeOid("1.2.4"))),
        QString::fromUtf8("1.2.3 → 1.2.4"));
    row("inhibit any policy", "2.5.29.54", hex("020107"), QStringLiteral("7"));
    row("holder's tool", "1.2.643.100.111", derElement(0x0C, Cyrillic),
        QString::fromUtf8(Cyrillic));
    row("issuer's tools", "1.2.643.100.112",
        sequence(derElement(0x0C, "a") + derElement(0x0C, "b") + derElement(0x0C, "c")
                 + derElement(0x0C, "d")),
        QStringLiteral("Tool: a\nTool of the authority: b\nConformity of the tool: c\n"
                       "Conformity of the authority's tool: d"));
    row("identification", "1.2.643.100.114", hex("020100"), QStringLiteral("in person (0)"));
    row("identification, new", "1.2.643.100.114", hex("020109"), QStringLiteral("9"));
    row("netscape type", "2.16.840.1.113730.1.1", hex("030205a0"),
        QStringLiteral("client of a server, e-mail"));
    row("netscape comment", "2.16.840.1.113730.1.13", derElement(0x16, "made"),
        QStringLiteral("made"));
    row("other name", "2.5.29.17",
        sequence(derElement(0xA0,
                            Der::writeOid("1.3.6.1.4.1.311.20.2.3")
                                + derElement(0xA0, derElement(0x0C, "petr@example.org")))),
        QStringLiteral("User principal name: petr@example.org"));
    row("unknown other name", "2.5.29.17",
        sequence(derElement(0xA0,
                            Der::writeOid("1.2.3.4.5.6") + derElement(0xA0, derElement(0x30, "")))),
        QStringLiteral("Other name 1.2.3.4.5.6: 30:00"));
    row("registered id", "2.5.29.17", sequence(derElement(0x88, dotted("1.2.3.4.5.6"))),
        QStringLiteral("Registered identifier: 1.2.3.4.5.6"));
    row("directory, X.400, EDI", "2.5.29.17",
        sequence(derElement(0xA4, TrivexTest::commonName("Anna")) + derElement(0xA3, "x")
                 + derElement(0xA5, derElement(0xA1, derElement(0x0C, "y")))),
        QStringLiteral("Directory name: CN=Anna\nX.400 address: 78\nEDI party: A1:03:0C:01:79"));
    const QByteArray timestamp =
        hex("00") + QByteArray(32, '\x07') + hex("0000000000000000") + hex("0000") + hex("0403");
    row("transparency", "1.3.6.1.4.1.11129.2.4.2",
        derElement(0x04, hex("0031002f") + timestamp + hex("000100")),
        QStringLiteral("Log: ") + QStringLiteral("07:").repeated(31)
            + QStringLiteral("07\nEntered: ") + timeText(QDateTime::fromMSecsSinceEpoch(0)));
    row("draft", "1.3.6.1.4.1.11129.2.4.3", hex("0500"), QStringLiteral("yes"));
    row("OCSP without check", "1.3.6.1.5.5.7.48.1.5", hex("0500"), QStringLiteral("yes"));
    row("TLS features", "1.3.6.1.5.5.7.1.24", hex("3003020105"),
        QStringLiteral("OCSP (status_request)"));
    row("template", "1.3.6.1.4.1.311.20.2", derElement(0x1E, hex("00410042")),
        QStringLiteral("AB"));
    row("qualified", "1.3.6.1.5.5.7.1.3",
        sequence(sequence(Der::writeOid("0.4.0.1862.1.1"))
                 + sequence(Der::writeOid("0.4.0.1862.1.3") + hex("02010a"))),
        QStringLiteral("Qualified certificate of the EU\nYears that documents are kept: 10"));
    // Known to libcrypto alone.
    row("printed by libcrypto", "1.3.6.1.5.5.7.1.14", hex("300c300a06082b06010505071501"),
        QStringLiteral("Path Length Constraint: infinite\nPolicy Language: Inherit all"));
}

void TestDescribe::otherExtensions()
{
    QFETCH(QByteArray, oid);
    QFETCH(QByteArray, value);
    QFETCH(QString, text);
    QCOMPARE(extensionValue(oid.constData(), value), text);
}

void TestDescribe::unknownExtension()
{
    const QByteArray der =
        certificateWith(TrivexTest::extension(dotted("1.2.3.4.5.6.7"), hex("c0ffee"), true));
    const QVector<ShownRow> rows =
        rowsOf(describe(ShownKind::Certificate, der), ShownTopic::Extensions);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().label, QStringLiteral("1.2.3.4.5.6.7 (critical)"));
    QCOMPARE(rows.first().value, QStringLiteral("C0:FF:EE"));
}

void TestDescribe::damagedExtensions_data()
{
    otherExtensions_data();
}

/// Cut off at every place and with every bit turned: shown as it is, or as damaged with its bytes.
void TestDescribe::damagedExtensions()
{
    QFETCH(QByteArray, oid);
    QFETCH(QByteArray, value);
    for (int size = 0; size < value.size(); ++size)
        QVERIFY(!extensionValue(oid.constData(), value.left(size)).isEmpty());
    for (int bit = 0; bit < 8 * value.size(); ++bit) {
        QByteArray turned = value;
        turned[bit / 8] = char(turned.at(bit / 8) ^ 1 << bit % 8);
        QVERIFY(!extensionValue(oid.constData(), turned).isEmpty());
    }
    const QByteArray cut = value.left(value.size() - 1);
    const QString shown = extensionValue(oid.constData(), cut);
    if (!cut.isEmpty() && oid != "1.3.6.1.5.5.7.1.14") {
        QCOMPARE(shown,
                 QStringLiteral("Damaged: ") + QString::fromLatin1(cut.toHex(':').toUpper()));
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
