// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/filecontents.h"
#include "qca/cms/messagecheck.h"
#include "tests/cms/cmsfixture.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

/// Messages of other programs, and ours after somebody laid hands on them.
class TestCmsChecking : public CmsFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void openssl_data();
    void openssl();
    void mails_data();
    void mails();
    void certtoolMakes();
    void nss();
    void pieces();
    void changedDocument();
    void everyByte_data();
    void everyByte();
    void swappedCertificate();
    void attributeNamesAnother();
    void severalSigners();
    void missingCertificate();
    void missingDocument();
    void unknownDigest();
    void weakDigest();
    void contentTypeIsSigned();
    void noMessages_data();
    void noMessages();
    void documentIsTheFileOfThatMoment();

private:
    /// `openssl cms -sign` with the key that was made last.
    QString signed_(const QString &name, const QStringList &further);
    QString m_document;
};

void TestCmsChecking::initTestCase()
{
    if (!m_authority->isValid()) {
        qInfo("SKIP the openssl program is not installed");
        QSKIP("the openssl program is not installed");
    }
    m_document = write(QStringLiteral("document"), "Pay 100 to Mary\r\nand 50 to Paul\r\n");
}

QString TestCmsChecking::signed_(const QString &name, const QStringList &further)
{
    const QString message = file(name);
    const QStringList arguments = {QStringLiteral("cms"),     QStringLiteral("-sign"),
                                   QStringLiteral("-in"),     m_document,
                                   QStringLiteral("-signer"), file(QStringLiteral("bundle.pem")),
                                   QStringLiteral("-inkey"),  file(QStringLiteral("bundle.key")),
                                   QStringLiteral("-out"),    message};
    return run(QStringLiteral("openssl"), arguments + further) == 0 ? message : QString();
}

void TestCmsChecking::openssl_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("options");
    QTest::addColumn<bool>("isAttached");
    for (const char *kind : {"rsa:2048", "ec:P-256", "ec:P-521", "dsa"}) {
        const auto row = [&](const char *name, const char *options, bool isAttached) {
            QTest::addRow("%s %s", kind, name)
                << QString::fromLatin1(kind) << QString::fromLatin1(options) << isAttached;
        };
        row("detached", "-binary -outform DER", false);
        row("attached", "-binary -outform DER -nodetach", true);
        row("PEM", "-binary -outform PEM -nodetach", true);
        row("PEM, detached", "-binary -outform PEM", false);
        row("indefinite lengths", "-binary -outform DER -nodetach -stream", true);
        row("without attributes", "-binary -outform DER -noattr", false);
        row("key id", "-binary -outform DER -keyid", false);
        // libcrypto signs with DSA and its own digest only.
        if (QLatin1String(kind) == QLatin1String("dsa"))
            continue;
        row("with SHA-512", "-binary -outform DER -md sha512 -cades", false);
    }
    QTest::newRow("PSS") << QStringLiteral("rsa:2048")
                         << QStringLiteral("-binary -outform DER -keyopt rsa_padding_mode:pss")
                         << false;
}

void TestCmsChecking::openssl()
{
    QFETCH(QString, kind);
    QFETCH(QString, options);
    QFETCH(bool, isAttached);
    if (kind == QLatin1String("dsa")) {
        QVERIFY(!m_authority
                     ->openssl({QStringLiteral("genpkey"), QStringLiteral("-genparam"),
                                QStringLiteral("-algorithm"), QStringLiteral("DSA"),
                                QStringLiteral("-out"), QStringLiteral("dsa.pem")})
                     .isNull());
        QVERIFY(!m_authority
                     ->bundle({QStringLiteral("-paramfile"), QStringLiteral("dsa.pem")},
                              QStringLiteral("/CN=Signer"), QStringLiteral("x"),
                              QStringLiteral("signer"))
                     .isEmpty());
    } else {
        QVERIFY(!makeSigner(kind).isNull());
    }
    // Only a certificate that it issues itself gets a key's id from the program.
    if (options.contains(QLatin1String("-keyid")))
        QVERIFY(!m_authority
                     ->openssl({QStringLiteral("req"), QStringLiteral("-x509"),
                                QStringLiteral("-key"), QStringLiteral("bundle.key"),
                                QStringLiteral("-subj"), QStringLiteral("/CN=Signer"),
                                QStringLiteral("-out"), QStringLiteral("bundle.pem")})
                     .isNull());
    const QString message = signed_(QStringLiteral("made.p7s"), options.split(QLatin1Char(' ')));
    QVERIFY(!message.isEmpty());
    const MessageReport report = check(message, isAttached ? QString() : m_document);
    QCOMPARE(report.problem, MessageReport::NoProblem);
    QCOMPARE(report.isAttached, isAttached);
    QCOMPARE(report.signers.size(), 1);
    QCOMPARE(report.signers.first().verdict, SignerReport::Good);
    QCOMPARE(report.signers.first().time.isValid(), !options.contains(QLatin1String("-noattr")));
    const QString other = write(QStringLiteral("other"), "Pay 900 to Mary\r\nand 50 to Paul\r\n");
    QCOMPARE(verdict(message, other),
             int(isAttached ? SignerReport::Good : SignerReport::DocumentChanged));
}

