// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QtCrypto>

namespace Trivex {

// A QCA type object takes two allocations, and a store of certificates needs the same few over and
// over: these hand out shared ones. Thread-safe. The OID is the content of its DER form.

/// The type of a name's attribute.
QCA::CertificateInfoType sharedAttributeType(Der::Slice oid);

/// The type of an extended key usage.
QCA::ConstraintType sharedPurpose(Der::Slice oid);

/// The type of bit `bit` of a key usage, 0 to 8.
QCA::ConstraintType sharedKeyUsage(int bit);

} // namespace Trivex
