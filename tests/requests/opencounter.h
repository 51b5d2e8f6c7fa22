// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QString>

#include <sys/inotify.h>
#include <unistd.h>

namespace TrivexTest {

/// How often files of a directory are opened, by whomever, as the kernel tells it.
class OpenCounter {
public:
    explicit OpenCounter(const QString &directory)
        : m_descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        inotify_add_watch(m_descriptor, QFile::encodeName(directory).constData(), IN_OPEN);
    }
    ~OpenCounter() { close(m_descriptor); }
    OpenCounter(const OpenCounter &) = delete;
    OpenCounter &operator=(const OpenCounter &) = delete;

    /// Since it was last asked.
    int take()
    {
        int count = 0;
        alignas(inotify_event) char buffer[65536];
        ssize_t size = 0;
        while ((size = read(m_descriptor, buffer, sizeof buffer)) > 0) {
            for (ssize_t at = 0; at < size;) {
                const auto *event = reinterpret_cast<const inotify_event *>(buffer + at);
                count += event->mask & IN_ISDIR ? 0 : 1;
                at += ssize_t(sizeof(inotify_event)) + event->len;
            }
        }
        return count;
    }

private:
    int m_descriptor;
};

} // namespace TrivexTest
