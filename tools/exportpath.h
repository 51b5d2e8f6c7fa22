// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/chainsources.h"

#include <QPointer>

#include <atomic>
#include <functional>

namespace Trivex {

/// The issuers that go out with a certificate: the path that `CertificateChain` shows for it, from
/// the same sources. GUI thread, but for `of`.
class ExportPath : public QObject {
    Q_OBJECT
public:
    explicit ExportPath(QObject *parent = nullptr);

    /// Calls `then` with everything that the path of `certificate` (DER) may need, at once where
    /// all rows of `entries` have been read, else when they have. Without `entries` that is the
    /// certificate alone. A second call replaces the first.
    void gather(EntryModel *entries, const QByteArray &certificate,
                std::function<void(const ChainInput &)> then);
    /// Nobody waits any more.
    void drop();

    /// The certificate and its issuers, as far as they have really issued it. Any thread.
    static QVector<QByteArray> of(const ChainInput &input, const std::atomic<bool> &isCancelled);

private:
    void look();

    QPointer<ChainSources> m_sources;
    QByteArray m_certificate;
    std::function<void(const ChainInput &)> m_then;
};

} // namespace Trivex
