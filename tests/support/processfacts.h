// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>

namespace TrivexTest {

/// The number behind `title` in a file in which the kernel tells of this process. Ends the test
/// where the kernel does not tell it.
inline qint64 processFact(const char *path, const char *title)
{
    QFile file{QString::fromLatin1(path)};
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", path);
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(title))
            return line.mid(int(qstrlen(title))).simplified().split(' ').value(0).toLongLong();
    }
    qFatal("%s does not tell %s", path, title);
    return -1;
}

/// What this process has read so far, by whatever call but a mapping.
inline qint64 bytesRead()
{
    return processFact("/proc/self/io", "rchar:");
}

/// The most memory that this process has had so far, or since the kernel was told to forget, in
/// KiB.
inline qint64 peakMemory()
{
    return processFact("/proc/self/status", "VmHWM:");
}

} // namespace TrivexTest
