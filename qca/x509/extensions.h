// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QtCrypto>

namespace Trivex {

/// Fills in the values of extensions (RFC 5280, 4.2): names, constraints, policies, locations, key
/// ids. `extensions` is the content of the list. An extension that does not decode counts as
/// absent; the first of several of one kind counts.
void decodeExtensions(Der::Slice extensions, QCA::CertContextProps *properties);

/// Adds only the alternative names.
void decodeAlternativeNames(Der::Slice extensions, QCA::CertContextProps *properties);

/// The content of the value of the extension `oid` (dotted); empty when there is none. A view of
/// `extensions`, or a copy of a value in several pieces.
QByteArray findExtension(Der::Slice extensions, const char *oid);

/// The octets of an authority key identifier extension's key id; empty when it has none.
QByteArray decodeAuthorityKeyId(Der::Slice extension);

/// DER Extensions as `options` ask for them, empty when they ask for none. The key id is included
/// when `subjectKeyId` is not empty.
QByteArray encodeExtensions(const QCA::CertificateOptions &options, const QByteArray &subjectKeyId);

} // namespace Trivex
