// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/rsakeycontext.h"

#include "qca/keys/bignumbers.h"
#include "qca/keys/keymaker.h"

#include "qca/keys/keytypes.h"

#include <openssl/core_names.h>
#include <openssl/err.h>
#include <openssl/rsa.h>

namespace Trivex {

namespace {

// libcrypto's number of a padding; 0 for one that it does not have.
int paddingOf(QCA::EncryptionAlgorithm algorithm)
{
    switch (algorithm) {
    case QCA::EME_PKCS1v15:
        return RSA_PKCS1_PADDING;
    case QCA::EME_PKCS1_OAEP:
        return RSA_PKCS1_OAEP_PADDING;
    case QCA::EME_NO_PADDING:
        return RSA_NO_PADDING;
    default:
        return 0;
    }
}

using Crypt = int (*)(EVP_PKEY_CTX *, unsigned char *, size_t *, const unsigned char *, size_t);

QCA::SecureArray crypt(EVP_PKEY_CTX *context, Crypt function, const QCA::SecureArray &in)
{
    const auto *data = reinterpret_cast<const unsigned char *>(in.constData());
    size_t size = 0;
    QCA::SecureArray out;
    if (function(context, nullptr, &size, data, size_t(in.size())) == 1) {
        out.resize(int(size));
        if (function(context, reinterpret_cast<unsigned char *>(out.data()), &size, data,
                     size_t(in.size()))
            != 1)
            size = 0;
        out.resize(int(size));
    }
    ERR_clear_error();
    return out;
}

// The factors and the numbers derived from them (RFC 8017, 3.2): libcrypto does not compute them,
// and an encoded key must have them.
QList<KeyParameter> factorParameters(const QCA::BigInteger &p, const QCA::BigInteger &q,
                                     const QCA::BigInteger &d)
{
    const Handle<BN_CTX, BN_CTX_free> context(BN_CTX_secure_new());
    const BigNumHandle first = toBigNum(p);
    const BigNumHandle second = toBigNum(q);
    const BigNumHandle exponent = toBigNum(d);
    const BigNumHandle result(BN_secure_new());
    if (!context || !first || !second || !exponent || !result
        || BN_mod_inverse(result.get(), second.get(), first.get(), context.get()) == nullptr)
        return {};
    QList<KeyParameter> numbers = {{OSSL_PKEY_PARAM_RSA_FACTOR1, p},
                                   {OSSL_PKEY_PARAM_RSA_FACTOR2, q},
                                   {OSSL_PKEY_PARAM_RSA_COEFFICIENT1, fromBigNum(result.get())}};
    BN_sub_word(first.get(), 1);
    BN_sub_word(second.get(), 1);
    BN_mod(result.get(), exponent.get(), first.get(), context.get());
    numbers += {OSSL_PKEY_PARAM_RSA_EXPONENT1, fromBigNum(result.get())};
    BN_mod(result.get(), exponent.get(), second.get(), context.get());
    numbers += {OSSL_PKEY_PARAM_RSA_EXPONENT2, fromBigNum(result.get())};
    return numbers;
}

} // namespace

RsaKeyContext::RsaKeyContext(QCA::Provider *provider, KeyMaterial material)
    : SigningKeyContext(provider, onlyOf(RsaKey, std::move(material)))
{
}

RsaKeyContext::RsaKeyContext(const RsaKeyContext &other)
    : SigningKeyContext(other)
    , ExtendedKey(other)
{
}

RsaKeyContext::~RsaKeyContext() = default;

QCA::Provider::Context *RsaKeyContext::clone() const
{
    return new RsaKeyContext(*this);
}

void RsaKeyContext::createPrivate(int bits, int exponent, bool block)
{
    m_material = KeyMaterial();
    m_maker = std::make_unique<KeyMaker>("RSA", [bits, exponent](EVP_PKEY_CTX *context) {
        const BigNumHandle e(BN_new());
        return e && exponent > 0 && BN_set_word(e.get(), static_cast<BN_ULONG>(exponent)) == 1
            && EVP_PKEY_CTX_set_rsa_keygen_bits(context, bits) == 1
            && EVP_PKEY_CTX_set1_rsa_keygen_pubexp(context, e.get()) == 1;
    });
    m_maker->make(this, block, [this](PKeyHandle key) {
        m_material = KeyMaterial::fromNative(std::move(key), true);
    });
}

void RsaKeyContext::createPrivate(const QCA::BigInteger &n, const QCA::BigInteger &e,
                                  const QCA::BigInteger &p, const QCA::BigInteger &q,
                                  const QCA::BigInteger &d)
{
    QList<KeyParameter> numbers = {
        {OSSL_PKEY_PARAM_RSA_N, n}, {OSSL_PKEY_PARAM_RSA_E, e}, {OSSL_PKEY_PARAM_RSA_D, d}};
    // A key works without its factors, but slower.
    if (p != QCA::BigInteger(0) && q != QCA::BigInteger(0))
        numbers += factorParameters(p, q, d);
    m_material = KeyMaterial::fromNative(keyFromNumbers("RSA", numbers, true), true);
}

void RsaKeyContext::createPublic(const QCA::BigInteger &n, const QCA::BigInteger &e)
{
    m_material = KeyMaterial::fromNative(
        keyFromNumbers("RSA", {{OSSL_PKEY_PARAM_RSA_N, n}, {OSSL_PKEY_PARAM_RSA_E, e}}, false),
        false);
}

QCA::BigInteger RsaKeyContext::n() const
{
    return keyNumber(m_material.native(), OSSL_PKEY_PARAM_RSA_N);
}

QCA::BigInteger RsaKeyContext::e() const
{
    return keyNumber(m_material.native(), OSSL_PKEY_PARAM_RSA_E);
}

QCA::BigInteger RsaKeyContext::p() const
{
    return privateNumber(OSSL_PKEY_PARAM_RSA_FACTOR1);
}

QCA::BigInteger RsaKeyContext::q() const
{
    return privateNumber(OSSL_PKEY_PARAM_RSA_FACTOR2);
}

QCA::BigInteger RsaKeyContext::d() const
{
    return privateNumber(OSSL_PKEY_PARAM_RSA_D);
}

QCA::BigInteger RsaKeyContext::privateNumber(const char *parameter) const
{
    return m_material.isPrivate() ? keyNumber(m_material.native(), parameter) : QCA::BigInteger(0);
}

int RsaKeyContext::maximumEncryptSize(QCA::EncryptionAlgorithm algorithm) const
{
    // As stock QCA counts, one below what the padding allows.
    const int size = (bits() + 7) / 8 - 1;
    switch (algorithm) {
    case QCA::EME_PKCS1_OAEP:
        return qMax(size - 41, 0);
    case QCA::EME_NO_PADDING:
        return qMax(size, 0);
    default:
        return qMax(size - 11, 0);
    }
}

QCA::SecureArray RsaKeyContext::encrypt(const QCA::SecureArray &in,
                                        QCA::EncryptionAlgorithm algorithm)
{
    QCA::SecureArray data = in;
    if (data.size() > maximumEncryptSize(algorithm))
        data.resize(maximumEncryptSize(algorithm));
    if (isPrivate()) {
        // "Encrypting" with the private half is the bare signature.
        QByteArray signature;
        if (algorithm == QCA::EME_PKCS1v15)
            signBlock(data.toByteArray(), &signature);
        return signature;
    }
    EVP_PKEY *key = m_material.native();
    const int padding = paddingOf(algorithm);
    const KeyContextHandle context(key ? EVP_PKEY_CTX_new(key, nullptr) : nullptr);
    if (!context || padding == 0 || EVP_PKEY_encrypt_init(context.get()) != 1
        || EVP_PKEY_CTX_set_rsa_padding(context.get(), padding) != 1)
        return {};
    return crypt(context.get(), &EVP_PKEY_encrypt, data);
}

bool RsaKeyContext::decrypt(const QCA::SecureArray &in, QCA::SecureArray *out,
                            QCA::EncryptionAlgorithm algorithm)
{
    EVP_PKEY *key = m_material.isPrivate() ? m_material.native() : nullptr;
    const int padding = paddingOf(algorithm);
    const KeyContextHandle context(key ? EVP_PKEY_CTX_new(key, nullptr) : nullptr);
    if (!context || padding == 0 || EVP_PKEY_decrypt_init(context.get()) != 1
        || EVP_PKEY_CTX_set_rsa_padding(context.get(), padding) != 1)
        return false;
    const QCA::SecureArray plain = crypt(context.get(), &EVP_PKEY_decrypt, in);
    if (plain.isEmpty())
        return false;
    *out = plain;
    return true;
}

QByteArray RsaKeyContext::blockOf(const QByteArray &digestName, const QByteArray &digest) const
{
    return digestInfo(digestName, digest);
}

} // namespace Trivex
