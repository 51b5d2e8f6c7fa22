// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/libcrypto.h"

#include <openssl/crypto.h>

namespace Trivex {

namespace {

// A module in this process may be in the middle of a generation when the process ends, and most
// modules compute with libcrypto. So libcrypto must not be taken down by an exit handler of its own
// under that thread; the process gives its memory back anyway. Only the first initialisation can
// say so, so it is done when this library is loaded.
[[maybe_unused]] const int libcryptoStays = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);

} // namespace

void initialiseLibcrypto()
{
    OPENSSL_init_crypto(OPENSSL_INIT_ADD_ALL_CIPHERS | OPENSSL_INIT_ADD_ALL_DIGESTS
                            | OPENSSL_INIT_LOAD_CONFIG,
                        nullptr);
    OPENSSL_init_crypto(OPENSSL_INIT_LOAD_CRYPTO_STRINGS, nullptr);
}

} // namespace Trivex
