// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QString>

namespace Trivex {

// The names of OBJECT IDENTIFIERs, in the user's language where we have a word. OIDs are in
// dotted form.

/// An attribute of a name, or its OID.
TRIVEX_QCA_EXPORT QString attributeName(const QByteArray &oid);
/// The abbreviation that distinguished names are written with ("CN"), or the OID.
QString attributeAbbreviation(const QByteArray &oid);
/// A purpose of a key (RFC 5280, 4.2.1.12), with its OID where we have no word.
QString purposeName(const QByteArray &oid);
/// A policy with its OID.
QString policyName(const QByteArray &oid);
/// An extension or an attribute of a request; empty for one that nobody knows.
QString extensionName(const QByteArray &oid);
/// The name by which libcrypto knows the content of an OBJECT IDENTIFIER; empty when it doesn't.
QString libraryName(Der::Slice oid);
/// "name (OID)", or what there is of both; a malformed OID as damaged.
QString objectText(Der::Slice oid);

} // namespace Trivex
