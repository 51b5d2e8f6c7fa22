// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/psskeys.h"

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

struct Digest {
    const char *name;
    const char *oid;
    int nid;
    int size;
};

/// The default of RFC 4055, and good enough for a mask.
constexpr char MaskOnly[] = "SHA1";

constexpr Digest Digests[] = {
    {MaskOnly, Oid::Sha1, NID_sha1, 20},
    {"SHA256", Oid::Sha256, NID_sha256, 32},
    {"SHA384", Oid::Sha384, NID_sha384, 48},
    {"SHA512", Oid::Sha512, NID_sha512, 64},
};

const Digest *digestNamed(const QByteArray &name)
{
    for (const Digest &one : Digests) {
        if (name == one.name)
            return &one;
    }
    return nullptr;
}

int nidOf(const X509_ALGOR *algorithm)
{
    const ASN1_OBJECT *object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    return OBJ_obj2nid(object);
}

/// Empty for a digest that is not used.
QByteArray digestIn(const X509_ALGOR *algorithm)
{
    const int nid = algorithm ? nidOf(algorithm) : NID_sha1;
    for (const Digest &one : Digests) {
        if (nid == one.nid)
            return one.name;
    }
    return {};
}

QByteArray maskDigestIn(const X509_ALGOR *mask)
{
    if (!mask)
        return MaskOnly;
    if (nidOf(mask) != NID_mgf1)
        return {};
    const AlgorHandle digest(static_cast<X509_ALGOR *>(
        ASN1_TYPE_unpack_sequence(ASN1_ITEM_rptr(X509_ALGOR), mask->parameter)));
    ERR_clear_error();
    return digest ? digestIn(digest.get()) : QByteArray();
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
    return isUsual && scheme.digest != MaskOnly && scheme.saltSize >= 0
            && scheme.saltSize <= MostSalt
        ? scheme
        : PssScheme();
}

QByteArray digestAlgorithm(const QByteArray &name)
{
    const Digest *digest = digestNamed(name);
    return Der::writeSequence(
        {Der::writeOid(digest ? digest->oid : ""), Der::write(Der::Null, {})});
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

PssScheme pssSchemeOf(const QByteArray &publicInfo, const QByteArray &usual)
{
    PublicKeyFields fields;
    if (!isPssKey(publicInfo) || !findPublicKeyFields(Der::sliceOf(publicInfo), &fields))
        return {};
    if (fields.parameters.isEmpty()) {
        const Digest *digest = digestNamed(usual);
        return digest ? PssScheme{usual, usual, digest->size} : PssScheme();
    }
    const auto parameters = decodeNative<ParametersHandle>(fields.parameters, d2i_RSA_PSS_PARAMS);
    return parameters ? schemeIn(*parameters) : PssScheme();
}

QByteArray pssAlgorithm(const PssScheme &scheme)
{
    // What is the default is left out (X.690, 11.5).
    QList<QByteArray> parameters = {Der::write(Der::context(0), digestAlgorithm(scheme.digest))};
    if (scheme.maskDigest != MaskOnly) {
        parameters += Der::write(
            Der::context(1),
            Der::writeSequence({Der::writeOid(Oid::Mgf1), digestAlgorithm(scheme.maskDigest)}));
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
    return Der::writeSequence(
        {Der::writeSequence({Der::writeOid(Oid::RsaEncryption), Der::write(Der::Null, {})}),
         Der::write(Der::BitString, fields.bitString.bytes())});
}

QByteArray rsaDigestFor(int bits)
{
    return bits <= 3072 ? "SHA256" : bits <= 7680 ? "SHA384" : "SHA512";
}

} // namespace Trivex
