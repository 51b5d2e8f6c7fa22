// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "signing/buserrorguard.h"

#include <QByteArray>
#include <QFile>

#include <ctime>
#include <functional>
#include <memory>
#include <optional>

namespace Trivex {

/// An open file and a byte array that views its private mapping, without a copy.
///
/// `QByteArray::fromRawData` does not keep the mapping alive, while its copies travel through QML,
/// timers and other objects. So a file that its user gives up is kept, with its mapping, until no
/// copy of the bytes exists. This is checked whenever another file is opened or given up.
class MappedFile {
public:
    /// Opens the regular file `path` for reading; null for anything else. Never waits for the other
    /// end of a pipe.
    static std::shared_ptr<MappedFile> open(const QString &path);
    /// The file whose bytes `bytes` shares; null when they are ordinary bytes. An array without
    /// bytes may belong to any empty file that is held: a changed one is preferred.
    static std::shared_ptr<MappedFile> behind(const QByteArray &bytes);
    /// Frees the files that neither a user nor a copy of the bytes needs any more.
    static void releaseUnused();

    ~MappedFile();
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;

    QString path() const { return m_path; }
    /// The size in bytes when it was opened.
    qint64 size() const { return m_size; }

    /// Maps the whole file; an empty one has no bytes to map. False when it can't be: one of 2 GiB
    /// or more (which a byte array can't hold), one whose size is unknown, or when the system
    /// refuses.
    bool map();
    QByteArray bytes() const { return m_bytes; }
    /// The open file; its position may be moved.
    QIODevice *device() { return &m_file; }

    /// The digest of the bytes as they were when the file was opened, read through the file, so
    /// that a file that was cut short is noticed instead of faulting. An empty array for an unknown
    /// `type`, and when the file has changed: it is checked before and after reading, and the bytes
    /// have to be those of the first digest.
    QByteArray digest(const QString &type);

    /// True while the file has the size and the time of change (to the nanosecond) that it was
    /// opened with, and no read has found other contents; never true again afterwards. Deleting or
    /// renaming the file changes nothing: it is held.
    bool isUnchanged();
    /// Calls `listener` when a check first finds the file changed; null for no listener.
    void setChangeListener(std::function<void()> listener);
    /// A name by which the held file can be watched, even if its path changes.
    QString watchablePath() const;

private:
    explicit MappedFile(const QString &path);
    bool openDescriptor();
    bool isShared() const;
    bool isEmpty();
    bool isAsOpened() const;
    void setChanged();

    const QString m_path;
    QFile m_file;
    qint64 m_size = 0;
    timespec m_changeTime{};
    bool m_isMapped = false;
    QByteArray m_bytes;
    QString m_sealType;
    QByteArray m_seal; ///< the digest that identifies the contents
    bool m_isChanged = false;
    std::function<void()> m_changeListener;
    std::optional<BusErrorGuard> m_guard;
};

} // namespace Trivex
