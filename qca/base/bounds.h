// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace Trivex {

// Limits on input from strangers. Below them the work grows with the size of the input; larger
// input is refused before any work is done for it.

/// Size of a file, or of a text in place of one, in bytes.
constexpr int MaxFileBytes = 16 * 1024 * 1024;

/// Size of one certificate or certification request in DER, in bytes.
constexpr int MaxCertificateBytes = 1024 * 1024;

/// Number of attributes in one distinguished name, together with the e-mail addresses of the
/// alternative names: QCA compares them with one another.
constexpr int MaxNameAttributes = 1000;

/// Iterations of one key derivation; for scrypt the product of its three parameters (RFC 7914, 2).
constexpr qint64 MaxIterations = 10 * 1000 * 1000;

/// Iterations for a whole bundle: the most for each of its check, its certificates and its key.
constexpr qint64 MaxBundleIterations = 3 * MaxIterations;

/// Private keys of one bundle. They are tried until one has its certificate.
constexpr int MaxBundleKeys = 100;

/// Private keys of a file that is no bundle: reading one may mean to compute a power.
constexpr int MaxFileKeys = 20;

/// Size of one private key in DER, in bytes.
constexpr int MaxPrivateKeyBytes = 64 * 1024;

/// Bits of a number in a private key, or of a domain: libcrypto checks no signatures of larger RSA
/// keys.
constexpr int MaxNumberBits = 16384;

/// The same for DSA and Diffie-Hellman, where reading such a key means to compute a power.
constexpr int MaxDiscreteLogBits = 10000;

/// Certificates from an end entity to its root, both included.
constexpr int MaxChainLength = 100;

/// Signatures that are checked to find the chain of one bundle: many certificates of one name may
/// look like the issuer and not be it.
constexpr int MaxIssuerChecks = 1000;

/// Certificates that are looked at to find the path of one, and how many of them may have the same
/// name.
constexpr int MaxChainCandidates = 500;
constexpr int MaxNamesakes = 100;

/// Size of all revocation lists that are kept, in bytes.
constexpr qint64 MaxListBytes = 8 * qint64(MaxFileBytes);

} // namespace Trivex
