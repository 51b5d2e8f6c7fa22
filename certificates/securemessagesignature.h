// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtCrypto>

class SecureMessageKey;

/// A signature of a secure message, for QML; never created there. Constant after construction.
class SecureMessageSignature : public QObject {
    Q_OBJECT
    /// A value of `IdentityResult`.
    Q_PROPERTY(int identityResult READ identityResult NOTIFY identityResultChanged)
    /// The signer's key; belongs to this object, never null.
    Q_PROPERTY(SecureMessageKey *key READ key NOTIFY keyChanged)
public:
    /// As `QCA::SecureMessageSignature::IdentityResult`.
    enum IdentityResult { Valid = 0, InvalidSignature = 1, InvalidKey = 2, NoKey = 3 };
    Q_ENUM(IdentityResult)

    explicit SecureMessageSignature(QObject *parent = nullptr);
    explicit SecureMessageSignature(const QCA::SecureMessageSignature &signature,
                                    QObject *parent = nullptr);
    ~SecureMessageSignature() override;

    int identityResult() const;
    SecureMessageKey *key();

Q_SIGNALS:
    void identityResultChanged();
    void keyChanged();

private:
    QCA::SecureMessageSignature m_signature;
    SecureMessageKey *m_key = nullptr;
};