void TestCmsChecking::mails_data()
{
    QTest::addColumn<QString>("options");
    QTest::newRow("two parts") << QString();
    QTest::newRow("one part") << QStringLiteral("-nodetach");
    QTest::newRow("text") << QStringLiteral("-text");
}

void TestCmsChecking::mails()
{
    QFETCH(QString, options);
    QVERIFY(!makeSigner(QStringLiteral("rsa:2048")).isNull());
    const QString message =
        signed_(QStringLiteral("mail.eml"), options.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QCOMPARE(verdict(message), int(SignerReport::Good));
    QByteArray text = read(message);
    if (text.contains("Pay 100"))
        QCOMPARE(verdict(write(QStringLiteral("changed.eml"), text.replace("Pay 100", "Pay 900"))),
                 int(SignerReport::DocumentChanged));
}

void TestCmsChecking::certtoolMakes()
{
    const QString certtool = QStandardPaths::findExecutable(QStringLiteral("certtool"));
    if (certtool.isEmpty())
        QSKIP("certtool is not installed");
    for (const char *kind : {"rsa:2048", "ec:P-384", "ed25519"}) {
        QVERIFY(!makeSigner(QLatin1String(kind)).isNull());
        for (const char *mode : {"--p7-sign", "--p7-detached-sign"}) {
            const QString message = file(QStringLiteral("certtool.p7"));
            QCOMPARE(
                run(certtool,
                    {QLatin1String(mode), QStringLiteral("--p7-time"),
                     QStringLiteral("--load-certificate"), file(QStringLiteral("bundle.pem")),
                     QStringLiteral("--load-privkey"), file(QStringLiteral("bundle.key")),
                     QStringLiteral("--infile"), m_document, QStringLiteral("--outfile"), message}),
                0);
            QVERIFY(read(message).contains("-----BEGIN PKCS7"));
            QCOMPARE(verdict(message, m_document), int(SignerReport::Good));
        }
    }
}

/// NSS makes one and takes one of ours.
void TestCmsChecking::nss()
{
    for (const char *program : {"cmsutil", "certutil", "pk12util"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
            QSKIP("the programs of NSS (libnss3-tools) are not installed");
    }
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    QTemporaryDir directory;
    const QString database = QStringLiteral("sql:") + directory.path();
    QCOMPARE(run(QStringLiteral("certutil"),
                 {QStringLiteral("-N"), QStringLiteral("-d"), database,
                  QStringLiteral("--empty-password")}),
             0);
    QCOMPARE(run(QStringLiteral("certutil"),
                 {QStringLiteral("-A"), QStringLiteral("-d"), database, QStringLiteral("-n"),
                  QStringLiteral("root"), QStringLiteral("-t"), QStringLiteral("C,C,C"),
                  QStringLiteral("-i"), m_authority->certificateFile()}),
             0);
    QCOMPARE(run(QStringLiteral("pk12util"),
                 {QStringLiteral("-i"), file(QStringLiteral("bundle.p12")), QStringLiteral("-d"),
                  database, QStringLiteral("-W"), QStringLiteral("x")}),
             0);
    const QString message = file(QStringLiteral("nss.p7s"));
    QCOMPARE(run(QStringLiteral("cmsutil"),
                 {QStringLiteral("-S"), QStringLiteral("-T"), QStringLiteral("-G"),
                  QStringLiteral("-d"), database, QStringLiteral("-N"), QStringLiteral("signer"),
                  QStringLiteral("-H"), QStringLiteral("SHA256"), QStringLiteral("-i"), m_document,
                  QStringLiteral("-o"), message}),
             0);
    QCOMPARE(verdict(message, m_document), int(SignerReport::Good));
    const QString ours = file(QStringLiteral("ours.p7s"));
    QCOMPARE(sign(signer, {m_document, ours}), DocumentSignature::NoProblem);
    QCOMPARE(
        run(QStringLiteral("cmsutil"),
            {QStringLiteral("-D"), QStringLiteral("-d"), database, QStringLiteral("-c"), m_document,
             QStringLiteral("-i"), ours, QStringLiteral("-o"), file(QStringLiteral("nss.out"))}),
        0);
}

/// A document in thousands of pieces, as streaming programs write it.
void TestCmsChecking::pieces()
{
    QVERIFY(!makeSigner(QStringLiteral("rsa:2048")).isNull());
    const QString before = m_document;
    m_document = write(QStringLiteral("long"), QByteArray(3000000, 'x'));
    const QString message =
        signed_(QStringLiteral("long.p7m"),
                QStringLiteral("-binary -outform DER -nodetach -stream").split(QLatin1Char(' ')));
    m_document = before;
    QCOMPARE(verdict(message), int(SignerReport::Good));
    QByteArray bytes = read(message);
    const int place = bytes.indexOf("xxxx", bytes.size() / 2);
    bytes[place] = 'y';
    QCOMPARE(verdict(write(QStringLiteral("long.p7m"), bytes)), int(SignerReport::DocumentChanged));
}

void TestCmsChecking::changedDocument()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    const QString document = write(QStringLiteral("letter"), "Text");
    const QString message = file(QStringLiteral("letter.p7s"));
    QCOMPARE(sign(signer, {document, message}), DocumentSignature::NoProblem);
    QCOMPARE(verdict(message, document), int(SignerReport::Good));
    for (const char *text : {"text", "Tex", "Text ", ""}) {
        write(QStringLiteral("letter"), text);
        QCOMPARE(verdict(message, document), int(SignerReport::DocumentChanged));
    }
}

void TestCmsChecking::everyByte_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"rsa:2048", "ec:P-256", "ed25519"}) {
        QTest::addRow("%s detached", kind)
            << int(DocumentSignature::Detached) << QString::fromLatin1(kind);
        QTest::addRow("%s attached", kind)
            << int(DocumentSignature::Attached) << QString::fromLatin1(kind);
    }
}

