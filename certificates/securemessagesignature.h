// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/securemessagekey.h"

#include <QObject>
#include <QtCrypto>

/// A verified signature: its result and its signer. Never changes. GUI thread only.
class SecureMessageSignature : public QObject {
    Q_OBJECT
    /// A value of `IdentityResult`.
    Q_PROPERTY(int identityResult READ identityResult NOTIFY identityResultChanged)
    /// The signer; a child of this object.
    Q_PROPERTY(SecureMessageKey *key READ key NOTIFY keyChanged)

public:
    /// As `QCA::SecureMessageSignature::IdentityResult`.
    enum IdentityResult {
        Valid = 0,
        InvalidSignature = 1,
        InvalidKey = 2,
        NoKey = 3,
    };
    Q_ENUM(IdentityResult)

    explicit SecureMessageSignature(QObject *parent = nullptr);
    explicit SecureMessageSignature(const QCA::SecureMessageSignature &signature,
                                    QObject *parent = nullptr);

    int identityResult() const;
    SecureMessageKey *key();

Q_SIGNALS:
    /// Neither is ever emitted: nothing changes.
    void identityResultChanged();
    void keyChanged();

private:
    QCA::SecureMessageSignature m_signature;
    SecureMessageKey *m_key = nullptr;
};
