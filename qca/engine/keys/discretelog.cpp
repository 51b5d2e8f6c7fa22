// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/keys/discretelog.h"

#include "qca/engine/keys/bignumbers.h"
#include "qca/engine/keys/keymaker.h"

#include <openssl/core_names.h>

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

} // namespace

PKeyHandle discreteLogKey(const char *type, const QCA::DLGroup &domain, const QCA::BigInteger *y,
                          const QCA::BigInteger *x)
{
    if (domain.isNull())
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
    KeyMaker maker(discreteLogKey(type, domain, nullptr, nullptr));
    maker.run();
    return maker.take();
}

QCA::DLGroup discreteLogDomain(const EVP_PKEY *key)
{
    if (!key)
        return {};
    return {keyNumber(key, OSSL_PKEY_PARAM_FFC_P), keyNumber(key, OSSL_PKEY_PARAM_FFC_Q),
            keyNumber(key, OSSL_PKEY_PARAM_FFC_G)};
}

} // namespace Trivex
