// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/messagesignatures.h"

#include "qca/asn1/nativecoding.h"
#include "qca/chains/candidateindex.h"
#include "qca/x509/makecertificate.h"

namespace Trivex {

namespace {

using Signature = QCA::SecureMessageSignature;

CandidateIndex indexOf(const MessageReport &report, const MessageMeans &means)
{
    CandidateIndex index;
    for (const QCA::Certificate &certificate : means.trusted.certificates())
        index.add({certificate.toDER(), QString(), true});
    for (const QCA::Certificate &certificate : means.untrusted.certificates())
        index.add({certificate.toDER(), QString(), false});
    for (const QByteArray &certificate : report.certificates)
        index.add({certificate, QString(), false});
    for (const QCA::CRL &list : means.trusted.crls() + means.untrusted.crls())
        index.addList(list.toDER());
    for (const QByteArray &list : report.lists)
        index.addList(list);
    return index;
}

/// As far as the certificate itself says; its issuers were checked with the path.
bool isGoodForMail(const QByteArray &certificate)
{
    const X509Handle native = decodeNative<X509Handle>(Der::sliceOf(certificate), d2i_X509);
    const bool isGood = native && X509_check_purpose(native.get(), X509_PURPOSE_SMIME_SIGN, 0) == 1;
    ERR_clear_error();
    return isGood;
}

/// The certificates that may be part of the path of one certificate.
struct Surroundings {
    QCA::CertificateCollection trusted;
    QCA::CertificateCollection others;
};

Surroundings surroundingsOf(const ChainInput &input)
{
    Surroundings around;
    for (const ChainCandidate &candidate : input.candidates) {
        const QCA::Certificate certificate = makeCertificate(candidate.der);
        if (!certificate.isNull())
            (candidate.isAnchor ? around.trusted : around.others).addCertificate(certificate);
    }
    for (const QByteArray &der : input.lists) {
        const QCA::CRL list = QCA::CRL::fromDER(der);
        if (!list.isNull())
            around.others.addCRL(list);
    }
    return around;
}

QCA::Validity validityOf(const QCA::Certificate &certificate, const Surroundings &around)
{
    const QCA::Validity validity =
        certificate.validate(around.trusted, around.others, QCA::UsageAny);
    if (validity == QCA::ValidityGood && !isGoodForMail(certificate.toDER()))
        return QCA::ErrorInvalidPurpose;
    return validity;
}

Signature::IdentityResult identityOf(SignerReport::Verdict verdict, QCA::Validity validity)
{
    if (verdict == SignerReport::NoCertificate)
        return Signature::NoKey;
    if (verdict != SignerReport::Good)
        return Signature::InvalidSignature;
    return validity == QCA::ValidityGood ? Signature::Valid : Signature::InvalidKey;
}

Signature signatureOf(const SignerReport &signer, const CandidateIndex &known)
{
    const QCA::Certificate certificate = makeCertificate(signer.certificate);
    if (certificate.isNull())
        return {identityOf(SignerReport::NoCertificate, QCA::ErrorValidityUnknown),
                QCA::ErrorValidityUnknown, QCA::SecureMessageKey(), signer.time};
    const Surroundings around = surroundingsOf(known.inputFor(signer.certificate));
    const QCA::Validity validity = validityOf(certificate, around);
    QCA::CertificateChain path;
    path += certificate;
    path = path.complete(around.others.certificates() + around.trusted.certificates());
    // Stock code reads native objects out of the certificates that it is given.
    QCA::CertificateChain chain;
    for (const QCA::Certificate &one : std::as_const(path))
        chain += QCA::Certificate::fromDER(one.toDER());
    QCA::SecureMessageKey key;
    key.setX509CertificateChain(chain);
    return {identityOf(signer.verdict, validity), validity, key, signer.time};
}

} // namespace

QList<QByteArray> knownCertificates(const MessageMeans &means)
{
    QList<QByteArray> known;
    for (const QCA::Certificate &certificate :
         means.untrusted.certificates() + means.trusted.certificates())
        known += certificate.toDER();
    return known;
}

QCA::SecureMessageSignatureList signaturesOf(const MessageReport &report, const MessageMeans &means)
{
    const CandidateIndex known = indexOf(report, means);
    QCA::SecureMessageSignatureList signatures;
    for (const SignerReport &signer : report.signers)
        signatures += signatureOf(signer, known);
    return signatures;
}

} // namespace Trivex
