// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/signercheck.h"

#include "qca/asn1/derwriter.h"
#include "qca/asn1/nativecoding.h"
#include "qca/cms/signingcertificate.h"
#include "qca/keys/forgeablekey.h"

#include <openssl/err.h>

#include <algorithm>

namespace Trivex {

namespace {

/// From one that can be repaired by whoever looks on to one that can't: the best one tells most.
constexpr SignerReport::Verdict ByHope[] = {
    SignerReport::Good,          SignerReport::DocumentChanged,  SignerReport::Unchecked,
    SignerReport::Unknown,       SignerReport::WrongCertificate, SignerReport::Damaged,
    SignerReport::NoCertificate,
};

bool isBetter(SignerReport::Verdict a, SignerReport::Verdict b)
{
    const auto *const end = std::end(ByHope);
    return std::find(std::begin(ByHope), end, a) < std::find(std::begin(ByHope), end, b);
}

QByteArray dottedOid(const X509_ALGOR *algorithm)
{
    const ASN1_OBJECT *object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    char text[128] = {};
    OBJ_obj2txt(text, sizeof text, object, 1);
    return text;
}

bool isWeak(int digest)
{
    static const int weak[] = {NID_md2, NID_md4, NID_md5, NID_sha1, NID_sha, NID_ripemd160};
    return std::find(std::begin(weak), std::end(weak), digest) != std::end(weak);
}

QDateTime timeOf(const ASN1_TIME *time)
{
    std::tm parts = {};
    if (!time || ASN1_TIME_to_tm(time, &parts) != 1)
        return {};
    return QDateTime(QDate(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday),
                     QTime(parts.tm_hour, parts.tm_min, parts.tm_sec), Qt::UTC);
}

QDateTime signingTime(const CMS_SignerInfo *signer)
{
    const ASN1_OBJECT *type = OBJ_nid2obj(NID_pkcs9_signingTime);
    for (const int form : {V_ASN1_UTCTIME, V_ASN1_GENERALIZEDTIME}) {
        const auto *time = static_cast<const ASN1_TIME *>(
            CMS_signed_get0_data_by_OBJ(const_cast<CMS_SignerInfo *>(signer), type, -3, form));
        if (time)
            return timeOf(time);
    }
    ERR_clear_error();
    return {};
}

/// The signed attributes as they were signed, a SET OF in DER (RFC 5652, 5.4).
QByteArray signedAttributes(const CMS_SignerInfo *signer)
{
    QList<QByteArray> members;
    for (int i = 0; i < CMS_signed_get_attr_count(signer); ++i)
        members += encodeNative(CMS_signed_get_attr(signer, i), i2d_X509_ATTRIBUTE);
    std::sort(members.begin(), members.end());
    return Der::write(Der::Set, members.join());
}

/// Verifies a signature on an Edwards curve, which libcrypto's messages don't know before OpenSSL
/// 3.6.
bool verifiesWhole(EVP_PKEY *key, const CMS_SignerInfo *signer)
{
    const ASN1_OCTET_STRING *signature =
        CMS_SignerInfo_get0_signature(const_cast<CMS_SignerInfo *>(signer));
    const QByteArray attributes = signedAttributes(signer);
    const DigestContextHandle context(EVP_MD_CTX_new());
    return context && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key) == 1
        && EVP_DigestVerify(context.get(), ASN1_STRING_get0_data(signature),
                            size_t(ASN1_STRING_length(signature)),
                            reinterpret_cast<const unsigned char *>(attributes.constData()),
                            size_t(attributes.size()))
        == 1;
}

bool isEdwards(const EVP_PKEY *key)
{
    return EVP_PKEY_is_a(key, "ED25519") || EVP_PKEY_is_a(key, "ED448");
}

} // namespace

