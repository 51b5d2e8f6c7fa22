// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QtCrypto>

namespace Trivex {

/// Fills what extensions say (RFC 5280, 4.2): names, constraints, policies, locations, key ids.
/// `extensions` is the content of the list. An extension that does not decode counts as absent; of
/// several of one kind the first counts.
void decodeExtensions(Der::Slice extensions, QCA::CertContextProps *properties);

/// Adds the alternative names alone.
void decodeAlternativeNames(Der::Slice extensions, QCA::CertContextProps *properties);

/// The content of the value of the extension `oid` (dotted); empty when there is none. A view of
/// `extensions`, but for a value that is written in several pieces.
QByteArray findExtension(Der::Slice extensions, const char *oid);

/// The octets of an authority key identifier extension's key id; empty when it has none.
QByteArray decodeAuthorityKeyId(Der::Slice extension);

/// DER Extensions for what `options` ask for; empty when that is nothing. The key id goes in when
/// `subjectKeyId` is not empty.
QByteArray encodeExtensions(const QCA::CertificateOptions &options, const QByteArray &subjectKeyId);

} // namespace Trivex
