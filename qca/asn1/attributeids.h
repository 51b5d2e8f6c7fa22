// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

/// The object identifiers of attributes and of the contents of messages, each by its dotted form.
/// An object identifier of the product is written in one of algorithmids.h, attributeids.h and
/// extensionids.h; tables elsewhere name it.
namespace Trivex::Oid {

// Attributes of names (X.520, RFC 4519, RFC 2985, RFC 3739).
inline constexpr char CommonName[] = "2.5.4.3";
inline constexpr char Surname[] = "2.5.4.4";
inline constexpr char SerialNumber[] = "2.5.4.5";
inline constexpr char Country[] = "2.5.4.6";
inline constexpr char Locality[] = "2.5.4.7";
inline constexpr char State[] = "2.5.4.8";
inline constexpr char Street[] = "2.5.4.9";
inline constexpr char Organization[] = "2.5.4.10";
inline constexpr char OrganizationalUnit[] = "2.5.4.11";
inline constexpr char Title[] = "2.5.4.12";
inline constexpr char Description[] = "2.5.4.13";
inline constexpr char BusinessCategory[] = "2.5.4.15";
inline constexpr char PostalCode[] = "2.5.4.17";
inline constexpr char Telephone[] = "2.5.4.20";
inline constexpr char X121Address[] = "2.5.4.24";
inline constexpr char GivenName[] = "2.5.4.42";
inline constexpr char Initials[] = "2.5.4.43";
inline constexpr char GenerationQualifier[] = "2.5.4.44";
inline constexpr char NameQualifier[] = "2.5.4.46";
inline constexpr char Pseudonym[] = "2.5.4.65";
inline constexpr char OrganizationId[] = "2.5.4.97";
inline constexpr char UserId[] = "0.9.2342.19200300.100.1.1";
inline constexpr char DomainComponent[] = "0.9.2342.19200300.100.1.25";
inline constexpr char EmailAddress[] = "1.2.840.113549.1.9.1";
inline constexpr char UnstructuredName[] = "1.2.840.113549.1.9.2";
inline constexpr char Gender[] = "1.3.6.1.5.5.7.9.3";
inline constexpr char Citizenship[] = "1.3.6.1.5.5.7.9.4";
inline constexpr char Residence[] = "1.3.6.1.5.5.7.9.5";
inline constexpr char RegistrationLocality[] = "1.3.6.1.4.1.311.60.2.1.1";
inline constexpr char RegistrationState[] = "1.3.6.1.4.1.311.60.2.1.2";
inline constexpr char RegistrationCountry[] = "1.3.6.1.4.1.311.60.2.1.3";

// Russian attributes of names (order 621 of the federal security service, 2020).
inline constexpr char Inn[] = "1.2.643.3.131.1.1";
inline constexpr char Ogrn[] = "1.2.643.100.1";
inline constexpr char Snils[] = "1.2.643.100.3";
inline constexpr char Innle[] = "1.2.643.100.4";
inline constexpr char Ogrnip[] = "1.2.643.100.5";
inline constexpr char IdentificationKind[] = "1.2.643.100.114"; // an extension as well

// Names of other kinds among the alternative names (RFC 5280, 4.2.1.6).
inline constexpr char PrincipalName[] = "1.3.6.1.4.1.311.20.2.3";
inline constexpr char XmppAddress[] = "1.3.6.1.5.5.7.8.5"; // RFC 6120, 13.7.1.4
inline constexpr char ServiceName[] = "1.3.6.1.5.5.7.8.7";
inline constexpr char SmtpMailbox[] = "1.3.6.1.5.5.7.8.9";

// Attributes of requests (RFC 2985).
inline constexpr char ChallengePassword[] = "1.2.840.113549.1.9.7";
inline constexpr char ExtensionRequest[] = "1.2.840.113549.1.9.14";
inline constexpr char MicrosoftExtensionRequest[] = "1.3.6.1.4.1.311.2.1.14";

// Attributes of signed messages (RFC 5652, RFC 5035).
inline constexpr char ContentType[] = "1.2.840.113549.1.9.3";
inline constexpr char MessageDigest[] = "1.2.840.113549.1.9.4";
inline constexpr char SigningTime[] = "1.2.840.113549.1.9.5";
inline constexpr char SigningCertificateV2[] = "1.2.840.113549.1.9.16.2.47";

// Contents of messages (RFC 5652, RFC 5083).
inline constexpr char Data[] = "1.2.840.113549.1.7.1";
inline constexpr char SignedData[] = "1.2.840.113549.1.7.2";
inline constexpr char EnvelopedData[] = "1.2.840.113549.1.7.3";
inline constexpr char SignedAndEnvelopedData[] = "1.2.840.113549.1.7.4"; // of PKCS#7 alone
inline constexpr char EncryptedData[] = "1.2.840.113549.1.7.6";
inline constexpr char AuthEnvelopedData[] = "1.2.840.113549.1.9.16.1.23";

} // namespace Trivex::Oid
