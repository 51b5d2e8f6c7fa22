// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDirIterator>
#include <QStringList>

/// One reading of the request directory, a part at a time: first the names, which have to be there
/// before they can be sorted, then the files in their order. Strangers' files may lie there in any
/// number and size, so a part ends after a number of files and after a number of bytes.
class RequestReading {
public:
    explicit RequestReading(const QString &directory);

    /// Looks at further entries of the directory; true when it was the last part of them.
    bool list();
    bool isListed() const { return m_isListed; }

    /// Begins a part of the files.
    void beginPart();
    /// The path of the next file of this part; empty when the part has no more.
    QString next();
    bool atEnd() const { return m_isListed && m_names.isEmpty(); }

private:
    bool isRequest() const;

    QString m_directory;
    QDirIterator m_entries;
    bool m_isListed = false;
    QStringList m_names;
    int m_filesLeft = 0;
    qint64 m_bytesLeft = 0;
};
