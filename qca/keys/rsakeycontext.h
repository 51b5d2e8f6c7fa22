// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/signingkeycontext.h"

#include <memory>

namespace Trivex {

class KeyMaker;

/// An RSA key. Contexts for keys on tokens derive from it; see `KeyBase` for what they override.
class TRIVEX_QCA_EXPORT RsaKeyContext : public SigningKeyContext<QCA::RSAContext>,
                                        public ExtendedKey {
    Q_OBJECT
public:
    /// `material` has to be an RSA key; with another kind the context is null.
    explicit RsaKeyContext(QCA::Provider *provider, KeyMaterial material = KeyMaterial());
    ~RsaKeyContext() override;

    QCA::Provider::Context *clone() const override;

    QCA::PKey::Type type() const override { return QCA::PKey::RSA; }
    int keyType() const override { return m_material.keyType(); }
    QByteArray subjectPublicKeyInfo() const override { return m_material.publicInfo(); }

    /// Generates in software. With `block` false it works in a thread, and `finished()` follows on
    /// the thread of this object. The context is null afterwards if it failed.
    void createPrivate(int bits, int exponent, bool block) override;
    void createPrivate(const QCA::BigInteger &n, const QCA::BigInteger &e, const QCA::BigInteger &p,
                       const QCA::BigInteger &q, const QCA::BigInteger &d) override;
    void createPublic(const QCA::BigInteger &n, const QCA::BigInteger &e) override;

    QCA::BigInteger n() const override;
    QCA::BigInteger e() const override;
    /// 0 for a public key; so are `q` and `d`.
    QCA::BigInteger p() const override;
    QCA::BigInteger q() const override;
    QCA::BigInteger d() const override;

    int maximumEncryptSize(QCA::EncryptionAlgorithm algorithm) const override;
    QCA::SecureArray encrypt(const QCA::SecureArray &in,
                             QCA::EncryptionAlgorithm algorithm) override;
    bool decrypt(const QCA::SecureArray &in, QCA::SecureArray *out,
                 QCA::EncryptionAlgorithm algorithm) override;

protected:
    RsaKeyContext(const RsaKeyContext &other);
    QByteArray blockOf(const QByteArray &digestName, const QByteArray &digest) const override;

private:
    QCA::BigInteger privateNumber(const char *parameter) const;

    std::unique_ptr<KeyMaker> m_maker;
};

} // namespace Trivex
