// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace Trivex {

// How much of what strangers send is looked at. Below these bounds the work grows with the size of
// the input; what is above them is refused before any work is done for it.

/// Of a file, or of a text that stands for one, in bytes.
constexpr int maxFileBytes = 16 * 1024 * 1024;

/// Of one certificate or certification request in DER, in bytes.
constexpr int maxCertificateBytes = 1024 * 1024;

/// In one name: the attributes of a distinguished name, with the e-mail addresses of the
/// alternative names, which QCA compares with one another.
constexpr int maxNameAttributes = 1000;

/// Of one key derivation; for scrypt the product of its three parameters (RFC 7914, 2).
constexpr qint64 maxIterations = 10 * 1000 * 1000;

/// Of all that opening a bundle takes: its check, its certificates and its key, each with the most.
constexpr qint64 maxBundleIterations = 3 * maxIterations;

/// Private keys of one bundle, which are tried until one has its certificate.
constexpr int maxBundleKeys = 100;

/// Certificates from an end entity to its root, both included.
constexpr int maxChainLength = 100;

/// Signatures that are checked to find the chain of one bundle: many certificates of one name may
/// look like the issuer and not be it.
constexpr int maxIssuerChecks = 1000;

} // namespace Trivex
