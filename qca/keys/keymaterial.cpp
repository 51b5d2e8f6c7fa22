// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keymaterial.h"

#include "qca/asn1/nativecoding.h"
#include "qca/keys/gostengine.h"
#include "qca/keys/keyalgorithms.h"
#include "qca/keys/keybounds.h"
#include "qca/keys/keytypes.h"
#include "qca/keys/publickeyfields.h"

#include <openssl/err.h>

namespace Trivex {

namespace {

bool isGost(int keyType)
{
    return keyType == Gost2001Key || keyType == Gost2012Key256 || keyType == Gost2012Key512;
}

QByteArray algorithmOfPublicInfo(const QByteArray &spki)
{
    PublicKeyFields fields;
    return findPublicKeyFields(Der::sliceOf(spki), &fields) ? fields.oid() : QByteArray();
}

QByteArray algorithmOfPrivateInfo(Der::Slice pkcs8)
{
    Der::Slice body;
    Der::Slice version;
    Der::Slice algorithm;
    Der::Slice oid;
    if (!Der::Reader(pkcs8).next(Der::Sequence, &body))
        return {};
    Der::Reader reader(body);
    const bool hasKey = reader.next(Der::Integer, &version)
        && reader.next(Der::Sequence, &algorithm) && reader.peek() == Der::OctetString
        && Der::Reader(algorithm).next(Der::ObjectIdentifier, &oid);
    return hasKey ? Der::oidText(oid) : QByteArray();
}

} // namespace

KeyMaterial::KeyMaterial(const KeyMaterial &other)
    : m_native(share(other.native()))
    , m_publicInfo(other.m_publicInfo)
    , m_opaquePrivate(other.m_opaquePrivate)
    , m_keyType(other.m_keyType)
    , m_bits(other.m_bits)
    , m_isPrivate(other.m_isPrivate)
{
}

KeyMaterial &KeyMaterial::operator=(KeyMaterial other) noexcept
{
    std::swap(m_native, other.m_native);
    std::swap(m_publicInfo, other.m_publicInfo);
    std::swap(m_opaquePrivate, other.m_opaquePrivate);
    std::swap(m_keyType, other.m_keyType);
    std::swap(m_bits, other.m_bits);
    std::swap(m_isPrivate, other.m_isPrivate);
    return *this;
}

KeyMaterial KeyMaterial::fromNative(PKeyHandle key, bool isPrivate)
{
    KeyMaterial material;
    if (!key)
        return material;
    material.m_publicInfo = encodeNative(key.get(), i2d_PUBKEY);
    material.m_keyType = keyTypeOfAlgorithm(algorithmOfPublicInfo(material.m_publicInfo));
    material.m_bits = qMax(EVP_PKEY_get_bits(key.get()), 0);
    material.m_isPrivate = isPrivate;
    material.m_native = std::move(key);
    return material;
}

KeyMaterial KeyMaterial::fromPublicInfo(const QByteArray &spki)
{
    KeyMaterial material;
    const QByteArray oid = algorithmOfPublicInfo(spki);
    if (oid.isEmpty())
        return material;
    const KeyAlgorithm *kind = keyAlgorithm(oid);
    material.m_keyType = kind ? kind->keyType : int(OtherKey);
    material.m_publicInfo = QByteArray(spki.constData(), spki.size());
    if (isGost(material.m_keyType))
        loadGostEngine();
    material.m_native = decodeNative<PKeyHandle>(Der::sliceOf(spki), d2i_PUBKEY);
    if (material.m_native)
        material.m_bits = qMax(EVP_PKEY_get_bits(material.native()), 0);
    else if (kind)
        material.m_bits = kind->bits;
    return material;
}

KeyMaterial KeyMaterial::fromPrivateInfo(const Secret &pkcs8)
{
    KeyMaterial material;
    const Der::Slice encoding = {pkcs8.constData(), pkcs8.size()};
    const QByteArray oid = algorithmOfPrivateInfo(encoding);
    if (oid.isEmpty())
        return material;
    if (!isWithinKeyBounds({pkcs8.constData(), pkcs8.size()}))
        return material;
    const KeyAlgorithm *kind = keyAlgorithm(oid);
    const int keyType = kind ? kind->keyType : int(OtherKey);
    if (isGost(keyType))
        loadGostEngine();
    const auto info = decodeNative<Pkcs8Handle>(encoding, d2i_PKCS8_PRIV_KEY_INFO);
    if (info)
        material = fromNative(PKeyHandle(EVP_PKCS82PKEY(info.get())), true);
    ERR_clear_error();
    if (!material.isNull() || !info)
        return material;
    if (kind && !isGost(keyType) && keyType != OtherKey)
        return material; // libcrypto knows the algorithm, so the key itself is broken
    material.m_opaquePrivate = pkcs8;
    material.m_keyType = keyType;
    material.m_bits = kind ? kind->bits : 0;
    material.m_isPrivate = true;
    return material;
}

Secret KeyMaterial::privateInfo() const
{
    if (!m_isPrivate || !m_native)
        return m_opaquePrivate;
    const Pkcs8Handle info(EVP_PKEY2PKCS8(native()));
    return encodeNativeSecret(info.get(), i2d_PKCS8_PRIV_KEY_INFO);
}

void KeyMaterial::setPublicInfo(const QByteArray &spki)
{
    const QByteArray oid = algorithmOfPublicInfo(spki);
    if (m_publicInfo.isEmpty() && m_isPrivate && !oid.isEmpty()
        && keyTypeOfAlgorithm(oid) == m_keyType)
        m_publicInfo = spki;
}

void KeyMaterial::makePublic()
{
    if (m_isPrivate)
        *this = fromPublicInfo(m_publicInfo);
}

} // namespace Trivex