/// Whatever bit is turned, it is not "good" for another document or another signer.
void TestCmsChecking::everyByte()
{
    QFETCH(int, form);
    QFETCH(QString, kind);
    const Signer signer = makeSigner(kind);
    const QString message = file(QStringLiteral("turned.p7s"));
    QFile::remove(message);
    QCOMPARE(sign(signer, {m_document, message, DocumentSignature::Form(form)}),
             DocumentSignature::NoProblem);
    const QByteArray good = read(message);
    int stillGood = 0;
    for (int i = 0; i < good.size(); ++i) {
        QByteArray bytes = good;
        bytes[i] = char(bytes.at(i) ^ (1 << (i % 8)));
        LongWork work;
        const SignedMessage turned = SignedMessage::read(byteSourceOf(bytes));
        const MessageReport report =
            checkMessage(turned, wholeContent(openByteSource(m_document)), {}, work);
        for (const SignerReport &one : report.signers) {
            if (one.verdict != SignerReport::Good)
                continue;
            ++stillGood;
            // What nothing depends on may change; who signed and when may not.
            QCOMPARE(one.certificate, signer.chain.first());
            QVERIFY(one.namesCertificate && one.time.isValid());
        }
    }
    // Versions, unused certificates and the form of a parameter.
    QVERIFY2(stillGood < good.size() / 2, qPrintable(QString::number(stillGood)));
}

/// Another certificate of the same name and number in the place of the signer's.
void TestCmsChecking::swappedCertificate()
{
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    const QString message = file(QStringLiteral("swapped.p7s"));
    QCOMPARE(sign(signer, {m_document, message}), DocumentSignature::NoProblem);
    const QByteArray good = read(message);
    // The same key and names, made again: only the signature of the authority differs.
    QByteArray other = signer.chain.first();
    other[other.size() - 1] = char(other.at(other.size() - 1) ^ 1);
    QByteArray swapped = good;
    QVERIFY(swapped.contains(signer.chain.first()));
    swapped.replace(signer.chain.first(), other);
    const QString path = write(QStringLiteral("swapped.p7s"), swapped);
    QCOMPARE(verdict(path, m_document), int(SignerReport::WrongCertificate));
    // With the right one beside it, the right one counts.
    const MessageReport report = check(path, m_document, {signer.chain.first()});
    QCOMPARE(report.signers.first().verdict, SignerReport::Good);
    QCOMPARE(report.signers.first().certificate, signer.chain.first());
}

