// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include "qca/asn1/der.h"

namespace Trivex {

/// A form of a Name (RFC 5280, 4.1.2.4; with tag and length) that is the same for all names that
/// count as equal (7.1 there, as libcrypto has it): whatever string type a value has, whatever case
/// its Latin letters, however many spaces. For look-ups and comparisons only; never empty. Any
/// bytes have such a form.
TRIVEX_QCA_EXPORT QByteArray canonicalName(Der::Slice name);

/// Whether both name the same; cheap where their bytes are alike.
TRIVEX_QCA_EXPORT bool isSameName(Der::Slice a, Der::Slice b);

} // namespace Trivex
