// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/atomicfile.h"
#include "qca/base/filenames.h"
#include "qca/base/privatedirectory.h"
#include "qca/base/requestfiles.h"
#include "tests/support/standstill.h"
#include "tests/support/textlist.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <cstdio>

#include <sys/stat.h>
#include <utime.h>

using Trivex::WriteResult;

#include <unistd.h>

namespace {

const char *const HasSaved = "has saved";

/// Content that tells by itself whether it is whole.
QByteArray sealed(const QByteArray &text)
{
    return text + QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex();
}

bool isWhole(const QByteArray &content)
{
    return content.size() > 40 && sealed(content.chopped(40)) == content;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

/// Renames one file over and over, as saving an edited request does, and says so once it has begun:
/// until it is killed, or until the test that should have done it is gone.
int saveUntilKilled(const QString &directory)
{
    QString old;
    const pid_t test = getppid();
    for (int i = 0; getppid() == test; ++i) {
        const QString path = QStringLiteral("%1/%2.csr").arg(directory).arg(i % 10);
        const QByteArray text(20000 + i % 777, char('a' + i % 26));
        if (Trivex::writeAtomically(path, sealed(text), false) != WriteResult::Written)
            return 1;
        if (i == 0) {
            std::puts(HasSaved);
            std::fflush(stdout);
        }
        if (!old.isEmpty())
            Trivex::removeFile(old);
        old = path;
    }
    return 0;
}

} // namespace

class TestRequestFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void directory();
    void safeNames_data();
    void safeNames();
    void longNames();
    void numbers_data();
    void numbers();
    void longNumberedNames();
    void writesNewFiles();
    void replacesOnlyWhenTold();
    void failsCleanly();
    void removesStaleParts();
    void newDirectoriesAreTheOwnersAlone();
    void killedAtAnyPoint();
};

void TestRequestFiles::directory()
{
    QVERIFY(Trivex::requestDirectory().endsWith(QLatin1String("/CertificateRequest/")));
    QVERIFY(Trivex::requestDirectory().startsWith(QDir::homePath()));
    QCOMPARE(Trivex::requestExtension(), QStringLiteral("csr"));
}

void TestRequestFiles::safeNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("safe");
    QTest::newRow("plain") << "Ivanov.csr"
                           << "Ivanov.csr";
    QTest::newRow("Cyrillic") << QString::fromUtf8("Иванов И. И..csr")
                              << QString::fromUtf8("Иванов И. И..csr");
    QTest::newRow("way up") << "../../etc/passwd.csr"
                            << "_._.._etc_passwd.csr";
    QTest::newRow("absolute") << "/etc/cron.d/x.csr"
                              << "_etc_cron.d_x.csr";
    QTest::newRow("other separator") << "a\\b.csr"
                                     << "a_b.csr";
    QTest::newRow("hidden") << ".bashrc"
                            << "_bashrc";
    QTest::newRow("control") << QString::fromLatin1("a\nb\tc\x7f\x85.csr") << "a_b_c__.csr";
    QTest::newRow("nul") << QString::fromLatin1("a\0b.csr", 7) << "a_b.csr";
    QTest::newRow("turned") << QString::fromUtf8("a\u202Ersc.csr") << "a_rsc.csr";
    QTest::newRow("brackets") << "A (1).csr"
                              << "A (1).csr";
    QTest::newRow("per cent") << "100%1 %2.csr"
                              << "100%1 %2.csr";
    QTest::newRow("empty") << ""
                           << "";
}

void TestRequestFiles::safeNames()
{
    QFETCH(QString, name);
    QFETCH(QString, safe);
    QCOMPARE(Trivex::safeFileName(name), safe);
    QCOMPARE(Trivex::safeFileName(safe), safe);
}

void TestRequestFiles::longNames()
{
    const QString long1 = QString(400, QLatin1Char('a')) + QStringLiteral(".csr");
    QCOMPARE(Trivex::safeFileName(long1), QString(251, QLatin1Char('a')) + QStringLiteral(".csr"));
    // Two bytes a letter: 125 letters fit before the suffix.
    const QString long2 = QString(400, QChar(0x0416)) + QStringLiteral(".csr");
    QCOMPARE(Trivex::safeFileName(long2), QString(125, QChar(0x0416)) + QStringLiteral(".csr"));
    // A letter made of several code points is not cut apart: 251 = 62 * 4 + 3.
    const QString face = QString::fromUtf8("\xF0\x9F\x98\x80");
    const QString long3 = face.repeated(100) + QStringLiteral(".csr");
    QCOMPARE(Trivex::safeFileName(long3), face.repeated(62) + QStringLiteral(".csr"));
    const QString accented = QString::fromUtf8("e\xCC\x81");
    const QString long4 = accented.repeated(200) + QStringLiteral(".csr");
    QCOMPARE(Trivex::safeFileName(long4), accented.repeated(83) + QStringLiteral(".csr"));
    // What follows the dot is no suffix when it is long.
    const QString long5 = QStringLiteral("a.") + QString(400, QLatin1Char('b'));
    QCOMPARE(Trivex::safeFileName(long5), long5.left(255));
}

