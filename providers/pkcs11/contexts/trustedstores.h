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

/// Chooses the entries to show of the stores of trusted certificates: those that QCA's own list of
/// the system does not show already, such as an administrator's additions to the trust module. A
/// store without such an entry is not listed.
///
/// Lives on QCA's tracker thread, where QCA reads its own list too. See
/// docs/decisions/025-trusted-stores.md.
class TrustedStores : public QObject {
    Q_OBJECT
public:
    explicit TrustedStores(QObject *parent = nullptr);

    /// Sets the contents of store `id`, and compares them with QCA's list when they are new. True
    /// when the shown entries have changed.
    bool update(int id, const TokenContentsPtr &contents);
    /// True when an entry of store `id` is or was shown: a listed store stays, because rows of it
    /// may still exist.
    bool isListed(int id) const;
    /// The entries of store `id` to show; never null.
    TokenContentsPtr shown(int id) const;

Q_SIGNALS:
    /// The shown entries of store `id` have changed without an `update`.
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
    /// Waits for QCA's own list, which appears shortly after the providers have started, or never.
    QTimer m_patience;
};

} // namespace Trivex
