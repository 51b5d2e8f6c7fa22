// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/directorywatch.h"

#include <QFile>

#include <array>

#include <sys/inotify.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr uint32_t Events = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO
    | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr uint32_t Loss = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_UNMOUNT;

} // namespace

DirectoryWatch::DirectoryWatch(QObject *parent)
    : QObject(parent)
    , m_descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (!m_descriptor.isOpen())
        return;
    m_notifier = new QSocketNotifier(m_descriptor.get(), QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &DirectoryWatch::read);
}

DirectoryWatch::~DirectoryWatch()
{
    delete m_notifier; // before what it listens to
}

bool DirectoryWatch::watch(const QString &path)
{
    if (m_watch >= 0)
        inotify_rm_watch(m_descriptor.get(), m_watch);
    m_watch = inotify_add_watch(m_descriptor.get(), QFile::encodeName(path).constData(), Events);
    return isWatching();
}

void DirectoryWatch::read()
{
    alignas(inotify_event) std::array<char, 16 * 1024> buffer;
    bool isLost = false;
    for (;;) {
        const ssize_t size = ::read(m_descriptor.get(), buffer.data(), buffer.size());
        if (size <= 0)
            break;
        for (ssize_t position = 0; position < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer.data() + position);
            isLost = isLost || (event->wd == m_watch && event->mask & Loss);
            position += ssize_t(sizeof(inotify_event) + event->len);
        }
    }
    if (isLost) {
        if (m_watch >= 0)
            inotify_rm_watch(m_descriptor.get(), m_watch); // moved away, it would still tell
        m_watch = -1;
        Q_EMIT lost();
    }
    Q_EMIT changed();
}

} // namespace Trivex
