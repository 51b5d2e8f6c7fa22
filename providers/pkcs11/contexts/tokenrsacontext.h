// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contexts/tokenkeycontext.h"
#include "qca/keys/rsakeycontext.h"

namespace Trivex {

/// An RSA key pair on a token. The context holds the public half; the private half never leaves the
/// token.
class TokenRsaContext : public TokenKeyContext<RsaKeyContext> {
    Q_OBJECT
public:
    /// Without a reference the context holds no key and can generate one.
    TokenRsaContext(QCA::Provider *provider, TokenTable &tokens,
                    const TokenKeyReference &reference = {});
    ~TokenRsaContext() override;

    QCA::Provider::Context *clone() const override;

    /// Generates a pair on the token that the generation target or the stored answers name.
    void createPrivate(int bits, int exponent, bool block) override;
    /// Leaves the context without a key: a token generates its keys itself.
    void createPrivate(const QCA::BigInteger &n, const QCA::BigInteger &e, const QCA::BigInteger &p,
                       const QCA::BigInteger &q, const QCA::BigInteger &d) override;

    bool decrypt(const QCA::SecureArray &in, QCA::SecureArray *out,
                 QCA::EncryptionAlgorithm algorithm) override;

protected:
    TokenRsaContext(const TokenRsaContext &other);
    bool signBlock(const QByteArray &block, QByteArray *signature) override;
};

} // namespace Trivex
