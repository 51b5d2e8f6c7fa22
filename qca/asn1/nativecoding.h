// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"
#include "qca/asn1/handles.h"
#include "qca/base/secret.h"

#include <openssl/err.h>

#include <algorithm>

namespace Trivex {

// Between libcrypto's objects and their encodings. None of these leaves an error in the thread's
// queue, where the next caller of libcrypto would find it.

/// The object that `encoding` begins with, read by `decode`, the `d2i_` function of its type. Null
/// when the bytes are no such object; bytes behind it are ignored.
template <class Owner, class Decode> Owner decodeNative(Der::Slice encoding, Decode decode)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(encoding.data);
    Owner object(decode(nullptr, &bytes, encoding.size));
    ERR_clear_error();
    return object;
}

/// The encoding of an object that holds a secret, made by `encode`, the `i2d_` function of its
/// type; libcrypto's copy is wiped. Empty for null and for an object that can't be encoded.
template <class T, class Encode> Secret encodeNativeSecret(const T *object, Encode encode)
{
    unsigned char *bytes = nullptr;
    const int size = object ? encode(object, &bytes) : 0;
    ERR_clear_error();
    Secret encoded(std::max(size, 0));
    std::copy_n(bytes, encoded.size(), encoded.data());
    OPENSSL_clear_free(bytes, size_t(encoded.size()));
    return encoded;
}

/// The same for an object that everybody may see.
template <class T, class Encode> QByteArray encodeNative(const T *object, Encode encode)
{
    return encodeNativeSecret(object, encode).toByteArray();
}

} // namespace Trivex
