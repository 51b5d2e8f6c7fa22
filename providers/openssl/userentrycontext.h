// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/openssl/certificatefile.h"
#include "qca/tokens/userstore.h"

namespace Trivex {

/// One certificate of the store "USER". Thousands may live: it holds its entry and no more.
class UserEntryContext : public QCA::KeyStoreEntryContext {
    Q_OBJECT
public:
    UserEntryContext(QCA::Provider *provider, const StoredCertificate &entry);

    QCA::Provider::Context *clone() const override;

    QCA::KeyStoreEntry::Type type() const override { return QCA::KeyStoreEntry::TypeCertificate; }
    QString id() const override { return m_entry.id; }
    QString name() const override { return m_entry.name; }
    QString storeId() const override { return userStoreId(); }
    QString storeName() const override { return userStoreId(); }
    /// Decoded anew for each caller.
    QCA::Certificate certificate() const override;

    /// Holds the certificate itself, so it can be restored when the file is gone.
    QString serialize() const override;
    /// Null for a text that another store wrote. Thread-safe.
    static UserEntryContext *deserialize(const QString &text, QCA::Provider *provider);

private:
    const StoredCertificate m_entry;
};

} // namespace Trivex
