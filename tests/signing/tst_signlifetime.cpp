// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"
#include "signing/loaderfile.h"
#include "signing/signverify.h"
#include "tests/signing/scriptedkey.h"
#include "tests/signing/signedfiles.h"
#include "tests/support/shortpauses.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace TrivexTest;

/// A signer whose file, entry or certificate goes meanwhile, or which goes itself.
class TestSignLifetime : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { shortenPauses(); }
    void loaderReplacedMeanwhile();
    void destroyedMeanwhile();
    void deletedInItsSignal_data();
    void deletedInItsSignal();
    void entryDestroyedMeanwhile();
    void certificateOfTheEntry();
    void certificateOwnership();

private:
    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }
    QTemporaryDir m_directory;
};

void TestSignLifetime::loaderReplacedMeanwhile()
{
    write(path("first.txt"), "first file");
    write(path("second.txt"), "second file");
    auto loader = std::make_unique<LoaderFile>();
    loader->setFilePath(path("first.txt"));
    SignVerify signer;
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    const auto entry = bundleEntry(softwareKey());
    signer.sign(loader->rawData(), path("first.sig"), entry.get());
    loader->setFilePath(path("second.txt"));
    loader.reset();
    QVERIFY(isSigned.wait(Patience));
    QCA::RSAPrivateKey key = softwareKey().toRSA();
    QCOMPARE(contents(path("first.sig")), key.signMessage(hexDigest("first file"), QCA::EMSA3_Raw));
}

void TestSignLifetime::destroyedMeanwhile()
{
    int asked = 0;
    auto signer = std::make_unique<SignVerify>();
    const auto entry = bundleEntry(scriptedKey(softwareKey(), [&] {
        ++asked;
        return true;
    }));
    signer->sign(data, path("gone.sig"), entry.get());
    signer->verify(data, path("gone.sig"), entry.get());
    signer.reset();
    QTest::qWait(Trivex::Pause(3500)
                     .milliseconds()); // longer than the jobs' own time: nothing must come of them
    QCOMPARE(asked, 0);
    QVERIFY(!QFile::exists(path("gone.sig")));

    // Destroyed while it signs: nothing is written.
    signer = std::make_unique<SignVerify>();
    const auto destroying = bundleEntry(scriptedKey(softwareKey(), [&] {
        ++asked;
        signer.reset();
        return true;
    }));
    signer->sign(data, path("gone.sig"), destroying.get());
    signer->sign(data, path("gone.sig"), destroying.get());
    QTRY_COMPARE_WITH_TIMEOUT(asked, 1, Patience);
    QTest::qWait(200); // nothing must follow in this time
    QCOMPARE(asked, 1);
    QVERIFY(!QFile::exists(path("gone.sig")));
}

void TestSignLifetime::deletedInItsSignal_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char *signal :
         {"signSuccess()", "verifySuccess()", "ceritficateChanged()", "errorChanged()"})
        QTest::newRow(signal) << QByteArray(signal);
}

/// As a dialog does that closes, and takes it along, when it is told.
void TestSignLifetime::deletedInItsSignal()
{
    QFETCH(QByteArray, signal);
    QCA::CertificateChain chain;
    chain.append(softwareCertificate());
    const auto entry = bundleEntry(softwareKey(), chain);
    SignVerify first;
    QSignalSpy isSigned(&first, &SignVerify::signSuccess);
    first.sign(data, path("own.sig"), entry.get());
    QVERIFY(isSigned.wait(Patience));

    const QPointer<SignVerify> signer = new SignVerify;
    int told = 0;
    const auto deleteIt = [&] {
        ++told;
        delete signer.data();
    };
    if (signal == "signSuccess()")
        connect(signer, &SignVerify::signSuccess, this, deleteIt);
    else if (signal == "verifySuccess()")
        connect(signer, &SignVerify::verifySuccess, this, deleteIt);
    else if (signal == "ceritficateChanged()")
        connect(signer, &SignVerify::ceritficateChanged, this, deleteIt);
    else
        connect(signer, &SignVerify::errorChanged, this, deleteIt);
    const bool fails = signal == "errorChanged()";
    // The next ones wait behind it, and go with it.
    for (int i = 0; i < 2; ++i) {
        if (signal == "signSuccess()")
            signer->sign(data, path("again.sig"), entry.get());
        else
            signer->verify(data, path(fails ? "missing.sig" : "own.sig"), entry.get());
    }
    QTRY_VERIFY_WITH_TIMEOUT(!signer, Patience);
    // What is queued behind has been done with when another one is through.
    first.sign(data, path("own.sig"), entry.get());
    QVERIFY(isSigned.wait(Patience));
    QCOMPARE(told, 1);
}

