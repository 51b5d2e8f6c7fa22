// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/pkcs12/bundlemac.h"

#include "qca/asn1/der.h"
#include "qca/keys/algorithmerrors.h"
#include "qca/keys/algorithmparameters.h"

#include <openssl/err.h>
#include <openssl/hmac.h>

namespace Trivex {

namespace {

// The digest of an HMAC, whose OID also names a pseudo-random function; null for other OIDs.
const EVP_MD *digestOf(const X509_ALGOR *hmac)
{
    int digest = NID_undef;
    if (EVP_PBE_find(EVP_PBE_TYPE_PRF, kindOf(hmac), nullptr, &digest, nullptr) != 1)
        return nullptr;
    return EVP_get_digestbynid(digest);
}

// The bytes that the check covers: the content of the OCTET STRING in the ContentInfo (RFC 7292,
// 4).
bool findContent(const QByteArray &der, QByteArray *content)
{
    Der::Slice bundle;
    Der::Slice info;
    Der::Slice wrapped;
    if (!Der::Reader(Der::sliceOf(der)).next(Der::Sequence, &bundle))
        return false;
    Der::Reader fields(bundle);
    fields.skip(Der::Integer);
    if (!fields.next(Der::Sequence, &info))
        return false;
    Der::Reader parts(info);
    parts.skip(Der::ObjectIdentifier);
    return parts.next(Der::context(0), &wrapped)
        && Der::Reader(wrapped).nextString(Der::OctetString, content);
}

// The key by PBKDF2, the only function that is allowed here; empty when its description is invalid.
Secret deriveKey(const X509_ALGOR *function, const Secret &password)
{
    const auto parameters = parametersOf<Pbkdf2>(function, ASN1_ITEM_rptr(PBKDF2PARAM));
    if (kindOf(function) != NID_id_pbkdf2 || !parameters
        || parameters->salt->type != V_ASN1_OCTET_STRING)
        return {};
    const EVP_MD *digest = parameters->prf ? digestOf(parameters->prf) : EVP_sha1();
    const qint64 size = parameters->keylength ? ASN1_INTEGER_get(parameters->keylength) : 0;
    if (!digest || size <= 0 || size > EVP_MAX_MD_SIZE)
        return {};
    const ASN1_OCTET_STRING *salt = parameters->salt->value.octet_string;
    Secret key{int(size)};
    const bool isMade =
        PKCS5_PBKDF2_HMAC(password.isEmpty() ? "" : password.constData(), password.size(),
                          ASN1_STRING_get0_data(salt), ASN1_STRING_length(salt),
                          int(ASN1_INTEGER_get(parameters->iter)), digest, int(size),
                          reinterpret_cast<unsigned char *>(key.data()))
        == 1;
    return isMade ? key : Secret();
}

} // namespace

BundleMac::BundleMac(const QByteArray &der, const PKCS12 *bundle)
    : m_der(der)
{
    PKCS12_get0_mac(&m_digest, &m_algorithm, nullptr, &m_iterations, bundle);
}

bool BundleMac::isPbmac1() const
{
    return m_algorithm && kindOf(m_algorithm) == NID_pbmac1;
}

bool BundleMac::takeWork(DerivationBudget *budget) const
{
    return isPbmac1() ? budget->spend(m_algorithm) : budget->spend(m_iterations);
}

MacResult BundleMac::check(PKCS12 *bundle, const QList<BundlePassword> &forms,
                           BundlePassword *fitting) const
{
    *fitting = forms.first();
    if (!isPresent())
        return MacResult::Absent;
    if (isPbmac1()) {
        // PBMAC1 takes the password as UTF-8 only.
        const auto isRight = checkPbmac1(forms.first().value);
        return !isRight ? MacResult::Unknown : *isRight ? MacResult::Fits : MacResult::Wrong;
    }
    ERR_clear_error();
    for (const BundlePassword &form : forms) {
        *fitting = form;
        if (PKCS12_verify_mac(bundle, form.data(), form.size()) == 1)
            return MacResult::Fits;
        if (isCheckAtFault())
            return MacResult::Unknown;
    }
    return MacResult::Wrong;
}

std::optional<bool> BundleMac::checkPbmac1(const Secret &password) const
{
    // The same structure: a function that derives a key, and the use of that key.
    const auto parameters = parametersOf<Pbes2>(m_algorithm, ASN1_ITEM_rptr(PBE2PARAM));
    QByteArray content;
    if (!parameters || !findContent(m_der, &content))
        return std::nullopt;
    const EVP_MD *digest = digestOf(parameters->encryption);
    const Secret key = digest ? deriveKey(parameters->keyfunc, password) : Secret();
    unsigned char made[EVP_MAX_MD_SIZE];
    unsigned int size = 0;
    if (key.isEmpty()
        || !HMAC(digest, key.constData(), key.size(),
                 reinterpret_cast<const unsigned char *>(content.constData()),
                 size_t(content.size()), made, &size))
        return std::nullopt;
    return ASN1_STRING_length(m_digest) == int(size)
        && CRYPTO_memcmp(ASN1_STRING_get0_data(m_digest), made, size) == 0;
}

} // namespace Trivex
