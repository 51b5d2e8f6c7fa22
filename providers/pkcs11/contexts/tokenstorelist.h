// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contexts/trustedstores.h"
#include "providers/pkcs11/life/scanwatch.h"
#include "providers/pkcs11/life/tokenservice.h"
#include "qca/tokens/storechange.h"

#include <QHash>

namespace Trivex {

/// Gives QCA the key stores of the tokens. Lives on QCA's tracker thread. Look-ups answer from
/// memory. Writes and removals wait for the token, because QCA calls them synchronously, and QCA
/// holds all stores meanwhile; our own models start theirs without QCA.
///
/// A store with many entries comes in two steps: the first rows, and all of them, announced when
/// those have been fetched. Whoever shows them takes them in by slices of its own.
class TokenStoreList : public QCA::KeyStoreListContext {
    Q_OBJECT
public:
    TokenStoreList(QCA::Provider *provider, TokenService &service, TokenTable &tokens,
                   FirstScan &scan);
    ~TokenStoreList() override;

    QCA::Provider::Context *clone() const override;
    void start() override;

    QList<int> keyStores() override;
    QCA::KeyStore::Type type(int id) const override;
    QString storeId(int id) const override;
    QString name(int id) const override;
    bool isReadOnly(int id) const override;
    QList<QCA::KeyStoreEntry::Type> entryTypes(int id) const override;
    QList<QCA::KeyStoreEntryContext *> entryList(int id) override;
    QCA::KeyStoreEntryContext *entry(int id, const QString &entryId) override;
    QCA::KeyStoreEntryContext *entryPassive(const QString &serialized) override;

    using QCA::KeyStoreListContext::writeEntry;
    QString writeEntry(int id, const QCA::KeyBundle &bundle) override;
    QString writeEntry(int id, const QCA::Certificate &certificate) override;
    bool removeEntry(int id, const QString &entryId) override;

private:
    void announceStores();
    void announceContents(int id);
    void announceScan();
    void announceTrusted(int id);
    /// Compares a store of trusted certificates again; true when its shown entries have changed.
    bool updateTrusted(int id);
    void updateAllTrusted();
    /// The entries of `store` that are shown.
    TokenContentsPtr contentsOf(const TokenStore &store) const;
    void showAll(int id);
    void noteListed(int id, const TokenContentsPtr &contents);
    /// Makes the change and waits for its end.
    StoreChangeResult perform(int id, const StoreChange &change);

    TokenService &m_service;
    TokenTable &m_tokens;
    FirstScan &m_scan;
    std::unique_ptr<ScanWatch> m_watch;
    /// The number of entries of each store that may be shown so far.
    QHash<int, int> m_shown;
    /// The contents of each store when it was listed last.
    QHash<int, TokenContentsPtr> m_listed;
    std::unique_ptr<TrustedStores> m_trusted;
    bool m_isBusy = true;
};

} // namespace Trivex
