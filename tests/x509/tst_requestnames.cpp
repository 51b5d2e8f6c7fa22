// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Requests with alternative names of every kind, and with odd ones: each is shown, and an edit of
// something else keeps its bytes.
#include "qca/adapter/reading.h"
#include "qca/adapter/requestmaking.h"
#include "qca/asn1/derwriter.h"
#include "qca/base/catalogues.h"
#include "qca/describe/description.h"
#include "qca/x509/infotypes.h"
#include "tests/support/derelement.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"
#include "tests/x509/requestsubject.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;
using TrivexTest::derElement;
using TrivexTest::hex;
using TrivexTest::requestSubject;

namespace {

constexpr char AlternativeNames[] = "2.5.29.17";
const QByteArray HostName = derElement(0x82, "a.example.org");
const QByteArray OtherHostName = derElement(0x82, "b.example.org");

QByteArray otherName(const char *oid, const QByteArray &value)
{
    return derElement(0xA0, Der::writeOid(oid) + derElement(0xA0, value));
}

QByteArray namesWith(const QByteArray &name, const QByteArray &host)
{
    return derElement(0x30, host + name);
}

QByteArray configurationWith(const QByteArray &names)
{
    return "[req]\nprompt = no\ndistinguished_name = name\nreq_extensions = extensions\n"
           "[name]\nCN = Old Name\n[extensions]\nkeyUsage = digitalSignature\n"
           "subjectAltName = critical, DER:"
        + names.toHex() + "\nextendedKeyUsage = clientAuth\n";
}

QCA::CertificateRequest requestWith(const QByteArray &names)
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("req.cnf")));
    file.open(QIODevice::WriteOnly);
    file.write(configurationWith(names));
    file.close();
    return requestFromDer(Corpus::openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-config"), file.fileName(),
         QStringLiteral("-key"), Corpus::path(QStringLiteral("rsa.key")),
         QStringLiteral("-outform"), QStringLiteral("DER")}));
}

QCA::PrivateKey key()
{
    return QCA::PrivateKey::fromPEM(QString::fromLatin1(Corpus::read(QStringLiteral("rsa.key"))),
                                    {}, nullptr, QStringLiteral("qca-norvel-openssl"));
}

/// What the viewer shows of the names that are asked for.
QString shownNames(const QCA::CertificateRequest &request)
{
    const auto groups = describe(ShownKind::Request, request.toDER());
    for (const ShownGroup &group : groups) {
        for (const ShownRow &row : group.rows) {
            if (row.id == AlternativeNames)
                return row.value;
        }
    }
    return {};
}

bool isVerified(const QCA::CertificateRequest &request)
{
    return !Corpus::openssl({QStringLiteral("req"), QStringLiteral("-verify"),
                             QStringLiteral("-noout"), QStringLiteral("-pubkey")},
                            request.toPEM().toLatin1())
                .isEmpty();
}

void row(const char *name, const QByteArray &der, const char *shown, bool isRead = true)
{
    QTest::newRow(name) << der << QString::fromUtf8(shown) << isRead;
}

} // namespace

class TestRequestNames : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { installCatalogues(QStringLiteral("trivex-app"), this); }
    void init();
    void shown_data();
    void shown();
    void keptWhenTheSubjectChanges_data() { shown_data(); }
    void keptWhenTheSubjectChanges();
    void keptWhenAHostNameChanges_data() { shown_data(); }
    void keptWhenAHostNameChanges();
    void keptWhenAHostNameIsAdded_data() { shown_data(); }
    void keptWhenAHostNameIsAdded();

private:
    QCA::Initializer m_initializer;
    QCA::CertificateRequest m_original;
    QCA::CertificateInfo m_info;
};

