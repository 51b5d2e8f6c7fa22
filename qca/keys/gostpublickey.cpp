// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/gostpublickey.h"

#include "qca/asn1/algorithmids.h"
#include "qca/asn1/derwriter.h"
#include "qca/asn1/oidoctets.h"
#include "qca/keys/keytypes.h"
#include "qca/keys/psskeys.h"
#include "qca/keys/publickeyfields.h"

namespace Trivex {

namespace {

struct Algorithm {
    int keyType;
    const char *oid;
    int pointSize;
};

constexpr Algorithm Algorithms[] = {
    {Gost2001Key, Oid::GostKey2001, 64},
    {Gost2012Key256, Oid::GostKey256, 64},
    {Gost2012Key512, Oid::GostKey512, 128},
};

const Algorithm *algorithmOf(int keyType)
{
    for (const Algorithm &algorithm : Algorithms) {
        if (algorithm.keyType == keyType)
            return &algorithm;
    }
    return nullptr;
}

const Algorithm *algorithmOf(const QByteArray &oid)
{
    for (const Algorithm &algorithm : Algorithms) {
        if (oid == algorithm.oid)
            return &algorithm;
    }
    return nullptr;
}

struct CurveName {
    const char *oid;
    const char *same; ///< the OID of 2012 for the same curve
};

// RFC 7836, appendix B, gives the curves of 2001 new names. The two for key exchange are A and C.
constexpr CurveName OldCurves[] = {
    {Oid::GostCurve2001A, Oid::GostCurve256B},  {Oid::GostCurve2001B, Oid::GostCurve256C},
    {Oid::GostCurve2001C, Oid::GostCurve256D},  {Oid::GostCurve2001Xa, Oid::GostCurve256B},
    {Oid::GostCurve2001Xb, Oid::GostCurve256D},
};

QByteArray newName(const QByteArray &curve)
{
    for (const CurveName &name : OldCurves) {
        if (curve == name.oid)
            return QByteArray(name.same);
    }
    return curve;
}

// The Russian arc at the place of the algorithm: a quick way to rule out other keys.
bool mayBeGost(const QByteArray &publicInfo)
{
    static constexpr Der::OidOctets Russia(Oid::RussianArc);
    const int at = publicInfo.left(12).indexOf('\x06');
    return at > 0 && publicInfo.mid(at + 2).startsWith(Russia.view());
}

QByteArray nextOid(Der::Reader *reader)
{
    Der::Slice content;
    return reader->next(Der::ObjectIdentifier, &content) ? Der::oidText(content) : QByteArray();
}

} // namespace

GostPublicKey GostPublicKey::fromPublicInfo(const QByteArray &publicInfo)
{
    if (!mayBeGost(publicInfo))
        return {};
    PublicKeyFields fields;
    Der::Slice parameters;
    Der::Slice bits;
    Der::Slice point;
    if (!findPublicKeyFields(Der::sliceOf(publicInfo), &fields)
        || !Der::wholeBits(fields.bitString, &bits)
        || !Der::Reader(bits).next(Der::OctetString, &point))
        return {};
    const Algorithm *algorithm = algorithmOf(fields.oid());
    if (!algorithm || point.size != algorithm->pointSize
        || !Der::Reader(fields.parameters).next(Der::Sequence, &parameters))
        return {};
    Der::Reader sets(parameters);
    GostPublicKey key;
    key.curve = nextOid(&sets);
    if (key.curve.isEmpty())
        return {};
    key.digest = nextOid(&sets);
    key.point = point.bytes();
    key.keyType = algorithm->keyType;
    return key;
}

QByteArray GostPublicKey::publicInfo() const
{
    const Algorithm *algorithm = algorithmOf(keyType);
    if (!algorithm || point.size() != algorithm->pointSize)
        return {};
    const QByteArray parameters = Der::writeSequence(
        {Der::writeOid(curve), digest.isEmpty() ? QByteArray() : Der::writeOid(digest)});
    return Der::writeSequence({Der::writeSequence({Der::writeOid(algorithm->oid), parameters}),
                               Der::writeBits(Der::write(Der::OctetString, point))});
}

QByteArray GostPublicKey::digestToWrite(int keyType, const QByteArray &curve)
{
    if (keyType == Gost2001Key)
        return QByteArray(Oid::GostDigestSet94);
    // The digest is written only beside the names of 2001.
    return keyType == Gost2012Key256 && curve.startsWith(Oid::GostArc2001)
        ? QByteArray(Oid::GostDigest256)
        : QByteArray();
}

QByteArray comparablePublicInfo(const QByteArray &publicInfo)
{
    if (isPssKey(publicInfo))
        return pssKeyAsRsa(publicInfo);
    GostPublicKey key = GostPublicKey::fromPublicInfo(publicInfo);
    if (!key.isValid())
        return publicInfo;
    if (key.keyType == Gost2001Key)
        key.keyType = Gost2012Key256;
    key.curve = newName(key.curve);
    key.digest.clear();
    return key.publicInfo();
}

} // namespace Trivex
