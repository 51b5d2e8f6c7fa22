// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/openssl/certificatefile.h"
#include "providers/openssl/directorywatch.h"

#include <QHash>
#include <QTimer>
#include <QVector>

#include <memory>

namespace Trivex {

/// The contents of the store at one moment, shared by all readers.
using UserSnapshot = std::shared_ptr<const QVector<StoredCertificate>>;

/// Reads the certificates of a directory of PEM files (*.pem, *.crt, *.cer) and keeps up with it.
/// Lives in a thread of its own; only files that changed are read again, a few at a time, so that
/// writing never waits long.
class UserDirectory : public QObject {
    Q_OBJECT
public:
    explicit UserDirectory(const QString &path);

    QString path() const { return m_path; }

    /// Begins to watch and to read.
    void start();

    /// The id under which the certificate is listed from now on: where it is there already, that
    /// of the first file that holds it. Empty when it can't be written.
    QString write(const QCA::Certificate &certificate);
    /// False when there is none of that id or its file can't be changed.
    bool remove(const QString &id);

Q_SIGNALS:
    void changed(const Trivex::UserSnapshot &snapshot);
    /// The first reading is over.
    void ready();

private:
    struct File {
        FileStamp stamp;
        QList<StoredCertificate> certificates;
    };

    void watchAgain();
    void scan();
    void readSome();
    void readFile(const QString &name);
    void forgetMissing();
    void finishScan();
    void announce();
    QString pathOf(const QString &name) const;

    const QString m_path;
    DirectoryWatch m_watch;
    QTimer m_delay;
    QTimer m_retry;
    QTimer m_slice;
    QHash<QString, File> m_files;
    QStringList m_pending;
    int m_count = 0; ///< certificates in all files
    int m_announced = 0;
    bool m_dirty = false;
    bool m_ready = false;
    bool m_scanAgain = false;
};

} // namespace Trivex

Q_DECLARE_METATYPE(Trivex::UserSnapshot)
