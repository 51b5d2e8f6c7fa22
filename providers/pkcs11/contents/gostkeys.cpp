// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/gostkeys.h"

#include "providers/pkcs11/contents/publicinfo.h"
#include "qca/asn1/algorithmids.h"
#include "qca/asn1/derwriter.h"
#include "qca/base/secret.h"
#include "qca/keys/digests.h"
#include "qca/keys/gostpublickey.h"
#include "qca/keys/keytypes.h"

#include <algorithm>

namespace Trivex {

using Pkcs11::AttributeReader;
using Pkcs11::Error;
using Pkcs11::Session;
using Pkcs11::Template;

namespace {

constexpr GostMechanisms Mechanisms[] = {
    {Gost2001Key, CKK_GOSTR3410, CKM_GOSTR3410, CKM_GOSTR3411, CKM_GOSTR3410_WITH_GOSTR3411,
     Gost94Digest.name, Oid::GostDigestSet94, 64},
    {Gost2012Key256, CKK_GOSTR3410, CKM_GOSTR3410, Tc26Base | 0x012, Tc26Base | 0x008,
     Streebog256Digest.name, Oid::GostDigest256, 64},
    {Gost2012Key512, KeyTypeGost512, MechanismGost512Sign, Tc26Base | 0x013, Tc26Base | 0x009,
     Streebog512Digest.name, Oid::GostDigest512, 128},
};

const GostMechanisms *mechanismsOf(int keyType)
{
    for (const GostMechanisms &one : Mechanisms) {
        if (one.keyType == keyType)
            return &one;
    }
    return nullptr;
}

struct NamedParameters {
    const char *name;
    int keyType;
    const char *curve;
};

// Tokens know the first curve by its name of 2001 everywhere, by that of 2012 not always.
constexpr NamedParameters Names[] = {
    {"gost2012-256", Gost2012Key256, Oid::GostCurve2001A},
    {"gost2012-512", Gost2012Key512, Oid::GostCurve512A},
    {"id-GostR3410-2001-CryptoPro-A-ParamSet", Gost2012Key256, Oid::GostCurve2001A},
    {"id-GostR3410-2001-CryptoPro-B-ParamSet", Gost2012Key256, Oid::GostCurve2001B},
    {"id-GostR3410-2001-CryptoPro-C-ParamSet", Gost2012Key256, Oid::GostCurve2001C},
    {"id-GostR3410-2001-CryptoPro-XchA-ParamSet", Gost2012Key256, Oid::GostCurve2001Xa},
    {"id-GostR3410-2001-CryptoPro-XchB-ParamSet", Gost2012Key256, Oid::GostCurve2001Xb},
    {"id-tc26-gost-3410-2012-256-paramSetA", Gost2012Key256, Oid::GostCurve256A},
    {"id-tc26-gost-3410-2012-256-paramSetB", Gost2012Key256, Oid::GostCurve256B},
    {"id-tc26-gost-3410-2012-256-paramSetC", Gost2012Key256, Oid::GostCurve256C},
    {"id-tc26-gost-3410-2012-256-paramSetD", Gost2012Key256, Oid::GostCurve256D},
    {"id-tc26-gost-3410-2012-512-paramSetA", Gost2012Key512, Oid::GostCurve512A},
    {"id-tc26-gost-3410-2012-512-paramSetB", Gost2012Key512, Oid::GostCurve512B},
    {"id-tc26-gost-3410-2012-512-paramSetC", Gost2012Key512, Oid::GostCurve512C},
};

/// Dotted form of the one identifier in `der`; empty when it is none.
QByteArray identifierIn(const QByteArray &der)
{
    Der::Slice content;
    return Der::Reader(Der::sliceOf(der)).next(Der::ObjectIdentifier, &content)
        ? Der::oidText(content)
        : QByteArray();
}

int keyTypeOf(CK_KEY_TYPE tokenType, const QByteArray &digest)
{
    if (tokenType == KeyTypeGost512)
        return Gost2012Key512;
    // The parameter sets of the digest of 1994 are all below one arc.
    return digest.startsWith(Oid::GostDigestArc94) ? Gost2001Key : Gost2012Key256;
}

GostParameters parametersOf(int keyType, const QByteArray &curve)
{
    const GostMechanisms *mechanisms = mechanismsOf(keyType);
    if (!mechanisms)
        return {CKK_GOSTR3410, {}, {}};
    return {mechanisms->tokenType, Der::writeOid(curve),
            Der::writeOid(mechanisms->digestParameters)};
}

void addParameters(const GostParameters &parameters, Template *object)
{
    if (parameters.curve.isEmpty())
        throw Error(TokenError::NotSupported);
    object->addNumber(CKA_KEY_TYPE, parameters.tokenType)
        .add(CKA_GOSTR3410_PARAMS, parameters.curve)
        .add(CKA_GOSTR3411_PARAMS, parameters.digest);
}

/// The private number, little-endian and `size` long, out of DER PrivateKeyInfo: as it is, or in an
/// OCTET STRING, or as an INTEGER. Empty when it is in none of these forms.
Secret privateNumber(const Secret &privateInfo, int size)
{
    Der::Slice body;
    Der::Slice key;
    const Der::Slice whole = {privateInfo.constData(), privateInfo.size()};
    if (!Der::Reader(whole).next(Der::Sequence, &body))
        return {};
    Der::Reader fields(body);
    fields.skip(Der::Integer);
    fields.skip(Der::Sequence);
    if (!fields.next(Der::OctetString, &key))
        return {};
    Der::Slice inner;
    bool isBigEndian = false;
    if (key.size != size && Der::Reader(key).next(Der::OctetString, &inner))
        key = inner;
    else if (key.size != size && Der::Reader(key).next(Der::Integer, &inner)) {
        isBigEndian = true;
        const int zeros = std::max(0, inner.size - size);
        for (int i = 0; i < zeros; ++i) {
            if (inner.at(i) != 0)
                return {};
        }
        key = {inner.data + zeros, inner.size - zeros};
    }
    if (key.size > size || (key.size < size && !isBigEndian))
        return {};
    Secret number(size);
    if (isBigEndian)
        std::reverse_copy(key.data, key.data + key.size, number.data());
    else
        std::copy(key.data, key.data + key.size, number.data());
    return number;
}

} // namespace

const GostMechanisms *gostMechanisms(const QByteArray &publicInfo)
{
    return mechanismsOf(GostPublicKey::fromPublicInfo(publicInfo).keyType);
}

QByteArray gostPublicInfoOf(const Session &session, CK_OBJECT_HANDLE object)
{
    AttributeReader reader({{CKA_CLASS, sizeof(CK_OBJECT_CLASS)},
                            {CKA_KEY_TYPE, sizeof(CK_KEY_TYPE)},
                            {CKA_GOSTR3410_PARAMS, 32},
                            {CKA_GOSTR3411_PARAMS, 32}});
    reader.read(session, object);
    // The value of a private key is its secret, which nobody here wants to see.
    if (reader.number(0, CKO_PRIVATE_KEY) != CKO_PUBLIC_KEY)
        return {};
    GostPublicKey key;
    key.keyType = keyTypeOf(reader.number(1, CKK_GOSTR3410), identifierIn(reader.value(3)));
    key.curve = identifierIn(reader.value(2));
    key.digest = GostPublicKey::digestToWrite(key.keyType, key.curve);
    AttributeReader value({{CKA_VALUE, 160}});
    value.read(session, object);
    key.point = pointOfSize(value.value(0), mechanismsOf(key.keyType)->signatureSize);
    return key.curve.isEmpty() ? QByteArray() : key.publicInfo();
}

GostParameters gostParameters(const QByteArray &publicInfo)
{
    const GostPublicKey key = GostPublicKey::fromPublicInfo(publicInfo);
    return parametersOf(key.keyType, key.curve);
}

GostParameters gostParametersByName(const QString &name)
{
    for (const NamedParameters &one : Names) {
        if (name == QLatin1String(one.name))
            return parametersOf(one.keyType, one.curve);
    }
    return parametersOf(UnknownKey, {});
}

void addGostPublicKey(const KeyMaterial &key, Template *object)
{
    addParameters(gostParameters(key.publicInfo()), object);
    object->add(CKA_VALUE, GostPublicKey::fromPublicInfo(key.publicInfo()).point);
}

void addGostPrivateKey(const KeyMaterial &key, Template *object)
{
    const GostPublicKey publicHalf = GostPublicKey::fromPublicInfo(key.publicInfo());
    addParameters(gostParameters(key.publicInfo()), object);
    const Secret number = privateNumber(key.privateInfo(), publicHalf.point.size() / 2);
    if (number.isEmpty())
        throw Error(TokenError::NotSupported);
    object->add(CKA_VALUE, number.constData(), size_t(number.size()));
}

} // namespace Trivex
