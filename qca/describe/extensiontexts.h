// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/shown.h"

#include "qca/asn1/der.h"

namespace Trivex {

/// A row for each of Extensions (RFC 5280, 4.1.2.9), given by the content of the list: its name,
/// whether it is critical, and its value in words. Unknown ones are bytes.
QVector<ShownRow> extensionRows(Der::Slice extensions);

/// The value of the extension, or of the attribute of a request, `oid` (its content) in words.
/// Bytes where nobody knows it, "damaged" and bytes where it does not decode.
QString extensionText(Der::Slice oid, Der::Slice value);

/// "Key usage", or an OID.
QString extensionLabel(Der::Slice oid);

} // namespace Trivex
