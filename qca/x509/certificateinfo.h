// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

#include <optional>

namespace Trivex {

/// Signature algorithms as ints: 0 to 10 are `QCA::SignatureAlgorithm`, 11 to 15 are ours.
enum SignatureNumber : int {
    UnknownSignature = 0,
    EcdsaSha256Signature = 11,
    EcdsaSha384Signature = 12,
    Gost2001Signature = 13,
    Gost2012Signature256 = 14,
    Gost2012Signature512 = 15,
};

/// The algorithm with which `certificate` is signed; 0 for a null certificate and for one whose
/// algorithm has no number. Where QCA has no number it is read from the DER form, whatever else
/// in that can't be read, so it works for the certificates of any provider.
TRIVEX_QCA_EXPORT int signatureAlgorithm(const QCA::Certificate &certificate);

/// The first value of the subject's attribute `oid` (dotted); nothing when it has none. For
/// certificates of our own decoder, which keep every attribute.
TRIVEX_QCA_EXPORT std::optional<QString> firstSubjectValue(const QCA::Certificate &certificate,
                                                           const QString &oid);

} // namespace Trivex
