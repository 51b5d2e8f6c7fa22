// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/algorithmerrors.h"

#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pkcs12.h>

#include <algorithm>
#include <iterator>

namespace Trivex {

namespace {

constexpr int Faults[] = {
    EVP_R_UNKNOWN_PBE_ALGORITHM, EVP_R_UNSUPPORTED_ALGORITHM,
    EVP_R_UNKNOWN_CIPHER,        EVP_R_UNSUPPORTED_CIPHER,
    EVP_R_UNSUPPORTED_PRF,       EVP_R_UNSUPPORTED_KEY_DERIVATION_FUNCTION,
    EVP_R_UNSUPPORTED_SALT_TYPE, EVP_R_UNSUPPORTED_KEYLENGTH,
    EVP_R_DECODE_ERROR,          ERR_R_UNSUPPORTED,
};

template <class Matches> bool takeErrors(Matches matches)
{
    bool found = false;
    while (const unsigned long error = ERR_get_error())
        found = matches(ERR_GET_LIB(error), ERR_GET_REASON(error)) || found;
    return found;
}

} // namespace

bool isAlgorithmAtFault()
{
    return takeErrors([](int library, int reason) {
        return library == ERR_LIB_EVP
            && std::find(std::begin(Faults), std::end(Faults), reason) != std::end(Faults);
    });
}

bool isCheckAtFault()
{
    return takeErrors([](int library, int reason) {
        return library == ERR_LIB_PKCS12 && reason == PKCS12_R_MAC_GENERATION_ERROR;
    });
}

} // namespace Trivex
