// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/securemessagekey.h"

SecureMessageKey::SecureMessageKey(QObject *parent)
    : QObject(parent)
{
}

SecureMessageKey::SecureMessageKey(const QCA::SecureMessageKey &key, QObject *parent)
    : QObject(parent)
    , m_key(key)
{
}

void SecureMessageKey::fillChain()
{
    if (!m_chain.isEmpty())
        return;
    const QCA::CertificateChain chain = m_key.x509CertificateChain();
    for (const QCA::Certificate &certificate : chain)
        m_chain.append(new Certificate(certificate, this));
}

QList<Certificate *> SecureMessageKey::x509CertificateChain()
{
    fillChain();
    return m_chain;
}

Certificate *SecureMessageKey::x509Certificate()
{
    fillChain();
    return m_chain.value(0);
}
