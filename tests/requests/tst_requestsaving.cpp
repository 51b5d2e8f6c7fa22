// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Request files: loading, saving, editing, exporting.
#include "requests/certificaterequest.h"
#include "tests/requests/home.h"
#include "tests/signing/scriptedkey.h"
#include "tests/support/standstill.h"
#include "tests/support/textlist.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <csignal>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;
const char *const HasSaved = "has saved";

QString filePath(const QString &name)
{
    return home->requests().filePath(name);
}

/// A request file made by the distribution's own provider.
QString makeRequestFile(const QString &name, const QString &commonName,
                        const QString &organization = QString())
{
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, commonName);
    if (!organization.isEmpty())
        info.insert(QCA::Organization, organization);
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(info);
    const QCA::CertificateRequest request(options, softwareKey(), QStringLiteral("qca-ossl"));
    return request.toPEMFile(filePath(name)) ? filePath(name) : QString();
}

QString commonNameOf(const QString &file)
{
    return CertificateRequest(filePath(file), nullptr).commonName();
}

QByteArray contents(const QString &file)
{
    QFile reader(filePath(file));
    reader.open(QIODevice::ReadOnly);
    return reader.readAll();
}

void ignoreMissingKey(const char *fileName)
{
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("PrivateKey of certificate request: %1 is null")
                                        .arg(QLatin1String(fileName))));
}

/// Saves an edited request, each time under another name, and says so once it has begun: until it
/// is killed, until the test that should have done it is gone, or until a save fails.
int editUntilKilled(const QString &path)
{
    CertificateRequest request(path, nullptr);
    int saved = 0;
    QObject::connect(&request, &CertificateRequest::requestCreated, &request, [&] { ++saved; });
    const pid_t test = getppid();
    for (int i = 0; saved == i && getppid() == test; ++i) {
        request.setCommonName(QString::number(i % 7));
        request.setEditMode(true);
        if (i == 0) {
            std::puts(HasSaved);
            std::fflush(stdout);
        }
    }
    return 1;
}

} // namespace

class TestRequestSaving : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void savingWithoutRequest();
    void loads();
    void unreadableFiles_data();
    void unreadableFiles();
    void pipeIsNotOpened();
    void savingAgainMakesNumberedFiles();
    void editWithoutKeyKeepsTheOldSubject();
    void editToTheSameName();
    void editToATakenName();
    void editFailsWholly();
    void unwritableDirectory();
    void foreignNames();
    void exports();
    void exportStaysInItsDirectory();
    void namelessExport();
    void exportFails();
    void killedWhileSaving();
};

void TestRequestSaving::init()
{
    home->clearRequests();
}

void TestRequestSaving::savingWithoutRequest()
{
    CertificateRequest request;
    QTest::ignoreMessage(QtWarningMsg, "Certificate request not created!");
    QVERIFY(!request.saveRequest());
    QTest::ignoreMessage(QtWarningMsg, "Certificate request not created!");
    request.setEditMode(false);
    request.setCommonName(QStringLiteral("A"));
    QTest::ignoreMessage(QtWarningMsg, "Certificate request not created!");
    request.setEditMode(true);
}

void TestRequestSaving::loads()
{
    const QString path = makeRequestFile(QStringLiteral("Some name (4).csr"),
                                         QStringLiteral("Ivanov"), QStringLiteral("Company"));
    const CertificateRequest request(path, nullptr);
    QCOMPARE(request.commonName(), QStringLiteral("Ivanov"));
    QCOMPARE(request.issuer(), QStringLiteral("Company"));
    QCOMPARE(request.filePath(), path);
    // Made from the common name, whatever the file is called.
    QCOMPARE(request.fileName(), QStringLiteral("Ivanov.csr"));
    QCOMPARE(request.publicKeyTypeAlgorithm(), QStringLiteral("RSA"));
    QCOMPARE(request.privateKeyAvailability(), QString());
    QVERIFY(request.isNull());
}

void TestRequestSaving::unreadableFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("not a request");
    QTest::newRow("cut") << QByteArray("-----BEGIN CERTIFICATE REQUEST-----\nMIIC\n");
    QTest::newRow("broken") << QByteArray("-----BEGIN CERTIFICATE REQUEST-----\nMIICijCCAXICAQ==\n"
                                          "-----END CERTIFICATE REQUEST-----\n");
}

