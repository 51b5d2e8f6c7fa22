// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Dates and numbers at their borders, lengths that are told by their ends, extensions of odd
// contents: put together here, and shown as `openssl x509` shows them.
#include "qca/asn1/handles.h"
#include "qca/base/providers.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"
#include "tests/x509/expectedproperties.h"
#include "tests/x509/opensslcertificate.h"
#include "tests/x509/opensslview.h"
#include "tests/x509/propertycomparison.h"

#include <QTemporaryDir>
#include <QtTest>

#include <openssl/x509.h>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const QByteArray constraintsOid = hex("551d13");
const QByteArray keyUsageOid = hex("551d0f");
const QByteArray purposesOid = hex("551d25");
const QByteArray policiesOid = hex("551d20");
const QByteArray pointsOid = hex("551d1f");
const QByteArray accessOid = hex("2b06010505070101");
const QByteArray alternativeOid = hex("551d11");
const QByteArray commonNameOid = hex("550403");

/// Octets in hexadecimal digits, with blanks where they help.
QByteArray spaced(const char *digits)
{
    return QByteArray::fromHex(QByteArray(digits).replace(QByteArray(" "), QByteArray()));
}

QCA::Certificate decoded(const QByteArray &der)
{
    return QCA::Certificate::fromDER(der, nullptr, opensslProviderName());
}

void row(const QByteArray &text, const Parts &parts)
{
    QTest::newRow(text.constData()) << certificate(parts);
}

void date(int tag, const char *text)
{
    Parts parts;
    parts.validity = derElement(0x17, "200101000000Z") + derElement(tag, text);
    row(QByteArray(tag == 0x17 ? "short " : "long ") + text, parts);
}

void subject(const char *text, const QByteArray &content)
{
    Parts parts;
    parts.subject = content;
    row(text, parts);
}

void values(const char *kind, const QByteArray &oid, const QList<const char *> &digits)
{
    for (const char *value : digits) {
        Parts parts;
        parts.extensions = extension(oid, spaced(value));
        row(QByteArray(kind) + ' ' + value, parts);
    }
}

} // namespace

class TestMatrix : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void dates_data();
    void dates();
    void namesWithoutLength_data();
    void namesWithoutLength() { agree(); }
    void nestedPieces();
    void extensions_data();
    void extensions() { agree(); }
    void alternativeNames_data();
    void alternativeNames() { agree(); }
    void usages_data();
    void usages();
    void negativeSerials_data();
    void negativeSerials();
    void largeArcs();
    void paddedIdentifiers();
    void marksOfByteOrder();
    void locationsInUtf8();

private:
    void agree();

    QCA::Initializer m_initializer;
    QTemporaryDir m_directory;
};

