// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keybase.h"
#include "qca/keys/requestsigner.h"

namespace Trivex {

/// A DSA key.
class TRIVEX_QCA_EXPORT DsaKeyContext : public KeyBase<QCA::DSAContext>,
                                        public ExtendedKey,
                                        public RequestSigner {
    Q_OBJECT
public:
    /// With material of another kind the context is null.
    explicit DsaKeyContext(QCA::Provider *provider, KeyMaterial material = KeyMaterial());
    ~DsaKeyContext() override;

    QCA::Provider::Context *clone() const override;

    QCA::PKey::Type type() const override { return QCA::PKey::DSA; }
    int keyType() const override;
    QByteArray subjectPublicKeyInfo() const override { return m_material.publicInfo(); }

    /// Quick, so it blocks in either case; `finished()` comes through the event loop.
    void createPrivate(const QCA::DLGroup &domain, bool block) override;
    void createPrivate(const QCA::DLGroup &domain, const QCA::BigInteger &y,
                       const QCA::BigInteger &x) override;
    void createPublic(const QCA::DLGroup &domain, const QCA::BigInteger &y) override;

    QCA::DLGroup domain() const override;
    QCA::BigInteger y() const override;
    /// 0 for a public key.
    QCA::BigInteger x() const override;

    /// Signatures are DER DSS-Sig-Value, or r and s side by side with `IEEE_1363`, which is what
    /// QCA makes of the default.
    void startSign(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format) override;
    void startVerify(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format) override;
    QByteArray endSign() override;
    bool endVerify(const QByteArray &signature) override;

    bool signMessage(const QByteArray &message, const QByteArray &digestName,
                     QByteArray *signature) override;

protected:
    DsaKeyContext(const DsaKeyContext &other);
    bool signBlock(const QByteArray &block, QByteArray *signature) override;

private:
    void start(KeyOperation::Mode mode, QCA::SignatureAlgorithm algorithm,
               QCA::SignatureFormat format);
    int orderBits() const;
};

} // namespace Trivex
