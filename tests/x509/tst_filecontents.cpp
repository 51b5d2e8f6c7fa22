// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/filecontents.h"
#include "qca/base/bounds.h"
#include "qca/keys/keymaterial.h"
#include "tests/support/processortime.h"
#include "tests/support/testcertificates.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace Trivex;
using TrivexTest::processorTime;
using TrivexTest::TestAuthority;

using Kinds = QVector<int>;

Q_DECLARE_METATYPE(Kinds)

namespace {

/// The same at each run.
QByteArray noise(int size)
{
    QRandomGenerator random(20260101);
    QByteArray bytes(size, '\0');
    for (char &c : bytes)
        c = char(random.bounded(256));
    return bytes;
}

QByteArray toPem(const QByteArray &label, const QByteArray &der)
{
    return "-----BEGIN " + label + "-----\n" + der.toBase64() + "\n-----END " + label + "-----\n";
}

/// As RFC 5755 has it, signed by nobody: a holder by name, an issuer, SHA-256 with RSA, a serial
/// number, a period, no attributes.
QByteArray attributeCertificate()
{
    const QByteArray algorithm = QByteArray::fromHex("300d06092a864886f70d01010b0500");
    const QByteArray name = QByteArray::fromHex("a40e300c310a300806035504030c0141");
    const auto sequence = [](const QByteArray &content) -> QByteArray {
        return QByteArray("\x30") + char(content.size()) + content;
    };
    const QByteArray holder = sequence("\xa1" + QByteArray(1, char(name.size())) + name);
    const QByteArray issuer = "\xa0" + QByteArray(1, char(name.size() + 2)) + sequence(name);
    const QByteArray times =
        sequence(QByteArray("\x18\x0f") + "20260101000000Z" + "\x18\x0f" + "20270101000000Z");
    const QByteArray body = QByteArray::fromHex("020101") + holder + issuer + algorithm
        + QByteArray::fromHex("020105") + times + QByteArray::fromHex("3000");
    const QByteArray signature = QByteArray::fromHex("03050001020304");
    const QByteArray all =
        "\x30\x81" + QByteArray(1, char(body.size())) + body + algorithm + signature;
    return "\x30\x81" + QByteArray(1, char(all.size())) + all;
}

} // namespace

/// What a file is, its bytes say.
class TestFileContents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void forms_data();
    void forms();
    void everyObjectOfAFile();
    void privateKeysAreKept();
    void damagedPartsAreCounted();
    void keysFindTheirCertificates();
    void manyKeysAreCounted();
    void stops();
    void manyCertificatesTakeNoTime();

