// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/bignumbers.h"

#include <openssl/err.h>

#include <vector>

namespace Trivex {

BigNumHandle toBigNum(const QCA::BigInteger &number)
{
    if (number < QCA::BigInteger(0))
        return nullptr;
    const QCA::SecureArray bytes = number.toArray();
    return BigNumHandle(BN_bin2bn(reinterpret_cast<const unsigned char *>(bytes.constData()),
                                  bytes.size(), nullptr));
}

QCA::BigInteger fromBigNum(const BIGNUM *number)
{
    if (!number || BN_is_zero(number))
        return QCA::BigInteger(0);
    // With an octet of zeros before it, because QCA reads two's complement.
    QCA::SecureArray bytes(BN_num_bytes(number) + 1, 0);
    BN_bn2bin(number, reinterpret_cast<unsigned char *>(bytes.data()) + 1);
    return QCA::BigInteger(bytes);
}

QCA::BigInteger keyNumber(const EVP_PKEY *key, const char *parameter)
{
    BIGNUM *value = nullptr;
    if (key)
        EVP_PKEY_get_bn_param(key, parameter, &value);
    const Handle<BIGNUM, BN_clear_free> number(value);
    ERR_clear_error();
    return fromBigNum(number.get());
}

PKeyHandle keyFromNumbers(const char *type, const QList<KeyParameter> &numbers, bool isPrivate)
{
    const ParamBuilderHandle builder(OSSL_PARAM_BLD_new());
    const KeyContextHandle context(EVP_PKEY_CTX_new_from_name(nullptr, type, nullptr));
    std::vector<BigNumHandle> values; // the builder keeps pointers to them
    for (const KeyParameter &number : numbers) {
        values.push_back(toBigNum(number.value));
        if (!builder || !values.back()
            || OSSL_PARAM_BLD_push_BN(builder.get(), number.name, values.back().get()) != 1)
            return nullptr;
    }
    const ParamsHandle parameters(OSSL_PARAM_BLD_to_param(builder.get()));
    EVP_PKEY *key = nullptr;
    if (context && parameters && EVP_PKEY_fromdata_init(context.get()) == 1)
        EVP_PKEY_fromdata(context.get(), &key, isPrivate ? EVP_PKEY_KEYPAIR : EVP_PKEY_PUBLIC_KEY,
                          parameters.get());
    ERR_clear_error();
    return PKeyHandle(key);
}

} // namespace Trivex
