// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keymaterial.h"
#include "qca/keys/keyoperation.h"

namespace Trivex {

/// `material` when it is of that kind (`Trivex::KeyType`); else null.
inline KeyMaterial onlyOf(int keyType, KeyMaterial material)
{
    return material.keyType() == keyType ? std::move(material) : KeyMaterial();
}

/// The common part of our key contexts, on top of the QCA class of their kind.
///
/// Signing ends in `signBlock` for every kind and path: a context for a key on a token overrides
/// that, `isPrivate`, `canExport`, `convertToPublic` and `clone`, holds the public half here, and
/// inherits the rest (digesting, DigestInfo, formats, verification).
template <class Base> class KeyBase : public Base {
public:
    bool isNull() const override { return m_material.isNull(); }
    bool isPrivate() const override { return m_material.isPrivate(); }
    bool canExport() const override { return true; }
    void convertToPublic() override { m_material.makePublic(); }
    int bits() const override { return m_material.bits(); }
    void update(const QCA::MemoryRegion &data) override { m_operation.update(data); }

    const KeyMaterial &material() const { return m_material; }

protected:
    explicit KeyBase(QCA::Provider *provider, KeyMaterial material = KeyMaterial())
        : Base(provider)
        , m_material(std::move(material))
    {
    }

    KeyBase(const KeyBase &other)
        : Base(other.provider())
        , m_material(other.m_material)
        , m_operation(other.m_operation)
    {
    }

    /// The private-key operation itself; the lowest step of every signature.
    ///
    /// RSA: pads `block` (a DigestInfo or arbitrary bytes) by PKCS#1 v1.5 type 1 and
    /// exponentiates, which is CKM_RSA_PKCS. Elliptic curves: signs the digest `block` and gives
    /// DER ECDSA-Sig-Value. DSA: as elliptic curves. Ed25519 and Ed448: `block` is the message.
    /// False when the key can't.
    virtual bool signBlock(const QByteArray &block, QByteArray *signature) = 0;

    // The first data member, see KeyMaterial.
    KeyMaterial m_material;
    KeyOperation m_operation;
};

} // namespace Trivex
