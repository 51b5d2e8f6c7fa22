// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTemporaryDir>
#include <QThread>
#include <QVariantList>

#include <memory>
#include <vector>

namespace Trivex {

/// Makes a PDF document of the details of a certificate, for printing and keeping. A worker thread
/// lays it out, one document at a time. GUI thread.
class DetailsPdf : public QObject {
    Q_OBJECT
    /// True while a document is being written.
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
public:
    explicit DetailsPdf(QObject *parent = nullptr);
    /// Waits for the document that is being made; what goes into one is limited.
    ~DetailsPdf() override;

    bool isRunning() const;

    /// Writes `groups`, as `CertificateDetails::groups` is made, headed by `title`, into the new
    /// file `path`; `finished` follows. Nothing while another document is being made.
    Q_INVOKABLE void write(const QString &path, const QString &title, const QVariantList &groups);
    /// The path of a new file for another program to read; empty where there is no folder for
    /// temporary files. It goes with this object: nobody tells when the other has read it.
    Q_INVOKABLE QString temporaryPath();

Q_SIGNALS:
    void runningChanged();
    /// `isWritten` is false where the file could not be written.
    void finished(const QString &path, bool isWritten);

private:
    std::unique_ptr<QThread> m_worker;
    std::vector<std::unique_ptr<QTemporaryDir>> m_folders;
    bool m_isWritten = false; ///< the worker's, until it has ended
};

} // namespace Trivex
