// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The calls by which a file is written whole or not at all, in their order, and the same where the
// file system does not know some of them. The calls of this process come here first.
#include "qca/base/atomicfile.h"
#include "qca/base/requestsave.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <cerrno>

#include <dlfcn.h>
#include <unistd.h>

using Trivex::WriteResult;

namespace {

/// The directory whose calls are noted.
QByteArray watched;
QByteArrayList calls;
/// What a call fails with, by its name.
QMap<QByteArray, int> failures;
/// Done once, when that call is made.
QPair<QByteArray, std::function<void()>> meanwhile;

QByteArray shortName(const QByteArray &path)
{
    QByteArray name = path.mid(path.lastIndexOf('/') + 1);
    if (path == watched)
        return "the directory";
    return name.startsWith(".trivex-") ? "the part" : name;
}

QByteArray pathOf(int descriptor)
{
    return QFile::encodeName(
        QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(descriptor)));
}

/// Notes a call; false where it shall fail.
bool begin(const QByteArray &call, const QByteArray &path, const QByteArray &other = {})
{
    if (watched.isEmpty() || !path.startsWith(watched))
        return true;
    calls += call + ' ' + shortName(path);
    if (!other.isEmpty())
        calls.last() += " to " + shortName(other);
    if (meanwhile.first == call && meanwhile.second)
        std::exchange(meanwhile.second, nullptr)();
    if (!failures.contains(call))
        return true;
    errno = failures.value(call);
    return false;
}

template <class Function> Function real(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

void put(const QString &path, const QByteArray &text)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(text);
}

bool isOpenHere(const QString &path)
{
    const auto links = QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::Files);
    return std::any_of(links.cbegin(), links.cend(),
                       [&](const QFileInfo &link) { return link.symLinkTarget() == path; });
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

} // namespace

extern "C" {

Q_DECL_EXPORT int fsync(int descriptor)
{
    static const auto next = real<int (*)(int)>("fsync");
    return begin("fsync", pathOf(descriptor)) ? next(descriptor) : -1;
}

Q_DECL_EXPORT ssize_t write(int descriptor, const void *data, size_t size)
{
    static const auto next = real<ssize_t (*)(int, const void *, size_t)>("write");
    if (watched.isEmpty() || begin("write", pathOf(descriptor)))
        return next(descriptor, data, size);
    return -1;
}

Q_DECL_EXPORT int rename(const char *from, const char *to) noexcept
{
    static const auto next = real<int (*)(const char *, const char *)>("rename");
    return begin("rename", from, to) ? next(from, to) : -1;
}

Q_DECL_EXPORT int renameat2(int fromDirectory, const char *from, int toDirectory, const char *to,
                            unsigned flags) noexcept
{
    static const auto next =
        real<int (*)(int, const char *, int, const char *, unsigned)>("renameat2");
    return begin("renameat2", from, to) ? next(fromDirectory, from, toDirectory, to, flags) : -1;
}

Q_DECL_EXPORT int link(const char *from, const char *to) noexcept
{
    static const auto next = real<int (*)(const char *, const char *)>("link");
    return begin("link", from, to) ? next(from, to) : -1;
}

Q_DECL_EXPORT int unlink(const char *path) noexcept
{
    static const auto next = real<int (*)(const char *)>("unlink");
    return begin("unlink", path) ? next(path) : -1;
}
}

class TestWriteOrder : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void newFile();
    void replacedFile();
    void removedFile();
    void notFlushed();
    void otherFileSystems_data();
    void otherFileSystems();
    void takenName_data() { otherFileSystems_data(); }
    void takenName();
    void takenMeanwhile_data();
    void takenMeanwhile();
    void nothingWorks();
    void requestNameTakenMeanwhile();

private:
    QString path(const char *name = "a.csr") const
    {
        return m_directory->filePath(QLatin1String(name));
    }
    QStringList files() const
    {
        return QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    QCA::Initializer m_qca;
    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestWriteOrder::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    failures.clear();
    calls.clear();
    meanwhile = {};
    watched = QFile::encodeName(m_directory->path());
}

void TestWriteOrder::cleanup()
{
    watched.clear();
}

/// The contents are on the disk before the name is, and both before anybody is told so.
void TestWriteOrder::newFile()
{
    QCOMPARE(Trivex::writeAtomically(path(), "new", false), WriteResult::Written);
    QCOMPARE(calls,
             QByteArrayList({"write the part", "fsync the part", "renameat2 the part to a.csr",
                             "fsync the directory"}));
}

void TestWriteOrder::replacedFile()
{
    QCOMPARE(Trivex::writeAtomically(path(), "old", false), WriteResult::Written);
    calls.clear();
    QCOMPARE(Trivex::writeAtomically(path(), "new", true), WriteResult::Written);
    QCOMPARE(calls,
             QByteArrayList({"write the part", "fsync the part", "rename the part to a.csr",
                             "fsync the directory"}));
}

void TestWriteOrder::removedFile()
{
    QCOMPARE(Trivex::writeAtomically(path(), "old", false), WriteResult::Written);
    calls.clear();
    QVERIFY(Trivex::removeFile(path()));
    QCOMPARE(calls, QByteArrayList({"unlink a.csr", "fsync the directory"}));
}

