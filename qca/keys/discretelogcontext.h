// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keytypes.h"
#include "qca/keys/signingkeycontext.h"

namespace Trivex {

/// The common part of the contexts of DSA and Diffie-Hellman keys. `Type` is `DsaKey` or `DhKey`.
template <class KeyContext, KeyType Type>
class TRIVEX_QCA_EXPORT DiscreteLogContext : public KeyContext, public ExtendedKey {
public:
    QCA::PKey::Type type() const override { return static_cast<QCA::PKey::Type>(Type); }
    int keyType() const override { return this->m_material.keyType(); }
    QByteArray subjectPublicKeyInfo() const override { return this->m_material.publicInfo(); }

    /// Quick, so it blocks in either case; `finished()` comes through the event loop.
    void createPrivate(const QCA::DLGroup &domain, bool block) override;
    void createPrivate(const QCA::DLGroup &domain, const QCA::BigInteger &y,
                       const QCA::BigInteger &x) override;
    void createPublic(const QCA::DLGroup &domain, const QCA::BigInteger &y) override;

    QCA::DLGroup domain() const override;
    QCA::BigInteger y() const override;
    /// 0 for a public key.
    QCA::BigInteger x() const override;

protected:
    /// With material of another kind the context is null.
    DiscreteLogContext(QCA::Provider *provider, KeyMaterial material)
        : KeyContext(provider, onlyOf(Type, std::move(material)))
    {
    }

    DiscreteLogContext(const DiscreteLogContext &other)
        : KeyContext(other)
        , ExtendedKey(other)
    {
    }
};

using DsaKeyBase = DiscreteLogContext<SigningKeyContext<QCA::DSAContext>, DsaKey>;
using DhKeyBase = DiscreteLogContext<KeyBase<QCA::DHContext>, DhKey>;

} // namespace Trivex
