// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QtCrypto>

class Certificate;

/// A key of a secure message with its certificates, for QML; never created there. Constant after
/// construction.
class SecureMessageKey : public QObject {
    Q_OBJECT
    /// The certificates, the key's own first. The objects belong to this one.
    Q_PROPERTY(QList<Certificate *> x509CertificateChain READ x509CertificateChain CONSTANT)
    /// The first of the chain; null for an empty one.
    Q_PROPERTY(Certificate *x509Certificate READ x509Certificate NOTIFY x509CertificateChanged)
public:
    /// As `QCA::SecureMessageKey::Type`.
    enum Type { None = 0, PGP = 1, X509 = 2 };
    Q_ENUM(Type)

    explicit SecureMessageKey(QObject *parent = nullptr);
    explicit SecureMessageKey(const QCA::SecureMessageKey &key, QObject *parent = nullptr);
    ~SecureMessageKey() override;

    QList<Certificate *> x509CertificateChain();
    Certificate *x509Certificate();

Q_SIGNALS:
    void x509CertificateChanged();

private:
    void fillChain();

    QCA::SecureMessageKey m_key;
    QList<Certificate *> m_chain;
};
