// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/filecontents.h"
#include "tests/support/testcertificates.h"

#include <QtTest>

using namespace Trivex;
using TrivexTest::TestAuthority;

using Kinds = QVector<int>;

Q_DECLARE_METATYPE(Kinds)

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
    QTest::newRow("raw, RSA") << run(QStringLiteral("dgst -sha256 -sign rsa.pem letter.txt")) << raw
                              << Kinds();
    QTest::newRow("raw, EC") << run(QStringLiteral("dgst -sha256 -sign ec.pem letter.txt")) << raw
                             << Kinds();
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
    QTest::newRow("request") << contents("asker.csr") << objects << request;
    QTest::newRow("request, DER") << run(QStringLiteral("req -in asker.csr -outform DER"))
                                  << objects << request;
    QTest::newRow("list") << contents("list.pem") << objects << list;
    QTest::newRow("list, DER") << run(QStringLiteral("crl -in list.pem -outform DER")) << objects
                               << list;
    keyRows();
    containerRows();
    signatureRows();
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
    QCOMPARE(open.objects.first().secret.toByteArray(),
             run(QStringLiteral("pkcs8 -topk8 -nocrypt -in ec.pem -outform DER")));
    QVERIFY(open.objects.first().der.isEmpty());
    const FileContents closed =
        readFileContents(run(QStringLiteral("pkcs8 -topk8 -in ec.pem -passout pass:x")));
    QVERIFY(closed.objects.first().isEncrypted);
    QVERIFY(closed.objects.first().secret.isEmpty());
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

void TestFileContents::manyCertificatesTakeNoTime()
{
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(readFileContents(m_pem.repeated(10000)).objects.size(), 10000);
    const qint64 pem = clock.restart();
    // Beginnings without an end.
    QCOMPARE(readFileContents(QByteArray("-----BEGIN CERTIFICATE-----\n").repeated(40000)).form,
             FileContents::Damaged);
    const qint64 begins = clock.elapsed();
    qInfo("10,000 certificates: %lld ms, 40,000 beginnings: %lld ms", pem, begins);
    QVERIFY(pem < 1000);
    QVERIFY(begins < 1000);
}

QTEST_GUILESS_MAIN(TestFileContents)

#include "tst_filecontents.moc"
