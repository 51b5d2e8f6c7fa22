// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalServer>
#include <QStringList>

namespace Trivex {

/// Keeps one window a user: a second start hands its files to the first and ends.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    /// `name` tells programs apart; the socket lies in the user's runtime directory.
    explicit SingleInstance(const QString &name, QObject *parent = nullptr);

    /// Hands `files` (absolute paths) to the running instance. False when there is none; then this
    /// one listens from now on.
    bool handOver(const QStringList &files);

Q_SIGNALS:
    /// Another start came, with these files, maybe none.
    void started(const QStringList &files);

private:
    void receive();

    QString m_socket;
    QLocalServer m_server;
};

} // namespace Trivex
