// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtCrypto>

#include <sys/stat.h>

namespace Trivex {

/// One certificate of a file.
struct StoredCertificate {
    /// The file's name and the beginning of the certificate's digest: stays when other certificates
    /// of the file come or go.
    QString id;
    QString name; ///< the common name, else the organization, else the file's name
    QByteArray der; ///< alone: a decoded certificate takes three times its size
};

/// By what a file is recognised as unchanged.
struct FileStamp {
    qint64 seconds = -1;
    qint64 nanoseconds = 0;
    qint64 size = 0;
    quint64 inode = 0;

    bool isValid() const { return seconds != -1; }
    bool operator==(const FileStamp &other) const;
};

/// The stamp of a regular file (or of a link to one); invalid for everything else.
FileStamp stampOf(const QString &path);

/// The file's certificates in order, each once. `*error` gets a text for the log when the file
/// can't be read, holds nothing that is a certificate, or one that is broken.
QList<StoredCertificate> readCertificateFile(const QString &path, QString *error);

/// Takes the certificate `id` out of its file, which goes too when it was the last. Whatever else
/// is in the file stays as it is. False when it is not there or the file can't be changed.
bool removeFromFile(const QString &path, const QString &id);

/// Writes a new file for `certificate` into `directory`, named after it, whole or not at all. The
/// id of the certificate in it; empty on failure.
QString writeCertificateFile(const QString &directory, const QCA::Certificate &certificate);

} // namespace Trivex
