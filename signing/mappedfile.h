// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "signing/buserrorguard.h"

#include <QByteArray>
#include <QFile>

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
    /// The file whose bytes `bytes` shares; null when they are ordinary bytes.
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

    /// The digest of the bytes as they were mapped, read through the file, so that a file that was
    /// cut short is noticed instead of faulting: an empty array then, and for an unknown `type`.
    QByteArray digest(const QString &type);

    /// True while the file is at least as long as when it was opened, and no read of the bytes has
    /// found it shorter meanwhile.
    bool isWhole() const;
    /// True until the file is deleted, or another takes its name.
    bool isNamed() const;

private:
    explicit MappedFile(const QString &path);
    bool openDescriptor();
    bool isShared() const;
    bool isEmpty();

    const QString m_path;
    QFile m_file;
    qint64 m_size = 0;
    QByteArray m_bytes;
    std::optional<BusErrorGuard> m_guard;
};

} // namespace Trivex
