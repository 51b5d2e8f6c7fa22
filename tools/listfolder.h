// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/candidateindex.h"
#include "tools/listfile.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QTimer>

namespace Trivex {

/// The revocation lists in the directory of the user's own files (*.crl, and PEM files that hold
/// some), kept current, also where the directory comes or goes meanwhile. Files are read in a
/// thread of their own, and again only where they changed. What is no list is passed over. GUI
/// thread.
class ListFolder : public QObject {
    Q_OBJECT
public:
    explicit ListFolder(const QString &path, QObject *parent = nullptr);
    ~ListFolder() override;

    /// What lies there now; waits for the disk, and watches nothing. To `*bytes`, if given, the
    /// size of all of them is added, of those too that are left out because it is too large.
    static QVector<QByteArray> listsNow(const QString &path, qint64 *bytes = nullptr);

    const QVector<QByteArray> &lists() const { return m_lists; }
    /// Where a list lies.
    struct Place {
        QByteArray der;
        QString path;
        bool isAlone = false; ///< the file holds nothing else

        bool operator==(const Place &other) const
        {
            return path == other.path && isAlone == other.isAlone && der == other.der;
        }
    };
    /// The same lists, file by file.
    const QVector<Place> &places() const { return m_places; }
    /// Reads again soon, as when the folder has changed.
    void look() { m_later.start(); }
    /// Looks at once for a folder that was not there before; otherwise it is looked for now and
    /// then.
    void watch();

Q_SIGNALS:
    /// A list, its place or what lies beside it in its file.
    void changed();

private:
    /// What a file held, and how it was then.
    struct File {
        QString stamp;
        ListFile content; ///< nothing where it is left out
        qint64 bytes = 0; ///< of its lists
        bool isLeftOut = false; ///< there was no room for it
    };
    using Files = QHash<QString, File>;

    static Files readAll(const QString &folder, const Files &known);
    QVector<Place> placesIn(const Files &files) const;
    void read();
    void setFiles(const Files &files);

    const QString m_path;
    QFileSystemWatcher m_watcher;
    QTimer m_later;
    QTimer m_retry;
    Files m_files;
    QVector<Place> m_places;
    QVector<QByteArray> m_lists; ///< the same
    bool m_isReading = false;
    bool m_readAgain = false;
};

} // namespace Trivex
