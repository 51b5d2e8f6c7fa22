// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/algorithmids.h"
#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace Trivex {

/// A digest that signatures are made with.
struct Digest {
    const char *name; ///< libcrypto's
    const char *oid;
    int size; ///< in octets
    const char *curveSignature; ///< the OID of ECDSA with it (RFC 5758, 3.2); null: not made here
};

inline constexpr Digest Sha1Digest = {"SHA1", Oid::Sha1, 20, nullptr};
inline constexpr Digest Sha256Digest = {"SHA256", Oid::Sha256, 32, Oid::EcdsaWithSha256};
inline constexpr Digest Sha384Digest = {"SHA384", Oid::Sha384, 48, Oid::EcdsaWithSha384};
inline constexpr Digest Sha512Digest = {"SHA512", Oid::Sha512, 64, Oid::EcdsaWithSha512};
inline constexpr Digest Gost94Digest = {"md_gost94", Oid::GostDigest94, 32, nullptr};
inline constexpr Digest Streebog256Digest = {"md_gost12_256", Oid::GostDigest256, 32, nullptr};
inline constexpr Digest Streebog512Digest = {"md_gost12_512", Oid::GostDigest512, 64, nullptr};

/// Not by the address: each library has them at its own.
inline bool operator==(const Digest &a, const Digest &b)
{
    return qstrcmp(a.name, b.name) == 0;
}

/// The digest with which an RSA key of that size signs (NIST SP 800-57 part 1, 5.6.1).
TRIVEX_QCA_EXPORT const Digest &rsaDigestFor(int bits);
/// The same for a key of a curve of that size.
const Digest &curveDigestFor(int bits);

} // namespace Trivex
