// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/documentkey.h"
#include "qca/cms/messagecheck.h"
#include "qca/cms/messagewriter.h"
#include "tests/cms/cmsfixture.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QtTest>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Trivex;
using namespace TrivexTest;

/// Messages that we sign, checked by other programs.
class TestCmsSigning : public CmsFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void kinds_data();
    void kinds();
    void chainWithoutRoot();
    void rootInAnotherStringType();
    void signedAttributes();
    void sizes_data();
    void sizes();
    void otherPrograms();
    void noFileIsReplaced();
    void wrongKey();
    void documentChanges_data();
    void documentChanges();
    void onlyItsCardIsWritten();
    void notOverTheDocument_data();
    void notOverTheDocument();
    void linkComesLater();
    void unreadable();
    void cancelled();
    void longFileNeedsNoMemory();

private:
    QByteArray printed(const QString &message) const;
    QStringList leftovers() const;
};

void TestCmsSigning::initTestCase()
{
    if (!m_authority->isValid()) {
        qInfo("SKIP the openssl program is not installed");
        QSKIP("the openssl program is not installed");
    }
}

QByteArray TestCmsSigning::printed(const QString &message) const
{
    return m_authority->openssl({QStringLiteral("cms"), QStringLiteral("-cmsout"),
                                 QStringLiteral("-print"), QStringLiteral("-inform"),
                                 QStringLiteral("DER"), QStringLiteral("-in"), message});
}

QStringList TestCmsSigning::leftovers() const
{
    return QDir(file(QString()))
        .entryList({QStringLiteral(".trivex-*")}, QDir::Files | QDir::Hidden);
}

void TestCmsSigning::kinds_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("digest");
    const QByteArray sha256("sha256");
    const QByteArray sha384("sha384");
    const QByteArray sha512("sha512");
    QTest::newRow("RSA 2048") << QStringLiteral("rsa:2048") << sha256;
    QTest::newRow("RSA 3072") << QStringLiteral("rsa:3072") << sha256;
    QTest::newRow("RSA 4096") << QStringLiteral("rsa:4096") << sha384;
    QTest::newRow("RSA-PSS") << QStringLiteral("rsa-pss:2048") << sha256;
    QTest::newRow("RSA-PSS 4096") << QStringLiteral("rsa-pss:4096") << sha384;
    QTest::newRow("RSA-PSS of SHA-512") << QStringLiteral("rsa-pss:2048:sha512") << sha512;
    QTest::newRow("P-256") << QStringLiteral("ec:P-256") << sha256;
    QTest::newRow("P-384") << QStringLiteral("ec:P-384") << sha384;
    QTest::newRow("P-521") << QStringLiteral("ec:P-521") << sha512;
    QTest::newRow("Ed25519") << QStringLiteral("ed25519") << sha512;
}

void TestCmsSigning::kinds()
{
    QFETCH(QString, kind);
    QFETCH(QByteArray, digest);
    const Signer signer = makeSigner(kind);
    QVERIFY(!signer.isNull());
    const QString document = write(QStringLiteral("document"), "Pay 100 to Mary\r\n");
    for (const auto form : {DocumentSignature::Detached, DocumentSignature::Attached}) {
        const bool isDetached = form == DocumentSignature::Detached;
        const QString message = file(QStringLiteral("message"));
        QFile::remove(message);
        QCOMPARE(sign(signer, {document, message, form}), DocumentSignature::NoProblem);
        const QString outside = isDetached ? document : QString();
        QCOMPARE(verdict(message, outside), int(SignerReport::Good));
        QVERIFY(printed(message).contains("algorithm: " + digest));
        // libcrypto's messages don't know these keys before OpenSSL 3.6.
        if (kind != QLatin1String("ed25519")) {
            QVERIFY(opensslAccepts(message, outside));
            QCOMPARE(read(file(QStringLiteral("verified"))), read(document));
        }
    }
    QCOMPARE(leftovers(), QStringList());
}

