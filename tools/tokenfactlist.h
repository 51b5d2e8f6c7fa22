// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"

#include <QVariantList>

namespace Trivex {

/// What is known of a token, in words, live: who made it, the state of its PIN, what is on it, what
/// it can do. While one of these shows a token, what takes calls of its own is read, too.
class TokenFactList : public QObject {
    Q_OBJECT
    /// The id of the token's key store.
    Q_PROPERTY(QString storeId READ storeId WRITE setStoreId NOTIFY storeIdChanged)
    /// The label of the token.
    Q_PROPERTY(QString name READ name NOTIFY changed)
    /// The token is there.
    Q_PROPERTY(bool present READ present NOTIFY changed)
    /// There may be keys that only a login shows.
    Q_PROPERTY(bool keysHidden READ keysHidden NOTIFY changed)
    /// In the form that `CertificateDetails` has its groups.
    Q_PROPERTY(QVariantList groups READ groups NOTIFY changed)
public:
    explicit TokenFactList(QObject *parent = nullptr);

    QString storeId() const;
    void setStoreId(const QString &storeId);
    QString name() const;
    bool present() const;
    bool keysHidden() const;
    QVariantList groups() const;

    /// Everything as plain text, for the clipboard.
    Q_INVOKABLE QString text() const;

    /// What the token says of the tries left for its PIN, as a sentence for every state.
    static QString triesText(const TokenStatus &status);
    /// What a token can do with keys of one kind: "RSA, 512 to 4096 bits" and "makes keys, signs".
    static QString kindText(const TokenAbility &ability);
    static QString abilityText(const TokenAbility &ability);

Q_SIGNALS:
    void storeIdChanged();
    /// What is known of the token has changed.
    void changed();

private:
    void follow(const QString &storeId);
    void refresh();

    QString m_storeId;
    TokenStatus m_status;
    TokenLook m_look;
    TokenMonitor m_monitor;
};

} // namespace Trivex
