// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <openssl/x509.h>

#include <QtGlobal>

namespace Trivex {

/// Limits the key derivation that one file may ask for. The work is counted before it is done: a
/// file of two thousand octets can ask for hours.
class DerivationBudget {
public:
    /// Spends the cost of decrypting with `algorithm` (PKCS#5 or PKCS#12) or of checking with
    /// PBMAC1; false when that is too much.
    bool spend(const X509_ALGOR *algorithm);
    /// The same for a number of iterations; null stands for one.
    bool spend(const ASN1_INTEGER *iterations);
    /// Whether one derivation alone is within its bound; takes nothing.
    static bool allows(const X509_ALGOR *algorithm);

private:
    bool spend(qint64 work);

    qint64 m_taken = 0;
};

} // namespace Trivex
