// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/legacylibrary.h"

#include <openssl/err.h>
#include <openssl/provider.h>

namespace Trivex {

namespace {

OSSL_LIB_CTX *makeLibrary()
{
    // Never freed: contexts may be read until the very end of the process, after libcrypto's own
    // clean-up has been registered.
    OSSL_LIB_CTX *library = OSSL_LIB_CTX_new();
    OSSL_PROVIDER_load(library, "default");
    OSSL_PROVIDER_load(library, "legacy");
    ERR_clear_error();
    return library;
}

} // namespace

OSSL_LIB_CTX *legacyLibrary()
{
    static OSSL_LIB_CTX *const library = makeLibrary();
    return library;
}

} // namespace Trivex