void TestCmsSigning::chainWithoutRoot()
{
    // root, intermediate, signer
    const auto openssl = [this](const char *arguments) {
        QVERIFY(
            !m_authority->openssl(QString::fromLatin1(arguments).split(QLatin1Char(' '))).isNull());
    };
    write(QStringLiteral("ca.cnf"), "basicConstraints=critical,CA:TRUE\nkeyUsage=keyCertSign\n");
    openssl("req -new -newkey rsa:2048 -nodes -keyout mid.key -subj /CN=Middle -out mid.csr");
    openssl("x509 -req -in mid.csr -CA ca.pem -CAkey ca.key -CAcreateserial -days 30 -extfile "
            "ca.cnf -out mid.pem");
    openssl("req -new -newkey rsa:2048 -nodes -keyout end.key -subj /CN=End -out end.csr");
    openssl("x509 -req -in end.csr -CA mid.pem -CAkey mid.key -CAcreateserial -days 30 -out "
            "end.pem");
    const auto der = [this](const char *name) {
        return m_authority->openssl({QStringLiteral("x509"), QStringLiteral("-outform"),
                                     QStringLiteral("DER"), QStringLiteral("-in"),
                                     QLatin1String(name)});
    };
    const QList<QByteArray> chain = {der("end.pem"), der("mid.pem"), m_authority->certificate()};
    const QCA::PrivateKey key = QCA::PrivateKey::fromPEM(
        QString::fromLatin1(read(file(QStringLiteral("end.key")))), QCA::SecureArray());
    const QString document = write(QStringLiteral("document"), "Text");
    const QString message = file(QStringLiteral("chain.p7s"));
    QCOMPARE(sign({key, chain}, {document, message}), DocumentSignature::NoProblem);
    // Whoever has the root alone can check it.
    QVERIFY(opensslAccepts(message, document));
    const MessageReport report = check(message, document);
    QCOMPARE(report.certificates.size(), 2);
    QVERIFY(report.certificates.contains(chain.at(0)));
    QVERIFY(report.certificates.contains(chain.at(1)));
    QCOMPARE(report.signers.first().certificate, chain.at(0));
}

/// A root that writes its name twice, each time as another type of string, is a root all the same.
void TestCmsSigning::rootInAnotherStringType()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    QByteArray root = m_authority->certificate();
    const QByteArray name = QByteArrayLiteral("\x0c\x09Test Root");
    const int issuer = root.indexOf(name);
    QVERIFY(issuer > 0 && root.indexOf(name, issuer + 1) > 0);
    root[issuer] = '\x13'; // PrintableString
    const MessageWriter plain(signer.chain.first(), {});
    const MessageWriter withRoot(signer.chain.first(), {root});
    QVERIFY(withRoot.isValid());
    QCOMPARE(withRoot.detached(), plain.detached());
    const MessageWriter withIssuer(signer.chain.first(),
                                   {makeSigner(QStringLiteral("rsa:2048")).chain.first()});
    QVERIFY(withIssuer.detached() != plain.detached());
}

void TestCmsSigning::signedAttributes()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    const QString document = write(QStringLiteral("document"), "Text");
    const QString message = file(QStringLiteral("attributes.p7s"));
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
    QCOMPARE(sign(signer, {document, message}), DocumentSignature::NoProblem);
    const QByteArray text = printed(message);
    for (const char *wanted :
         {"contentType (1.2.840.113549.1.9.3)", "messageDigest (1.2.840.113549.1.9.4)",
          "signingTime (1.2.840.113549.1.9.5)", "id-smime-aa-signingCertificateV2"})
        QVERIFY2(text.contains(wanted), wanted);
    const SignerReport report = check(message, document).signers.first();
    QVERIFY(report.namesCertificate);
    QVERIFY(!report.isDigestWeak);
    QCOMPARE(report.digest, QByteArray("2.16.840.1.101.3.4.2.1"));
    QVERIFY(report.time >= before && report.time <= QDateTime::currentDateTimeUtc());
}

