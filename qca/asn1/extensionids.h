// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

/// The object identifiers of extensions and of what stands in them, each by its dotted form. An
/// object identifier of the product is written in one of algorithmids.h, attributeids.h and
/// extensionids.h; tables elsewhere name it.
namespace Trivex::Oid {

// Extensions of certificates and lists (RFC 5280, 4.2 and 5.2).
inline constexpr char DirectoryAttributes[] = "2.5.29.9";
inline constexpr char SubjectKeyId[] = "2.5.29.14";
inline constexpr char KeyUsage[] = "2.5.29.15";
inline constexpr char KeyUsagePeriod[] = "2.5.29.16";
inline constexpr char SubjectAlternativeName[] = "2.5.29.17";
inline constexpr char IssuerAlternativeName[] = "2.5.29.18";
inline constexpr char BasicConstraints[] = "2.5.29.19";
inline constexpr char CrlNumber[] = "2.5.29.20";
inline constexpr char ReasonCode[] = "2.5.29.21";
inline constexpr char InvalidityDate[] = "2.5.29.24";
inline constexpr char DeltaCrlIndicator[] = "2.5.29.27";
inline constexpr char IssuingDistributionPoint[] = "2.5.29.28";
inline constexpr char CertificateIssuer[] = "2.5.29.29";
inline constexpr char NameConstraints[] = "2.5.29.30";
inline constexpr char CrlDistributionPoints[] = "2.5.29.31";
inline constexpr char CertificatePolicies[] = "2.5.29.32";
inline constexpr char PolicyMappings[] = "2.5.29.33";
inline constexpr char AuthorityKeyId[] = "2.5.29.35";
inline constexpr char PolicyConstraints[] = "2.5.29.36";
inline constexpr char ExtendedKeyUsage[] = "2.5.29.37";
inline constexpr char FreshestCrl[] = "2.5.29.46";
inline constexpr char InhibitAnyPolicy[] = "2.5.29.54";
inline constexpr char AuthorityInfoAccess[] = "1.3.6.1.5.5.7.1.1";
inline constexpr char QualifiedStatements[] = "1.3.6.1.5.5.7.1.3";
inline constexpr char SubjectInfoAccess[] = "1.3.6.1.5.5.7.1.11";
inline constexpr char TlsFeatures[] = "1.3.6.1.5.5.7.1.24";
inline constexpr char OcspNoCheck[] = "1.3.6.1.5.5.7.48.1.5";
inline constexpr char CertificateTransparency[] = "1.3.6.1.4.1.11129.2.4.2";
inline constexpr char TransparencyDraft[] = "1.3.6.1.4.1.11129.2.4.3";
inline constexpr char MicrosoftTemplateName[] = "1.3.6.1.4.1.311.20.2";
inline constexpr char MicrosoftAuthorityVersion[] = "1.3.6.1.4.1.311.21.1";
inline constexpr char MicrosoftTemplate[] = "1.3.6.1.4.1.311.21.7";
inline constexpr char MicrosoftPurposes[] = "1.3.6.1.4.1.311.21.10";
inline constexpr char NetscapeType[] = "2.16.840.1.113730.1.1";
inline constexpr char NetscapeBaseUrl[] = "2.16.840.1.113730.1.2";
inline constexpr char NetscapeRevocationUrl[] = "2.16.840.1.113730.1.3";
inline constexpr char NetscapeAuthorityUrl[] = "2.16.840.1.113730.1.4";
inline constexpr char NetscapeRenewalUrl[] = "2.16.840.1.113730.1.7";
inline constexpr char NetscapePolicyUrl[] = "2.16.840.1.113730.1.8";
inline constexpr char NetscapeServerName[] = "2.16.840.1.113730.1.12";
inline constexpr char NetscapeComment[] = "2.16.840.1.113730.1.13";
inline constexpr char SubjectTool[] = "1.2.643.100.111";
inline constexpr char IssuerTools[] = "1.2.643.100.112";

// Purposes of keys.
inline constexpr char AnyPurpose[] = "2.5.29.37.0";
inline constexpr char ServerPurpose[] = "1.3.6.1.5.5.7.3.1";
inline constexpr char ClientPurpose[] = "1.3.6.1.5.5.7.3.2";
inline constexpr char CodePurpose[] = "1.3.6.1.5.5.7.3.3";
inline constexpr char EmailPurpose[] = "1.3.6.1.5.5.7.3.4";
inline constexpr char TimeStampPurpose[] = "1.3.6.1.5.5.7.3.8";
inline constexpr char OcspPurpose[] = "1.3.6.1.5.5.7.3.9";
inline constexpr char IpsecPurpose[] = "1.3.6.1.5.5.7.3.17";
inline constexpr char DocumentPurpose[] = "1.3.6.1.5.5.7.3.36";
inline constexpr char LogonPurpose[] = "1.3.6.1.4.1.311.20.2.2";
inline constexpr char FileSystemPurpose[] = "1.3.6.1.4.1.311.10.3.4";
inline constexpr char MicrosoftDocumentPurpose[] = "1.3.6.1.4.1.311.10.3.12";

// Policies, and what qualifies them.
inline constexpr char AnyPolicy[] = "2.5.29.32.0";
inline constexpr char PolicyKs1[] = "1.2.643.100.113.1";
inline constexpr char PolicyKs2[] = "1.2.643.100.113.2";
inline constexpr char PolicyKs3[] = "1.2.643.100.113.3";
inline constexpr char PolicyKv1[] = "1.2.643.100.113.4";
inline constexpr char PolicyKv2[] = "1.2.643.100.113.5";
inline constexpr char PolicyKa1[] = "1.2.643.100.113.6";
inline constexpr char ExtendedValidation[] = "2.23.140.1.1";
inline constexpr char DomainValidation[] = "2.23.140.1.2.1";
inline constexpr char OrganizationValidation[] = "2.23.140.1.2.2";
inline constexpr char PersonValidation[] = "2.23.140.1.2.3";
inline constexpr char PracticeStatement[] = "1.3.6.1.5.5.7.2.1";
inline constexpr char UserNotice[] = "1.3.6.1.5.5.7.2.2";

// Statements of qualified certificates (ETSI EN 319 412-5).
inline constexpr char QualifiedInEurope[] = "0.4.0.1862.1.1";
inline constexpr char TransactionLimit[] = "0.4.0.1862.1.2";
inline constexpr char RetentionPeriod[] = "0.4.0.1862.1.3";
inline constexpr char SecureDevice[] = "0.4.0.1862.1.4";
inline constexpr char DisclosureStatements[] = "0.4.0.1862.1.5";
inline constexpr char CertificateKind[] = "0.4.0.1862.1.6";

// Where more about a certificate is told.
inline constexpr char Ocsp[] = "1.3.6.1.5.5.7.48.1";
inline constexpr char CaIssuers[] = "1.3.6.1.5.5.7.48.2";

} // namespace Trivex::Oid
