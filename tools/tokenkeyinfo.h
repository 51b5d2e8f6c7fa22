// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/tokenkeymodel.h"

#include <QVariantList>

namespace Trivex {

/// One key without a certificate, followed by its identity: what a page shows of it.
class TokenKeyInfo : public QObject {
    Q_OBJECT
    /// The model that the key is looked up in. Not owned.
    Q_PROPERTY(Trivex::TokenKeyModel *keys READ keys WRITE setKeys NOTIFY changed)
    /// Of the key's row; everything is empty while there is no such row.
    Q_PROPERTY(QString identity READ identity WRITE setIdentity NOTIFY changed)
    /// The key is there.
    Q_PROPERTY(bool present READ present NOTIFY changed)
    /// The label of the key.
    Q_PROPERTY(QString name READ name NOTIFY changed)
    /// The id of the token's store.
    Q_PROPERTY(QString storeId READ storeId NOTIFY changed)
    /// The label of the token.
    Q_PROPERTY(QString storeName READ storeName NOTIFY changed)
    /// The key's id within its token, as `KeyChoiceModel` has it.
    Q_PROPERTY(QString keyId READ keyId NOTIFY changed)
    /// Its public half is known, and it may sign.
    Q_PROPERTY(bool canRequest READ canRequest NOTIFY changed)
    /// The name of the saved request that waits for its certificate; empty where none does.
    Q_PROPERTY(QString request READ request NOTIFY changed)
    /// The saved request that was made for this key; empty without one.
    Q_PROPERTY(QString requestIdentity READ requestIdentity NOTIFY changed)
    /// What is known of it, in the form that `CertificateDetails` has its groups.
    Q_PROPERTY(QVariantList groups READ groups NOTIFY changed)
public:
    explicit TokenKeyInfo(QObject *parent = nullptr);

    TokenKeyModel *keys() const;
    void setKeys(TokenKeyModel *keys);
    QString identity() const;
    void setIdentity(const QString &identity);
    bool present() const;
    QString name() const;
    QString storeId() const;
    QString storeName() const;
    QString keyId() const;
    bool canRequest() const;
    QString request() const;
    QString requestIdentity() const;
    QVariantList groups() const;

    /// Everything as plain text, for the clipboard.
    Q_INVOKABLE QString text() const;

Q_SIGNALS:
    /// What is known of the key has changed.
    void changed();

private:
    QVariant value(int role) const;

    QPointer<TokenKeyModel> m_keys;
    QString m_identity;
};

} // namespace Trivex
