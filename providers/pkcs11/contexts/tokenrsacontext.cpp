// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/tokenrsacontext.h"

namespace Trivex {

TokenRsaContext::TokenRsaContext(QCA::Provider *provider, TokenTable &tokens,
                                 const TokenKeyReference &reference)
    : TokenKeyContext(provider, tokens, reference)
{
}

TokenRsaContext::TokenRsaContext(const TokenRsaContext &other)
    : TokenKeyContext(other)
{
}

TokenRsaContext::~TokenRsaContext() = default;

QCA::Provider::Context *TokenRsaContext::clone() const
{
    return new TokenRsaContext(*this);
}

void TokenRsaContext::createPrivate(int bits, int exponent, bool block)
{
    GenerationRequest request;
    request.type = CKK_RSA;
    request.bits = bits;
    request.exponent = exponent;
    generate(request, block);
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
    hold({});
}

bool TokenRsaContext::decrypt(const QCA::SecureArray &in, QCA::SecureArray *out,
                              QCA::EncryptionAlgorithm algorithm)
{
    if (!isPrivate() || algorithm != QCA::EME_PKCS1v15)
        return false;
    return decryptOnToken(tokens(), reference(), in.toByteArray(), out);
}

bool TokenRsaContext::signBlock(const QByteArray &block, QByteArray *signature)
{
    return isPrivate() && signOnToken(tokens(), reference(), bits(), block, signature);
}

} // namespace Trivex
