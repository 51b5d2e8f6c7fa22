// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/storewriter.h"
#include "qca/tokens/tokens.h"
#include "tools/certificatefile.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QQueue>

#include <functional>

namespace Trivex {

/// Brings what is ticked in a file to a place: a token, or the user's own files, which take no
/// private keys. Requests go to the folder of requests and revocation lists to the user's own
/// files, where they count for every path, whatever the place.
///
/// One thing after the other, and nothing more once one of them failed: whoever declined a PIN is
/// not asked for it again. What has been written loses its tick, so that another start does the
/// rest.
class CertificateImport : public QObject {
    Q_OBJECT
    /// True from `start()` until `finished()`.
    Q_PROPERTY(bool running READ isRunning NOTIFY changed)
    /// How many were to be imported by the last `start`, and how many have been.
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// How many have been imported so far.
    Q_PROPERTY(int written READ written NOTIFY changed)
    /// Why not all of them were, as a sentence with its next step; empty when all is well.
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    /// The last one ended because its user left it, by `cancel` or without a PIN: no failure.
    Q_PROPERTY(bool left READ wasLeft NOTIFY changed)
    /// `TokenErrors` has told why.
    Q_PROPERTY(bool explained READ isExplained NOTIFY changed)
    /// Where requests go.
    Q_PROPERTY(
        QString requestFolder READ requestFolder WRITE setRequestFolder NOTIFY requestFolderChanged)
    /// The id of the store of the user's own files.
    Q_PROPERTY(QString filesStoreId READ filesStoreId CONSTANT)
public:
    explicit CertificateImport(QObject *parent = nullptr);
    /// Refuses the questions of what still runs, and waits for nothing.
    ~CertificateImport() override;

    bool isRunning() const { return m_running; }
    int count() const { return m_count; }
    int written() const { return m_written; }
    QString problem() const { return m_problem; }
    QString requestFolder() const { return m_requestFolder; }
    bool wasLeft() const { return m_left; }
    bool isExplained() const { return !m_left && m_tokenError != TokenError::NoError; }
    void setRequestFolder(const QString &folder);
    QString filesStoreId() const;

    /// Starts to import what is ticked in `file` to the store `storeId`; `finished` follows, never
    /// before this returns. Nothing happens while an import runs.
    Q_INVOKABLE void start(Trivex::CertificateFile *file, const QString &storeId);
    /// Asks what runs to end; `finished` follows.
    Q_INVOKABLE void cancel();
    /// Forgets the last problem.
    Q_INVOKABLE void clear();

    /// Milliseconds since some moment; by default those of the steady clock.
    void setClock(std::function<qint64()> clock) { m_clock = std::move(clock); }

Q_SIGNALS:
    /// Any property but the folder has changed.
    void changed();
    void requestFolderChanged();
    /// `good` when everything was imported.
    void finished(bool good);

private:
    /// What is written at once: certificates, the first perhaps with its key, or something else.
    struct Step {
        QVector<int> rows; ///< of the file's items
        QVector<FileItem> items;
    };

    bool isPlain(const Step &step) const;
    void plan();
    void joinSteps();
    void next();
    void tryStep();
    bool begin(const Step &step);
    bool saveRequest(const FileItem &request) const;
    void saveList(const FileItem &list);
    void stepEnded(bool good);
    /// More certificates at once where that took no time, fewer where it took long.
    void adjustStep();
    /// Of the step the first `count` are written.
    void noteWritten(int count);
    void end(bool good);
    QString reason() const;

    QPointer<CertificateFile> m_file;
    QString m_storeId;
    QString m_requestFolder;
    QString m_problem;
    QQueue<Step> m_steps;
    Step m_step;
    StoreWriter m_writer;
    QElapsedTimer m_sinceAsked;
    int m_count = 0;
    int m_written = 0;
    int m_together = 0; ///< so many certificates may be written at once
    std::function<qint64()> m_clock;
    qint64 m_stepBegan = 0; ///< by that clock
    bool m_running = false;
    int m_serial = 0; ///< tells a late result of a run that has ended
    bool m_stopped = false;
    bool m_left = false;
    bool m_isFull = false; ///< there is no room for another revocation list
    TokenMonitor m_monitor;
    TokenError::Kind m_tokenError = TokenError::NoError; ///< of the step that runs
};

} // namespace Trivex