void TestRequestSaving::unreadableFiles()
{
    QFETCH(QByteArray, content);
    QFile file(filePath(QStringLiteral("bad.csr")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    CertificateRequest request(file.fileName(), nullptr);
    QCOMPARE(request.commonName(), QString());
    QCOMPARE(request.fileName(), QString());
    QCOMPARE(request.filePath(), QString());
    QCOMPARE(request.publicKeyTypeAlgorithm(), QString());
    QTest::ignoreMessage(QtWarningMsg, "Certificate request not created!");
    QVERIFY(!request.saveRequest());
}

void TestRequestSaving::pipeIsNotOpened()
{
    const QString pipe = filePath(QStringLiteral("pipe.csr"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QElapsedTimer timer;
    timer.start();
    const CertificateRequest request(pipe, nullptr);
    QCOMPARE(request.filePath(), QString());
    QVERIFY(timer.elapsed() < 10000);
}

void TestRequestSaving::savingAgainMakesNumberedFiles()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("Name")),
                               nullptr);
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    QVERIFY(request.saveRequest());
    QCOMPARE(request.fileName(), QStringLiteral("Name.csr"));
    request.setEditMode(false);
    QCOMPARE(request.fileName(), QStringLiteral("Name (1).csr"));
    QCOMPARE(request.filePath(), filePath(QStringLiteral("Name (1).csr")));
    QVERIFY(request.saveRequest());
    QCOMPARE(created.count(), 3);
    QCOMPARE(home->requestFiles(), list({"Name (1).csr", "Name (2).csr", "Name.csr", "x.csr"}));
    QCOMPARE(contents(QStringLiteral("Name (2).csr")), contents(QStringLiteral("x.csr")));
}

void TestRequestSaving::editWithoutKeyKeepsTheOldSubject()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("Old.csr"), QStringLiteral("Old")),
                               nullptr);
    QSignalSpy missing(&request, &CertificateRequest::missingPrivateKey);
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    request.setCommonName(QStringLiteral("New"));
    ignoreMissingKey("Old.csr");
    request.setEditMode(true);
    QCOMPARE(missing.count(), 1);
    QCOMPARE(created.count(), 1);
    QCOMPARE(home->requestFiles(), list({"New.csr"}));
    QCOMPARE(commonNameOf(QStringLiteral("New.csr")), QStringLiteral("Old"));
    QCOMPARE(request.fileName(), QStringLiteral("New.csr"));
}

void TestRequestSaving::editToTheSameName()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("Old.csr"), QStringLiteral("Old")),
                               nullptr);
    ignoreMissingKey("Old.csr");
    request.setEditMode(true);
    QCOMPARE(home->requestFiles(), list({"Old.csr"}));
    QCOMPARE(request.fileName(), QStringLiteral("Old.csr"));
}

void TestRequestSaving::editToATakenName()
{
    makeRequestFile(QStringLiteral("New.csr"), QStringLiteral("Other"));
    CertificateRequest request(
        makeRequestFile(QStringLiteral("New (1).csr"), QStringLiteral("New")), nullptr);
    ignoreMissingKey("New.csr");
    request.setEditMode(true);
    // The number is free, for the old file counts as gone.
    QCOMPARE(home->requestFiles(), list({"New (1).csr", "New.csr"}));
    QCOMPARE(commonNameOf(QStringLiteral("New.csr")), QStringLiteral("Other"));
    QCOMPARE(commonNameOf(QStringLiteral("New (1).csr")), QStringLiteral("New"));
}

void TestRequestSaving::editFailsWholly()
{
    const QString path = makeRequestFile(QStringLiteral("Old.csr"), QStringLiteral("Old"));
    // The request was opened from elsewhere, and the request directory is no directory.
    const QString elsewhere = home->path() + QStringLiteral("/Old.csr");
    QVERIFY(QFile::rename(path, elsewhere));
    home->requests().removeRecursively();
    QFile blocker(home->requests().path());
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    CertificateRequest request(elsewhere, nullptr);
    request.setCommonName(QStringLiteral("New"));
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    ignoreMissingKey("Old.csr");
    QTest::ignoreMessage(QtWarningMsg, "File:  \"New.csr\"  not created!");
    request.setEditMode(true);
    QCOMPARE(created.count(), 0);
    QVERIFY(QFile::exists(elsewhere));
    QCOMPARE(CertificateRequest(elsewhere, nullptr).commonName(), QStringLiteral("Old"));
    QCOMPARE(request.filePath(), elsewhere);
    blocker.remove();
    QFile::remove(elsewhere);
}

