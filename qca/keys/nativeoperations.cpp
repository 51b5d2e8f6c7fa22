// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/nativeoperations.h"

#include "qca/asn1/nativecoding.h"
#include "qca/keys/forgeablekey.h"
#include "qca/keys/psskeys.h"

#include <openssl/rsa.h>

namespace Trivex {

namespace {

const unsigned char *bytesOf(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

unsigned char *writable(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

/// libcrypto uses such a key only where it knows the digest.
bool setPss(EVP_PKEY *key, EVP_PKEY_CTX *context)
{
    const PssScheme scheme =
        pssSchemeOf(encodeNative(key, i2d_PUBKEY), rsaDigestFor(EVP_PKEY_get_bits(key)));
    if (!scheme.isValid())
        return false;
    const EVP_MD *digest = EVP_get_digestbyname(scheme.digest->name);
    const EVP_MD *mask = EVP_get_digestbyname(scheme.maskDigest->name);
    return digest && mask && EVP_PKEY_CTX_set_signature_md(context, digest) == 1
        && EVP_PKEY_CTX_set_rsa_mgf1_md(context, mask) == 1
        && EVP_PKEY_CTX_set_rsa_pss_saltlen(context, scheme.saltSize) == 1;
}

bool setPadding(EVP_PKEY *key, EVP_PKEY_CTX *context)
{
    if (EVP_PKEY_is_a(key, "RSA-PSS"))
        return setPss(key, context);
    return !EVP_PKEY_is_a(key, "RSA")
        || EVP_PKEY_CTX_set_rsa_padding(context, RSA_PKCS1_PADDING) == 1;
}

// Stores the result of a call that wrote `size` octets to `buffer`.
bool give(bool good, QByteArray &buffer, size_t size, QByteArray *result)
{
    ERR_clear_error();
    if (!good)
        return false;
    buffer.truncate(int(size));
    *result = buffer;
    return true;
}

} // namespace

bool signNative(EVP_PKEY *key, const QByteArray &block, QByteArray *signature)
{
    const KeyContextHandle context(key ? EVP_PKEY_CTX_new(key, nullptr) : nullptr);
    if (!context || EVP_PKEY_sign_init(context.get()) != 1 || !setPadding(key, context.get())) {
        ERR_clear_error();
        return false;
    }
    QByteArray buffer(qMax(EVP_PKEY_get_size(key), 0), 0);
    size_t size = size_t(buffer.size());
    const bool good =
        EVP_PKEY_sign(context.get(), writable(buffer), &size, bytesOf(block), size_t(block.size()))
        == 1;
    return give(good, buffer, size, signature);
}

bool verifyNative(EVP_PKEY *key, const QByteArray &block, const QByteArray &signature)
{
    const KeyContextHandle context(key ? EVP_PKEY_CTX_new(key, nullptr) : nullptr);
    const bool good = context && !isForgeable(key) && EVP_PKEY_verify_init(context.get()) == 1
        && setPadding(key, context.get())
        && EVP_PKEY_verify(context.get(), bytesOf(signature), size_t(signature.size()),
                           bytesOf(block), size_t(block.size()))
            == 1;
    ERR_clear_error();
    return good;
}

bool signMessageNative(EVP_PKEY *key, const QByteArray &message, QByteArray *signature)
{
    const DigestContextHandle context(EVP_MD_CTX_new());
    if (!key || !context)
        return false;
    QByteArray buffer(qMax(EVP_PKEY_get_size(key), 0), 0);
    size_t size = size_t(buffer.size());
    const bool good = EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key) == 1
        && EVP_DigestSign(context.get(), writable(buffer), &size, bytesOf(message),
                          size_t(message.size()))
            == 1;
    return give(good, buffer, size, signature);
}

bool verifyMessageNative(EVP_PKEY *key, const QByteArray &message, const QByteArray &signature)
{
    const DigestContextHandle context(EVP_MD_CTX_new());
    const bool good = key && context && !isForgeable(key)
        && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key) == 1
        && EVP_DigestVerify(context.get(), bytesOf(signature), size_t(signature.size()),
                            bytesOf(message), size_t(message.size()))
            == 1;
    ERR_clear_error();
    return good;
}

QByteArray sideBySide(const QByteArray &signature, int bits)
{
    const auto parts = decodeNative<EcdsaSignatureHandle>(Der::sliceOf(signature), d2i_ECDSA_SIG);
    const int size = (bits + 7) / 8;
    if (!parts)
        return {};
    QByteArray result(2 * size, 0);
    if (BN_bn2binpad(ECDSA_SIG_get0_r(parts.get()), writable(result), size) != size
        || BN_bn2binpad(ECDSA_SIG_get0_s(parts.get()), writable(result) + size, size) != size)
        return {};
    return result;
}

QByteArray derSignature(const QByteArray &sideBySide)
{
    const int size = sideBySide.size() / 2;
    const EcdsaSignatureHandle parts(ECDSA_SIG_new());
    if (size == 0 || sideBySide.size() % 2 != 0 || !parts)
        return {};
    BigNumHandle r(BN_bin2bn(bytesOf(sideBySide), size, nullptr));
    BigNumHandle s(BN_bin2bn(bytesOf(sideBySide) + size, size, nullptr));
    if (!r || !s || ECDSA_SIG_set0(parts.get(), r.get(), s.get()) != 1)
        return {};
    static_cast<void>(r.release()); // both belong to the signature now
    static_cast<void>(s.release());
    return encodeNative(parts.get(), i2d_ECDSA_SIG);
}

} // namespace Trivex
