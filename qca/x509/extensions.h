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

/// The content octets of the OIDs of extensions, by which they are found: making the dotted text
/// of each extension would take longer than the search.
namespace ExtensionOid {
constexpr char SubjectKeyId[] = "\x55\x1D\x0E"; // 2.5.29.14
constexpr char KeyUsage[] = "\x55\x1D\x0F"; // 2.5.29.15
constexpr char SubjectAlternativeName[] = "\x55\x1D\x11"; // 2.5.29.17
constexpr char IssuerAlternativeName[] = "\x55\x1D\x12"; // 2.5.29.18
constexpr char BasicConstraints[] = "\x55\x1D\x13"; // 2.5.29.19
constexpr char CrlNumber[] = "\x55\x1D\x14"; // 2.5.29.20
constexpr char ReasonCode[] = "\x55\x1D\x15"; // 2.5.29.21
constexpr char CrlDistributionPoints[] = "\x55\x1D\x1F"; // 2.5.29.31
constexpr char CertificatePolicies[] = "\x55\x1D\x20"; // 2.5.29.32
constexpr char AuthorityKeyId[] = "\x55\x1D\x23"; // 2.5.29.35
constexpr char ExtendedKeyUsage[] = "\x55\x1D\x25"; // 2.5.29.37
constexpr char AuthorityInfoAccess[] = "\x2B\x06\x01\x05\x05\x07\x01\x01"; // 1.3.6.1.5.5.7.1.1
} // namespace ExtensionOid

/// The content of the value of the extension `oid`, one of `ExtensionOid`; empty when there is
/// none. A view of `extensions`, or a copy of a value in several pieces.
QByteArray findExtension(Der::Slice extensions, const char *oid);

/// The subject key identifier (RFC 5280, 4.2.1.2); empty without one.
TRIVEX_QCA_EXPORT QByteArray subjectKeyIdIn(Der::Slice extensions);

/// The key identifier of the authority key identifier (RFC 5280, 4.2.1.1); empty without one.
TRIVEX_QCA_EXPORT QByteArray authorityKeyIdIn(Der::Slice extensions);

/// Whether the basic constraints (RFC 5280, 4.2.1.9) say that this is a certificate authority's.
TRIVEX_QCA_EXPORT bool isAuthority(Der::Slice extensions);

/// DER Extensions as `options` ask for them, empty when they ask for none. The key id is included
/// when `subjectKeyId` is not empty.
QByteArray encodeExtensions(const QCA::CertificateOptions &options, const QByteArray &subjectKeyId);

/// The value of a key usage extension (RFC 5280, 4.2.1.3); empty for no usage of that kind.
QByteArray encodeKeyUsage(const QCA::Constraints &constraints);

/// The value of an extended key usage extension (4.2.1.12), in their order; empty for none.
QByteArray encodePurposes(const QCA::Constraints &constraints);

} // namespace Trivex