private:
    QByteArray run(const QString &arguments) const
    {
        return m_authority.openssl(arguments.split(QLatin1Char(' ')));
    }
    QByteArray contents(const char *name) const
    {
        QFile file(m_authority.file(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const char *name, const QByteArray &bytes) const
    {
        QFile file(m_authority.file(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }
    void keyRows();
    void containerRows();
    void signatureRows();
    void rawSignatureRows();
    void namedRows();
    void cutRows();
    void documentRows();

    QCA::Initializer m_qca;
    TestAuthority m_authority;
    QByteArray m_der;
    QByteArray m_pem;
};

void TestFileContents::initTestCase()
{
    QVERIFY(m_authority.isValid());
    m_der = m_authority.certificate();
    m_pem = contents("ca.pem");
    QVERIFY(!m_der.isEmpty() && m_pem.contains("-----BEGIN CERTIFICATE-----"));
    write("rsa.pem", run(QStringLiteral("genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048")));
    write("ec.pem", run(QStringLiteral("genpkey -algorithm EC -pkeyopt ec_paramgen_curve:P-256")));
    write("asker.csr", run(QStringLiteral("req -new -key rsa.pem -subj /CN=Asker")));
    write("own.pem", run(QStringLiteral("req -x509 -key rsa.pem -subj /CN=Own -days 9")));
    write("index.txt", {});
    write("ca.cnf",
          "[ca]\ndefault_ca=d\n[d]\ndatabase=index.txt\ndefault_md=sha256\n"
          "default_crl_days=9\n");
    write("list.pem",
          run(QStringLiteral("ca -gencrl -config ca.cnf -keyfile rsa.pem -cert own.pem")));
    write("letter.txt", "Dear all,\n");
    QVERIFY(contents("list.pem").contains("X509 CRL"));
}

void TestFileContents::keyRows()
{
    const Kinds key = {FileObject::PrivateKey};
    const Kinds open = {FileObject::PublicKey};
    const auto row = [&](const char *name, const QString &command, const Kinds &kinds) {
        QTest::newRow(name) << run(command) << int(FileContents::Objects) << kinds;
    };
    row("private key", QStringLiteral("pkey -in ec.pem"), key);
    row("private key, DER", QStringLiteral("pkey -in ec.pem -outform DER"), key);
    row("RSA key in its old form", QStringLiteral("rsa -in rsa.pem -traditional"), key);
    row("RSA key in its old form, DER", QStringLiteral("rsa -in rsa.pem -traditional -outform DER"),
        key);
    row("EC key in its old form", QStringLiteral("ec -in ec.pem"), key);
    row("protected key", QStringLiteral("pkcs8 -topk8 -in ec.pem -passout pass:x"), key);
    row("protected key, DER",
        QStringLiteral("pkcs8 -topk8 -in ec.pem -passout pass:x -outform DER"), key);
    row("protected key in its old form",
        QStringLiteral("rsa -in rsa.pem -traditional -aes128 -passout pass:x"), key);
    row("public key", QStringLiteral("pkey -in ec.pem -pubout"), open);
    row("public key, DER", QStringLiteral("pkey -in ec.pem -pubout -outform DER"), open);
    row("RSA public key in its old form", QStringLiteral("rsa -in rsa.pem -RSAPublicKey_out"),
        open);
}

void TestFileContents::containerRows()
{
    const Kinds one = {FileObject::Certificate};
    const Kinds two = {FileObject::Certificate, FileObject::Certificate};
    const Kinds both = {FileObject::Certificate, FileObject::RevocationList};
    const int collection = FileContents::Collection;
    const QByteArray der =
        run(QStringLiteral("crl2pkcs7 -nocrl -certfile ca.pem -certfile own.pem -outform DER"));
    QTest::newRow("P7B, DER") << der << collection << two;
    QTest::newRow("P7B") << run(QStringLiteral("crl2pkcs7 -nocrl -certfile ca.pem")) << collection
                         << one;
    QTest::newRow("P7B labelled as a certificate")
        << "-----BEGIN CERTIFICATE-----\n" + der.toBase64() + "\n-----END CERTIFICATE-----\n"
        << collection << two;
    QTest::newRow("P7B with a list")
        << run(QStringLiteral("crl2pkcs7 -in list.pem -certfile ca.pem")) << collection << both;
    QTest::newRow("bundle") << run(
        QStringLiteral("pkcs12 -export -inkey rsa.pem -in own.pem -passout pass:x"))
                            << int(FileContents::Bundle) << Kinds();
    QTest::newRow("bundle that is cut off")
        << run(QStringLiteral("pkcs12 -export -inkey rsa.pem -in own.pem -passout pass:x"))
               .left(100)
        << int(FileContents::Bundle) << Kinds();
}

void TestFileContents::signatureRows()
{
    const Kinds one = {FileObject::Certificate};
    const QString sign = QStringLiteral("cms -sign -in letter.txt -signer own.pem -inkey rsa.pem "
                                        "-binary -outform ");
    QTest::newRow("detached") << run(sign + QStringLiteral("DER")) << int(FileContents::Message)
                              << one;
    QTest::newRow("with its document")
        << run(sign + QStringLiteral("PEM -nodetach")) << int(FileContents::Message) << one;
    QTest::newRow("in pieces of no length")
        << run(sign + QStringLiteral("DER -nodetach -stream")) << int(FileContents::Message) << one;
    const int raw = FileContents::RawSignature;
    const Kinds encrypted = {FileObject::EncryptedMessage};
    const QString encrypt = QStringLiteral("cms -encrypt -in letter.txt -binary -outform ");
    const int objects = FileContents::Objects;
    QTest::newRow("encrypted, DER")
        << run(encrypt + QStringLiteral("DER own.pem")) << objects << encrypted;
    QTest::newRow("encrypted") << run(encrypt + QStringLiteral("PEM own.pem")) << objects
                               << encrypted;
    QTest::newRow("encrypted, in pieces of no length")
        << run(encrypt + QStringLiteral("DER -stream own.pem")) << objects << encrypted;
    QTest::newRow("encrypted with a check of its own")
        << run(encrypt + QStringLiteral("PEM -aes-256-gcm own.pem")) << objects << encrypted;
    QTest::newRow("encrypted by a password")
        << run(QStringLiteral("cms -EncryptedData_encrypt -in letter.txt -secretkey "
                              "000102030405060708090a0b0c0d0e0f -aes128 -outform PEM"))
        << objects << encrypted;
    QTest::newRow("PKCS#7, encrypted")
        << run(QStringLiteral("smime -encrypt -in letter.txt -outform PEM own.pem")) << objects
        << encrypted;
    QTest::newRow("raw, RSA") << run(QStringLiteral("dgst -sha256 -sign rsa.pem letter.txt")) << raw
                              << Kinds();
    QTest::newRow("raw, EC") << run(QStringLiteral("dgst -sha256 -sign ec.pem letter.txt")) << raw
                             << Kinds();
}

void TestFileContents::rawSignatureRows()
{
    // The lengths of RSA keys and curves; what no cipher has spoilt looks like noise.
    for (const int size :
         {40, 48, 56, 64, 96, 114, 128, 132, 160, 192, 256, 320, 384, 448, 512, 768, 1024, 2048})
        QTest::addRow("raw, %d bytes", size)
            << noise(size) << int(FileContents::RawSignature) << Kinds();
    const int document = FileContents::Document;
    QTest::newRow("noise of another length") << noise(193) << document << Kinds();
    QTest::newRow("much noise") << noise(4096) << document << Kinds();
    // Compressed, as long as a signature.
    QByteArray packed = QByteArray::fromHex("1f8b0800000000000003") + noise(310);
    QTest::newRow("compressed file") << packed << document << Kinds();
    QByteArray picture = noise(96);
    picture.replace(0, 40, QByteArray(40, '\0'));
    QTest::newRow("much of one byte") << picture << document << Kinds();
}

/// What is ours in a wide sense, and can't be imported.
void TestFileContents::namedRows()
{
    const Kinds attributes = {FileObject::AttributeCertificate};
    const Kinds answer = {FileObject::RevocationAnswer};
    const int objects = FileContents::Objects;
    QTest::newRow("attribute certificate")
        << toPem("ATTRIBUTE CERTIFICATE", attributeCertificate()) << objects << attributes;
    QTest::newRow("attribute certificate, DER") << attributeCertificate() << objects << attributes;
    const QByteArray collection =
        run(QStringLiteral("crl2pkcs7 -nocrl -certfile ca.pem -outform DER"));
    QVERIFY(!collection.isEmpty());
    // RFC 6960, 4.2.1: successful, with an answer; and unauthorized.
    const QByteArray good = QByteArray::fromHex("3010 0a0100 a00b 3009 06072a860348ce3d01");
    QTest::newRow("answer about revocation, DER") << good << objects << answer;
    QTest::newRow("answer about revocation") << toPem("OCSP RESPONSE", good) << objects << answer;
    QTest::newRow("refusal to answer") << QByteArray::fromHex("30030a0106") << objects << answer;
    // Without a password: "none" stands for its cipher. Nothing can be done with either kind.
    QTest::newRow("key of SSH") << toPem("OPENSSH PRIVATE KEY",
                                         QByteArray("openssh-key-v1\0\0\0\0\4none", 23))
                                << objects << Kinds{FileObject::SshKey};
    QTest::newRow("certificate and attribute certificate")
        << m_pem + toPem("ATTRIBUTE CERTIFICATE", attributeCertificate()) << objects
        << Kinds{FileObject::Certificate, FileObject::AttributeCertificate};
}

void TestFileContents::cutRows()
{
    const int damaged = FileContents::Damaged;
    const struct {
        const char *name;
        QByteArray whole;
    } cut[] = {
        {"certificate", m_der},
        {"request", run(QStringLiteral("req -in asker.csr -outform DER"))},
        {"list", run(QStringLiteral("crl -in list.pem -outform DER"))},
        {"private key", run(QStringLiteral("pkey -in rsa.pem -outform DER"))},
        {"RSA key in its old form",
         run(QStringLiteral("rsa -in rsa.pem -traditional -outform DER"))},
        {"EC key in its old form", run(QStringLiteral("ec -in ec.pem -outform DER"))},
        {"public key", run(QStringLiteral("pkey -in rsa.pem -pubout -outform DER"))},
        {"P7B", run(QStringLiteral("crl2pkcs7 -nocrl -certfile ca.pem -outform DER"))},
        {"encrypted message",
         run(QStringLiteral("cms -encrypt -in letter.txt -outform DER own.pem"))},
    };
    for (const auto &one : cut) {
        QTest::addRow("%s without its last byte", one.name)
            << one.whole.chopped(1) << damaged << Kinds();
        QTest::addRow("half of a %s", one.name)
            << one.whole.left(one.whole.size() / 2) << damaged << Kinds();
        QTest::addRow("the beginning of a %s", one.name)
            << one.whole.left(24) << damaged << Kinds();
    }
    QTest::newRow("half of a certificate without its lines")
        << m_der.toBase64().left(301) << damaged << Kinds();
    const int document = FileContents::Document;
    QTest::newRow("long length and a text")
        << QByteArray::fromHex("30820400") + "Dear all, it is a text" << document << Kinds();
    QTest::newRow("digits") << QByteArray("0000000000000000000000000000") << document << Kinds();
}

void TestFileContents::documentRows()
{
    const int document = FileContents::Document;
    QByteArray text("A text of the length of a signature. ");
    text = text.repeated(7).left(256);
    QTest::newRow("text") << QByteArray("hello\n") << document << Kinds();
    QTest::newRow("text as long as a signature") << text << document << Kinds();
    QTest::newRow("Russian text as long as a signature")
        << QString::fromUtf8("Письмо, ").repeated(18).toUtf8().left(256) << document << Kinds();
    QTest::newRow("text that begins as DER") << QByteArray("0\x06hello!") << document << Kinds();
    QTest::newRow("number") << QByteArray("0") << document << Kinds();
    QTest::newRow("PDF") << QByteArray("%PDF-1.7\n%\xe2\xe3\xcf\xd3\n1 0 obj\n") << document
                         << Kinds();
    QTest::newRow("Base64 of a text")
        << QByteArray("Hello, all of you\n").toBase64() << document << Kinds();
    QTest::newRow("key of another program")
        << QByteArray("-----BEGIN PGP PUBLIC KEY BLOCK-----\n\nmQENBF\n=abcd\n"
                      "-----END PGP PUBLIC KEY BLOCK-----\n")
        << document << Kinds();
    const int damaged = FileContents::Damaged;
    QTest::newRow("damaged certificate")
        << QByteArray("-----BEGIN CERTIFICATE-----\nMIIB\n-----END CERTIFICATE-----\n") << damaged
        << Kinds();
    QTest::newRow("without its end") << m_pem.left(m_pem.size() / 2) << damaged << Kinds();
    QByteArray wrong = m_der;
    wrong[int(wrong.indexOf(QByteArray::fromHex("170d")))] = '\x04'; // its dates
    QTest::newRow("damaged certificate, DER") << wrong << damaged << Kinds();
}

void TestFileContents::forms_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("form");
    QTest::addColumn<Kinds>("kinds");
    const int objects = FileContents::Objects;
    const Kinds one = {FileObject::Certificate};
    const Kinds request = {FileObject::Request};
    const Kinds list = {FileObject::RevocationList};
    QTest::newRow("certificate") << m_pem << objects << one;
    QTest::newRow("certificate, DER") << m_der << objects << one;
    QTest::newRow("certificate, DER and a line break") << m_der + "\r\n" << objects << one;
    QTest::newRow("certificate without its lines") << m_der.toBase64() << objects << one;
    QTest::newRow("certificate below its text")
        << run(QStringLiteral("x509 -in ca.pem -text")) << objects << one;
    QTest::newRow("trusted certificate")
        << run(QStringLiteral("x509 -in ca.pem -trustout -addtrust serverAuth")) << objects << one;
    const QString text = QString::fromLatin1(m_pem);
    const QByteArray wide(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    QTest::newRow("certificate in letters of two bytes") << "\xff\xfe" + wide << objects << one;
    QTest::newRow("bare Base64 behind a byte order mark")
        << "\xef\xbb\xbf" + m_der.toBase64() << objects << one;
    QTest::newRow("request") << contents("asker.csr") << objects << request;
    QTest::newRow("request, DER") << run(QStringLiteral("req -in asker.csr -outform DER"))
                                  << objects << request;
    QTest::newRow("list") << contents("list.pem") << objects << list;
    QTest::newRow("list, DER") << run(QStringLiteral("crl -in list.pem -outform DER")) << objects
                               << list;
    keyRows();
    containerRows();
    signatureRows();
    rawSignatureRows();
    cutRows();
    namedRows();
    documentRows();
}

void TestFileContents::forms()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, form);
    QFETCH(Kinds, kinds);
    QVERIFY(!bytes.isEmpty());
    const FileContents contents = readFileContents(bytes);
    QCOMPARE(int(contents.form), form);
    Kinds found;
    for (const FileObject &object : contents.objects)
        found += object.kind;
    QCOMPARE(found, kinds);
}

void TestFileContents::everyObjectOfAFile()
{
    const QByteArray all = m_pem + contents("own.pem") + "a word\n" + contents("asker.csr")
        + contents("list.pem") + contents("ec.pem");
    const FileContents contents = readFileContents(all);
    QCOMPARE(contents.objects.size(), 5);
    QCOMPARE(contents.broken, 0);
    QCOMPARE(contents.objects.first().der, m_der);
    QVERIFY(contents.has(FileObject::PrivateKey));
    // DER, one behind the other.
    QCOMPARE(readFileContents(m_der + m_der).objects.size(), 2);
}

void TestFileContents::privateKeysAreKept()
{
    const FileContents open = readFileContents(contents("ec.pem"));
    QVERIFY(!open.objects.first().isEncrypted);
    QCOMPARE(open.objects.first().key->privateInfo().toByteArray(),
             run(QStringLiteral("pkcs8 -topk8 -nocrypt -in ec.pem -outform DER")));
    QVERIFY(open.objects.first().der.isEmpty());
    const FileContents closed =
        readFileContents(run(QStringLiteral("pkcs8 -topk8 -in ec.pem -passout pass:x")));
    QVERIFY(closed.objects.first().isEncrypted);
    QVERIFY(!closed.objects.first().key);
    QVERIFY(privateKeyOf(closed.objects.first()).isNull());
}

void TestFileContents::damagedPartsAreCounted()
{
    QByteArray broken = contents("own.pem");
    broken.replace(broken.indexOf("MII"), 40, QByteArray(40, 'A'));
    const FileContents contents = readFileContents(m_pem + broken + m_pem);
    QCOMPARE(contents.form, FileContents::Objects);
    QCOMPARE(contents.objects.size(), 2);
    QCOMPARE(contents.broken, 1);
}

void TestFileContents::keysFindTheirCertificates()
{
    const FileContents found =
        readFileContents(m_pem + contents("rsa.pem") + contents("ec.pem") + contents("own.pem"));
    QCOMPARE(found.objects.size(), 4);
    QCOMPARE(found.objects.at(1).certificate, 3);
    QCOMPARE(found.objects.at(2).certificate, -1);
    const QCA::PrivateKey key = privateKeyOf(found.objects.at(1));
    QCOMPARE(key.bitSize(), 2048);
    QVERIFY(key.isRSA());
    // A curve that is written by its numbers in one of the two.
    write("numbers.pem",
          run(QStringLiteral("ec -in ec.pem -param_enc explicit -conv_form uncompressed")));
    write("curve.pem", run(QStringLiteral("req -x509 -key ec.pem -subj /CN=Curve -days 9")));
    const FileContents curve = readFileContents(contents("numbers.pem") + contents("curve.pem"));
    QCOMPARE(curve.objects.size(), 2);
    QCOMPARE(curve.objects.first().certificate, 1);
}

/// Each costs a power of numbers with 10,000 bits, or as it pleases whoever made the file.
void TestFileContents::manyKeysAreCounted()
{
    const QByteArray key = run(QStringLiteral("pkey -in rsa.pem -outform DER"));
    const QByteArray pem = toPem("PRIVATE KEY", key);
    const FileContents many = readFileContents(m_pem + pem.repeated(1000));
    QCOMPARE(many.objects.size(), 1 + MaxFileKeys);
    QCOMPARE(many.unreadKeys, 1000 - MaxFileKeys);
    QCOMPARE(many.broken, 0);
    // The same one after the other in DER, and with keys that can't be read.
    const FileContents der = readFileContents(key.repeated(100));
    QCOMPARE(der.objects.size() + der.unreadKeys, 100);
    QCOMPARE(der.objects.size(), MaxFileKeys);
    QByteArray wrong = key;
    wrong[wrong.indexOf(QByteArray::fromHex("2a864886f70d010101")) + 8] = '\x7f';
    const FileContents broken = readFileContents(toPem("PRIVATE KEY", wrong).repeated(100));
    QCOMPARE(broken.objects.size() + broken.broken, MaxFileKeys);
    QCOMPARE(broken.unreadKeys, 100 - MaxFileKeys);
}

void TestFileContents::stops()
{
    const std::atomic_bool stopped{true};
    const QByteArray many = m_der.repeated(10000);
    const qint64 begin = processorTime();
    QCOMPARE(readFileContents(many).objects.size(), 10000);
    const qint64 middle = processorTime();
    QVERIFY(readFileContents(many, &stopped).objects.size() < 2);
    const qint64 whole = middle - begin;
    const qint64 part = processorTime() - middle;
    QVERIFY2(part < whole / 2, qPrintable(QStringLiteral("%1 of %2").arg(part).arg(whole)));
}

void TestFileContents::manyCertificatesTakeNoTime()
{
    const auto timeOf = [](const QByteArray &contents) {
        const qint64 before = processorTime();
        readFileContents(contents);
        return processorTime() - before;
    };
    const QByteArray begin("-----BEGIN CERTIFICATE-----\n"); // and no end
    QCOMPARE(readFileContents(m_pem.repeated(10000)).objects.size(), 10000);
    QCOMPARE(readFileContents(begin.repeated(40000)).form, FileContents::Damaged);
    for (const QByteArray &piece : {m_pem, begin}) {
        const qint64 few = timeOf(piece.repeated(10000));
        const qint64 many = timeOf(piece.repeated(40000));
        // Sixteen times where the work grows with the square, four times where it does not.
        QVERIFY2(many < 9 * few, qPrintable(QStringLiteral("%1 and %2 ns").arg(few).arg(many)));
    }
}

QTEST_GUILESS_MAIN(TestFileContents)

#include "tst_filecontents.moc"
