// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include "qca/asn1/der.h"

#include <QtCrypto>

namespace Trivex {

/// Every attribute of a Name (RFC 5280, 4.1.2.4; with tag and length), in the order of its
/// encoding. Attributes that QCA has no number for have their dotted OID as type. Equal names share
/// their data.
TRIVEX_QCA_EXPORT QCA::CertificateInfoOrdered decodeName(Der::Slice name);

/// The values of GeneralNames (RFC 5280, 4.2.1.6; content of an alternative name extension) that
/// QCA has types for: mail, DNS, URI, IP and XMPP addresses.
QCA::CertificateInfoOrdered decodeAlternativeNames(Der::Slice extension);

/// Appends the values of GeneralNames, given by their content; false when a member is no
/// GeneralName.
bool decodeGeneralNames(Der::Slice content, QCA::CertificateInfoOrdered *info);

/// The way back: DER Name of the attributes that belong into one, without empty values.
///
/// Values are UTF8String, except those whose definitions confine them: to NumericString (the
/// Russian identifiers), PrintableString (country, serial number, qualifier, telephone number) or
/// IA5String (mail address, domain component). A value that does not fit its type is UTF8String all
/// the same.
QByteArray encodeName(const QCA::CertificateInfoOrdered &info);

/// DER GeneralNames of the attributes that belong there; empty when there is none.
QByteArray encodeAlternativeNames(const QCA::CertificateInfoOrdered &info);

} // namespace Trivex