/// All that is shown of the certificate of this row is what the command prints.
void TestMatrix::agree()
{
    QFETCH(QByteArray, der);
    const QString path = m_directory.filePath(QStringLiteral("made.der"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(der) == der.size());
    file.close();
    OpensslCertificate expected;
    QVERIFY(readWithOpenssl(path, &expected));
    const QCA::Certificate certificate = decoded(der);
    const QString found =
        propertyDifference(propertiesOf(certificate), expectedProperties(expected, false));
    QVERIFY2(found.isEmpty(), qUtf8Printable(found));
    compareNames(certificate, expected, QString());
    if (QTest::currentTestFailed())
        return;
    compareDates(certificate, expected);
    if (QTest::currentTestFailed())
        return;
    compareExtensions(certificate, expected);
}

// From 3.5 on libcrypto refuses a certificate for a time that is too short. Ours is read all the
// same.
void TestMatrix::dates()
{
    QFETCH(QByteArray, der);
    static const bool refusesShortTimes = [] {
        OpensslCertificate printed;
        return !readWithOpenssl(Corpus::path(QStringLiteral("date-no-seconds.der")), &printed);
    }();
    const uchar *data = reinterpret_cast<const uchar *>(der.constData());
    const X509Handle native(d2i_X509(nullptr, &data, der.size()));
    if (native || !refusesShortTimes)
        agree();
    else
        QVERIFY(!decoded(der).isNull());
}

void TestMatrix::dates_data()
{
    QTest::addColumn<QByteArray>("der");
    for (const char *text : {"491231235959Z",     "500101000000Z",
                             "000229000000Z",     "010229000000Z",
                             "000230000000Z",     "0001010000Z",
                             "00010100Z",         "000101000000",
                             "000101000000+0100", "000101000000-1200",
                             "000101000000+1300", "000101000000+1260",
                             "0001010000+0100",   "000101000000.5Z",
                             "000101000060Z",     "000101240000Z",
                             "000101006000Z",     "001301000000Z",
                             "000001000000Z",     "000100000000Z",
                             "000101000000Zx",    "000101000000z",
                             " 00101000000Z",     "20000101000000Z",
                             "0001010000000100",  ""})
        date(0x17, text);
    for (const char *text :
         {"20000101000000Z",     "20000101000000",        "20000101000000.5Z",
          "20000101000000.Z",    "20000101000000,5Z",     "20000101000000.123456789Z",
          "20000101000000+0300", "20000101000000.5+0300", "20000101000000+03",
          "200001010000Z",       "2000010100Z",           "200001010000.5Z",
          "20000101000000.5",    "00000101000000Z",       "00010101000000+0100",
          "99991231235959Z",     "99991231235959-0100",   "19000229000000Z",
          "20000229000000Z",     "20000230000000Z",       "20000431000000Z",
          "000101000000Z",       "2000010100000Z",        "-2000101000000Z",
          "20491231235959Z",     "20161231235960Z"})
        date(0x18, text);
}

void TestMatrix::namesWithoutLength_data()
{
    QTest::addColumn<QByteArray>("der");
    const QByteArray plain = attribute(commonNameOid, "x");
    const QByteArray end = hex("0000");
    const auto endless = [&](const char *tag, const QByteArray &content) -> QByteArray {
        return hex(tag) + hex("80") + content + end;
    };
    const QByteArray text = endless("2c", derElement(0x0c, "x") + derElement(0x04, "y"));
    subject("name", endless("30", derElement(0x31, plain)));
    subject("set", derElement(0x30, endless("31", plain)));
    subject(
        "attribute",
        derElement(
            0x30,
            derElement(0x31, endless("30", oidElement(commonNameOid) + derElement(0x0c, "x")))));
    subject("text",
            derElement(0x30, derElement(0x31, derElement(0x30, oidElement(commonNameOid) + text))));
    subject("all", endless("30", endless("31", endless("30", oidElement(commonNameOid) + text))));
    Parts parts;
    parts.extensions = extension(constraintsOid, endless("30", hex("0101ff")));
    row("constraints", parts);
    parts.extensions = extension(hex("551d0e"), endless("24", hex("040101")));
    row("key identifier", parts);
}

// Strings in pieces that are in pieces: as deep as the command goes.
void TestMatrix::nestedPieces()
{
    const QString path = m_directory.filePath(QStringLiteral("nested.der"));
    QByteArray text = derElement(0x0c, "x");
    int readable = 0;
    for (int depth = 1; depth < 10; ++depth) {
        text = derElement(0x2c, text);
        Parts parts;
        parts.subject =
            derElement(0x30, derElement(0x31, derElement(0x30, oidElement(commonNameOid) + text)));
        const QByteArray der = certificate(parts);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(der) == der.size());
        file.close();
        OpensslCertificate expected;
        const bool isReadable = readWithOpenssl(path, &expected);
        readable += isReadable ? 1 : 0;
        QCOMPARE(decoded(der).commonName() == QStringLiteral("x"), isReadable);
    }
    QVERIFY(readable > 0 && readable < 9);
}