void TestSignLifetime::entryDestroyedMeanwhile()
{
    SignVerify signer;
    auto entry = bundleEntry(softwareKey());
    signer.sign(data, path("gone.sig"), entry.get());
    entry.reset();
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
    QVERIFY(!QFile::exists(path("gone.sig")));

    // Destroyed while it signs: the key is a copy.
    std::unique_ptr<KeyStoreEntry> destroyed;
    destroyed = bundleEntry(scriptedKey(softwareKey(), [&] {
        destroyed.reset();
        return true;
    }));
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    signer.sign(data, path("kept.sig"), destroyed.get());
    QVERIFY(isSigned.wait(Patience));
    QCOMPARE(contents(path("kept.sig")).size(), 256);
}

void TestSignLifetime::certificateOfTheEntry()
{
    const QCA::Certificate certificate = softwareCertificate();
    QVERIFY(!certificate.isNull());
    QCA::RSAPrivateKey key = softwareKey().toRSA();
    write(path("good.sig"), key.signMessage(hexDigest(data), QCA::EMSA3_Raw));
    QCA::CertificateChain chain;
    chain.append(certificate);
    const auto entry = bundleEntry(softwareKey(), chain);
    SignVerify signer;
    const QPointer<Certificate> first = signer.ceritficate();
    QCOMPARE(first->parent(), &signer);
    QStringList order;
    connect(&signer, &SignVerify::ceritficateChanged, this,
            [&] { order << QStringLiteral("certificate"); });
    connect(&signer, &SignVerify::verifySuccess, this, [&] { order << QStringLiteral("success"); });
    signer.verify(data, path("good.sig"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(order.size(), 2, Patience);
    QCOMPARE(order, QStringList({QStringLiteral("certificate"), QStringLiteral("success")}));
    QVERIFY(!first);
    QCOMPARE(signer.ceritficate()->commonName(), QStringLiteral("Software"));
    // The one of the key stands first, its issuers follow.
    chain.append(softwareCertificate(QStringLiteral("Issuer")));
    chain.append(softwareCertificate(QStringLiteral("Root")));
    const auto issued = bundleEntry(softwareKey(), chain);
    signer.verify(data, path("good.sig"), issued.get());
    QTRY_COMPARE_WITH_TIMEOUT(order.size(), 4, Patience);
    QCOMPARE(signer.ceritficate()->commonName(), QStringLiteral("Software"));
}

void TestSignLifetime::certificateOwnership()
{
    QPointer<Certificate> mine = new Certificate;
    QPointer<Certificate> second = new Certificate;
    {
        SignVerify signer;
        QSignalSpy changed(&signer, &SignVerify::ceritficateChanged);
        signer.setCeritficate(mine);
        signer.setCeritficate(mine);
        QCOMPARE(changed.count(), 1);
        QVERIFY(mine);
        signer.setCeritficate(second);
        QVERIFY(!mine);
        signer.setCeritficate(nullptr);
        QVERIFY(!second);
        QCOMPARE(changed.count(), 3);
        QCOMPARE(signer.ceritficate(), nullptr);
        mine = new Certificate;
        signer.setCeritficate(mine);
        // Somebody else deletes what the signer owns.
        delete mine;
        QCOMPARE(signer.ceritficate(), nullptr);
        mine = new Certificate;
        signer.setCeritficate(mine);
    }
    QVERIFY(!mine);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestSignLifetime test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_signlifetime.moc"
