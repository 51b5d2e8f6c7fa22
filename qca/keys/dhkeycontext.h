// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keybase.h"

namespace Trivex {

/// A Diffie-Hellman key.
class TRIVEX_QCA_EXPORT DhKeyContext : public KeyBase<QCA::DHContext>, public ExtendedKey {
    Q_OBJECT
public:
    /// With material of another kind the context is null.
    explicit DhKeyContext(QCA::Provider *provider, KeyMaterial material = KeyMaterial());
    ~DhKeyContext() override;

    QCA::Provider::Context *clone() const override;

    QCA::PKey::Type type() const override { return QCA::PKey::DH; }
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

    /// The shared secret with the public key `theirs`; empty when the two don't fit.
    QCA::SymmetricKey deriveKey(const QCA::PKeyBase &theirs) override;

protected:
    DhKeyContext(const DhKeyContext &other);
    bool signBlock(const QByteArray &, QByteArray *) override { return false; }
};

} // namespace Trivex
