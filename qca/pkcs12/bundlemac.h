// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/derivationbudget.h"
#include "qca/pkcs12/bundlepassword.h"

#include <openssl/pkcs12.h>

#include <optional>

namespace Trivex {

enum class MacResult {
    Absent, ///< there is none; whoever decrypts will see
    Fits,
    Wrong, ///< by none of the forms of the password
    Unknown, ///< made in a way that nobody here has
};

/// The integrity check of a bundle: that of PKCS#12 (RFC 7292, 4), or PBMAC1 (RFC 9579), which
/// libcrypto knows since 3.4 alone.
class BundleMac {
public:
    /// Both have to live as long as this object.
    BundleMac(const QByteArray &der, const PKCS12 *bundle);

    bool isPresent() const { return m_digest != nullptr; }
    /// Takes what checking one form of a password needs; false when that is too much.
    bool takeWork(DerivationBudget *budget) const;
    /// Looks for the form of the password that fits.
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