SignerCheck::SignerCheck(CMS_SignerInfo *signer)
    : m_signer(signer)
{
    X509_ALGOR *digest = nullptr;
    CMS_SignerInfo_get0_algs(signer, nullptr, nullptr, &digest, nullptr);
    m_report.digest = dottedOid(digest);
    m_digest = EVP_get_digestbyname(m_report.digest.constData());
    if (!m_digest)
        m_digest = EVP_get_digestbynid(OBJ_txt2nid(m_report.digest.constData()));
    m_report.isDigestWeak = m_digest && isWeak(EVP_MD_get_type(m_digest));
    m_report.time = signingTime(signer);
    m_report.namesCertificate = namesSigningCertificate(signer);
    X509_NAME *issuer = nullptr;
    ASN1_INTEGER *serial = nullptr;
    ASN1_OCTET_STRING *keyId = nullptr;
    if (CMS_SignerInfo_get0_signer_id(signer, &keyId, &issuer, &serial) == 1 && issuer && serial) {
        m_report.issuer = encodeNative(issuer, i2d_X509_NAME);
        m_report.serial = QByteArray(reinterpret_cast<const char *>(ASN1_STRING_get0_data(serial)),
                                     ASN1_STRING_length(serial));
    }
    ERR_clear_error();
}

bool SignerCheck::isOfType(const QByteArray &contentType) const
{
    if (CMS_signed_get_attr_count(m_signer) <= 0)
        return true;
    const auto *type = static_cast<const ASN1_OBJECT *>(CMS_signed_get0_data_by_OBJ(
        m_signer, OBJ_nid2obj(NID_pkcs9_contentType), -3, V_ASN1_OBJECT));
    return type
        && QByteArray(reinterpret_cast<const char *>(OBJ_get0_data(type)), int(OBJ_length(type)))
        == contentType;
}

void SignerCheck::check(const STACK_OF(X509) * certificates, BIO *digests,
                        const QByteArray &contentType)
{
    m_report.verdict = SignerReport::NoCertificate;
    for (int i = 0; i < sk_X509_num(certificates); ++i) {
        X509 *certificate = sk_X509_value(certificates, i);
        if (CMS_SignerInfo_cert_cmp(m_signer, certificate) != 0)
            continue;
        SignerReport::Verdict verdict = verdictWith(certificate, digests);
        if (verdict == SignerReport::Good && !isOfType(contentType))
            verdict = SignerReport::Damaged;
        if (isBetter(verdict, m_report.verdict)) {
            m_report.verdict = verdict;
            m_report.certificate = encodeNative(certificate, i2d_X509);
        }
    }
    ERR_clear_error();
}

SignerReport::Verdict SignerCheck::verdictWith(X509 *certificate, BIO *digests)
{
    CMS_SignerInfo_set1_signer_cert(m_signer, certificate);
    const SignerReport::Verdict signature = signatureVerdict(certificate);
    if (signature != SignerReport::Good)
        return signature;
    if (!isSigningCertificate(m_signer, certificate))
        return SignerReport::WrongCertificate;
    return digests ? documentVerdict(digests) : SignerReport::Unchecked;
}

SignerReport::Verdict SignerCheck::signatureVerdict(X509 *certificate)
{
    EVP_PKEY *key = X509_get0_pubkey(certificate);
    if (!key || !m_digest)
        return SignerReport::Unknown;
    // Everybody can sign with such a key.
    if (isForgeable(key))
        return SignerReport::Damaged;
    const bool hasAttributes = CMS_signed_get_attr_count(m_signer) > 0;
    if (isEdwards(key)) {
        if (!hasAttributes)
            return SignerReport::Unknown;
        return verifiesWhole(key, m_signer) ? SignerReport::Good : SignerReport::Damaged;
    }
    // Without attributes the signature covers the document itself.
    if (!hasAttributes || CMS_SignerInfo_verify(m_signer) == 1)
        return SignerReport::Good;
    return SignerReport::Damaged;
}

SignerReport::Verdict SignerCheck::documentVerdict(BIO *digests)
{
    return CMS_SignerInfo_verify_content(m_signer, digests) == 1 ? SignerReport::Good
                                                                 : SignerReport::DocumentChanged;
}

} // namespace Trivex
