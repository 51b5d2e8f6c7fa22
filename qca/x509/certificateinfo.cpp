// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/certificateinfo.h"

#include "qca/asn1/algorithmids.h"
#include "qca/asn1/attributeids.h"
#include "qca/keys/keys.h"
#include "qca/x509/certificatedata.h"

#include <openssl/err.h>
#include <openssl/objects.h>

#include <array>

namespace Trivex {

namespace {

struct SignatureName {
    const char *oid;
    SignatureNumber number;
};

// Those that QCA has no number for.
constexpr std::array<SignatureName, 5> Names = {{
    {Oid::EcdsaWithSha256, EcdsaSha256Signature},
    {Oid::EcdsaWithSha384, EcdsaSha384Signature},
    {Oid::GostSignature2001, Gost2001Signature},
    {Oid::GostSignature256, Gost2012Signature256},
    {Oid::GostSignature512, Gost2012Signature512},
}};

int numberOf(const QByteArray &oid)
{
    for (const SignatureName &name : Names) {
        if (oid == name.oid)
            return name.number;
    }
    return UnknownSignature;
}

constexpr int MaxStreetBytes = 1023;

/// The longest beginning of `text`, in whole characters, that fits in UTF-8.
QString cutStreet(const QString &text)
{
    int bytes = 0;
    int end = 0;
    while (end < text.size()) {
        const bool isPair = text.at(end).isHighSurrogate() && end + 1 < text.size()
            && text.at(end + 1).isLowSurrogate();
        const ushort unit = text.at(end).unicode();
        bytes += isPair ? 4 : unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
        if (bytes > MaxStreetBytes)
            break;
        end += isPair ? 2 : 1;
    }
    return text.left(end);
}

X509Handle nativeOf(const QCA::Certificate &certificate)
{
    const auto data =
        certificate.isNull() ? nullptr : CertificateData::fromDer(certificate.toDER());
    return data ? data->native() : nullptr;
}

/// The algorithm's number by its identifier, for keys that libcrypto can't decode.
int undecodableAlgorithm(const X509 *certificate)
{
    ASN1_OBJECT *algorithm = nullptr;
    X509_PUBKEY_get0_param(&algorithm, nullptr, nullptr, nullptr,
                           X509_get_X509_PUBKEY(certificate));
    return OBJ_obj2nid(algorithm);
}

} // namespace

int signatureAlgorithm(const QCA::Certificate &certificate)
{
    if (certificate.isNull())
        return UnknownSignature;
    const int number = int(certificate.signatureAlgorithm());
    if (number != UnknownSignature)
        return number;
    const QByteArray der = certificate.toDER();
    CertificateFields fields;
    Der::Slice oid;
    if (!findCertificateFields(Der::sliceOf(der), &fields)
        || !Der::Reader(fields.algorithm.content).next(Der::ObjectIdentifier, &oid))
        return UnknownSignature;
    return numberOf(Der::oidText(oid));
}

std::optional<QString> streetAddress(const QCA::Certificate &certificate)
{
    if (!nativeOf(certificate))
        return QString();
    const QCA::CertificateInfoOrdered subject = certificate.subjectInfoOrdered();
    for (const QCA::CertificateInfoPair &pair : subject) {
        if (pair.type().section() == QCA::CertificateInfoType::DN
            && pair.type().id() == QLatin1String(Oid::Street))
            return cutStreet(pair.value());
    }
    return std::nullopt;
}

QString publicKeyAlgorithmName(const QCA::Certificate &certificate)
{
    const X509Handle native = nativeOf(certificate);
    if (!native)
        return {};
    const PKeyHandle key(X509_get_pubkey(native.get()));
    const int number = key ? EVP_PKEY_id(key.get()) : undecodableAlgorithm(native.get());
    ERR_clear_error();
    if (number == NID_X9_62_id_ecPublicKey)
        return keyTypeName(EllipticCurveKey);
    return number == NID_undef ? QString() : QString::fromUtf8(OBJ_nid2ln(number));
}

} // namespace Trivex
