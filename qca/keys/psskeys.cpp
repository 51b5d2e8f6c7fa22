// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/psskeys.h"

#include "qca/asn1/algorithmidentifier.h"
#include "qca/asn1/algorithmids.h"
#include "qca/asn1/derwriter.h"
#include "qca/asn1/nativecoding.h"
#include "qca/asn1/oidoctets.h"
#include "qca/keys/publickeyfields.h"

#include <openssl/rsa.h>

namespace Trivex {

namespace {

using ParametersHandle = Handle<RSA_PSS_PARAMS, RSA_PSS_PARAMS_free>;

/// RFC 4055, 3.1: what is meant where nothing is written.
constexpr int DefaultSalt = 20;

/// Those of RFC 8017, A.2.1, that are used. SHA-1 is good enough for a mask.
constexpr Digest PssDigests[] = {Sha1Digest, Sha256Digest, Sha384Digest, Sha512Digest};

QByteArray oidOf(const X509_ALGOR *algorithm)
{
    const ASN1_OBJECT *object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    return Der::oidText(
        {reinterpret_cast<const char *>(OBJ_get0_data(object)), int(OBJ_length(object))});
}

/// Null for a digest that is not used.
const Digest *digestIn(const X509_ALGOR *algorithm)
{
    const QByteArray oid = algorithm ? oidOf(algorithm) : QByteArray(Sha1Digest.oid);
    for (const Digest &one : PssDigests) {
        if (oid == one.oid)
            return &one;
    }
    return nullptr;
}

const Digest *maskDigestIn(const X509_ALGOR *mask)
{
    if (!mask)
        return digestIn(nullptr);
    if (oidOf(mask) != Oid::Mgf1)
        return nullptr;
    const AlgorHandle digest(static_cast<X509_ALGOR *>(
        ASN1_TYPE_unpack_sequence(ASN1_ITEM_rptr(X509_ALGOR), mask->parameter)));
    ERR_clear_error();
    return digest ? digestIn(digest.get()) : nullptr;
}

PssScheme schemeIn(const RSA_PSS_PARAMS &parameters)
{
    PssScheme scheme = {digestIn(parameters.hashAlgorithm),
                        maskDigestIn(parameters.maskGenAlgorithm), DefaultSalt};
    if (parameters.saltLength)
        scheme.saltSize = int(ASN1_INTEGER_get(parameters.saltLength));
    const bool isUsual = !parameters.trailerField || ASN1_INTEGER_get(parameters.trailerField) == 1;
    // No key has room for more.
    constexpr int MostSalt = 2048;
    return isUsual && scheme.isValid() && !(*scheme.digest == Sha1Digest) && scheme.saltSize >= 0
            && scheme.saltSize <= MostSalt
        ? scheme
        : PssScheme();
}

QByteArray digestAlgorithm(const Digest &digest)
{
    return algorithmIdentifier(digest.oid, AlgorithmParameters::Null);
}

} // namespace

bool isPssKey(const QByteArray &publicInfo)
{
    static constexpr Der::OidOctets Pss(Oid::RsaPss);
    // A quick way to rule out other keys: the algorithm comes first.
    constexpr int Front = 24;
    if (publicInfo.left(Front).indexOf(Pss.view()) < 0)
        return false;
    PublicKeyFields fields;
    return findPublicKeyFields(Der::sliceOf(publicInfo), &fields) && fields.oid() == Oid::RsaPss;
}

PssScheme pssSchemeOf(const QByteArray &publicInfo, const Digest &usual)
{
    PublicKeyFields fields;
    if (!isPssKey(publicInfo) || !findPublicKeyFields(Der::sliceOf(publicInfo), &fields))
        return {};
    if (fields.parameters.isEmpty())
        return {&usual, &usual, usual.size};
    const auto parameters = decodeNative<ParametersHandle>(fields.parameters, d2i_RSA_PSS_PARAMS);
    return parameters ? schemeIn(*parameters) : PssScheme();
}

QByteArray pssAlgorithm(const PssScheme &scheme)
{
    // What is the default is left out (X.690, 11.5).
    QList<QByteArray> parameters = {Der::write(Der::context(0), digestAlgorithm(*scheme.digest))};
    if (!(*scheme.maskDigest == Sha1Digest)) {
        parameters += Der::write(
            Der::context(1),
            Der::writeSequence({Der::writeOid(Oid::Mgf1), digestAlgorithm(*scheme.maskDigest)}));
    }
    if (scheme.saltSize != DefaultSalt) {
        const QByteArray octets = QByteArray(1, char(scheme.saltSize >> 8)) + char(scheme.saltSize);
        parameters += Der::write(Der::context(2), Der::writeUnsigned(octets));
    }
    return Der::writeSequence({Der::writeOid(Oid::RsaPss), Der::writeSequence(parameters)});
}

QByteArray pssKeyAsRsa(const QByteArray &publicInfo)
{
    PublicKeyFields fields;
    if (!findPublicKeyFields(Der::sliceOf(publicInfo), &fields) || fields.bitString.isEmpty())
        return publicInfo;
    return Der::writeSequence({algorithmIdentifier(Oid::RsaEncryption, AlgorithmParameters::Null),
                               Der::write(Der::BitString, fields.bitString.bytes())});
}

} // namespace Trivex
