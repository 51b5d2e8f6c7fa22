// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contexts/trustedstores.h"
#include "providers/pkcs11/life/tokenservice.h"
#include "qca/tokens/storechange.h"

#include <QHash>
#include <QTimer>

namespace Trivex {

/// The key stores of the tokens, for QCA. Lives on QCA's tracker thread; look-ups answer from
/// memory, writes and removals wait for the token there, because QCA calls them so; our own models
/// start them past QCA, which holds up all stores meanwhile.
///
/// A store with many entries grows in steps, each announced when the one before has been fetched,
/// so that whoever shows them is never given more at once than it can take in a moment.
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
    /// True when what is shown of a store of trusted certificates has changed.
    bool lookAtTrusted(int id);
    void lookAtAllTrusted();
    /// What is shown of `store`.
    TokenContentsPtr contentsOf(const TokenStore &store) const;
    void awaitScan();
    void showMore(int id);
    void noteListed(int id, const TokenContentsPtr &contents);
    /// Waits for its end, as QCA wants it.
    StoreChangeResult perform(int id, const StoreChange &change);

    TokenService &m_service;
    TokenTable &m_tokens;
    FirstScan &m_scan;
    /// How many entries of a store are shown so far.
    QHash<int, int> m_shown;
    /// What was listed of a store the last time.
    QHash<int, TokenContentsPtr> m_listed;
    std::unique_ptr<TrustedStores> m_trusted;
    bool m_isBusy = true;
};

} // namespace Trivex
