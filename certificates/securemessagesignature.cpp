// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/securemessagesignature.h"

SecureMessageSignature::SecureMessageSignature(QObject *parent)
    : QObject(parent)
{
}

SecureMessageSignature::SecureMessageSignature(const QCA::SecureMessageSignature &signature,
                                               QObject *parent)
    : QObject(parent)
    , m_signature(signature)
    , m_key(new SecureMessageKey(signature.key(), this))
{
}

int SecureMessageSignature::identityResult() const
{
    return m_signature.identityResult();
}

SecureMessageKey *SecureMessageSignature::key()
{
    if (!m_key)
        m_key = new SecureMessageKey(m_signature.key(), this);
    return m_key;
}