/// The key is right; the signature says that its certificate is another one.
void TestCmsChecking::attributeNamesAnother()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    const QByteArray der = signer.chain.first();
    QByteArray renewed = der;
    renewed[renewed.size() - 1] = char(renewed.at(renewed.size() - 1) ^ 1);
    const QString message = file(QStringLiteral("named.p7s"));
    // Made with the certificate that is not the one of the message.
    QCOMPARE(sign({signer.key, {der}}, {m_document, message}), DocumentSignature::NoProblem);
    QByteArray bytes = read(message);
    bytes.replace(der, renewed);
    QCOMPARE(verdict(write(QStringLiteral("named.p7s"), bytes), m_document),
             int(SignerReport::WrongCertificate));
}

void TestCmsChecking::severalSigners()
{
    QVERIFY(!makeSigner(QStringLiteral("rsa:2048"), QStringLiteral("/CN=First")).isNull());
    const QString first =
        signed_(QStringLiteral("first.p7s"),
                {QStringLiteral("-binary"), QStringLiteral("-outform"), QStringLiteral("DER")});
    QVERIFY(!makeSigner(QStringLiteral("ec:P-384"), QStringLiteral("/CN=Second")).isNull());
    const QString both = file(QStringLiteral("both.p7s"));
    QCOMPARE(run(QStringLiteral("openssl"),
                 {QStringLiteral("cms"), QStringLiteral("-resign"), QStringLiteral("-binary"),
                  QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-in"), first,
                  QStringLiteral("-content"), m_document, QStringLiteral("-signer"),
                  file(QStringLiteral("bundle.pem")), QStringLiteral("-inkey"),
                  file(QStringLiteral("bundle.key")), QStringLiteral("-outform"),
                  QStringLiteral("DER"), QStringLiteral("-out"), both}),
             0);
    MessageReport report = check(both, m_document);
    QCOMPARE(report.signers.size(), 2);
    QCOMPARE(report.signers.at(0).verdict, SignerReport::Good);
    QCOMPARE(report.signers.at(1).verdict, SignerReport::Good);
    QVERIFY(report.signers.at(0).certificate != report.signers.at(1).certificate);
    // One is damaged: the other's verdict is its own.
    QByteArray bytes = read(both);
    bytes[bytes.size() - 1] = char(bytes.at(bytes.size() - 1) ^ 1);
    report = check(write(QStringLiteral("half.p7s"), bytes), m_document);
    QCOMPARE(report.signers.size(), 2);
    const int good = int(
        std::count_if(report.signers.cbegin(), report.signers.cend(),
                      [](const SignerReport &one) { return one.verdict == SignerReport::Good; }));
    QCOMPARE(good, 1);
}

void TestCmsChecking::missingCertificate()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    const QString message = signed_(QStringLiteral("bare.p7s"),
                                    {QStringLiteral("-binary"), QStringLiteral("-outform"),
                                     QStringLiteral("DER"), QStringLiteral("-nocerts")});
    const MessageReport report = check(message, m_document);
    QCOMPARE(report.signers.first().verdict, SignerReport::NoCertificate);
    QVERIFY(!report.signers.first().issuer.isEmpty());
    QVERIFY(!report.signers.first().serial.isEmpty());
    QCOMPARE(check(message, m_document, {m_authority->certificate(), signer.chain.first()})
                 .signers.first()
                 .verdict,
             SignerReport::Good);
}

void TestCmsChecking::missingDocument()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    const QString message = file(QStringLiteral("lonely.p7s"));
    QCOMPARE(sign(signer, {m_document, message}), DocumentSignature::NoProblem);
    const MessageReport report = check(message);
    QCOMPARE(report.problem, MessageReport::NoDocument);
    // Who signed is known all the same.
    QCOMPARE(report.signers.first().verdict, SignerReport::Unchecked);
    QCOMPARE(report.signers.first().certificate, signer.chain.first());
}

