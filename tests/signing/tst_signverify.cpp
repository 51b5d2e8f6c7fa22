// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"
#include "qca/tokens/tokens.h"
#include "signing/loaderfile.h"
#include "signing/rawsignature.h"
#include "signing/signverify.h"
#include "tests/signing/scriptedkey.h"
#include "tests/signing/signedfiles.h"
#include "tests/support/shortpauses.h"

#include <QAbstractEventDispatcher>
#include <QMetaEnum>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

#include <sys/stat.h>

using namespace TrivexTest;

namespace {

/// The messages of the default category that came meanwhile.
class Messages {
public:
    Messages()
    {
        lines().clear();
        m_previous = qInstallMessageHandler(&Messages::handle);
    }
    ~Messages() { qInstallMessageHandler(m_previous); }

    QStringList take() const { return std::exchange(lines(), {}); }

private:
    static QStringList &lines()
    {
        static QStringList all;
        return all;
    }
    static void handle(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        lines() << QString::number(type) + QLatin1Char(' ') + text;
    }
    QtMessageHandler m_previous;
};

} // namespace

class TestSignVerify : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void interface();
    void signsAndVerifies();
    void signaturesKeepTheirOrder();
    void signatureIsThatOfOpenssl();
    void changedDataIsRefused();
    void failuresOfSigning();
    void failuresOfVerifying();
    void signaturesOfOddSizes();
    void keyOfAnotherKind();
    void errorNotifiedOnce();
    void unwritableFile();
    void cutFileIsNotSigned();

private:
    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }
    QTemporaryDir m_directory;
};

/// The first test of all waits for the real pauses.
void TestSignVerify::init()
{
    if (qstrcmp(QTest::currentTestFunction(), "signsAndVerifies") == 0)
        Trivex::Pause::shorten(1);
    else
        shortenPauses();
}

void TestSignVerify::interface()
{
    const QMetaObject &meta = SignVerify::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    QCOMPARE(methods.join(QLatin1Char(' ')),
             QStringLiteral("signSuccess() verifySuccess() getPin() errorChanged() "
                            "ceritficateChanged() setError(int) setCeritficate(Certificate*) "
                            "eventReady(int,QCA::Event) sign(QByteArray,QString,KeyStoreEntry*) "
                            "verify(QByteArray,QString,KeyStoreEntry*) pinRejected() "
                            "pinAccepted(QString)"));
    const QMetaProperty certificate = meta.property(meta.propertyOffset());
    QCOMPARE(certificate.name(), "ceritficate");
    QCOMPARE(certificate.typeName(), "Certificate*");
    QVERIFY(!certificate.isWritable());
    const QMetaProperty error = meta.property(meta.propertyOffset() + 1);
    QCOMPARE(error.name(), "error");
    QVERIFY(!error.isWritable());
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 2);
    const auto errors = QMetaEnum::fromType<SignVerify::Error>();
    for (int i = 0; i < errors.keyCount(); ++i)
        QCOMPARE(errors.value(i), i);
    QCOMPARE(errors.keyCount(), 5);
    QCOMPARE(QMetaEnum::fromType<SignVerify::Mode>().keyToValue("VerifyMode"), 1);
}

void TestSignVerify::signsAndVerifies()
{
    SignVerify signer;
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    QSignalSpy isVerified(&signer, &SignVerify::verifySuccess);
    QSignalSpy certificateChanged(&signer, &SignVerify::ceritficateChanged);
    const auto entry = bundleEntry(softwareKey());
    QElapsedTimer timer;
    timer.start();
    signer.sign(data, path("a.sig"), entry.get());
    QVERIFY(isSigned.isEmpty());
    QVERIFY(!QFile::exists(path("a.sig")));
    QVERIFY(isSigned.wait(Patience));
    QVERIFY(timer.elapsed() >= 3000);
    QCOMPARE(contents(path("a.sig")).size(), 256);

    timer.restart();
    signer.verify(data, path("a.sig"), entry.get());
    QVERIFY(isVerified.isEmpty());
    QVERIFY(isVerified.wait(Patience));
    QVERIFY(timer.elapsed() >= 1000);
    QCOMPARE(signer.error(), int(SignVerify::NoError));
    // The entry has no certificate to show.
    QCOMPARE(certificateChanged.count(), 0);
    QVERIFY(signer.ceritficate()->isNull());
}

