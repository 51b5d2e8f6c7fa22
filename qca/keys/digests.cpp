// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/digests.h"

namespace Trivex {

const Digest &rsaDigestFor(int bits)
{
    return bits <= 3072 ? Sha256Digest : bits <= 7680 ? Sha384Digest : Sha512Digest;
}

const Digest &curveDigestFor(int bits)
{
    return bits <= 256 ? Sha256Digest : bits <= 384 ? Sha384Digest : Sha512Digest;
}

} // namespace Trivex
