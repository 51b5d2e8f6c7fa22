// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/discretelog.h"

#include "qca/base/bounds.h"
#include "qca/keys/bignumbers.h"
#include "qca/keys/keymaker.h"

#include <openssl/core_names.h>
#include <openssl/err.h>

namespace Trivex {

namespace {

QList<KeyParameter> numbersOf(const QCA::DLGroup &domain)
{
    QList<KeyParameter> numbers = {{OSSL_PKEY_PARAM_FFC_P, domain.p()},
                                   {OSSL_PKEY_PARAM_FFC_G, domain.g()}};
    if (domain.q() != QCA::BigInteger(0))
        numbers += {OSSL_PKEY_PARAM_FFC_Q, domain.q()};
    return numbers;
}

/// A private number for `domain`: at least 1, below the order or, where that is not known, below
/// p - 1. Null when the domain has no room for one.
BigNumHandle randomExponent(const BIGNUM *p, const BIGNUM *q)
{
    BigNumHandle range(BN_dup(BN_is_zero(q) ? p : q));
    BigNumHandle exponent(BN_secure_new());
    const BN_ULONG excluded = BN_is_zero(q) ? 2 : 1;
    const bool isMade = range && exponent && BN_sub_word(range.get(), excluded) == 1
        && !BN_is_negative(range.get()) && !BN_is_zero(range.get())
        && BN_priv_rand_range(exponent.get(), range.get()) == 1
        && BN_add_word(exponent.get(), 1) == 1;
    return isMade ? std::move(exponent) : nullptr;
}

/// Whether a private key of that domain could be read again; says so where it could not.
bool isWithinBounds(const char *type, const QCA::DLGroup &domain)
{
    const BigNumHandle p = toBigNum(domain.p());
    const int bits = p ? BN_num_bits(p.get()) : 0;
    if (bits > MaxDiscreteLogBits)
        qWarning("A %s key of %d bits could not be read again: no more than %d are possible", type,
                 bits, MaxDiscreteLogBits);
    return bits <= MaxDiscreteLogBits;
}

/// libcrypto generates on domains of a few sizes only, but works with keys on any.
PKeyHandle generateByNumbers(const char *type, const QCA::DLGroup &domain)
{
    const BigNumHandle p = toBigNum(domain.p());
    const BigNumHandle q = toBigNum(domain.q());
    const BigNumHandle g = toBigNum(domain.g());
    if (!p || !q || !g || !BN_is_odd(p.get()) || BN_is_zero(g.get()) || BN_is_one(g.get())
        || BN_cmp(g.get(), p.get()) >= 0)
        return nullptr;
    const BigNumHandle exponent = randomExponent(p.get(), q.get());
    const BigNumHandle power(BN_new());
    const Handle<BN_CTX, BN_CTX_free> context(BN_CTX_secure_new());
    if (!exponent || !power || !context
        || BN_mod_exp_mont_consttime(power.get(), g.get(), exponent.get(), p.get(), context.get(),
                                     nullptr)
            != 1)
        return nullptr;
    const QCA::BigInteger x = fromBigNum(exponent.get());
    const QCA::BigInteger y = fromBigNum(power.get());
    return discreteLogKey(type, domain, &y, &x);
}

} // namespace

PKeyHandle discreteLogKey(const char *type, const QCA::DLGroup &domain, const QCA::BigInteger *y,
                          const QCA::BigInteger *x)
{
    if (domain.isNull() || (x && !isWithinBounds(type, domain)))
        return nullptr;
    QList<KeyParameter> numbers = numbersOf(domain);
    if (y)
        numbers += {OSSL_PKEY_PARAM_PUB_KEY, *y};
    if (x)
        numbers += {OSSL_PKEY_PARAM_PRIV_KEY, *x};
    return keyFromNumbers(type, numbers, x != nullptr);
}

PKeyHandle generateDiscreteLogKey(const char *type, const QCA::DLGroup &domain)
{
    if (domain.isNull() || !isWithinBounds(type, domain))
        return nullptr;
    KeyMaker maker(discreteLogKey(type, domain, nullptr, nullptr));
    maker.run();
    PKeyHandle key = maker.takeKey();
    if (!key)
        key = generateByNumbers(type, domain);
    ERR_clear_error();
    return key;
}

QCA::DLGroup discreteLogDomain(const EVP_PKEY *key)
{
    if (!key)
        return {};
    return {keyNumber(key, OSSL_PKEY_PARAM_FFC_P), keyNumber(key, OSSL_PKEY_PARAM_FFC_Q),
            keyNumber(key, OSSL_PKEY_PARAM_FFC_G)};
}

} // namespace Trivex