/// A disk that has an error to tell: nothing gets a name.
void TestWriteOrder::notFlushed()
{
    QCOMPARE(Trivex::writeAtomically(path(), "old", false), WriteResult::Written);
    failures.insert("fsync", EIO);
    QCOMPARE(Trivex::writeAtomically(path(), "new", true), WriteResult::Failed);
    QCOMPARE(Trivex::writeAtomically(path("b.csr"), "new", false), WriteResult::Failed);
    QCOMPARE(contents(path()), QByteArray("old"));
    QCOMPARE(files(), QStringList(QStringLiteral("a.csr")));
}

void TestWriteOrder::otherFileSystems_data()
{
    QTest::addColumn<int>("renaming"); // what it fails with
    QTest::addColumn<int>("linking"); // 0: it works
    for (const int renaming : {EINVAL, ENOSYS, EPERM, EOPNOTSUPP}) {
        for (const int linking : {0, EPERM, ENOSYS, EOPNOTSUPP, EINVAL})
            QTest::addRow("%s, %s", strerrorname_np(renaming),
                          linking ? strerrorname_np(linking) : "link")
                << renaming << linking;
    }
}

void TestWriteOrder::otherFileSystems()
{
    QFETCH(int, renaming);
    QFETCH(int, linking);
    failures.insert("renameat2", renaming);
    if (linking)
        failures.insert("link", linking);
    // Some file systems replace no file that is open.
    bool wasOpen = false;
    meanwhile = {"rename", [&] { wasOpen = isOpenHere(path()); }};
    QCOMPARE(Trivex::writeAtomically(path(), "new", false), WriteResult::Written);
    meanwhile = {};
    QVERIFY(!wasOpen);
    QByteArrayList expected{"write the part", "fsync the part", "renameat2 the part to a.csr",
                            "link the part to a.csr"};
    expected += linking ? "rename the part to a.csr" : "unlink the part";
    QCOMPARE(calls, expected << "fsync the directory");
    QCOMPARE(files(), QStringList(QStringLiteral("a.csr")));
    QCOMPARE(contents(path()), QByteArray("new"));
    QCOMPARE(QFileInfo(path()).permissions() & QFile::ReadOwner, QFile::ReadOwner);
    // As often as one likes.
    QCOMPARE(Trivex::writeAtomically(path("b.csr"), "other", false), WriteResult::Written);
    QCOMPARE(files().size(), 2);
}

void TestWriteOrder::takenName()
{
    QFETCH(int, renaming);
    QFETCH(int, linking);
    failures.insert("renameat2", renaming);
    if (linking)
        failures.insert("link", linking);
    put(path(), "somebody's");
    QCOMPARE(Trivex::writeAtomically(path(), "new", false), WriteResult::Exists);
    QCOMPARE(contents(path()), QByteArray("somebody's"));
    QCOMPARE(files(), QStringList(QStringLiteral("a.csr")));
    // Where the name is a link to nowhere, it is taken, too.
    QVERIFY(QFile::remove(path()));
    QVERIFY(QFile::link(QStringLiteral("/nowhere"), path()));
    QCOMPARE(Trivex::writeAtomically(path(), "new", false), WriteResult::Exists);
    QVERIFY(QFileInfo(path()).isSymLink());
}

void TestWriteOrder::takenMeanwhile_data()
{
    QTest::addColumn<QByteArray>("call");
    for (const char *call : {"fsync", "renameat2", "link"})
        QTest::newRow(call) << QByteArray(call);
}

/// Another process takes the name between any two calls.
void TestWriteOrder::takenMeanwhile()
{
    QFETCH(QByteArray, call);
    failures.insert("renameat2", EINVAL);
    failures.insert("link", EPERM);
    meanwhile = {call, [this] { put(path(), "somebody's"); }};
    QCOMPARE(Trivex::writeAtomically(path(), "new", false), WriteResult::Exists);
    QCOMPARE(contents(path()), QByteArray("somebody's"));
    QCOMPARE(files(), QStringList(QStringLiteral("a.csr")));
}

/// The name that was taken for it is free again.
void TestWriteOrder::nothingWorks()
{
    failures.insert("renameat2", EINVAL);
    failures.insert("link", EPERM);
    failures.insert("rename", EIO);
    QCOMPARE(Trivex::writeAtomically(path(), "new", false), WriteResult::Failed);
    QVERIFY(files().isEmpty());
}

/// Another process saves a request between the look for a free name and the placing: both stay.
void TestWriteOrder::requestNameTakenMeanwhile()
{
    qputenv("HOME", watched);
    const QDir folder(path("CertificateRequest"));
    QVERIFY(QDir().mkpath(folder.path()));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo({{QCA::CommonName, QStringLiteral("Ivanov")}});
    const QString provider = QStringLiteral("qca-ossl");
    Trivex::RequestSave saving;
    saving.request = QCA::CertificateRequest(
        options, QCA::KeyGenerator().createRSA(2048, 65537, provider), provider);
    saving.commonName = QStringLiteral("Ivanov");
    const QString taken = folder.filePath(QStringLiteral("Ivanov.csr"));
    meanwhile = {"fsync", [&taken] { put(taken, "somebody's"); }};
    QVERIFY(saving.write());
    QCOMPARE(contents(taken), QByteArray("somebody's"));
    QVERIFY(saving.path != taken);
    QCOMPARE(contents(saving.path), saving.request.toPEM().toLatin1());
}

QTEST_GUILESS_MAIN(TestWriteOrder)
#include "tst_writeorder.moc"