void TestCmsSigning::sizes_data()
{
    QTest::addColumn<int>("size");
    // About each step in the length of a length, and about the pieces that are read.
    for (const int size :
         {0, 1, 100, 127, 128, 255, 256, 65535, 65536, 262143, 262144, 262145, 20000000})
        QTest::addRow("%d", size) << size;
}

void TestCmsSigning::sizes()
{
    QFETCH(int, size);
    static const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    QByteArray text(size, 'x');
    for (int i = 0; i < size; i += 1000)
        text[i] = char(i / 1000);
    const QString document = write(QStringLiteral("sized"), text);
    for (const auto form : {DocumentSignature::Detached, DocumentSignature::Attached}) {
        const QString message = file(QStringLiteral("sized.p7s"));
        QFile::remove(message);
        QCOMPARE(sign(signer, {document, message, form}), DocumentSignature::NoProblem);
        const QString outside = form == DocumentSignature::Detached ? document : QString();
        QCOMPARE(verdict(message, outside), int(SignerReport::Good));
        QVERIFY(opensslAccepts(message, outside));
        QVERIFY(read(file(QStringLiteral("verified"))) == text);
    }
}

void TestCmsSigning::otherPrograms()
{
    const QString certtool = QStandardPaths::findExecutable(QStringLiteral("certtool"));
    if (certtool.isEmpty())
        QSKIP("certtool is not installed");
    for (const char *kind : {"rsa:2048", "ec:P-256", "ec:P-384", "ed25519"}) {
        const Signer signer = makeSigner(QLatin1String(kind));
        const QString document = write(QStringLiteral("document"), "Text for another program");
        const QString message = file(QStringLiteral("other.p7s"));
        QFile::remove(message);
        QCOMPARE(sign(signer, {document, message}), DocumentSignature::NoProblem);
        QStringList arguments = {QStringLiteral("--p7-verify"),
                                 QStringLiteral("--inder"),
                                 QStringLiteral("--load-data"),
                                 document,
                                 QStringLiteral("--infile"),
                                 message,
                                 QStringLiteral("--load-ca-certificate"),
                                 m_authority->certificateFile()};
        QByteArray output;
        QCOMPARE(run(certtool, arguments, &output), 0);
        QVERIFY2(output.contains("Signature status: ok"), output.constData());
    }
}

void TestCmsSigning::noFileIsReplaced()
{
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    const QString document = write(QStringLiteral("document"), "Text");
    const QString message = write(QStringLiteral("taken.p7s"), "precious");
    QCOMPARE(sign(signer, {document, message}), DocumentSignature::Exists);
    QCOMPARE(read(message), QByteArray("precious"));
    QCOMPARE(sign(signer, {document, message}, true), DocumentSignature::NoProblem);
    QCOMPARE(verdict(message, document), int(SignerReport::Good));
    QCOMPARE(sign(signer, {document, file(QStringLiteral("nowhere/x.p7s"))}),
             DocumentSignature::NotWritten);
    QCOMPARE(leftovers(), QStringList());
}

/// A token that answers with the signature of another key, or with noise.
void TestCmsSigning::wrongKey()
{
    const Signer signer = makeSigner(QStringLiteral("rsa:2048"));
    Signer other = makeSigner(QStringLiteral("rsa:2048"));
    other.chain = signer.chain;
    const QString document = write(QStringLiteral("document"), "Text");
    const QString message = file(QStringLiteral("wrong.p7s"));
    QCOMPARE(sign(other, {document, message}), DocumentSignature::NotGood);
    other.key = QCA::PrivateKey();
    QCOMPARE(sign(other, {document, message}), DocumentSignature::NotGood);
    QVERIFY(!QFile::exists(message));
    QCOMPARE(leftovers(), QStringList());
}

void TestCmsSigning::documentChanges_data()
{
    QTest::addColumn<bool>("isReplaced");
    QTest::addColumn<int>("form");
    QTest::newRow("written to, detached") << false << int(DocumentSignature::Detached);
    QTest::newRow("written to, attached") << false << int(DocumentSignature::Attached);
    QTest::newRow("replaced, detached") << true << int(DocumentSignature::Detached);
    QTest::newRow("replaced, attached") << true << int(DocumentSignature::Attached);
}

