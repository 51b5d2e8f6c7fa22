// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/tokencontents.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QtCrypto>

namespace Trivex {

/// What is shown of the stores of trusted certificates: those that QCA's own list of the system
/// does not show already, and the store alone where one is left. What an administrator has added to
/// the trust module alone stays.
///
/// Lives on QCA's tracker thread, where QCA reads its own list too.
class TrustedStores : public QObject {
    Q_OBJECT
public:
    explicit TrustedStores(QObject *parent = nullptr);

    /// Compares store `id` when it holds something else than the last time. True when what is shown
    /// of it has changed.
    bool take(int id, const TokenContentsPtr &contents);
    /// Whether anything of store `id` is or was shown: a store does not go while rows exist.
    bool isListed(int id) const;
    /// What is shown of store `id`; never null.
    TokenContentsPtr shown(int id) const;

Q_SIGNALS:
    /// What is shown of store `id` has changed by itself.
    void changed(int id);

private:
    struct Store {
        TokenContentsPtr all;
        TokenContentsPtr shown;
        bool wasListed = false;
    };

    bool compare(Store *store);
    void compareAgain();
    bool showsSystemList();

    QCA::KeyStoreManager m_manager;
    QHash<int, Store> m_stores;
    /// QCA's own list comes a moment after the providers have started, or never.
    QTimer m_patience;
};

} // namespace Trivex
