// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contexts/tokenkeycontext.h"
#include "qca/keys/rsakeycontext.h"

namespace Trivex {

/// An RSA key pair on a token; the public half is here, the private one never leaves the token.
class TokenRsaContext : public TokenKeyContext<RsaKeyContext> {
    Q_OBJECT
public:
    /// Without a reference for generating a key.
    TokenRsaContext(QCA::Provider *provider, TokenTable &tokens,
                    const TokenKeyReference &reference = {});
    ~TokenRsaContext() override;

    QCA::Provider::Context *clone() const override;

    /// Generates on the token that the target or the stored answers name.
    void createPrivate(int bits, int exponent, bool block) override;
    /// Null: a token makes its keys by itself.
    void createPrivate(const QCA::BigInteger &n, const QCA::BigInteger &e, const QCA::BigInteger &p,
                       const QCA::BigInteger &q, const QCA::BigInteger &d) override;

    bool decrypt(const QCA::SecureArray &in, QCA::SecureArray *out,
                 QCA::EncryptionAlgorithm algorithm) override;

protected:
    TokenRsaContext(const TokenRsaContext &other);
    bool signBlock(const QByteArray &block, QByteArray *signature) override;
};

} // namespace Trivex
