// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/publicinfo.h"

#include "qca/asn1/derwriter.h"

namespace Trivex {

namespace {

constexpr char RsaEncryption[] = "1.2.840.113549.1.1.1";
constexpr char EcPublicKey[] = "1.2.840.10045.2.1";

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
    return publicInfo(RsaEncryption, Der::write(Der::Null, {}), key);
}

QByteArray ecPublicInfo(const QByteArray &parameters, const QByteArray &point)
{
    if (parameters.isEmpty() || point.isEmpty())
        return {};
    return publicInfo(EcPublicKey, parameters, point);
}

} // namespace Trivex