void TestRequestSaving::unwritableDirectory()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("Name")),
                               nullptr);
    home->requests().removeRecursively();
    QTest::ignoreMessage(QtWarningMsg, "File:  \"Name.csr\"  not created!");
    QVERIFY(!request.saveRequest());
}

void TestRequestSaving::foreignNames()
{
    const QString evil = QStringLiteral("../../../tmp/evil");
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), evil), nullptr);
    QCOMPARE(request.commonName(), evil);
    QVERIFY(request.saveRequest());
    QCOMPARE(request.fileName(), QStringLiteral("_._.._.._tmp_evil.csr"));
    QCOMPARE(home->requestFiles(), list({"_._.._.._tmp_evil.csr", "x.csr"}));

    const QString long1(300, QChar(0x0416));
    request.setCommonName(long1);
    QVERIFY(request.saveRequest());
    QVERIFY(request.saveRequest());
    QVERIFY(request.fileName().endsWith(QLatin1String(" (1).csr")));
    QCOMPARE(home->requestFiles().size(), 4);
}

void TestRequestSaving::exports()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("Name")),
                               nullptr);
    QSignalSpy exported(&request, &Certificate::fileExported);
    QTemporaryDir directory;
    QVERIFY(request.exportToFile(directory.path()));
    QCOMPARE(exported.count(), 1);
    const CertificateRequest copy(directory.filePath(QStringLiteral("Name.csr")), nullptr);
    QCOMPARE(copy.commonName(), QStringLiteral("Name"));
}

void TestRequestSaving::exportStaysInItsDirectory()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("../up")),
                               nullptr);
    QTemporaryDir directory;
    QVERIFY(request.exportToFile(directory.path()));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), list({"_._up.csr"}));
}

void TestRequestSaving::namelessExport()
{
    for (const QString &name : {QString(), QStringLiteral("  ")}) {
        CertificateRequest request(
            makeRequestFile(QStringLiteral("x.csr"), name, QStringLiteral("Nameless")), nullptr);
        QCOMPARE(request.subjectOrganization(), QStringLiteral("Nameless"));
        QCOMPARE(request.fileName(), QStringLiteral("request.csr"));
        QTemporaryDir directory;
        QVERIFY(request.exportToFile(directory.path()));
        QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden),
                 list({"request.csr"}));
    }
}

void TestRequestSaving::exportFails()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("Name")),
                               nullptr);
    CertificateRequest empty;
    QSignalSpy exported(&request, &Certificate::fileExported);
    QTest::ignoreMessage(QtWarningMsg, "File:  \"/nonexistent/Name.csr\"  not exported!");
    QVERIFY(!request.exportToFile(QStringLiteral("/nonexistent")));
    QCOMPARE(exported.count(), 0);
    QTest::ignoreMessage(QtWarningMsg, "File:  \"/nonexistent/\"  not exported!");
    QVERIFY(!empty.exportToFile(QStringLiteral("/nonexistent")));
}

void TestRequestSaving::killedWhileSaving()
{
    for (int round = 0; round < 15; ++round) {
        home->clearRequests();
        const QString path = makeRequestFile(QStringLiteral("0.csr"), QStringLiteral("0"));
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--edit"), home->path(), path});
        QVERIFY(process.waitForStarted());
        const QString problem = problemBefore(HasSaved, process);
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        // Each round kills at another moment of the writing.
        QTest::qSleep(int(QRandomGenerator::global()->bounded(1, 40)));
        ::kill(pid_t(process.processId()), SIGKILL);
        QVERIFY(process.waitForFinished());
        // Not by itself, as after a save that failed.
        QVERIFY2(process.exitStatus() == QProcess::CrashExit,
                 process.readAllStandardError().constData());
        const QStringList files =
            home->requests().entryList({QStringLiteral("*.csr")}, QDir::Files);
        QVERIFY2(files.size() == 1 || files.size() == 2, qPrintable(files.join(QLatin1Char(' '))));
        for (const QString &file : files)
            QCOMPARE(commonNameOf(file), QStringLiteral("0"));
    }
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const QString argument = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    const bool edits = argc == 4 && argument == QLatin1String("--edit");
    const Home place(edits ? QString::fromLocal8Bit(argv[2]) : QString());
    home = &place;
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    if (edits)
        return editUntilKilled(application.arguments().at(3));
    TestRequestSaving test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestsaving.moc"
