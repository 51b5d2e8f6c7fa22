// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/certificateinfo.h"

#include "qca/x509/certificatefields.h"

#include <array>

namespace Trivex {

namespace {

struct SignatureName {
    const char *oid;
    SignatureNumber number;
};

// Those that QCA has no number for.
constexpr std::array<SignatureName, 5> Names = {{
    {"1.2.840.10045.4.3.2", EcdsaSha256Signature},
    {"1.2.840.10045.4.3.3", EcdsaSha384Signature},
    {"1.2.643.2.2.3", Gost2001Signature},
    {"1.2.643.7.1.1.3.2", Gost2012Signature256},
    {"1.2.643.7.1.1.3.3", Gost2012Signature512},
}};

int numberOf(const QByteArray &oid)
{
    for (const SignatureName &name : Names) {
        if (oid == name.oid)
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
    CertificateFields fields;
    Der::Slice oid;
    if (!findCertificateFields(Der::sliceOf(der), &fields)
        || !Der::Reader(fields.algorithm).next(Der::ObjectIdentifier, &oid))
        return UnknownSignature;
    return numberOf(Der::oidText(oid));
}

std::optional<QString> firstSubjectValue(const QCA::Certificate &certificate, const QString &oid)
{
    if (certificate.isNull())
        return std::nullopt;
    const QCA::CertificateInfoOrdered subject = certificate.subjectInfoOrdered();
    for (const QCA::CertificateInfoPair &pair : subject) {
        if (pair.type().section() == QCA::CertificateInfoType::DN && pair.type().id() == oid)
            return pair.value();
    }
    return std::nullopt;
}

} // namespace Trivex
