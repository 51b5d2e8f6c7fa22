// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contexts/tokenkeycontext.h"
#include "qca/keys/eckeycontext.h"

#include <optional>

namespace Trivex {

/// A key pair on a token that is not RSA: elliptic curves of all kinds, and keys of whose kind only
/// the public half is understood here, which can be shown but not used.
class TokenEcContext : public TokenKeyContext<EcKeyContext> {
    Q_OBJECT
public:
    /// Without a reference for generating a key.
    TokenEcContext(QCA::Provider *provider, TokenTable &tokens,
                   const TokenKeyReference &reference = {});
    ~TokenEcContext() override;

    QCA::Provider::Context *clone() const override;

    /// Generates on the token that the target or the stored answers name. `curve` is
    /// "ec-secp256r1", "ec-secp384r1" or "ec-secp521r1"; or, for GOST R 34.10-2012,
    /// "gost2012-256" (on the first curve of 2001, which all tokens know) or "gost2012-512" (on
    /// paramSetA), or the name of a parameter set in RFC 4357 or RFC 7836:
    /// "id-GostR3410-2001-CryptoPro-A-ParamSet" (also -B-, -C-, -XchA-, -XchB-),
    /// "id-tc26-gost-3410-2012-256-paramSetA" to D, "id-tc26-gost-3410-2012-512-paramSetA" to C.
    /// Any other name fails, and so does one that the token does not know.
    void createPrivate(const QString &curve, bool block) override;

    /// Of a GOST key, its own digest may be left to the token: where nobody in this process can
    /// compute it, and where the token takes no digest and the data is up to 1 MiB.
    void startSign(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format) override;
    void update(const QCA::MemoryRegion &data) override;
    QByteArray endSign() override;
    bool signMessage(const QByteArray &message, const QByteArray &digestName,
                     QByteArray *signature) override;

protected:
    TokenEcContext(const TokenEcContext &other);
    bool signBlock(const QByteArray &block, QByteArray *signature) override;

private:
    bool m_signsGost = false; ///< a signature with a GOST key's own digest is being made
    std::optional<QByteArray> m_message; ///< of that signature; none when it got too long
};

} // namespace Trivex
