// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What the machine does to files that are written whole or not at all.
#include "qca/base/atomicfile.h"
#include "qca/base/descriptor.h"
#include "qca/base/regularfile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>
#include <utime.h>

using Trivex::WriteResult;

namespace {

constexpr int Day = 86400; // seconds

/// Lowers one limit of this process for its lifetime.
class Limit {
public:
    Limit(__rlimit_resource_t resource, rlim_t value)
        : m_resource(resource)
    {
        getrlimit(m_resource, &m_before);
        const rlimit lower = {value, m_before.rlim_max};
        setrlimit(m_resource, &lower);
    }
    ~Limit() { setrlimit(m_resource, &m_before); }
    Limit(const Limit &) = delete;
    Limit &operator=(const Limit &) = delete;

private:
    __rlimit_resource_t m_resource;
    rlimit m_before{};
};

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void put(const QString &path, const QByteArray &text)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(text);
}

/// What the clock says of a file that was written `seconds` from now.
void date(const QString &path, int seconds)
{
    const time_t then = time(nullptr) + seconds;
    const utimbuf times{then, then};
    utime(QFile::encodeName(path).constData(), &times);
}

} // namespace

class TestWriteFaults : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }
    void diskFull();
    void fullUnderAnotherFile();
    void keepsTheFileItself();
    void outOfDescriptors();
    void directoryIsGone();
    void directoryIsALink();
    void directoryIsAFile();
    void clockJumps_data();
    void clockJumps();
    void partOfADeadOne_data();
    void partOfADeadOne();

private:
    QString path(const char *name) const { return m_directory->filePath(QLatin1String(name)); }
    QStringList files() const
    {
        return QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    std::unique_ptr<QTemporaryDir> m_directory;
};

/// There is room for less than all of it, down to nothing: the old file stays, and no part of a
/// new.
void TestWriteFaults::diskFull()
{
    signal(SIGXFSZ, SIG_IGN);
    put(path("old.csr"), "old");
    const QByteArray text(10000, 'n');
    for (const rlim_t room : {0, 1, 4096, 9999}) {
        const Limit limit(RLIMIT_FSIZE, room);
        QCOMPARE(Trivex::writeAtomically(path("old.csr"), text, true), WriteResult::Failed);
        QCOMPARE(Trivex::writeAtomically(path("new.csr"), text, false), WriteResult::Failed);
        QCOMPARE(files(), QStringList(QStringLiteral("old.csr")));
        QCOMPARE(contents(path("old.csr")), QByteArray("old"));
    }
    QCOMPARE(Trivex::writeAtomically(path("old.csr"), text, true), WriteResult::Written);
    QCOMPARE(contents(path("old.csr")), text);
}

/// What an export writes over an older file: the older one stays, however little fits.
void TestWriteFaults::fullUnderAnotherFile()
{
    signal(SIGXFSZ, SIG_IGN);
    const QByteArray old(500, 'o');
    put(path("old.pem"), old);
    const QByteArray text(10000, 'n');
    for (const rlim_t room : {0, 1, 499, 500, 501, 4096, 9999}) {
        const Limit limit(RLIMIT_FSIZE, room);
        QVERIFY(!Trivex::writeFile(path("old.pem"), text));
        QVERIFY(!Trivex::writeFile(path("new.pem"), text));
        QCOMPARE(files(), QStringList(QStringLiteral("old.pem")));
        QCOMPARE(contents(path("old.pem")), old);
    }
    QVERIFY(Trivex::writeFile(path("old.pem"), text));
    QCOMPARE(contents(path("old.pem")), text);
    QVERIFY(Trivex::writeFile(path("old.pem"), "short"));
    QCOMPARE(contents(path("old.pem")), QByteArray("short"));
    QVERIFY(Trivex::writeFile(path("old.pem"), QByteArray()));
    QCOMPARE(contents(path("old.pem")), QByteArray());
}

/// Its other names, links to it and its permissions are the person's.
void TestWriteFaults::keepsTheFileItself()
{
    put(path("old.pem"), "older");
    QVERIFY(QFile::setPermissions(path("old.pem"), QFile::ReadOwner | QFile::WriteOwner));
    QVERIFY(QFile::link(path("old.pem"), path("link.pem")));
    QCOMPARE(::link(QFile::encodeName(path("old.pem")).constData(),
                    QFile::encodeName(path("second.pem")).constData()),
             0);
    QVERIFY(Trivex::writeFile(path("link.pem"), "new"));
    QVERIFY(QFileInfo(path("link.pem")).isSymLink());
    for (const char *name : {"old.pem", "second.pem", "link.pem"})
        QCOMPARE(contents(path(name)), QByteArray("new"));
    QCOMPARE(QFile::permissions(path("old.pem"))
                 & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup),
             QFile::Permissions());
    // A link to nothing leads to the new file.
    QVERIFY(QFile::link(path("made.pem"), path("leads.pem")));
    QVERIFY(Trivex::writeFile(path("leads.pem"), "made"));
    QCOMPARE(contents(path("made.pem")), QByteArray("made"));
}

