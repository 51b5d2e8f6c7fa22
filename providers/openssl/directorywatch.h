// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/descriptor.h"

#include <QObject>
#include <QSocketNotifier>
#include <QString>

namespace Trivex {

/// Tells when files of one directory come, go or have been written. `QFileSystemWatcher` does not:
/// for a directory it misses a file that is changed in place, and watching each file takes a kernel
/// object a file.
class DirectoryWatch : public QObject {
    Q_OBJECT
public:
    explicit DirectoryWatch(QObject *parent = nullptr);
    ~DirectoryWatch() override;

    /// False when the directory can't be watched, for one because it is not there.
    bool watch(const QString &path);
    bool isWatching() const { return m_watch >= 0; }

Q_SIGNALS:
    void changed();
    /// The directory itself is gone; nothing is watched any more.
    void lost();

private:
    void read();

    const Descriptor m_descriptor;
    int m_watch = -1;
    QSocketNotifier *m_notifier = nullptr; ///< a child, so that it moves threads with this
};

} // namespace Trivex