void TestMatrix::extensions_data()
{
    QTest::addColumn<QByteArray>("der");
    values("constraints", constraintsOid,
           {"3000", "3003 0101ff", "3003 010100", "3003 010101", "3004 01020101", "3002 0100",
            "3006 0101ff 020105", "3003 020105", "3007 0101ff 02020100", "3005 0101ff 0500",
            "3006 0101ff 010100", "3005 0101ff 0200", "3006 020105 0101ff", "0101ff",
            "3003 0101ff 00", "3009 0101ff 0204 ffffffff"});
    values("points", pointsOid,
           {"3000", "3002 3000", "3009 3007 a005 a003 860141", "3006 3004 a002 a000",
            "300d 300b a005 a003 860141 8102 0102", "300d 300b 8102 0102 a005 a003 860141",
            "300f 300d a00b a009 860141 860142 860143", "300c 3007 a005 a003 860141 860142",
            "300e 3007 a005 a003 860141 3003 860142"});
    values("access", accessOid,
           {"3000", "3002 3000", "300f 300d 0608 2b06010505073001 860141",
            "3012 3010 0608 2b06010505073001 860141 860142",
            "3011 300d 0608 2b06010505073001 860141 0500",
            "300f 300d 0608 2b06010505073001 810141"});
    values("policies", policiesOid,
           {"3000", "3002 3000", "3006 3004 06022a03", "300a 3008 06022a03 06022a04",
            "3008 3004 06022a03 0500", "300a 3008 06022a03 3002 0500",
            "300a 3008 06022a03 3002 3000", "3008 3006 06022a03 0500", "3007 3005 0603 2a8003"});
}

void TestMatrix::alternativeNames_data()
{
    QTest::addColumn<QByteArray>("der");
    // Behind a good address each: what is no general name makes all of them none.
    for (const char *second : {"8b0178",
                               "a00178",
                               "a002 0c00",
                               "a007 06022a03 a001 78",
                               "a008 06022a03 a002 0c00",
                               "a009 06022a03 a003 0c0178",
                               "a0 0b 06022a03 a003 0c0178 0500",
                               "a40178",
                               "a402 3000",
                               "a404 3002 3100",
                               "a403 310161",
                               "a40f 300d 310b 3009 0603550403 0c02 7878",
                               "a412 300d 310b 3009 0603550403 0c02 7878 020101",
                               "a500",
                               "a502 a100",
                               "a505 a103 0c0178",
                               "880178",
                               "8801 80",
                               "8802 8001",
                               "a300"}) {
        Parts parts;
        parts.extensions =
            extension(alternativeOid, derElement(0x30, derElement(0x81, "a@b") + spaced(second)));
        row(second, parts);
    }
    Parts parts;
    parts.extensions =
        extension(alternativeOid, derElement(0x30, derElement(0xa1, hex("1603") + "c@d")));
    row("in pieces", parts);
}

void TestMatrix::usages_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("expected"); // the bits, the first one lowest
    const auto bits = [](const char *digits, int expected) {
        QTest::newRow(digits) << spaced(digits) << expected;
    };
    bits("0302 05a0", 0b101);
    bits("0302 07ff", 0b1);
    bits("0302 06ff", 0b11);
    bits("0303 07 ffff", 0b111111111);
    bits("0303 00 ffff", 0b111111111);
    bits("0306 00 8000000000", 0b1);
    bits("0302 00ff", 0b11111111);
    bits("0302 08ff", 0);
    bits("0302 ffff", 0);
    bits("0301 00", 0);
    bits("0301 07", 0);
    bits("0300", 0);
}

// Bits that count as unused are none, and more than seven can't be unused.
void TestMatrix::usages()
{
    QFETCH(QByteArray, value);
    QFETCH(int, expected);
    Parts parts;
    parts.extensions = extension(keyUsageOid, value)
        + extension(purposesOid, spaced("3006 06022a03 0500")); // not purposes alone
    int found = 0;
    const QCA::Constraints constraints = decoded(certificate(parts)).constraints();
    for (const QCA::ConstraintType &constraint : constraints)
        found |= 1 << int(constraint.known());
    QCOMPARE(found, expected);
}