void TestCmsSigning::documentChanges()
{
    QFETCH(bool, isReplaced);
    QFETCH(int, form);
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    const QString document = write(QStringLiteral("document"), "Here");
    const QString message = file(QStringLiteral("changing.p7s"));
    DocumentSignature signature({document, message, DocumentSignature::Form(form)},
                                signer.chain.first(), signer.chain);
    QCOMPARE(signature.digest(QDateTime::currentDateTimeUtc()), DocumentSignature::NoProblem);
    signature.setSignature(
        signForMessage(signer.key, signature.message().scheme(), signature.message().toBeSigned()));
    // The one that is held stays as it is, but it is the document no more.
    if (isReplaced)
        QVERIFY(QFile::remove(document));
    write(QStringLiteral("document"), "Else");
    QCOMPARE(signature.write(), DocumentSignature::Changed);
}

/// Other rights, another name: that is no other document.
void TestCmsSigning::onlyItsCardIsWritten()
{
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    const QString document = write(QStringLiteral("touched"), "Here");
    const QString name = file(QStringLiteral("touched.second"));
    for (const auto form : {DocumentSignature::Detached, DocumentSignature::Attached}) {
        const QString message = file(QStringLiteral("touched.p7s"));
        QFile::remove(message);
        QFile::remove(name);
        DocumentSignature signature({document, message, form}, signer.chain.first(), signer.chain);
        QCOMPARE(signature.digest(QDateTime::currentDateTimeUtc()), DocumentSignature::NoProblem);
        signature.setSignature(signForMessage(signer.key, signature.message().scheme(),
                                              signature.message().toBeSigned()));
        const QByteArray path = QFile::encodeName(document);
        QCOMPARE(::chmod(path.constData(), 0600), 0);
        QCOMPARE(::link(path.constData(), QFile::encodeName(name).constData()), 0);
        QCOMPARE(signature.write(), DocumentSignature::NoProblem);
        QCOMPARE(signature.place(false), DocumentSignature::NoProblem);
    }
}

void TestCmsSigning::notOverTheDocument_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("itself") << QStringLiteral("original");
    QTest::newRow("another spelling") << QStringLiteral("./original");
    QTest::newRow("symbolic link") << QStringLiteral("original.link");
    QTest::newRow("hard link") << QStringLiteral("original.hard");
}

/// Before anybody types a PIN for it, and whatever may be replaced.
void TestCmsSigning::notOverTheDocument()
{
    QFETCH(QString, target);
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    const QString document = write(QStringLiteral("original"), "precious");
    const QByteArray path = QFile::encodeName(document);
    QFile::link(document, file(QStringLiteral("original.link")));
    const QByteArray name = QFile::encodeName(file(QStringLiteral("original.hard")));
    ::unlink(name.constData());
    QCOMPARE(::link(path.constData(), name.constData()), 0);
    for (const bool mayReplace : {false, true}) {
        DocumentSignature signature({document, file(target)}, signer.chain.first(), signer.chain);
        QCOMPARE(signature.digest(QDateTime::currentDateTimeUtc()), DocumentSignature::SameFile);
        QCOMPARE(sign(signer, {document, file(target)}, mayReplace), DocumentSignature::SameFile);
        QCOMPARE(read(document), QByteArray("precious"));
        QCOMPARE(read(file(target)), QByteArray("precious"));
    }
    QCOMPARE(leftovers(), QStringList());
}