void TestSignVerify::signaturesKeepTheirOrder()
{
    // Timers of the same length that start together may fire in any order: here the last one first.
    const auto entry = bundleEntry(softwareKey());
    SignVerify signer;
    QStringList order;
    connect(&signer, &SignVerify::signSuccess, this, [&] {
        for (const char *name : {"first", "second", "third"}) {
            if (QFile::exists(path(name)) && !order.contains(QLatin1String(name)))
                order << QLatin1String(name);
        }
    });
    QObject *dispatcher = QAbstractEventDispatcher::instance();
    const QObjectList before = dispatcher->children();
    for (const char *name : {"first", "second", "third"})
        signer.sign("What is signed", path(name), entry.get());
    QObjectList timers;
    for (QObject *child : dispatcher->children()) {
        if (!before.contains(child))
            timers.prepend(child);
    }
    QCOMPARE(timers.size(), 3);
    QThread::msleep(3100); // all of them are due
    for (QObject *timer : qAsConst(timers)) {
        QTimerEvent event(0);
        QCoreApplication::sendEvent(timer, &event);
    }
    QTRY_COMPARE(order.join(QLatin1Char(' ')), QStringLiteral("first second third"));
}

void TestSignVerify::signatureIsThatOfOpenssl()
{
    if (QProcess::execute(QStringLiteral("openssl"), {QStringLiteral("version")}) != 0) {
        qInfo("SKIP no openssl program");
        return;
    }
    SignVerify signer;
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    const auto entry = bundleEntry(softwareKey());
    signer.sign(data, path("a.sig"), entry.get());
    QVERIFY(isSigned.wait(Patience));
    write(path("text"), hexDigest(data));
    QVERIFY(softwareKey().toPEMFile(path("key.pem")));
    const auto openssl = [this](const QStringList &arguments) {
        QProcess process;
        process.setWorkingDirectory(m_directory.path());
        process.start(QStringLiteral("openssl"), arguments);
        return process.waitForFinished() && process.exitCode() == 0;
    };
    QVERIFY(openssl({QStringLiteral("pkeyutl"), QStringLiteral("-sign"), QStringLiteral("-inkey"),
                     QStringLiteral("key.pem"), QStringLiteral("-in"), QStringLiteral("text"),
                     QStringLiteral("-out"), QStringLiteral("openssl.sig")}));
    QCOMPARE(contents(path("a.sig")).toHex(), contents(path("openssl.sig")).toHex());
    QVERIFY(openssl({QStringLiteral("pkeyutl"), QStringLiteral("-verify"), QStringLiteral("-inkey"),
                     QStringLiteral("key.pem"), QStringLiteral("-in"), QStringLiteral("text"),
                     QStringLiteral("-sigfile"), QStringLiteral("a.sig")}));
}

void TestSignVerify::changedDataIsRefused()
{
    SignVerify signer;
    const auto entry = bundleEntry(softwareKey());
    QCA::RSAPrivateKey key = softwareKey().toRSA();
    write(path("good.sig"), key.signMessage(hexDigest(data), QCA::EMSA3_Raw));
    const Messages messages;
    signer.verify(data + "x", path("good.sig"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorVerify), Patience);
    QCOMPARE(messages.take(), QStringList({QStringLiteral("0 Error verify")}));
    QSignalSpy isVerified(&signer, &SignVerify::verifySuccess);
    signer.verify(data, path("good.sig"), entry.get());
    QVERIFY(isVerified.wait(Patience));
    // A signature with something behind it is none.
    write(path("long.sig"), contents(path("good.sig")) + "x");
    signer.setError(0);
    signer.verify(data, path("long.sig"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorVerify), Patience);
}