void TestWriteFaults::outOfDescriptors()
{
    put(path("old.csr"), "old");
    put(path("gone.csr"), "gone");
    {
        const Limit limit(RLIMIT_NOFILE, 256);
        std::vector<Trivex::Descriptor> all;
        do
            all.emplace_back(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        while (all.back().isOpen());
        QCOMPARE(Trivex::writeAtomically(path("old.csr"), "new", true), WriteResult::Failed);
        QCOMPARE(Trivex::writeAtomically(path("new.csr"), "new", false), WriteResult::Failed);
        // To remove a file takes none.
        QVERIFY(Trivex::removeFile(path("gone.csr")));
    }
    QCOMPARE(files(), QStringList(QStringLiteral("old.csr")));
    QCOMPARE(contents(path("old.csr")), QByteArray("old"));
    QCOMPARE(Trivex::writeAtomically(path("old.csr"), "new", true), WriteResult::Written);
}

/// Between the writing and the placing.
void TestWriteFaults::directoryIsGone()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("requests")));
    Trivex::AtomicFile file(path("requests/a.csr"));
    QVERIFY(file.isOpen() && file.write("new", 3));
    QVERIFY(QDir(path("requests")).removeRecursively());
    QCOMPARE(file.place(false), WriteResult::Failed);
    QCOMPARE(file.place(true), WriteResult::Failed);
    QVERIFY(!QFile::exists(path("requests")));
}

/// As people do whose files lie on another disk.
void TestWriteFaults::directoryIsALink()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("disk")));
    QVERIFY(QFile::link(path("disk"), path("requests")));
    QCOMPARE(Trivex::writeAtomically(path("requests/a.csr"), "new", false), WriteResult::Written);
    QCOMPARE(Trivex::writeAtomically(path("requests/a.csr"), "again", false), WriteResult::Exists);
    QCOMPARE(contents(path("disk/a.csr")), QByteArray("new"));
    // The other disk is not there.
    QVERIFY(QDir(path("disk")).removeRecursively());
    QCOMPARE(Trivex::writeAtomically(path("requests/a.csr"), "new", false), WriteResult::Failed);
    QVERIFY(!QFile::exists(path("disk")));
    QVERIFY(QFileInfo(path("requests")).isSymLink());
}

void TestWriteFaults::directoryIsAFile()
{
    put(path("requests"), "a file");
    QCOMPARE(Trivex::writeAtomically(path("requests/a.csr"), "new", false), WriteResult::Failed);
    QCOMPARE(Trivex::writeAtomically(path("requests/a.csr"), "new", true), WriteResult::Failed);
    QVERIFY(Trivex::removeFile(path("requests/a.csr")));
    QCOMPARE(contents(path("requests")), QByteArray("a file"));
}

void TestWriteFaults::clockJumps_data()
{
    QTest::addColumn<int>("seconds");
    QTest::newRow("forward") << -Day;
    QTest::newRow("back") << Day;
}

/// A file in the making seems a day old, or to come from tomorrow, when another process looks.
void TestWriteFaults::clockJumps()
{
    QFETCH(int, seconds);
    Trivex::AtomicFile slow(path("slow.csr"));
    QVERIFY(slow.isOpen() && slow.write("slow", 4));
    date(slow.partPath(), seconds);
    QCOMPARE(Trivex::writeAtomically(path("quick.csr"), "quick", false), WriteResult::Written);
    QVERIFY(QFile::exists(slow.partPath()));
    QCOMPARE(slow.place(false), WriteResult::Written);
    QCOMPARE(contents(path("slow.csr")), QByteArray("slow"));
}

void TestWriteFaults::partOfADeadOne_data()
{
    clockJumps_data();
}

/// Nobody writes to it any more: it is taken away, whatever the clock did since.
void TestWriteFaults::partOfADeadOne()
{
    QFETCH(int, seconds);
    put(path(".trivex-dead.part"), "half");
    date(path(".trivex-dead.part"), seconds);
    QCOMPARE(Trivex::writeAtomically(path("a.csr"), "x", false), WriteResult::Written);
    QCOMPARE(files(), QStringList(QStringLiteral("a.csr")));
}

QTEST_GUILESS_MAIN(TestWriteFaults)
#include "tst_writefaults.moc"
