// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/chains/madechain.h"

#include "qca/asn1/nativecoding.h"

#include <openssl/ec.h>
#include <openssl/rsa.h>

using namespace Trivex;

namespace MadeChain {

namespace {

constexpr long Day = 24 * 3600; // seconds

using ExtensionHandle = Handle<X509_EXTENSION, X509_EXTENSION_free>;
using TimeHandle = Handle<ASN1_TIME, ASN1_TIME_free>;

void addExtension(X509 *certificate, X509 *issuer, int number, const QByteArray &text)
{
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    const ExtensionHandle extension(
        X509V3_EXT_conf_nid(nullptr, &context, number, text.constData()));
    if (!extension)
        qFatal("No extension of %s", text.constData());
    X509_add_ext(certificate, extension.get(), -1);
}

QByteArray pem(const char *label, const QByteArray &der)
{
    QByteArray text = QByteArray("-----BEGIN ") + label + "-----\n";
    const QByteArray encoded = der.toBase64();
    for (int i = 0; i < encoded.size(); i += 64)
        text += encoded.mid(i, 64) + '\n';
    return text + "-----END " + label + "-----\n";
}

} // namespace

QVector<QPair<int, QByteArray>> authority(const char *constraints)
{
    return {{NID_basic_constraints, constraints}};
}

QByteArray Party::der() const
{
    return encodeNative(certificate.get(), i2d_X509);
}

ChainCandidate Party::candidate(const char *place, bool isAnchor) const
{
    return {der(), QString::fromUtf8(place), isAnchor};
}

PKeyHandle curveKey()
{
    return PKeyHandle(EVP_EC_gen("P-256"));
}

PKeyHandle rsaKey(unsigned bits)
{
    return PKeyHandle(EVP_RSA_gen(bits));
}

Party make(const Wish &wish, const Party *issuer, PKeyHandle key)
{
    static long serial = 100;
    Party made;
    made.key = key ? std::move(key) : curveKey();
    made.certificate.reset(X509_new());
    X509 *certificate = made.certificate.get();
    X509_set_version(certificate, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), ++serial);
    X509_gmtime_adj(X509_getm_notBefore(certificate), wish.from * Day);
    X509_gmtime_adj(X509_getm_notAfter(certificate), wish.to * Day);
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char *>(wish.name), -1, -1, 0);
    X509 *signer = issuer ? issuer->certificate.get() : certificate;
    X509_set_issuer_name(certificate, X509_get_subject_name(signer));
    X509_set_pubkey(certificate, made.key.get());
    if (wish.withKeyIds) {
        addExtension(certificate, signer, NID_subject_key_identifier, "hash");
        addExtension(certificate, signer, NID_authority_key_identifier, "keyid");
    }
    for (const auto &extension : wish.extensions)
        addExtension(certificate, signer, extension.first, extension.second);
    X509_sign(certificate, issuer ? issuer->key.get() : made.key.get(), wish.digest);
    return made;
}

QByteArray list(const Party &issuer, const QVector<Revoked> &revoked, int from, int to)
{
    return listSignedBy(issuer, issuer, revoked, from, to);
}

QByteArray listSignedBy(const Party &issuer, const Party &signer, const QVector<Revoked> &revoked,
                        int from, int to)
{
    const CrlHandle made(X509_CRL_new());
    X509_CRL_set_version(made.get(), X509_CRL_VERSION_2);
    X509_CRL_set_issuer_name(made.get(), X509_get_subject_name(issuer.certificate.get()));
    const TimeHandle begin(X509_gmtime_adj(nullptr, from * Day));
    const TimeHandle end(X509_gmtime_adj(nullptr, to * Day));
    X509_CRL_set1_lastUpdate(made.get(), begin.get());
    X509_CRL_set1_nextUpdate(made.get(), end.get());
    for (const Revoked &one : revoked) {
        X509_REVOKED *entry = X509_REVOKED_new();
        X509_REVOKED_set_serialNumber(entry, X509_get_serialNumber(one.party->certificate.get()));
        const TimeHandle since(X509_gmtime_adj(nullptr, one.days * Day));
        X509_REVOKED_set_revocationDate(entry, since.get());
        if (one.reason != NoRevocationReason) {
            const Handle<ASN1_ENUMERATED, ASN1_ENUMERATED_free> reason(ASN1_ENUMERATED_new());
            ASN1_ENUMERATED_set(reason.get(), one.reason);
            X509_REVOKED_add1_ext_i2d(entry, NID_crl_reason, reason.get(), 0, 0);
        }
        X509_CRL_add0_revoked(made.get(), entry);
    }
    X509_CRL_sort(made.get());
    X509_CRL_sign(made.get(), signer.key.get(), EVP_sha256());
    return encodeNative(made.get(), i2d_X509_CRL);
}

QByteArray certificatePem(const QByteArray &der)
{
    return pem("CERTIFICATE", der);
}

QByteArray listPem(const QByteArray &der)
{
    return pem("X509 CRL", der);
}

} // namespace MadeChain