void TestSignVerify::failuresOfSigning()
{
    const Messages messages;
    SignVerify noEntry;
    SignVerify noBundle;
    SignVerify noKey;
    SignVerify notRsa;
    SignVerify refused;
    KeyStoreEntry empty;
    const auto keyless = bundleEntry(QCA::PrivateKey());
    const auto foreign = bundleEntry(foreignKey());
    const auto refusing = bundleEntry(scriptedKey(softwareKey(), [] { return false; }));
    noEntry.sign(data, path("none.sig"), nullptr);
    noBundle.sign(data, path("none.sig"), &empty);
    noKey.sign(data, path("none.sig"), keyless.get());
    QTRY_COMPARE_WITH_TIMEOUT(noEntry.error(), int(SignVerify::ErrorSign), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(noBundle.error(), int(SignVerify::ErrorSign), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(noKey.error(), int(SignVerify::ErrorSign), Patience);
    QCOMPARE(messages.take(), QStringList());
    notRsa.sign(data, path("none.sig"), foreign.get());
    refused.sign(data, path("none.sig"), refusing.get());
    QTRY_COMPARE_WITH_TIMEOUT(notRsa.error(), int(SignVerify::ErrorSign), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(refused.error(), int(SignVerify::ErrorSign), Patience);
    QCOMPARE(messages.take(),
             QStringList({QStringLiteral("0 Error sign"), QStringLiteral("0 Error sign")}));
    QVERIFY(!QFile::exists(path("none.sig")));
}

void TestSignVerify::failuresOfVerifying()
{
    const Messages messages;
    SignVerify noEntry;
    SignVerify noFile;
    SignVerify pipe;
    SignVerify noKey;
    SignVerify notRsa;
    const auto keyless = bundleEntry(QCA::PrivateKey());
    const auto foreign = bundleEntry(foreignKey());
    const auto good = bundleEntry(softwareKey());
    write(path("some.sig"), "signature");
    mkfifo(QFile::encodeName(path("pipe")).constData(), 0600);
    // Without an entry the file is not even looked for.
    noEntry.verify(data, path("missing.sig"), nullptr);
    noKey.verify(data, path("some.sig"), keyless.get());
    QTRY_COMPARE_WITH_TIMEOUT(noEntry.error(), int(SignVerify::ErrorVerify), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(noKey.error(), int(SignVerify::ErrorVerify), Patience);
    QCOMPARE(messages.take(), QStringList());
    noFile.verify(data, path("missing.sig"), good.get());
    QTRY_COMPARE_WITH_TIMEOUT(noFile.error(), int(SignVerify::ErrorNotFoundCmsFile), Patience);
    QCOMPARE(messages.take(), QStringList({QStringLiteral("1 could not open CMS file")}));
    // The file is looked for before the key is.
    SignVerify neither;
    neither.verify(data, path("missing.sig"), keyless.get());
    QTRY_COMPARE_WITH_TIMEOUT(neither.error(), int(SignVerify::ErrorNotFoundCmsFile), Patience);
    pipe.verify(data, path("pipe"), good.get());
    QTRY_COMPARE_WITH_TIMEOUT(pipe.error(), int(SignVerify::ErrorNotFoundCmsFile), Patience);
    messages.take();
    notRsa.verify(data, path("some.sig"), foreign.get());
    QTRY_COMPARE_WITH_TIMEOUT(notRsa.error(), int(SignVerify::ErrorVerify), Patience);
    QCOMPARE(messages.take(), QStringList({QStringLiteral("0 Error verify")}));
}

/// An empty file is no signature, and one without an end is not read to its end.
void TestSignVerify::signaturesOfOddSizes()
{
    const QByteArray signature = Trivex::rawSignature(softwareKey(), Trivex::signedText(data));
    QVERIFY(!signature.isEmpty());
    QVERIFY(Trivex::isRawSignatureValid(softwareKey(), Trivex::signedText(data), signature));
    for (const QByteArray &odd :
         {QByteArray(), QByteArray("x"), signature.left(signature.size() - 1),
          QByteArray(signature + '\0'), QByteArray(signature.size(), '\0')})
        QVERIFY(!Trivex::isRawSignatureValid(softwareKey(), Trivex::signedText(data), odd));
    write(path("empty.sig"), {});
    SignVerify empty;
    QSignalSpy good(&empty, &SignVerify::verifySuccess);
    const auto entry = bundleEntry(softwareKey());
    empty.verify(data, path("empty.sig"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(empty.error(), int(SignVerify::ErrorVerify), Patience);
    QCOMPARE(good.count(), 0);
    QFile large(path("large.sig"));
    QVERIFY(large.open(QIODevice::WriteOnly));
    QVERIFY(large.resize(qint64(1) << 30));
    const auto read = Trivex::readSignature(path("large.sig"));
    QVERIFY(read);
    QCOMPARE(read->size(), 1 << 20);
}

/// Such a key can't make these signatures: the reason stands beside the plain error, and is of no
/// other failure.
void TestSignVerify::keyOfAnotherKind()
{
    const Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    SignVerify signer;
    QSignalSpy asked(&signer, &SignVerify::getPin);
    const auto refusing = bundleEntry(scriptedKey(softwareKey(), [] { return false; }));
    signer.sign(data, path("kind.sig"), refusing.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
    QCOMPARE(failed.size(), 0);

    const auto foreign = bundleEntry(foreignKey());
    signer.setError(SignVerify::NoError);
    signer.sign(data, path("kind.sig"), foreign.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
    QCOMPARE(failed.size(), 1);
    QVERIFY(!QFile::exists(path("kind.sig")));
    write(path("kind.sig"), "x");
    signer.verify(data, path("kind.sig"), foreign.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorVerify), Patience);
    QCOMPARE(failed.size(), 2);
    for (const QList<QVariant> &one : qAsConst(failed)) {
        const auto error = one.first().value<Trivex::TokenError>();
        QCOMPARE(error.kind, Trivex::TokenError::WrongKeyKind);
        QCOMPARE(error.keyStoreId, QString());
    }
    QCOMPARE(asked.size(), 0);
}

void TestSignVerify::errorNotifiedOnce()
{
    SignVerify signer;
    QSignalSpy changed(&signer, &SignVerify::errorChanged);
    signer.verify(data, path("x"), nullptr);
    signer.verify(data, path("x"), nullptr);
    QTest::qWait(
        Trivex::Pause(1500).milliseconds()); // both have failed, and only one change may be told
    QCOMPARE(changed.count(), 1);
    signer.setError(0);
    QCOMPARE(changed.count(), 2);
    signer.setError(0);
    QCOMPARE(changed.count(), 2);
    signer.verify(data, path("x"), nullptr);
    QVERIFY(changed.wait(Patience));
    QCOMPARE(signer.error(), int(SignVerify::ErrorVerify));
}

void TestSignVerify::unwritableFile()
{
    SignVerify signer;
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    const auto entry = bundleEntry(softwareKey());
    mkfifo(QFile::encodeName(path("pipe")).constData(), 0600);
    const Messages messages;
    signer.sign(data, path("no/such/directory.sig"), entry.get());
    signer.sign(data, path("pipe"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(isSigned.count(), 2, Patience);
    // Which of the two is done first is the threads' matter.
    QStringList said = messages.take();
    said.sort();
    const QString text = QStringLiteral("1 Signature file \"%1\" not written");
    QCOMPARE(said, QStringList({text.arg(path("no/such/directory.sig")), text.arg(path("pipe"))}));
    QCOMPARE(signer.error(), int(SignVerify::NoError));
}

void TestSignVerify::cutFileIsNotSigned()
{
    write(path("cut.txt"), QByteArray(100000, 'a'));
    LoaderFile loader;
    loader.setFilePath(path("cut.txt"));
    SignVerify signer;
    SignVerify verifier;
    const auto entry = bundleEntry(softwareKey());
    write(path("some.sig"), "signature");
    const Messages messages;
    signer.sign(loader.rawData(), path("cut.sig"), entry.get());
    verifier.verify(loader.rawData(), path("some.sig"), entry.get());
    QVERIFY(QFile::resize(path("cut.txt"), 100));
    QTRY_COMPARE_WITH_TIMEOUT(verifier.error(), int(SignVerify::ErrorVerify), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorVerify), Patience);
    QCOMPARE(messages.take(),
             QStringList({QStringLiteral("0 Hash calculation error during verification."),
                          QStringLiteral("0 Hash calculation error during signing.")}));
    QVERIFY(!QFile::exists(path("cut.sig")));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestSignVerify test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_signverify.moc"
