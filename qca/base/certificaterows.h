// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace Trivex {

/// The rows of a certificate's info model, in their order, which is part of its interface: it has
/// no role that tells what a row is, and labels are words of the user's language.
enum class CertificateRow {
    Issuer,
    SerialNumber,
    SignatureAlgorithm,
    SubjectName,
    Organization,
    Email,
    OrganizationalUnit,
    CountryCode,
    State,
    Locality,
    Address,
    Inn,
    Snils,
    Ogrn,
    Innle,
    Ogrnip,
    IdentificationKind,
    ValidFrom,
    ValidUntil,
    PublicKeyId,
    PublicKeyAlgorithm,
    PublicKeyMarker,
    PrivateKeyAvailability,
    PrivateKeyLocation,
    PrivateKeyManufacturer,
};

} // namespace Trivex
