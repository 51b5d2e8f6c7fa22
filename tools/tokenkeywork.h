// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/storewriter.h"

namespace Trivex {

/// Work on the keys without a certificate of a token: removes one, or logs in so that the token
/// shows those that it hides. One at a time. The token's PIN is asked for as by any operation, and
/// why one failed is told by `TokenErrors`.
///
///     TokenKeyWork {
///         id: work
///         onFinished: if (succeeded) toast.show("The key is removed.")
///     }
///     ...
///     work.remove(row.storeId, row.keyId)
class TokenKeyWork : public QObject {
    Q_OBJECT
    /// True from a call until `finished()`.
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
public:
    explicit TokenKeyWork(QObject *parent = nullptr);

    bool isRunning() const { return m_isRunning; }

    // False, and nothing happens, while other work runs and where there is no such token.
    /// For good: a key can't be written back.
    Q_INVOKABLE bool remove(const QString &storeId, const QString &keyId);
    /// Logs in to the token, so that keys show which it hides until then. False while it works.
    Q_INVOKABLE bool show(const QString &storeId);
    /// Asks the running work to end; `finished` follows.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void runningChanged();
    /// The work has ended; `succeeded` is false where it failed or was left.
    void finished(bool succeeded);

private:
    bool begin(bool hasStarted);
    void end(bool succeeded);

    StoreWriter m_writer;
    bool m_isRunning = false;
};

} // namespace Trivex
