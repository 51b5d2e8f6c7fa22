// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/publicinfo.h"

#include "qca/asn1/algorithmids.h"
#include "qca/asn1/der.h"
#include "qca/asn1/derwriter.h"

namespace Trivex {

namespace {

struct EdwardsCurve {
    const char *oid; ///< of the algorithm of its keys, which is one for each curve
    const char *otherOid; ///< by which older tokens know it; null: none
    const char *name;
    int pointSize;
};

constexpr EdwardsCurve EdwardsCurves[] = {
    {Oid::Ed25519, Oid::Edwards25519, "edwards25519", 32},
    {Oid::Ed448, nullptr, "edwards448", 57},
};

bool isNamed(const EdwardsCurve &curve, const QByteArray &parameters)
{
    Der::Slice content;
    if (Der::single(Der::sliceOf(parameters), Der::PrintableString, &content))
        return content.view() == QByteArray(curve.name);
    if (!Der::single(Der::sliceOf(parameters), Der::ObjectIdentifier, &content))
        return false;
    const QByteArray oid = Der::oidText(content);
    return oid == curve.oid || (curve.otherOid && oid == curve.otherOid);
}

QByteArray publicInfo(const char *algorithm, const QByteArray &parameters, const QByteArray &key)
{
    return Der::writeSequence(
        {Der::writeSequence({Der::writeOid(algorithm), parameters}), Der::writeBits(key)});
}

} // namespace

QByteArray rsaPublicInfo(const QByteArray &modulus, const QByteArray &exponent)
{
    if (modulus.isEmpty() || exponent.isEmpty())
        return {};
    const QByteArray key =
        Der::writeSequence({Der::writeUnsigned(modulus), Der::writeUnsigned(exponent)});
    return publicInfo(Oid::RsaEncryption, Der::write(Der::Null, {}), key);
}

QByteArray ecPublicInfo(const QByteArray &parameters, const QByteArray &point)
{
    if (parameters.isEmpty() || point.isEmpty())
        return {};
    return publicInfo(Oid::EcPublicKey, parameters, point);
}

QByteArray edwardsPublicInfo(const QByteArray &parameters, const QByteArray &point)
{
    for (const EdwardsCurve &curve : EdwardsCurves) {
        if (!isNamed(curve, parameters))
            continue;
        const QByteArray key = pointOfSize(point, curve.pointSize);
        return key.isEmpty() ? QByteArray() : publicInfo(curve.oid, {}, key);
    }
    return {};
}

QByteArray pointOfSize(const QByteArray &attribute, int size)
{
    if (attribute.size() == size)
        return attribute;
    Der::Slice content;
    const bool isWrapped = Der::Reader(Der::sliceOf(attribute)).next(Der::OctetString, &content)
        && content.size == size;
    return isWrapped ? content.bytes() : QByteArray();
}

} // namespace Trivex