void TestCmsChecking::unknownDigest()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    const QString message = file(QStringLiteral("unknown.p7s"));
    QCOMPARE(sign(signer, {m_document, message}), DocumentSignature::NoProblem);
    QByteArray bytes = read(message);
    // SHA-256 becomes a digest that there is not.
    bytes.replace(QByteArray::fromHex("0609608648016503040201"),
                  QByteArray::fromHex("060960864801650304027f"));
    QCOMPARE(verdict(write(QStringLiteral("unknown.p7s"), bytes), m_document),
             int(SignerReport::Unknown));
}

void TestCmsChecking::weakDigest()
{
    QVERIFY(!makeSigner(QStringLiteral("rsa:2048")).isNull());
    for (const char *digest : {"sha1", "md5"}) {
        const QString message =
            signed_(QStringLiteral("weak.p7s"),
                    {QStringLiteral("-binary"), QStringLiteral("-outform"), QStringLiteral("DER"),
                     QStringLiteral("-md"), QLatin1String(digest)});
        const SignerReport report = check(message, m_document).signers.value(0);
        QCOMPARE(report.verdict, SignerReport::Good);
        QVERIFY(report.isDigestWeak);
    }
}

/// The type of what was signed is signed too.
void TestCmsChecking::contentTypeIsSigned()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    const QString message = file(QStringLiteral("type.p7m"));
    QFile::remove(message);
    QCOMPARE(sign(signer, {m_document, message, DocumentSignature::Attached}),
             DocumentSignature::NoProblem);
    QByteArray bytes = read(message);
    const QByteArray data = QByteArray::fromHex("06092a864886f70d010701");
    bytes.replace(bytes.indexOf(data), data.size(), QByteArray::fromHex("06092a864886f70d010703"));
    QCOMPARE(verdict(write(QStringLiteral("type.p7m"), bytes)), int(SignerReport::Damaged));
}

void TestCmsChecking::noMessages_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray signedType = QByteArray::fromHex("06092a864886f70d010702");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("Text");
    QTest::newRow("a sequence") << QByteArray::fromHex("3000");
    QTest::newRow("only the type") << QByteArray::fromHex("300b") + signedType;
    QTest::newRow("longer than it is") << QByteArray::fromHex("30847fffffff") + signedType;
    QTest::newRow("longer than anything") << QByteArray::fromHex("3088ffffffffffffffff");
    QTest::newRow("long beyond 63 bits")
        << QByteArray::fromHex("30887fffffffffffffff") + signedType;
    QTest::newRow("without an end") << QByteArray::fromHex("3080") + signedType
            + QByteArray::fromHex("a0803080020101310030800609");
    QTest::newRow("deep") << QByteArray::fromHex("3080").repeated(100000);
    QTest::newRow("deep inside") << QByteArray::fromHex("3080") + signedType
            + QByteArray::fromHex("a08030800201013180")
            + QByteArray::fromHex("3080").repeated(100000);
    QTest::newRow("PEM of nothing")
        << QByteArray("-----BEGIN PKCS7-----\nMAA=\n-----END PKCS7-----\n");
    QTest::newRow("mail of nothing")
        << QByteArray("Content-Type: application/pkcs7-mime\n\nMAA=\n");
}

void TestCmsChecking::noMessages()
{
    QFETCH(QByteArray, bytes);
    const MessageReport report = check(write(QStringLiteral("none"), bytes), m_document);
    QCOMPARE(report.problem, MessageReport::Unreadable);
    QVERIFY(report.signers.isEmpty());
}

void TestCmsChecking::documentIsTheFileOfThatMoment()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    const QString document = write(QStringLiteral("moving"), QByteArray(1000000, 'x'));
    const QString message = file(QStringLiteral("moving.p7s"));
    QCOMPARE(sign(signer, {document, message}), DocumentSignature::NoProblem);
    // Written to while it is read: neither good nor bad.
    const ByteSourcePtr opened = openByteSource(document);
    QTest::qWait(20);
    QFile file(document);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.write("y") == 1);
    file.close();
    LongWork work;
    const SignedMessage read = SignedMessage::read(openByteSource(message));
    QCOMPARE(checkMessage(read, wholeContent(opened), {}, work).problem, MessageReport::Changed);
    QCOMPARE(verdict(message, document), int(SignerReport::DocumentChanged));
    LongWork unwanted;
    unwanted.cancel();
    QCOMPARE(checkMessage(read, wholeContent(openByteSource(document)), {}, unwanted).problem,
             MessageReport::Cancelled);
}

QTEST_GUILESS_MAIN(TestCmsChecking)
#include "tst_cmschecking.moc"
