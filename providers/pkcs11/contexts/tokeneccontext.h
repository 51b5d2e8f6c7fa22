// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contexts/tokenkeycontext.h"
#include "qca/keys/eckeycontext.h"

#include <optional>

namespace Trivex {

/// A key pair on a token that is not RSA in general: a key of any elliptic curve, one of
/// RSASSA-PSS, or a key of another kind, which can be shown but not used. A context is for one
/// thread at a time, as all of QCA's.
class TokenEcContext : public TokenKeyContext<EcKeyContext> {
    Q_OBJECT
public:
    /// Without a reference the context holds no key and can generate one.
    TokenEcContext(QCA::Provider *provider, TokenTable &tokens,
                   const TokenKeyReference &reference = {});
    ~TokenEcContext() override;

    QCA::Provider::Context *clone() const override;

    /// Generates on the token that the target or the stored answers name. `curve` is
    /// "ec-secp256r1", "ec-secp384r1" or "ec-secp521r1"; "ed25519"; or, for GOST R 34.10-2012,
    /// "gost2012-256" (on the first curve of 2001, which all tokens know) or "gost2012-512" (on
    /// paramSetA), or the name of a parameter set in RFC 4357 or RFC 7836:
    /// "id-GostR3410-2001-CryptoPro-A-ParamSet" (also -B-, -C-, -XchA-, -XchB-),
    /// "id-tc26-gost-3410-2012-256-paramSetA" to D, "id-tc26-gost-3410-2012-512-paramSetA" to C.
    /// Any other name fails, and so does one that the token does not know.
    void createPrivate(const QString &curve, bool block) override;

    /// With a GOST key and its own digest, the token computes the digest when this process can't,
    /// or when the token accepts only whole messages; the data may have up to 1 MiB then.
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
    std::optional<QByteArray> m_message; ///< of that signature; nothing when it is too long
};

} // namespace Trivex
