// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/certificateinfo.h"

#include <openssl/x509.h>

#include <array>
#include <memory>

namespace Trivex {

namespace {

struct SignatureName {
    int nid;
    SignatureNumber number;
};

constexpr std::array<SignatureName, 5> Names = {{
    {NID_ecdsa_with_SHA256, EcdsaSha256Signature},
    {NID_ecdsa_with_SHA384, EcdsaSha384Signature},
    {NID_id_GostR3411_94_with_GostR3410_2001, Gost2001Signature},
    {NID_id_tc26_signwithdigest_gost3410_2012_256, Gost2012Signature256},
    {NID_id_tc26_signwithdigest_gost3410_2012_512, Gost2012Signature512},
}};

int numberOf(int nid)
{
    for (const SignatureName &name : Names) {
        if (name.nid == nid)
            return name.number;
    }
    return UnknownSignature;
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
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    const std::unique_ptr<X509, decltype(&X509_free)> x509(d2i_X509(nullptr, &data, der.size()),
                                                           &X509_free);
    return x509 ? numberOf(X509_get_signature_nid(x509.get())) : int(UnknownSignature);
}

} // namespace Trivex
