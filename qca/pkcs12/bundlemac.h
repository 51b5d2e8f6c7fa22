// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/derivationbudget.h"
#include "qca/pkcs12/bundlepassword.h"

#include <openssl/pkcs12.h>

#include <optional>

namespace Trivex {

enum class MacResult {
    Absent, ///< there is none; decryption will tell
    Fits,
    Wrong, ///< no form of the password fits
    Unknown, ///< made by an unsupported method
};

/// The integrity check of a bundle: that of PKCS#12 (RFC 7292, 4), or PBMAC1 (RFC 9579), which
/// libcrypto itself has only since 3.4.
class BundleMac {
public:
    /// Both have to live as long as this object.
    BundleMac(const QByteArray &der, const PKCS12 *bundle);

    bool isPresent() const { return m_digest != nullptr; }
    /// Spends what checking one form of a password costs; false when that is too much.
    bool takeWork(DerivationBudget *budget) const;
    /// Finds the form of the password that fits.
    MacResult check(PKCS12 *bundle, const QList<BundlePassword> &forms,
                    BundlePassword *fitting) const;

private:
    bool isPbmac1() const;
    std::optional<bool> checkPbmac1(const Secret &password) const;

    const QByteArray &m_der;
    const X509_ALGOR *m_algorithm = nullptr;
    const ASN1_OCTET_STRING *m_digest = nullptr;
    const ASN1_INTEGER *m_iterations = nullptr;
};

} // namespace Trivex
