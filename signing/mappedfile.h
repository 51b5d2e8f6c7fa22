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
/// `QByteArray::fromRawData` knows nothing of the mapping's life, while its copies travel through
/// QML, timers and other objects. So a file that its user gives up is kept, with its mapping,
/// until no copy of the bytes exists any more; that is looked at whenever another is opened or
/// given up.
class MappedFile {
public:
    /// Opens the regular file `path` for reading; null for whatever else there is, without ever
    /// waiting for the other end of a pipe.
    static std::shared_ptr<MappedFile> open(const QString &path);
    /// The file whose bytes `bytes` shares; null when they are ordinary bytes. An array without
    /// bytes may be that of any empty file that is held: one that has changed comes first.
    static std::shared_ptr<MappedFile> behind(const QByteArray &bytes);
    /// Forgets what neither a user nor a copy of the bytes needs any more.
    static void releaseUnused();

    ~MappedFile();
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;

    QString path() const { return m_path; }
    /// The size in bytes when it was opened.
    qint64 size() const { return m_size; }

    /// Maps the whole file; an empty one has no bytes to map. False when it can't be: one of 2 GiB
    /// or more (which a byte array can't hold), one whose size is not told, or when the system
    /// refuses.
    bool map();
    QByteArray bytes() const { return m_bytes; }
    /// The open file; its position may be moved.
    QIODevice *device() { return &m_file; }

    /// The digest of the bytes as they were when the file was opened, read through the file, so
    /// that a file that was cut short is noticed instead of faulting. An empty array for an unknown
    /// `type`, and when the file has changed: it is looked at before and after reading, and what
    /// was read has to be what the first digest read.
    QByteArray digest(const QString &type);

    /// True while the file has the size and the time of change (to the nanosecond) that it was
    /// opened with, and no read has found other contents; never true again afterwards. Deleting or
    /// renaming the file changes nothing: it is held.
    bool isUnchanged();
    /// Calls `listener` when a look finds the file changed for the first time; null for nobody.
    void setChangeListener(std::function<void()> listener);
    /// A name by which changes of the held file can be watched for, whatever becomes of its path.
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
    QByteArray m_seal; ///< the digest by which the contents are known again
    bool m_isChanged = false;
    std::function<void()> m_changeListener;
    std::optional<BusErrorGuard> m_guard;
};

} // namespace Trivex
