// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/keys/signaturenumbers.h"

#include <QtCrypto>

#include <optional>

namespace Trivex {

/// The algorithm with which `certificate` is signed; 0 for a null certificate and for one whose
/// algorithm has no number. Where QCA has no number it is read from the DER form, whatever else
/// in that can't be read, so it works for the certificates of any provider.
TRIVEX_QCA_EXPORT int signatureAlgorithm(const QCA::Certificate &certificate);

/// The first value of the subject's attribute `oid` (dotted); nothing when it has none. For
/// certificates of our own decoder, which keep every attribute.
TRIVEX_QCA_EXPORT std::optional<QString> firstSubjectValue(const QCA::Certificate &certificate,
                                                           const QString &oid);

} // namespace Trivex
