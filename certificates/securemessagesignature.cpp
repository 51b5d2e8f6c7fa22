// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/securemessagesignature.h"

#include "certificates/securemessagekey.h"

#include <QQmlEngine>

SecureMessageSignature::SecureMessageSignature(QObject *parent)
    : QObject(parent)
{
}

SecureMessageSignature::SecureMessageSignature(const QCA::SecureMessageSignature &signature,
                                               QObject *parent)
    : QObject(parent)
    , m_signature(signature)
{
    key();
}

SecureMessageSignature::~SecureMessageSignature() = default;

int SecureMessageSignature::identityResult() const
{
    return int(m_signature.identityResult());
}

SecureMessageKey *SecureMessageSignature::key()
{
    if (!m_key) {
        m_key = new SecureMessageKey(m_signature.key(), this);
        QQmlEngine::setObjectOwnership(m_key, QQmlEngine::CppOwnership);
    }
    return m_key;
}
