// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include "qca/base/descriptor.h"

#include <QByteArray>
#include <QString>

namespace Trivex {

enum class WriteResult {
    Written,
    Exists, ///< the file exists and must not be replaced
    Failed,
};

/// The readers of a new file: everybody whom the process's umask allows, or its owner alone.
enum class FileReaders { Everybody, Owner };

/// A file in the making, which appears under its name when it is whole: until then it is a hidden
/// file ".trivex-*.part" in the same directory. If the process is killed, the old file stays as it
/// was, and a later write there removes the part file once it is an hour old; never one that
/// somebody still writes, whatever the clock says of it.
class TRIVEX_QCA_EXPORT AtomicFile {
public:
    explicit AtomicFile(const QString &path, FileReaders readers = FileReaders::Everybody);
    /// Removes what was not placed.
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;

    bool isOpen() const { return m_part.isOpen(); }
    /// Where what was written so far can be read.
    QString partPath() const;
    /// False when not all of it could be written.
    bool write(const char *data, qint64 size);
    /// Flushes the file to the disk and gives it its name, replacing another file only if that is
    /// allowed. With `Exists` and `Failed` it stays as it is and may be placed again.
    WriteResult place(bool mayReplace);

private:
    const QString m_path;
    QByteArray m_partName;
    Descriptor m_part;
};

/// Writes `content` to the file `path`, whole or not at all, as an `AtomicFile`.
TRIVEX_QCA_EXPORT WriteResult writeAtomically(const QString &path, const QByteArray &content,
                                              bool mayReplace,
                                              FileReaders readers = FileReaders::Everybody);

/// Removes the file `path` and flushes its directory. True when it is gone.
TRIVEX_QCA_EXPORT bool removeFile(const QString &path);

} // namespace Trivex
