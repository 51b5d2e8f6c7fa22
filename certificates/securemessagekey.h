// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/certificate.h"

#include <QList>
#include <QObject>
#include <QtCrypto>

/// The key of a secure message with its certificate chain. Never changes. GUI thread only.
class SecureMessageKey : public QObject {
    Q_OBJECT
    /// The chain, the key's own certificate first. The objects are this object's children, made
    /// at the first read.
    Q_PROPERTY(QList<Certificate *> x509CertificateChain READ x509CertificateChain CONSTANT)
    /// The first certificate of the chain; null when there is none.
    Q_PROPERTY(Certificate *x509Certificate READ x509Certificate NOTIFY x509CertificateChanged)

public:
    /// As `QCA::SecureMessageKey::Type`.
    enum Type {
        None = 0,
        PGP = 1,
        X509 = 2,
    };
    Q_ENUM(Type)

    explicit SecureMessageKey(QObject *parent = nullptr);
    explicit SecureMessageKey(const QCA::SecureMessageKey &key, QObject *parent = nullptr);

    QList<Certificate *> x509CertificateChain();
    Certificate *x509Certificate();

Q_SIGNALS:
    /// Never emitted: the certificate does not change.
    void x509CertificateChanged();

private:
    void fillChain();

    QCA::SecureMessageKey m_key;
    QList<Certificate *> m_chain;
};
