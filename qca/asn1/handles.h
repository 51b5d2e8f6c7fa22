// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <openssl/asn1.h>
#include <openssl/bio.h>
#include <openssl/bn.h>
#include <openssl/core.h>
#include <openssl/crypto.h>
#include <openssl/ec.h>
#include <openssl/ecdsa.h>
#include <openssl/evp.h>
#include <openssl/param_build.h>
#include <openssl/pkcs12.h>
#include <openssl/pkcs7.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <memory>

namespace Trivex {

/// Frees a libcrypto object with the function that belongs to its type.
template <auto Free> struct FreeWith {
    template <class T> void operator()(T *object) const noexcept { Free(object); }
};

/// Owns one libcrypto object: move-only, as large as the pointer.
template <class T, auto Free> using Handle = std::unique_ptr<T, FreeWith<Free>>;

using AlgorHandle = Handle<X509_ALGOR, X509_ALGOR_free>;
using Asn1TypeHandle = Handle<ASN1_TYPE, ASN1_TYPE_free>;
using BigNumHandle = Handle<BIGNUM, BN_free>;
using BioHandle = Handle<BIO, BIO_free_all>;
using CrlHandle = Handle<X509_CRL, X509_CRL_free>;
using DigestContextHandle = Handle<EVP_MD_CTX, EVP_MD_CTX_free>;
using DigestInfoHandle = Handle<X509_SIG, X509_SIG_free>;
using EcdsaSignatureHandle = Handle<ECDSA_SIG, ECDSA_SIG_free>;
using KeyContextHandle = Handle<EVP_PKEY_CTX, EVP_PKEY_CTX_free>;
using NameHandle = Handle<X509_NAME, X509_NAME_free>;
using ObjectHandle = Handle<ASN1_OBJECT, ASN1_OBJECT_free>;
using ParamBuilderHandle = Handle<OSSL_PARAM_BLD, OSSL_PARAM_BLD_free>;
using ParamsHandle = Handle<OSSL_PARAM, OSSL_PARAM_free>;
using PKeyHandle = Handle<EVP_PKEY, EVP_PKEY_free>;
using Pkcs12Handle = Handle<PKCS12, PKCS12_free>;
using Pkcs7Handle = Handle<PKCS7, PKCS7_free>;
using Pkcs8Handle = Handle<PKCS8_PRIV_KEY_INFO, PKCS8_PRIV_KEY_INFO_free>;
using RequestHandle = Handle<X509_REQ, X509_REQ_free>;
using StringHandle = Handle<ASN1_STRING, ASN1_STRING_free>;
using StoreHandle = Handle<X509_STORE, X509_STORE_free>;
using StoreContextHandle = Handle<X509_STORE_CTX, X509_STORE_CTX_free>;
using X509Handle = Handle<X509, X509_free>;

/// Frees a stack of certificates and the certificates in it.
struct FreeCertificates {
    void operator()(STACK_OF(X509) * stack) const noexcept { sk_X509_pop_free(stack, X509_free); }
};
using CertificateStack = std::unique_ptr<STACK_OF(X509), FreeCertificates>;

/// A second owner of the same object.
inline PKeyHandle share(EVP_PKEY *key)
{
    if (key)
        EVP_PKEY_up_ref(key);
    return PKeyHandle(key);
}

inline X509Handle share(X509 *certificate)
{
    if (certificate)
        X509_up_ref(certificate);
    return X509Handle(certificate);
}

} // namespace Trivex
