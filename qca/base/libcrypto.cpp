// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A module in this process may be in the middle of a generation when the process ends, and most
// modules compute with libcrypto. So libcrypto must not be taken down by an exit handler of its own
// under that thread; the process gives its memory back anyway. Only the first initialisation can
// say so, so it is done when this library is loaded.
#include <openssl/crypto.h>

namespace {

[[maybe_unused]] const int libcryptoStays = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);

} // namespace
