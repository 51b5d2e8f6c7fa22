// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/forgeablekey.h"

#include "qca/asn1/handles.h"

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/err.h>

#include <QByteArray>

#include <array>

namespace Trivex {

namespace {

BigNumHandle numberOf(const EVP_PKEY *key, const char *parameter)
{
    BIGNUM *number = nullptr;
    return EVP_PKEY_get_bn_param(key, parameter, &number) == 1 ? BigNumHandle(number) : nullptr;
}

/// With an exponent of 1 a signature is the padded digest itself.
bool isForgeableRsa(const EVP_PKEY *key)
{
    const BigNumHandle n = numberOf(key, OSSL_PKEY_PARAM_RSA_N);
    const BigNumHandle e = numberOf(key, OSSL_PKEY_PARAM_RSA_E);
    return !n || !e || !BN_is_odd(n.get()) || !BN_is_odd(e.get()) || BN_is_one(e.get())
        || BN_is_negative(n.get()) || BN_is_negative(e.get());
}

/// Above 1 and below p - 1: the others have no powers, or one or two.
bool isProper(const BIGNUM *number, const BIGNUM *p)
{
    const BigNumHandle next(number ? BN_dup(number) : nullptr);
    return next && !BN_is_negative(number) && !BN_is_zero(number) && !BN_is_one(number)
        && BN_add_word(next.get(), 1) == 1 && BN_cmp(next.get(), p) < 0;
}

bool isForgeableDsa(const EVP_PKEY *key)
{
    const BigNumHandle p = numberOf(key, OSSL_PKEY_PARAM_FFC_P);
    const BigNumHandle g = numberOf(key, OSSL_PKEY_PARAM_FFC_G);
    const BigNumHandle y = numberOf(key, OSSL_PKEY_PARAM_PUB_KEY);
    return !p || !BN_is_odd(p.get()) || !isProper(g.get(), p.get()) || !isProper(y.get(), p.get());
}

/// Numbers that describe a curve can describe one of three points, which is why certificates may
/// only name theirs (RFC 5480, 2.1.1). Those of a curve with a name are that curve.
bool isForgeableCurve(EVP_PKEY *key)
{
    char name[80];
    size_t size = 0;
    const KeyContextHandle context(EVP_PKEY_CTX_new(key, nullptr));
    return EVP_PKEY_get_group_name(key, name, sizeof name, &size) != 1 || size == 0 || !context
        || EVP_PKEY_public_check_quick(context.get()) != 1;
}

/// The points of a small order, without the sign of x, which is the highest bit. Their multiples
/// are so few that the value of a signature is guessed.
constexpr std::array<const char *, 7> SmallPoints25519 = {
    "0000000000000000000000000000000000000000000000000000000000000000",
    "0100000000000000000000000000000000000000000000000000000000000000",
    "26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc05",
    "c7176a703d4dd84fba3c0b760d10670f2a2053fa2c39ccc64ec7fd7792ac037a",
    "ecffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
    "edffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
    "eeffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
};

constexpr std::array<const char *, 3> SmallPoints448 = {
    "0000000000000000000000000000000000000000000000000000000000000000"
    "00000000000000000000000000000000000000000000000000",
    "0100000000000000000000000000000000000000000000000000000000000000"
    "00000000000000000000000000000000000000000000000000",
    "fefffffffffffffffffffffffffffffffffffffffffffffffffffffffeffffff"
    "ffffffffffffffffffffffffffffffffffffffffffffffff00",
};

template <size_t Count>
bool isAmong(const std::array<const char *, Count> &points, const EVP_PKEY *key)
{
    std::array<unsigned char, 57> octets;
    size_t size = octets.size();
    if (EVP_PKEY_get_raw_public_key(key, octets.data(), &size) != 1 || size == 0)
        return true;
    octets[size - 1] &= 0x7F;
    const QByteArray point =
        QByteArray::fromRawData(reinterpret_cast<const char *>(octets.data()), int(size)).toHex();
    for (const char *small : points) {
        if (point == small)
            return true;
    }
    return false;
}

bool isForgeableNative(EVP_PKEY *key)
{
    if (EVP_PKEY_is_a(key, "RSA") || EVP_PKEY_is_a(key, "RSA-PSS"))
        return isForgeableRsa(key);
    if (EVP_PKEY_is_a(key, "DSA"))
        return isForgeableDsa(key);
    if (EVP_PKEY_is_a(key, "EC"))
        return isForgeableCurve(key);
    if (EVP_PKEY_is_a(key, "ED25519"))
        return isAmong(SmallPoints25519, key);
    return EVP_PKEY_is_a(key, "ED448") && isAmong(SmallPoints448, key);
}

} // namespace

bool isForgeable(const EVP_PKEY *key)
{
    // libcrypto's own checks take no const key.
    const PKeyHandle shared = share(const_cast<EVP_PKEY *>(key));
    const bool isFound = shared && isForgeableNative(shared.get());
    ERR_clear_error();
    return isFound;
}

} // namespace Trivex
