// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"

namespace Trivex {

/// What is known of one token, live, for the dialogs that work with it.
class TokenInfo : public QObject {
    Q_OBJECT
    /// The id of the token's key store; empty shows an unknown token.
    Q_PROPERTY(QString storeId READ storeId WRITE setStoreId NOTIFY storeIdChanged)
    /// The other way to choose one: the name of its key store.
    Q_PROPERTY(QString storeName READ storeName WRITE setStoreName NOTIFY storeNameChanged)
    /// The label of the token.
    Q_PROPERTY(QString name READ name NOTIFY changed)
    /// The token is there.
    Q_PROPERTY(bool present READ present NOTIFY changed)
    /// Nothing can be written to the token.
    Q_PROPERTY(bool readOnly READ readOnly NOTIFY changed)
    /// Whether the token has the keys of its certificates is known only after a login.
    Q_PROPERTY(bool keysPresumed READ keysPresumed NOTIFY changed)
    /// There may be keys on it that only a login shows.
    Q_PROPERTY(bool keysHidden READ keysHidden NOTIFY changed)
    /// The token is at work for somebody.
    Q_PROPERTY(bool busy READ busy NOTIFY changed)
    /// What the token is doing, as a sentence; empty when it is idle.
    Q_PROPERTY(QString busyText READ busyText NOTIFY changed)
    /// Another wrong PIN locks the token.
    Q_PROPERTY(bool lastTry READ lastTry NOTIFY changed)
    /// The PIN of the token is locked.
    Q_PROPERTY(bool locked READ locked NOTIFY changed)
    /// What the token says of its PIN's tries, as a sentence; empty when all is well.
    Q_PROPERTY(QString pinText READ pinText NOTIFY changed)
public:
    explicit TokenInfo(QObject *parent = nullptr);

    QString storeId() const;
    void setStoreId(const QString &storeId);
    QString storeName() const;
    void setStoreName(const QString &name);
    QString name() const;
    bool present() const;
    bool readOnly() const;
    bool keysPresumed() const;
    bool keysHidden() const;
    bool busy() const;
    QString busyText() const;
    bool lastTry() const;
    bool locked() const;
    QString pinText() const;

    /// In a slot of a signer's `getPin`: shows the token that asks. False where it asks for another
    /// operation than a signature of that signer. Where nobody tells who asks, the chosen one
    /// stays.
    Q_INVOKABLE bool showAsker();
    /// Asks what tokens do for `worker` to end, a `SignVerify`; its outcome comes the usual way.
    /// What others have asked of the same token goes on.
    Q_INVOKABLE static void cancel(QObject *worker);

    /// The sentence for a state of the PIN, shared with prompts.
    static QString pinText(PinState state);
    static QString busyText(const TokenStatus &status);

Q_SIGNALS:
    void storeIdChanged();
    void storeNameChanged();
    /// What is known of the token has changed.
    void changed();

private:
    void refresh();

    QString m_storeId;
    QString m_storeName;
    TokenStatus m_status;
    TokenMonitor m_monitor;
};

} // namespace Trivex
