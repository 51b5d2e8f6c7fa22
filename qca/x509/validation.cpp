// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/validation.h"

#include "qca/asn1/nativecoding.h"
#include "qca/keys/forgeablekey.h"
#include "qca/x509/certificatedata.h"

#include <openssl/err.h>

namespace Trivex {

namespace {

struct Mapping {
    int error;
    QCA::Validity validity;
};

constexpr Mapping Mappings[] = {
    {X509_V_ERR_CERT_REJECTED, QCA::ErrorRejected},
    {X509_V_ERR_CERT_UNTRUSTED, QCA::ErrorUntrusted},
    {X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT, QCA::ErrorUntrusted},
    {X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY, QCA::ErrorUntrusted},
    {X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE, QCA::ErrorUntrusted},
    {X509_V_ERR_CERT_SIGNATURE_FAILURE, QCA::ErrorSignatureFailed},
    {X509_V_ERR_UNABLE_TO_DECRYPT_CERT_SIGNATURE, QCA::ErrorSignatureFailed},
    {X509_V_ERR_UNABLE_TO_DECODE_ISSUER_PUBLIC_KEY, QCA::ErrorSignatureFailed},
    {X509_V_ERR_INVALID_CA, QCA::ErrorInvalidCA},
    {X509_V_ERR_KEYUSAGE_NO_CERTSIGN, QCA::ErrorInvalidCA},
    {X509_V_ERR_INVALID_PURPOSE, QCA::ErrorInvalidPurpose},
    {X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT, QCA::ErrorSelfSigned},
    {X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN, QCA::ErrorSelfSigned},
    {X509_V_ERR_CERT_REVOKED, QCA::ErrorRevoked},
    {X509_V_ERR_PATH_LENGTH_EXCEEDED, QCA::ErrorPathLengthExceeded},
    {X509_V_ERR_CERT_HAS_EXPIRED, QCA::ErrorExpired},
    {X509_V_ERR_CERT_NOT_YET_VALID, QCA::ErrorExpired},
};

QCA::Validity validityOf(int error, int depth)
{
    const bool isDate =
        error == X509_V_ERR_CERT_HAS_EXPIRED || error == X509_V_ERR_CERT_NOT_YET_VALID;
    if (isDate && depth > 0)
        return QCA::ErrorExpiredCA;
    for (const Mapping &mapping : Mappings) {
        if (mapping.error == error)
            return mapping.validity;
    }
    return QCA::ErrorValidityUnknown;
}

struct UsageName {
    QCA::UsageMode usage;
    QCA::ConstraintTypeKnown constraint;
};

constexpr UsageName Usages[] = {
    {QCA::UsageTLSServer, QCA::ServerAuth},      {QCA::UsageTLSClient, QCA::ClientAuth},
    {QCA::UsageCodeSigning, QCA::CodeSigning},   {QCA::UsageEmailProtection, QCA::EmailProtection},
    {QCA::UsageTimeStamping, QCA::TimeStamping}, {QCA::UsageCRLSigning, QCA::CRLSign},
};

// A certificate without constraints serves everything.
bool allowsUsage(const QCA::CertContext *certificate, QCA::UsageMode usage)
{
    const QCA::Constraints constraints = certificate->props()->constraints;
    for (const UsageName &entry : Usages) {
        if (entry.usage == usage)
            return constraints.isEmpty()
                || constraints.contains(QCA::ConstraintType(entry.constraint));
    }
    return true;
}

X509Handle nativeOf(const QCA::CertContext *context)
{
    const auto data = context ? CertificateData::fromDer(context->toDER()) : nullptr;
    return data ? data->native() : nullptr;
}

CertificateStack stackOf(const QList<QCA::CertContext *> &contexts)
{
    CertificateStack stack(sk_X509_new_null());
    for (const QCA::CertContext *context : contexts) {
        X509Handle certificate = nativeOf(context);
        if (stack && certificate && sk_X509_push(stack.get(), certificate.get()) > 0)
            static_cast<void>(certificate.release());
    }
    return stack;
}

// A store with the revocation lists only.
StoreHandle storeOf(const QList<QCA::CRLContext *> &lists)
{
    StoreHandle store(X509_STORE_new());
    bool any = false;
    for (const QCA::CRLContext *list : lists) {
        const QByteArray der = list->toDER();
        const auto crl = decodeNative<CrlHandle>(Der::sliceOf(der), d2i_X509_CRL);
        any = (crl && store && X509_STORE_add_crl(store.get(), crl.get()) == 1) || any;
    }
    if (any)
        X509_STORE_set_flags(store.get(), X509_V_FLAG_CRL_CHECK | X509_V_FLAG_CRL_CHECK_ALL);
    return store;
}

// Only the given lists count: a certificate that they don't cover, or cover no longer, has no
// error.
int overlookMissingLists(int good, X509_STORE_CTX *context)
{
    switch (X509_STORE_CTX_get_error(context)) {
    case X509_V_ERR_UNABLE_TO_GET_CRL:
    case X509_V_ERR_UNABLE_TO_GET_CRL_ISSUER:
    case X509_V_ERR_DIFFERENT_CRL_SCOPE:
    case X509_V_ERR_CRL_HAS_EXPIRED:
    case X509_V_ERR_CRL_NOT_YET_VALID:
        X509_STORE_CTX_set_error(context, X509_V_OK);
        return 1;
    default:
        return good;
    }
}

/// Whether a certificate that has signed another one of the chain is anybody's.
bool hasForgeableIssuer(const STACK_OF(X509) * chain)
{
    for (int i = 1; i < sk_X509_num(chain); ++i) {
        if (isForgeable(X509_get0_pubkey(sk_X509_value(chain, i))))
            return true;
    }
    return false;
}

bool isChain(const STACK_OF(X509) * found, const QList<QCA::CertContext *> &wanted)
{
    const int count = sk_X509_num(found);
    if (count != wanted.size() && count != wanted.size() + 1)
        return false;
    for (int i = 0; i < wanted.size(); ++i) {
        const X509Handle certificate = nativeOf(wanted.at(i));
        if (!certificate || X509_cmp(certificate.get(), sk_X509_value(found, i)) != 0)
            return false;
    }
    return true;
}

} // namespace

QCA::Validity validateCertificate(const QCA::CertContext *certificate, const ValidationInput &input,
                                  const QList<QCA::CertContext *> *wantedChain)
{
    const X509Handle target = nativeOf(certificate);
    const CertificateStack trusted = stackOf(input.trusted);
    const CertificateStack untrusted = stackOf(input.untrusted);
    const StoreHandle store = storeOf(input.crls);
    const StoreContextHandle context(X509_STORE_CTX_new());
    if (!target || !trusted || !untrusted || !store || !context
        || X509_STORE_CTX_init(context.get(), store.get(), target.get(), untrusted.get()) != 1) {
        ERR_clear_error();
        return QCA::ErrorValidityUnknown;
    }
    X509_STORE_CTX_set0_trusted_stack(context.get(), trusted.get());
    X509_STORE_CTX_set_verify_cb(context.get(), &overlookMissingLists);
    const bool good = X509_verify_cert(context.get()) == 1;
    ERR_clear_error();
    if (!good)
        return validityOf(X509_STORE_CTX_get_error(context.get()),
                          X509_STORE_CTX_get_error_depth(context.get()));
    if (hasForgeableIssuer(X509_STORE_CTX_get0_chain(context.get())))
        return QCA::ErrorSignatureFailed;
    if (wantedChain && !isChain(X509_STORE_CTX_get0_chain(context.get()), *wantedChain))
        return QCA::ErrorValidityUnknown;
    return allowsUsage(certificate, input.usage) ? QCA::ValidityGood : QCA::ErrorInvalidPurpose;
}

} // namespace Trivex
