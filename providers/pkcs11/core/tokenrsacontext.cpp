// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/tokenrsacontext.h"

namespace Trivex {

TokenRsaContext::TokenRsaContext(QCA::Provider *provider)
    : RsaKeyContext(provider)
{
}

TokenRsaContext::TokenRsaContext(QCA::Provider *provider, const TokenKeyReference &reference)
    : RsaKeyContext(provider)
{
    take(reference);
}

TokenRsaContext::TokenRsaContext(const TokenRsaContext &other)
    : RsaKeyContext(other)
    , m_reference(other.m_reference)
{
}

TokenRsaContext::~TokenRsaContext() = default;

QCA::Provider::Context *TokenRsaContext::clone() const
{
    return new TokenRsaContext(*this);
}

void TokenRsaContext::take(const TokenKeyReference &reference)
{
    m_reference = {};
    m_material = KeyMaterial();
    if (!reference.key)
        return;
    m_material = KeyMaterial::fromPublicInfo(reference.key->publicInfo);
    if (!m_material.isNull())
        m_reference = reference;
}

void TokenRsaContext::createPrivate(int bits, int exponent, bool block)
{
    take({});
    GenerationRequest request;
    request.type = CKK_RSA;
    request.bits = bits;
    request.exponent = exponent;
    m_generation.start(request, block, [this, block](const TokenKeyReference &made) {
        take(made);
        if (!block)
            Q_EMIT finished();
    });
}

void TokenRsaContext::createPrivate(const QCA::BigInteger &n, const QCA::BigInteger &e,
                                    const QCA::BigInteger &p, const QCA::BigInteger &q,
                                    const QCA::BigInteger &d)
{
    Q_UNUSED(n)
    Q_UNUSED(e)
    Q_UNUSED(p)
    Q_UNUSED(q)
    Q_UNUSED(d)
    take({});
}

bool TokenRsaContext::decrypt(const QCA::SecureArray &in, QCA::SecureArray *out,
                              QCA::EncryptionAlgorithm algorithm)
{
    if (!isPrivate() || algorithm != QCA::EME_PKCS1v15)
        return false;
    // A copy: this object may go while the token works.
    const TokenKeyReference reference = m_reference;
    return decryptOnToken(reference, in.toByteArray(), out);
}

bool TokenRsaContext::signBlock(const QByteArray &block, QByteArray *signature)
{
    // A copy, as above; nothing of this object is touched afterwards.
    const TokenKeyReference reference = m_reference;
    return isPrivate() && signOnToken(reference, block, signature);
}

} // namespace Trivex