void TestMatrix::negativeSerials_data()
{
    QTest::addColumn<QByteArray>("serial");
    QTest::addColumn<QString>("text");
    QTest::newRow("-1") << hex("ff") << QStringLiteral("-1");
    QTest::newRow("-127") << hex("81") << QStringLiteral("-7F:");
    QTest::newRow("-128") << hex("80") << QStringLiteral("-1:-80:");
    QTest::newRow("-129") << hex("ff7f") << QStringLiteral("-1:7F");
    QTest::newRow("-32768") << hex("8000") << QStringLiteral("-1:-80:00:");
}

// QCA's numbers write the magnitude first and then negate it: one that has its highest bit set gets
// an octet for the sign, also where two's complement needs none. What is shown is the octets that
// QCA gives.
void TestMatrix::negativeSerials()
{
    QFETCH(QByteArray, serial);
    QFETCH(QString, text);
    Parts parts;
    parts.serial = serial;
    QCOMPARE(
        propertiesOf(decoded(certificate(parts))).value(QStringLiteral("serialNumber")).toString(),
        text);
}

void TestMatrix::largeArcs()
{
    // An arc of a UUID, as openssl writes it.
    const QByteArray uuid = hex("6983fbf5d5f4bbeb9ce29bb99ee8a1d6f0a48e57");
    Parts parts;
    parts.subject = name(attribute(uuid, "value"));
    parts.extensions = extension(purposesOid, derElement(0x30, oidElement(uuid)));
    const QCA::Certificate certificate = decoded(TrivexTest::certificate(parts));
    const QString dotted = QStringLiteral("2.25.337570280583575728846636146290183440215");
    QCOMPARE(certificate.subjectInfoOrdered().value(0).type().id(), dotted);
    QCOMPARE(certificate.constraints().value(0).id(), dotted);
    for (const quint64 arc : {quint64(1) << 57, quint64(1) << 62, (quint64(1) << 63) - 1}) {
        parts.subject = name(attribute(oidContent({2, 25, arc}), "value"));
        QCOMPARE(decoded(TrivexTest::certificate(parts)).subjectInfoOrdered().value(0).type().id(),
                 QStringLiteral("2.25.%1").arg(arc));
    }
}

// An identifier that is longer than needed must not pass for the one that it would be.
void TestMatrix::paddedIdentifiers()
{
    Parts parts;
    parts.subject = name(attribute(hex("55048003"), "none"));
    QCOMPARE(decoded(certificate(parts)).commonName(), QString());
}

// In every place that shows text, and in all types of it.
void TestMatrix::marksOfByteOrder()
{
    const QString marked = QChar(QChar::ByteOrderMark) + QStringLiteral("Text");
    for (const int tag : {0x0c, 0x13, 0x14, 0x16}) {
        const QByteArray text = marked.toUtf8();
        Parts parts;
        parts.subject = derElement(0x30,
                                   derElement(0x31, attribute(commonNameOid, text, tag))
                                       + derElement(0x31, attribute(hex("550409"), text, tag)));
        const QVariantMap shown = propertiesOf(decoded(certificate(parts)));
        QCOMPARE(shown.value(QStringLiteral("commonName")).toString(), marked);
        QCOMPARE(shown.value(QStringLiteral("subjectName")).toString(), marked);
        QCOMPARE(shown.value(QStringLiteral("subjecAddress")).toString(), marked);
    }
}

void TestMatrix::locationsInUtf8()
{
    const QString address = QStringLiteral("http://example.org/путь");
    const QByteArray uri = derElement(0x86, address.toUtf8());
    const auto access = [&](const char *method) -> QByteArray {
        return derElement(0x30, oidElement(hex(method)) + uri);
    };
    Parts parts;
    parts.extensions =
        extension(pointsOid,
                  derElement(0x30, derElement(0x30, derElement(0xa0, derElement(0xa0, uri)))))
        + extension(accessOid,
                    derElement(0x30, access("2b06010505073001") + access("2b06010505073002")));
    const QCA::Certificate certificate = decoded(TrivexTest::certificate(parts));
    QCOMPARE(certificate.crlLocations(), QStringList(address));
    QCOMPARE(certificate.ocspLocations(), QStringList(address));
    QCOMPARE(certificate.issuerLocations(), QStringList(address));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestMatrix test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_matrix.moc"
