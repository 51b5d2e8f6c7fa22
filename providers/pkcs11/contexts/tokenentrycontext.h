// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"

#include <QtCrypto>

namespace Trivex {

/// An entry of a token's key store. It holds bytes and ids only and decodes certificates and keys
/// on request, because a token may have thousands.
class TokenEntryContext : public QCA::KeyStoreEntryContext {
    Q_OBJECT
public:
    /// `entry` is known to be that of `contents`, which may be null.
    TokenEntryContext(QCA::Provider *provider, TokenTable &tokens, TokenEntryPtr entry,
                      const QString &storeId, const QString &storeName,
                      const TokenContentsPtr &contents = nullptr);
    ~TokenEntryContext() override;

    /// The entry that `serialize` has written; null for any other text. The caller owns it.
    static TokenEntryContext *restore(QCA::Provider *provider, TokenTable &tokens,
                                      const QString &serialized);

    QCA::Provider::Context *clone() const override;

    QCA::KeyStoreEntry::Type type() const override;
    QString id() const override { return m_entry->id; }
    /// The label; else the common name; else the beginning of the id.
    QString name() const override;
    QString storeId() const override { return m_storeId; }
    QString storeName() const override { return m_storeName; }
    bool isAvailable() const override;
    QString serialize() const override;
    QCA::KeyBundle keyBundle() const override;
    QCA::Certificate certificate() const override;
    bool ensureAccess() override;

private:
    TokenEntryContext(const TokenEntryContext &other);
    /// What the token shows under this id now: another reading may have found another label, or
    /// other issuers. What it showed when it does not show it any more.
    TokenEntryPtr current() const;
    QCA::PrivateKey privateKey(const TokenKeyPtr &tokenKey) const;

    TokenTable &m_tokens;
    TokenEntryPtr m_entry;
    std::weak_ptr<const TokenContents> m_contents;
    QString m_storeId;
    QString m_storeName;
};

/// The context for a private key on a token. Null when its public half is unknown. The caller owns
/// it.
QCA::PKeyBase *makeTokenKey(QCA::Provider *provider, TokenTable &tokens, const QString &storeId,
                            const TokenKeyPtr &key);

} // namespace Trivex