void TestRequestNames::shown_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    // libcrypto takes all of the names or none, and so do forms.
    QTest::addColumn<bool>("isRead");
    row("no other", {}, "");
    row("DNS", derElement(0x82, "c.example.org"), "DNS: c.example.org");
    row("DNS of all hosts", derElement(0x82, "*.example.org"), "DNS: *.example.org");
    row("DNS, empty", derElement(0x82, {}), "DNS: ");
    row("DNS with an end in the middle", derElement(0x82, QByteArray("a\0b", 3)),
        "DNS: a\xEF\xBF\xBD"
        "b");
    row("DNS beyond ASCII", derElement(0x82, "\xD0\xB6.example.org"), "DNS: ж.example.org");
    row("DNS in pieces", derElement(0xA2, derElement(0x04, "c.") + derElement(0x04, "org")),
        "DNS: c.org");
    row("the same DNS", HostName, "DNS: a.example.org");
    row("e-mail", derElement(0x81, "a@example.org"), "E-mail: a@example.org");
    row("e-mail, none", derElement(0x81, "nobody"), "E-mail: nobody");
    row("URI", derElement(0x86, "https://example.org/"), "URI: https://example.org/");
    row("IP, version 4", derElement(0x87, hex("c0000201")), "IP address: 192.0.2.1");
    row("IP, version 6", derElement(0x87, hex("20010db8000000000000000000000001")),
        "IP address: 2001:db8::1");
    row("IP, version 4 in 6", derElement(0x87, hex("00000000000000000000ffffc0000201")),
        "IP address: ::ffff:192.0.2.1");
    row("IP with a mask", derElement(0x87, hex("c0000200ffffff00")),
        "IP address: 192.0.2.0/255.255.255.0");
    row("IP of five bytes", derElement(0x87, hex("c000020101")), "C0:00:02:01:01");
    row("IP, empty", derElement(0x87, {}), "IP address: ");
    row("directory", derElement(0xA4, TrivexTest::commonName("Anna")), "Directory name: CN=Anna");
    row("directory, empty", derElement(0xA4, derElement(0x30, {})), "Directory name: ");
    row("registered identifier", derElement(0x88, Der::writeOid("1.2.3.4").mid(2)),
        "Registered identifier: 1.2.3.4");
    row("user principal", otherName("1.3.6.1.4.1.311.20.2.3", derElement(0x0C, "p@example.org")),
        "User principal name: p@example.org");
    row("XMPP", otherName("1.3.6.1.5.5.7.8.5", derElement(0x0C, "x@example.org")), "x@example.org");
    row("XMPP that is a number", otherName("1.3.6.1.5.5.7.8.5", hex("020105")), "02:01:05");
    row("unknown other name", otherName("1.2.3.4.5.6", derElement(0x30, {})),
        "Other name 1.2.3.4.5.6: 30:00");
    row("other name of many parts",
        otherName("1.2.3.4.5.6", derElement(0x30, hex("020101") + hex("0500"))),
        "Other name 1.2.3.4.5.6: 30:05:02:01:01:05:00");
    row("X.400", derElement(0xA3, hex("3000")), "X.400 address: 30:00");
    row("EDI", derElement(0xA5, derElement(0xA1, derElement(0x0C, "y"))),
        "EDI party: A1:03:0C:01:79");
    row("no such kind", derElement(0x8A, "x"), "8A:01:78", false);
    row("registered identifier, none", derElement(0x88, hex("80")), "80", false);
    row("other name without a value", derElement(0xA0, Der::writeOid("1.2.3.4")), "06:03:2A:03:04",
        false);
    row("directory that is none", derElement(0xA4, hex("0500")), "05:00", false);
    row("cut", hex("8210") + "cut", "82:10:63:75:74", false);
}

void TestRequestNames::init()
{
    if (!QTest::currentDataTag())
        return;
    QFETCH(QByteArray, name);
    m_original = requestWith(namesWith(name, HostName));
    QVERIFY(!m_original.isNull());
    m_info = requestSubject(m_original);
    QCOMPARE(infoValue(m_info, CommonNameInfo), QStringLiteral("Old Name"));
}

void TestRequestNames::shown()
{
    QFETCH(QString, text);
    QFETCH(bool, isRead);
    const QString shown = shownNames(m_original);
    QVERIFY2(shown.contains(QLatin1String("DNS: a.example.org")), qPrintable(shown));
    QVERIFY2(shown.contains(text), qPrintable(shown));
    QCOMPARE(m_info.values(infoType(QCA::DNS)).contains(QStringLiteral("a.example.org")), isRead);
}

void TestRequestNames::keptWhenTheSubjectChanges()
{
    QFETCH(QByteArray, name);
    m_info.remove(infoType(CommonNameInfo));
    m_info.insert(infoType(CommonNameInfo), QStringLiteral("New Name"));
    const QCA::CertificateRequest request =
        editedRequest(m_original, {m_info, m_original.constraints()}, key());
    QCOMPARE(infoValue(requestSubject(request), CommonNameInfo), QStringLiteral("New Name"));
    QVERIFY(request.toDER().contains(namesWith(name, HostName)));
    QVERIFY(isVerified(request));
}

void TestRequestNames::keptWhenAHostNameChanges()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, isRead);
    if (!isRead || name == HostName)
        return; // there is none to be changed, or none that is the only one
    m_info.remove(infoType(QCA::DNS), QStringLiteral("a.example.org"));
    m_info.insert(infoType(QCA::DNS), QStringLiteral("b.example.org"));
    const QCA::CertificateRequest request =
        editedRequest(m_original, {m_info, m_original.constraints()}, key());
    QVERIFY(request.toDER().contains(namesWith(name, OtherHostName)));
    QVERIFY(isVerified(request));
}

void TestRequestNames::keptWhenAHostNameIsAdded()
{
    QFETCH(QByteArray, name);
    m_info.insert(infoType(QCA::DNS), QStringLiteral("b.example.org"));
    const QCA::CertificateRequest request =
        editedRequest(m_original, {m_info, m_original.constraints()}, key());
    const QByteArray der = request.toDER();
    QVERIFY(!der.isEmpty());
    const bool isLast = der.contains(derElement(0x30, HostName + name + OtherHostName));
    // What is no element stays behind all others.
    const bool isBefore = der.contains(derElement(0x30, HostName + OtherHostName + name));
    QVERIFY2(isLast || isBefore, der.toHex().constData());
    QVERIFY(isVerified(request));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestRequestNames test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestnames.moc"