void TestRequestFiles::numbers_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("free");
    using TrivexTest::list;
    QTest::newRow("free") << QStringList() << "Ivanov.csr"
                          << "Ivanov.csr";
    QTest::newRow("first") << list({"Ivanov.csr"}) << "Ivanov.csr"
                           << "Ivanov (1).csr";
    QTest::newRow("second") << list({"Ivanov.csr", "Ivanov (1).csr"}) << "Ivanov.csr"
                            << "Ivanov (2).csr";
    QTest::newRow("gap") << list({"Ivanov.csr", "Ivanov (2).csr"}) << "Ivanov.csr"
                         << "Ivanov (1).csr";
    QTest::newRow("goes on from five") << list({"Ivanov (5).csr"}) << "Ivanov (5).csr"
                                       << "Ivanov (6).csr";
    QTest::newRow("no number") << list({"Ivanov (x).csr"}) << "Ivanov (x).csr"
                               << "Ivanov (1).csr";
    QTest::newRow("zero") << list({"Ivanov (0).csr"}) << "Ivanov (0).csr"
                          << "Ivanov (1).csr";
    QTest::newRow("text behind") << list({"A (7) b.csr"}) << "A (7) b.csr"
                                 << "A (7).csr";
    QTest::newRow("at the start") << list({"(3).csr"}) << "(3).csr"
                                  << "(3) (3).csr";
    QTest::newRow("two") << list({"A (1) (2).csr"}) << "A (1) (2).csr"
                         << "A (1) (3).csr";
    QTest::newRow("no suffix") << list({"Ivanov"}) << "Ivanov"
                               << "Ivanov (1)";
    QTest::newRow("dots") << list({"A.B.csr"}) << "A.B.csr"
                          << "A.B (1).csr";
    QTest::newRow("largest number") << list({"A (2147483647).csr"}) << "A (2147483647).csr"
                                    << "A (2147483648).csr";
}

void TestRequestFiles::numbers()
{
    QFETCH(QStringList, taken);
    QFETCH(QString, wanted);
    QFETCH(QString, free);
    const QString directory = QStringLiteral("/some where/(1)/");
    const QString path = Trivex::freePath(directory + wanted, [&](const QString &candidate) {
        return taken.contains(candidate.mid(directory.size()));
    });
    QCOMPARE(path, directory + free);
}

void TestRequestFiles::longNumberedNames()
{
    const QString name = Trivex::requestFileName(QString(400, QChar(0x0416)));
    QSet<QString> taken;
    const QString directory = QStringLiteral("/d/");
    QString path;
    for (int i = 0; i < 120; ++i) {
        path = Trivex::freePath(
            directory + name, [&](const QString &candidate) { return taken.contains(candidate); });
        QVERIFY(!taken.contains(path));
        QVERIFY(path.toUtf8().size() - 3 <= Trivex::MaxFileNameBytes);
        QVERIFY(path.endsWith(QLatin1String(".csr")));
        taken.insert(path);
    }
    QVERIFY(path.endsWith(QLatin1String(" (119).csr")));
}

void TestRequestFiles::writesNewFiles()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("a.csr"));
    QCOMPARE(Trivex::writeAtomically(path, "content", false), WriteResult::Written);
    QCOMPARE(contents(path), QByteArray("content"));
    // With the rights that any new file gets.
    struct stat status;
    QCOMPARE(stat(QFile::encodeName(path).constData(), &status), 0);
    const mode_t mask = umask(0);
    umask(mask);
    QCOMPARE(status.st_mode & 0777, 0666 & ~mask);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    QVERIFY(Trivex::removeFile(path));
    QVERIFY(!QFile::exists(path));
}

