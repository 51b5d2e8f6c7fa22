// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"
#include "qca/asn1/extensionids.h"
#include "qca/asn1/oidoctets.h"

#include <QtCrypto>

namespace Trivex {

/// Fills in the values of extensions (RFC 5280, 4.2): names, constraints, policies, locations, key
/// ids. `extensions` is the content of the list. An extension that does not decode counts as
/// absent; the first of several of one kind counts.
void decodeExtensions(Der::Slice extensions, QCA::CertContextProps *properties);

/// Adds only the alternative names.
void decodeAlternativeNames(Der::Slice extensions, QCA::CertContextProps *properties);

/// The extensions that are looked for.
namespace ExtensionOid {
inline constexpr Der::OidOctets SubjectKeyId(Oid::SubjectKeyId);
inline constexpr Der::OidOctets KeyUsage(Oid::KeyUsage);
inline constexpr Der::OidOctets SubjectAlternativeName(Oid::SubjectAlternativeName);
inline constexpr Der::OidOctets IssuerAlternativeName(Oid::IssuerAlternativeName);
inline constexpr Der::OidOctets BasicConstraints(Oid::BasicConstraints);
inline constexpr Der::OidOctets CrlNumber(Oid::CrlNumber);
inline constexpr Der::OidOctets ReasonCode(Oid::ReasonCode);
inline constexpr Der::OidOctets CrlDistributionPoints(Oid::CrlDistributionPoints);
inline constexpr Der::OidOctets CertificatePolicies(Oid::CertificatePolicies);
inline constexpr Der::OidOctets AuthorityKeyId(Oid::AuthorityKeyId);
inline constexpr Der::OidOctets ExtendedKeyUsage(Oid::ExtendedKeyUsage);
inline constexpr Der::OidOctets AuthorityInfoAccess(Oid::AuthorityInfoAccess);
} // namespace ExtensionOid

/// The content of the value of the extension `oid`; empty when there is none. A view of
/// `extensions`, or a copy of a value in several pieces.
QByteArray findExtension(Der::Slice extensions, const Der::OidOctets &oid);

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
