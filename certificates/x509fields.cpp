// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/x509fields.h"

#include "certificates/certificatetext.h"

#include <openssl/evp.h>
#include <openssl/objects.h>
#include <openssl/x509.h>

#include <memory>

namespace Trivex {

namespace {

struct X509Deleter {
    void operator()(X509 *certificate) const { X509_free(certificate); }
};
using X509Ptr = std::unique_ptr<X509, X509Deleter>;

struct KeyDeleter {
    void operator()(EVP_PKEY *key) const { EVP_PKEY_free(key); }
};
using KeyPtr = std::unique_ptr<EVP_PKEY, KeyDeleter>;

struct TextDeleter {
    void operator()(unsigned char *text) const { OPENSSL_free(text); }
};

constexpr int maxStreetBytes = 1023;

X509Ptr parse(const QByteArray &der)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
    return X509Ptr(d2i_X509(nullptr, &bytes, der.size()));
}

QString utf8Text(const ASN1_STRING *string)
{
    unsigned char *raw = nullptr;
    const int size = ASN1_STRING_to_UTF8(&raw, string);
    const std::unique_ptr<unsigned char, TextDeleter> text(raw);
    if (size < 0)
        return QString();
    int end = qMin(size, maxStreetBytes);
    // Not in the middle of a character.
    while (end < size && end > 0 && (raw[end] & 0xC0) == 0x80)
        --end;
    return QString::fromUtf8(reinterpret_cast<const char *>(raw), end);
}

/// The algorithm's number by its identifier, for keys that OpenSSL has no code to decode.
int undecodableAlgorithm(const X509 *certificate)
{
    ASN1_OBJECT *algorithm = nullptr;
    X509_PUBKEY_get0_param(&algorithm, nullptr, nullptr, nullptr,
                           X509_get_X509_PUBKEY(certificate));
    const int nid = OBJ_obj2nid(algorithm);
    return EVP_PKEY_asn1_find(nullptr, nid) ? NID_undef : nid;
}

} // namespace

std::optional<QString> streetAddress(const QByteArray &der)
{
    const X509Ptr certificate = parse(der);
    if (!certificate)
        return QString();
    const X509_NAME *subject = X509_get_subject_name(certificate.get());
    if (!subject)
        return QString();
    const int position = X509_NAME_get_index_by_NID(subject, NID_streetAddress, -1);
    if (position < 0)
        return std::nullopt;
    return utf8Text(X509_NAME_ENTRY_get_data(X509_NAME_get_entry(subject, position)));
}

QString publicKeyAlgorithmName(const QByteArray &der)
{
    const X509Ptr certificate = parse(der);
    if (!certificate)
        return QString();
    const KeyPtr key(X509_get_pubkey(certificate.get()));
    const int nid = key ? EVP_PKEY_id(key.get()) : undecodableAlgorithm(certificate.get());
    if (nid == NID_X9_62_id_ecPublicKey)
        return ellipticCurveText();
    if (nid == NID_undef)
        return QString();
    return QString::fromUtf8(OBJ_nid2ln(nid));
}

} // namespace Trivex
