// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/derwriter.h"
#include "qca/base/catalogues.h"
#include "qca/describe/words.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"
#include "tests/x509/describing.h"

#include <QRegularExpression>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

constexpr auto Cyrillic = "\xD0\xA2\xD0\xB5\xD0\xBA\xD1\x81\xD1\x82"; // "Текст"

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

/// The extensions of certificates in words.
class TestDescribeExtensions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void everyCertificateHasEveryExtension();
    void commonExtensions();
    void leafExtensions();
    void otherExtensions_data();
    void otherExtensions();
    void unknownExtension();
    void damagedExtensions_data();
    void damagedExtensions();
};

void TestDescribeExtensions::initTestCase()
{
    installCatalogues(QStringLiteral("trivex-app"), this);
    QCOMPARE(qtTrId("trivex-app-extensions"), QStringLiteral("Extensions"));
}

void TestDescribeExtensions::everyCertificateHasEveryExtension()
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

void TestDescribeExtensions::commonExtensions()
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

void TestDescribeExtensions::leafExtensions()
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

void TestDescribeExtensions::otherExtensions_data()
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

void TestDescribeExtensions::otherExtensions()
{
    QFETCH(QByteArray, oid);
    QFETCH(QByteArray, value);
    QFETCH(QString, text);
    QCOMPARE(extensionValue(oid.constData(), value), text);
}

void TestDescribeExtensions::unknownExtension()
{
    const QByteArray der =
        certificateWith(TrivexTest::extension(dotted("1.2.3.4.5.6.7"), hex("c0ffee"), true));
    const QVector<ShownRow> rows =
        rowsOf(describe(ShownKind::Certificate, der), ShownTopic::Extensions);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().label, QStringLiteral("1.2.3.4.5.6.7 (critical)"));
    QCOMPARE(rows.first().value, QStringLiteral("C0:FF:EE"));
}

void TestDescribeExtensions::damagedExtensions_data()
{
    otherExtensions_data();
}

/// Cut off at every place and with every bit turned: shown as it is, or as damaged with its bytes.
void TestDescribeExtensions::damagedExtensions()
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

int main(int argc, char **argv)
{
    qputenv("LC_ALL", "C.UTF-8");
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestDescribeExtensions test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_describeextensions.moc"