void TestCmsSigning::linkComesLater()
{
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    const QString document = write(QStringLiteral("late"), "precious");
    const QString message = file(QStringLiteral("late.p7s"));
    DocumentSignature signature({document, message}, signer.chain.first(), signer.chain);
    QCOMPARE(signature.digest(QDateTime::currentDateTimeUtc()), DocumentSignature::NoProblem);
    signature.setSignature(
        signForMessage(signer.key, signature.message().scheme(), signature.message().toBeSigned()));
    QCOMPARE(signature.write(), DocumentSignature::NoProblem);
    QVERIFY(QFile::link(document, message));
    QCOMPARE(signature.place(true), DocumentSignature::SameFile);
    QCOMPARE(read(message), QByteArray("precious"));
}

void TestCmsSigning::unreadable()
{
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    const QString message = file(QStringLiteral("none.p7s"));
    for (const char *name : {"missing", "", "/dev/zero"}) {
        const QString path = *name == '/' ? QLatin1String(name) : file(QLatin1String(name));
        QCOMPARE(sign(signer, {path, message}), DocumentSignature::Unreadable);
    }
    QVERIFY(!QFile::exists(message));
}

void TestCmsSigning::cancelled()
{
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    const QString document = write(QStringLiteral("document"), QByteArray(1000000, 'x'));
    const QString message = file(QStringLiteral("cancelled.p7s"));
    DocumentSignature first({document, message}, signer.chain.first(), signer.chain);
    first.work().cancel();
    QCOMPARE(first.digest(QDateTime::currentDateTimeUtc()), DocumentSignature::Cancelled);
    for (const auto form : {DocumentSignature::Detached, DocumentSignature::Attached}) {
        DocumentSignature second({document, message, form}, signer.chain.first(), signer.chain);
        QCOMPARE(second.work().progress(), -1.0);
        QCOMPARE(second.digest(QDateTime::currentDateTimeUtc()), DocumentSignature::NoProblem);
        QVERIFY(second.work().progress() > 0.3 && second.work().progress() < 0.6);
        second.setSignature(
            signForMessage(signer.key, second.message().scheme(), second.message().toBeSigned()));
        second.work().cancel();
        QCOMPARE(second.write(), DocumentSignature::Cancelled);
    }
    QVERIFY(!QFile::exists(message));
    QCOMPARE(leftovers(), QStringList());
}

/// In a process that may have less memory than the document has bytes.
void TestCmsSigning::longFileNeedsNoMemory()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("a sanitizer needs more memory than may be had here");
#endif
    constexpr qint64 Length = 700LL * 1024 * 1024;
    const Signer signer = makeSigner(QStringLiteral("ec:P-256"));
    QFile sparse(file(QStringLiteral("sparse")));
    QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.resize(Length));
    sparse.close();
    struct rlimit before;
    getrlimit(RLIMIT_DATA, &before);
    struct rusage used;
    getrusage(RUSAGE_SELF, &used);
    struct rlimit bound = before;
    bound.rlim_cur = rlim_t(used.ru_maxrss) * 1024 + 200 * 1024 * 1024;
    QCOMPARE(setrlimit(RLIMIT_DATA, &bound), 0);
    const QString message = file(QStringLiteral("sparse.p7s"));
    const auto detached = sign(signer, {sparse.fileName(), message});
    const int checked = verdict(message, sparse.fileName());
    const QString whole = file(QStringLiteral("sparse.p7m"));
    const auto attached = sign(signer, {sparse.fileName(), whole, DocumentSignature::Attached});
    const int checkedWhole = verdict(whole);
    struct rusage after;
    getrusage(RUSAGE_SELF, &after);
    setrlimit(RLIMIT_DATA, &before);
    QCOMPARE(detached, DocumentSignature::NoProblem);
    QCOMPARE(attached, DocumentSignature::NoProblem);
    QCOMPARE(checked, int(SignerReport::Good));
    QCOMPARE(checkedWhole, int(SignerReport::Good));
    QVERIFY(QFileInfo(whole).size() > Length);
    QVERIFY2(after.ru_maxrss - used.ru_maxrss < 32 * 1024,
             qPrintable(QString::number(after.ru_maxrss - used.ru_maxrss)));
}

QTEST_GUILESS_MAIN(TestCmsSigning)
#include "tst_cmssigning.moc"