void TestRequestFiles::replacesOnlyWhenTold()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("a.csr"));
    QCOMPARE(Trivex::writeAtomically(path, "first", false), WriteResult::Written);
    QCOMPARE(Trivex::writeAtomically(path, "second", false), WriteResult::Exists);
    QCOMPARE(contents(path), QByteArray("first"));
    QCOMPARE(Trivex::writeAtomically(path, "third", true), WriteResult::Written);
    QCOMPARE(contents(path), QByteArray("third"));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void TestRequestFiles::failsCleanly()
{
    QTemporaryDir directory;
    QCOMPARE(Trivex::writeAtomically(directory.filePath(QStringLiteral("no/a.csr")), "x", false),
             WriteResult::Failed);
    // A directory in the place of the file.
    QDir(directory.path()).mkdir(QStringLiteral("a.csr"));
    QVERIFY(Trivex::writeAtomically(directory.filePath(QStringLiteral("a.csr")), "x", true)
            != WriteResult::Written);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden).size(), 0);
    QCOMPARE(Trivex::writeAtomically(QStringLiteral("/proc/a.csr"), "x", false),
             WriteResult::Failed);
}

void TestRequestFiles::removesStaleParts()
{
    QTemporaryDir directory;
    const auto part = [&](const char *name, int age) {
        const QString path = directory.filePath(QLatin1String(name));
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.close();
        const time_t then = time(nullptr) - age;
        const utimbuf times{then, then};
        utime(QFile::encodeName(path).constData(), &times);
    };
    part(".trivex-old.part", 7200);
    part(".trivex-new.part", 10);
    part(".other.part", 7200);
    QCOMPARE(Trivex::writeAtomically(directory.filePath(QStringLiteral("a.csr")), "x", false),
             WriteResult::Written);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
             QStringList({QStringLiteral(".other.part"), QStringLiteral(".trivex-new.part"),
                          QStringLiteral("a.csr")}));
}

void TestRequestFiles::newDirectoriesAreTheOwnersAlone()
{
    QTemporaryDir directory;
    const auto mode = [&](const char *path) {
        struct stat status = {};
        stat(QFile::encodeName(directory.filePath(QLatin1String(path))).constData(), &status);
        return int(status.st_mode & 07777);
    };
    const mode_t before = umask(0);
    const bool isMade = Trivex::makePrivateDirectory(directory.filePath(QStringLiteral("a/b//c/")));
    umask(before);
    QVERIFY(isMade);
    for (const char *path : {"a", "a/b", "a/b/c"})
        QCOMPARE(mode(path), 0700);
    // What is there keeps its mode.
    QCOMPARE(chmod(QFile::encodeName(directory.filePath(QStringLiteral("a"))).constData(), 0755),
             0);
    QVERIFY(Trivex::makePrivateDirectory(directory.filePath(QStringLiteral("a/d"))));
    QCOMPARE(mode("a"), 0755);
    QCOMPARE(mode("a/d"), 0700);
    // Behind a link, and not where a file is.
    QVERIFY(QFile::link(directory.filePath(QStringLiteral("a")),
                        directory.filePath(QStringLiteral("link"))));
    QVERIFY(Trivex::makePrivateDirectory(directory.filePath(QStringLiteral("link/e"))));
    QCOMPARE(mode("a/e"), 0700);
    QVERIFY(QFile(directory.filePath(QStringLiteral("a/file"))).open(QIODevice::WriteOnly));
    QVERIFY(!Trivex::makePrivateDirectory(directory.filePath(QStringLiteral("a/file"))));
    QVERIFY(!Trivex::makePrivateDirectory(directory.filePath(QStringLiteral("a/file/f"))));
}

void TestRequestFiles::killedAtAnyPoint()
{
    for (int round = 0; round < 25; ++round) {
        QTemporaryDir directory;
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--save"), directory.path()});
        QVERIFY(process.waitForStarted());
        const QDir dir(directory.path());
        const QStringList filter{QStringLiteral("*.csr")};
        const QString problem = TrivexTest::problemBefore(HasSaved, process);
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        // Each round kills at another moment of the writing.
        QTest::qSleep(int(QRandomGenerator::global()->bounded(1, 30)));
        ::kill(pid_t(process.processId()), SIGKILL);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        const QStringList files = dir.entryList(filter, QDir::Files);
        QVERIFY(files.size() == 1 || files.size() == 2);
        for (const QString &file : files)
            QVERIFY(isWhole(contents(dir.filePath(file))));
    }
}

int main(int argc, char *argv[])
{
    QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    QCoreApplication application(argc, argv);
    if (argc == 3 && application.arguments().at(1) == QLatin1String("--save"))
        return saveUntilKilled(application.arguments().at(2));
    TestRequestFiles test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestfiles.moc"
