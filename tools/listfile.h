// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace Trivex {

/// The revocation lists in one file of the user's own. Any thread; waits for the disk.
struct ListFile {
    /// As it is now; without lists where it can't be read.
    static ListFile read(const QString &path);

    enum class Removal {
        Done,
        Changed, ///< it is not there any more, or holds not just this list; it is as it was
        Failed,
    };
    /// Removes the file where it holds the list `der` and nothing else at this moment.
    static Removal remove(const QString &path, const QByteArray &der);

    QVector<QByteArray> lists;
    bool holdsMore = false; ///< than one list
};

} // namespace Trivex
