// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"

#include <QHash>
#include <QtCrypto>

/// Tells of key bundles that appear on tokens. A token that has not been read may have rows that
/// are remembered from an earlier start, and who hears of a bundle deletes what waits for it; so
/// those are told of once the token has been read, if they are still on it. GUI thread only.
class BundleArrivals : public QObject {
    Q_OBJECT
public:
    explicit BundleArrivals(QObject *parent = nullptr);

    /// A row of `entry` is about to come.
    void note(const QCA::KeyStoreEntry &entry);

Q_SIGNALS:
    /// Within `note`, or later.
    void arrived(const QCA::KeyStoreEntry &entry);

private:
    void tokenChanged(const QString &keyStoreId);

    Trivex::TokenMonitor m_tokens;
    /// Of each store that has not been read, by the ids of the entries.
    QHash<QString, QHash<QString, QCA::KeyStoreEntry>> m_unread;
};
