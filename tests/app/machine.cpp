// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/machine.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TrivexTest {

namespace {

constexpr uid_t Nobody = 65534;
constexpr rlim_t FewDescriptors = 256;
constexpr rlim_t SmallFile = 16; // bytes, less than all that is written here

bool put(const char *path, const QByteArray &text)
{
    const Trivex::Descriptor file(::open(path, O_WRONLY | O_CLOEXEC));
    return file.isOpen() && ::write(file.get(), text.constData(), text.size()) == text.size();
}

QByteArray failureOf(const char *what)
{
    return QByteArray(what) + " is not allowed here: " + std::strerror(errno);
}

void limit(__rlimit_resource_t resource, const rlimit &before, rlim_t value)
{
    const rlimit lower = {value, before.rlim_max};
    setrlimit(resource, &lower);
}

} // namespace

Machine::Machine(Fault fault, QString place)
    : m_fault(fault)
    , m_place(std::move(place))
{
}

Machine::~Machine() = default;

QString Machine::filler() const
{
    return m_place + QStringLiteral("/filler");
}

/// Mounts are this process's own from now on, and the place is a small disk.
QByteArray Machine::separate() const
{
    const uid_t user = getuid();
    const gid_t group = getgid();
    if (::unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0)
        return failureOf("a mount namespace");
    if (user != 0
        && (!put("/proc/self/setgroups", "deny")
            || !put("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1")
            || !put("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1")))
        return failureOf("a user namespace");
    const QByteArray place = QFile::encodeName(m_place);
    if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || ::mount("none", place.constData(), "tmpfs", 0, "size=512k,mode=0755") != 0)
        return failureOf("a mount");
    // Nothing of what is written past the place may get anywhere.
    if (m_fault == NoHome
        && ::mount(nullptr, "/", nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) != 0)
        return failureOf("a read-only root");
    return {};
}

QByteArray Machine::prepare()
{
    if (m_fault == NoHome || m_fault == ReadOnly || m_fault == FullDisk) {
        const QByteArray reason = separate();
        if (!reason.isEmpty())
            return reason;
    }
    for (const char *folder : {"home", "tmp", "out"})
        QDir(m_place).mkpath(QLatin1String(folder));
    const QByteArray home = QFile::encodeName(m_place) + "/home";
    qputenv("TMPDIR", QFile::encodeName(m_place) + "/tmp");
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qunsetenv(name);
    qputenv("HOME", home);
    if (m_fault == NoHome)
        qunsetenv("HOME");
    return {};
}

void Machine::fill() const
{
    const Trivex::Descriptor file(
        ::open(QFile::encodeName(filler()).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    const QByteArray zeros(4096, '\0');
    while (::write(file.get(), zeros.constData(), zeros.size()) > 0)
        continue;
}

/// Nobody may write to what lies there, and root is nobody while it lasts.
void Machine::setForeign(bool isForeign) const
{
    const bool isRoot = getuid() == 0 || geteuid() == 0;
    if (!isForeign && ::setresuid(::getuid(), 0, 0) == 0 && ::setresuid(0, 0, 0) != 0)
        qFatal("root does not come back");
    // Who was somebody else can't be looked through for leaks any more, unless he allows it.
    if (!isForeign)
        ::prctl(PR_SET_DUMPABLE, 1);
    QDirIterator all(m_place, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    QStringList paths = {m_place};
    while (all.hasNext())
        paths.prepend(all.next());
    for (const QString &path : qAsConst(paths)) {
        const mode_t mode = QFileInfo(path).isDir() ? 0555 : 0444;
        ::chmod(QFile::encodeName(path).constData(), isForeign ? mode : mode | 0200);
    }
    if (isForeign && isRoot && ::setresuid(Nobody, Nobody, 0) != 0)
        qFatal("root can't be nobody");
}

void Machine::begin()
{
    const QByteArray place = QFile::encodeName(m_place);
    switch (m_fault) {
    case NoHome:
        break;
    case ForeignHome:
        setForeign(true);
        break;
    case ReadOnly:
        if (::mount(nullptr, place.constData(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr)
            != 0)
            qFatal("the disk can't be made read-only");
        break;
    case FullDisk:
        fill();
        break;
    case FileSizes:
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        limit(RLIMIT_FSIZE, m_before, SmallFile);
        break;
    case NoDescriptors:
        getrlimit(RLIMIT_NOFILE, &m_before);
        limit(RLIMIT_NOFILE, m_before, FewDescriptors);
        do
            m_all.emplace_back(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        while (m_all.back().isOpen());
        break;
    }
}

void Machine::end()
{
    const QByteArray place = QFile::encodeName(m_place);
    switch (m_fault) {
    case NoHome:
        break;
    case ForeignHome:
        setForeign(false);
        break;
    case ReadOnly:
        if (::mount(nullptr, place.constData(), nullptr, MS_REMOUNT | MS_BIND, nullptr) != 0)
            qFatal("the disk stays read-only");
        break;
    case FullDisk:
        QFile::remove(filler());
        break;
    case FileSizes:
        setrlimit(RLIMIT_FSIZE, &m_before);
        break;
    case NoDescriptors:
        m_all.clear();
        setrlimit(RLIMIT_NOFILE, &m_before);
        break;
    }
}

} // namespace TrivexTest
