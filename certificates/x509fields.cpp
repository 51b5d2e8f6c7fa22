// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/x509fields.h"

#include "certificates/certificatetext.h"
#include "qca/x509/certificateinfo.h"

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

constexpr int maxStreetBytes = 1023;

X509Ptr parse(const QByteArray &der)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
    return X509Ptr(d2i_X509(nullptr, &bytes, der.size()));
}

/// As much of `text` as fits in UTF-8, in whole characters.
QString cut(const QString &text)
{
    int bytes = 0;
    int end = 0;
    while (end < text.size()) {
        const bool isPair = text.at(end).isHighSurrogate() && end + 1 < text.size()
            && text.at(end + 1).isLowSurrogate();
        const ushort unit = text.at(end).unicode();
        bytes += isPair ? 4 : unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
        if (bytes > maxStreetBytes)
            break;
        end += isPair ? 2 : 1;
    }
    return text.left(end);
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

std::optional<QString> streetAddress(const QCA::Certificate &certificate)
{
    if (!parse(certificate.toDER()))
        return QString();
    const auto street = firstSubjectValue(certificate, QStringLiteral("2.5.4.9"));
    return street ? std::make_optional(cut(*street)) : std::nullopt;
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
