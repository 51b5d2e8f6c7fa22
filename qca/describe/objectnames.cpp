// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/objectnames.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/derwriter.h"
#include "qca/asn1/extensionids.h"
#include "qca/asn1/nativecoding.h"
#include "qca/describe/words.h"

#include <openssl/objects.h>

#include <algorithm>

namespace Trivex {

namespace {

struct ObjectWord {
    const char *oid;
    const char *id;
};

// RFC 4519, PKCS#9, ETSI EN 319 412-1 and the Russian profile.
constexpr ObjectWord Attributes[] = {
    //% "Name"
    {Oid::CommonName, QT_TRID_NOOP("trivex-app-attribute-name")},
    //% "Surname"
    {Oid::Surname, QT_TRID_NOOP("trivex-app-attribute-surname")},
    //% "Given name"
    {Oid::GivenName, QT_TRID_NOOP("trivex-app-attribute-given-name")},
    {Oid::Initials, "trivex-app-field-initials"},
    //% "Generation"
    {Oid::GenerationQualifier, QT_TRID_NOOP("trivex-app-attribute-generation")},
    {Oid::Pseudonym, "trivex-app-field-pseudonym"},
    {Oid::Organization, "trivex-app-field-organization"},
    {Oid::OrganizationalUnit, "trivex-app-field-department"},
    //% "Identifier of the organization"
    {Oid::OrganizationId, QT_TRID_NOOP("trivex-app-attribute-organization-id")},
    {Oid::BusinessCategory, "trivex-app-field-business"},
    {Oid::Title, "trivex-app-field-title"},
    {Oid::Country, "trivex-app-field-country"},
    {Oid::State, "trivex-app-field-state"},
    {Oid::Locality, "trivex-app-field-locality"},
    //% "Street"
    {Oid::Street, QT_TRID_NOOP("trivex-app-attribute-street")},
    {Oid::PostalCode, "trivex-app-field-postal-code"},
    {Oid::Telephone, "trivex-app-field-telephone"},
    //% "Serial number in the name"
    {Oid::SerialNumber, QT_TRID_NOOP("trivex-app-attribute-serial")},
    {Oid::NameQualifier, "trivex-app-field-qualifier"},
    {Oid::Description, "trivex-app-field-description"},
    {Oid::UserId, "trivex-app-field-user"},
    //% "Domain component"
    {Oid::DomainComponent, QT_TRID_NOOP("trivex-app-attribute-domain")},
    //% "Country of registration"
    {Oid::RegistrationCountry, QT_TRID_NOOP("trivex-app-attribute-registration-country")},
    //% "Region of registration"
    {Oid::RegistrationState, QT_TRID_NOOP("trivex-app-attribute-registration-state")},
    //% "Place of registration"
    {Oid::RegistrationLocality, QT_TRID_NOOP("trivex-app-attribute-registration-locality")},
    {Oid::EmailAddress, "trivex-app-field-email"},
    //% "Unstructured name"
    {Oid::UnstructuredName, QT_TRID_NOOP("trivex-app-attribute-unstructured")},
    {Oid::Inn, "trivex-app-field-inn"},
    {Oid::Snils, "trivex-app-field-snils"},
    //% "OGRN"
    {Oid::Ogrn, QT_TRID_NOOP("trivex-app-attribute-ogrn")},
    {Oid::Ogrnip, "trivex-app-field-ogrnip"},
    {Oid::Innle, "trivex-app-field-innle"},
};

constexpr ObjectWord Purposes[] = {
    //% "Any purpose"
    {Oid::AnyPurpose, QT_TRID_NOOP("trivex-app-use-any")},
    //% "Web server"
    {Oid::ServerPurpose, QT_TRID_NOOP("trivex-app-use-server")},
    //% "Client of a server"
    {Oid::ClientPurpose, QT_TRID_NOOP("trivex-app-use-client")},
    //% "Signing programs"
    {Oid::CodePurpose, QT_TRID_NOOP("trivex-app-use-code")},
    //% "Protecting e-mail"
    {Oid::EmailPurpose, QT_TRID_NOOP("trivex-app-use-email")},
    //% "Time stamps"
    {Oid::TimeStampPurpose, QT_TRID_NOOP("trivex-app-use-time")},
    //% "Answers about revocation (OCSP)"
    {Oid::OcspPurpose, QT_TRID_NOOP("trivex-app-use-ocsp")},
    //% "IPsec"
    {Oid::IpsecPurpose, QT_TRID_NOOP("trivex-app-use-ipsec")},
    //% "Signing documents"
    {Oid::DocumentPurpose, QT_TRID_NOOP("trivex-app-use-documents")},
    //% "Signing in with a token"
    {Oid::LogonPurpose, QT_TRID_NOOP("trivex-app-use-logon")},
    //% "Encrypting files"
    {Oid::FileSystemPurpose, QT_TRID_NOOP("trivex-app-use-files")},
    {Oid::MicrosoftDocumentPurpose, "trivex-app-use-documents"},
};

constexpr ObjectWord Policies[] = {
    //% "Any policy"
    {Oid::AnyPolicy, QT_TRID_NOOP("trivex-app-policy-any")},
    //% "Signature tool of class KS1"
    {Oid::PolicyKs1, QT_TRID_NOOP("trivex-app-policy-ks1")},
    //% "Signature tool of class KS2"
    {Oid::PolicyKs2, QT_TRID_NOOP("trivex-app-policy-ks2")},
    //% "Signature tool of class KS3"
    {Oid::PolicyKs3, QT_TRID_NOOP("trivex-app-policy-ks3")},
    //% "Signature tool of class KV1"
    {Oid::PolicyKv1, QT_TRID_NOOP("trivex-app-policy-kv1")},
    //% "Signature tool of class KV2"
    {Oid::PolicyKv2, QT_TRID_NOOP("trivex-app-policy-kv2")},
    //% "Signature tool of class KA1"
    {Oid::PolicyKa1, QT_TRID_NOOP("trivex-app-policy-ka1")},
    //% "Domain validated"
    {Oid::DomainValidation, QT_TRID_NOOP("trivex-app-policy-domain")},
    //% "Organization validated"
    {Oid::OrganizationValidation, QT_TRID_NOOP("trivex-app-policy-organization")},
    //% "Person validated"
    {Oid::PersonValidation, QT_TRID_NOOP("trivex-app-policy-person")},
    //% "Extended validation"
    {Oid::ExtendedValidation, QT_TRID_NOOP("trivex-app-policy-extended")},
};

constexpr ObjectWord Extensions[] = {
    //% "Attributes of the holder"
    {Oid::DirectoryAttributes, QT_TRID_NOOP("trivex-app-ext-directory-attributes")},
    //% "Key identifier"
    {Oid::SubjectKeyId, QT_TRID_NOOP("trivex-app-ext-key-id")},
    //% "Key usage"
    {Oid::KeyUsage, QT_TRID_NOOP("trivex-app-ext-key-usage")},
    //% "Usage period of the private key"
    {Oid::KeyUsagePeriod, QT_TRID_NOOP("trivex-app-ext-key-period")},
    //% "Other names of the holder"
    {Oid::SubjectAlternativeName, QT_TRID_NOOP("trivex-app-ext-holder-names")},
    //% "Other names of the issuer"
    {Oid::IssuerAlternativeName, QT_TRID_NOOP("trivex-app-ext-issuer-names")},
    //% "Basic constraints"
    {Oid::BasicConstraints, QT_TRID_NOOP("trivex-app-ext-basic")},
    //% "Number of the list"
    {Oid::CrlNumber, QT_TRID_NOOP("trivex-app-ext-list-number")},
    //% "Reason"
    {Oid::ReasonCode, QT_TRID_NOOP("trivex-app-ext-reason")},
    //% "Invalid since"
    {Oid::InvalidityDate, QT_TRID_NOOP("trivex-app-ext-invalid-since")},
    //% "Changes since the list"
    {Oid::DeltaCrlIndicator, QT_TRID_NOOP("trivex-app-ext-delta")},
    //% "What the list covers"
    {Oid::IssuingDistributionPoint, QT_TRID_NOOP("trivex-app-ext-list-scope")},
    //% "Issuer of the certificate"
    {Oid::CertificateIssuer, QT_TRID_NOOP("trivex-app-ext-certificate-issuer")},
    //% "Name constraints"
    {Oid::NameConstraints, QT_TRID_NOOP("trivex-app-ext-name-constraints")},
    //% "Lists of revoked certificates"
    {Oid::CrlDistributionPoints, QT_TRID_NOOP("trivex-app-ext-list-points")},
    //% "Certificate policies"
    {Oid::CertificatePolicies, QT_TRID_NOOP("trivex-app-ext-policies")},
    //% "Policy mappings"
    {Oid::PolicyMappings, QT_TRID_NOOP("trivex-app-ext-policy-mappings")},
    //% "Issuer's key identifier"
    {Oid::AuthorityKeyId, QT_TRID_NOOP("trivex-app-ext-issuer-key-id")},
    //% "Policy constraints"
    {Oid::PolicyConstraints, QT_TRID_NOOP("trivex-app-ext-policy-constraints")},
    //% "Purposes"
    {Oid::ExtendedKeyUsage, QT_TRID_NOOP("trivex-app-ext-purposes")},
    //% "Lists of changes"
    {Oid::FreshestCrl, QT_TRID_NOOP("trivex-app-ext-fresh-lists")},
    //% "Certificates to skip before any policy counts no more"
    {Oid::InhibitAnyPolicy, QT_TRID_NOOP("trivex-app-ext-inhibit-any")},
    //% "Addresses of the issuer"
    {Oid::AuthorityInfoAccess, QT_TRID_NOOP("trivex-app-ext-issuer-access")},
    //% "Addresses of the holder"
    {Oid::SubjectInfoAccess, QT_TRID_NOOP("trivex-app-ext-holder-access")},
    //% "Statements of a qualified certificate"
    {Oid::QualifiedStatements, QT_TRID_NOOP("trivex-app-ext-qualified")},
    //% "Required TLS extensions"
    {Oid::TlsFeatures, QT_TRID_NOOP("trivex-app-ext-tls")},
    //% "No revocation check of this OCSP key"
    {Oid::OcspNoCheck, QT_TRID_NOOP("trivex-app-ext-ocsp-no-check")},
    //% "Certificate transparency"
    {Oid::CertificateTransparency, QT_TRID_NOOP("trivex-app-ext-transparency")},
    //% "Draft for certificate transparency"
    {Oid::TransparencyDraft, QT_TRID_NOOP("trivex-app-ext-draft")},
    //% "Certificate template"
    {Oid::MicrosoftTemplateName, QT_TRID_NOOP("trivex-app-ext-template")},
    {Oid::MicrosoftTemplate, "trivex-app-ext-template"},
    //% "Purposes for applications"
    {Oid::MicrosoftPurposes, QT_TRID_NOOP("trivex-app-ext-application-purposes")},
    //% "Version of the authority"
    {Oid::MicrosoftAuthorityVersion, QT_TRID_NOOP("trivex-app-ext-authority-version")},
    //% "Netscape: type of certificate"
    {Oid::NetscapeType, QT_TRID_NOOP("trivex-app-ext-netscape-type")},
    //% "Netscape: base address"
    {Oid::NetscapeBaseUrl, QT_TRID_NOOP("trivex-app-ext-netscape-base")},
    //% "Netscape: revocation address"
    {Oid::NetscapeRevocationUrl, QT_TRID_NOOP("trivex-app-ext-netscape-revocation")},
    //% "Netscape: revocation address of the authority"
    {Oid::NetscapeAuthorityUrl, QT_TRID_NOOP("trivex-app-ext-netscape-authority")},
    //% "Netscape: renewal address"
    {Oid::NetscapeRenewalUrl, QT_TRID_NOOP("trivex-app-ext-netscape-renewal")},
    //% "Netscape: policy address"
    {Oid::NetscapePolicyUrl, QT_TRID_NOOP("trivex-app-ext-netscape-policy")},
    //% "Netscape: server name"
    {Oid::NetscapeServerName, QT_TRID_NOOP("trivex-app-ext-netscape-server")},
    //% "Netscape: comment"
    {Oid::NetscapeComment, QT_TRID_NOOP("trivex-app-ext-netscape-comment")},
    //% "Signature tool of the holder"
    {Oid::SubjectTool, QT_TRID_NOOP("trivex-app-ext-holder-tool")},
    //% "Signature tools of the issuer"
    {Oid::IssuerTools, QT_TRID_NOOP("trivex-app-ext-issuer-tools")},
    //% "How the identity was checked"
    {Oid::IdentificationKind, QT_TRID_NOOP("trivex-app-ext-identification")},
    //% "Challenge password"
    {Oid::ChallengePassword, QT_TRID_NOOP("trivex-app-ext-challenge")},
    {Oid::UnstructuredName, "trivex-app-attribute-unstructured"},
    //% "Wanted extensions"
    {Oid::ExtensionRequest, QT_TRID_NOOP("trivex-app-ext-wanted")},
    {Oid::MicrosoftExtensionRequest, "trivex-app-ext-wanted"},
};

/// The word of `oid`; empty when the table has none.
template <size_t Size> QString wordOf(const ObjectWord (&table)[Size], const QByteArray &oid)
{
    const auto *const found =
        std::find_if(std::begin(table), std::end(table),
                     [&oid](const ObjectWord &one) { return oid == one.oid; });
    return found == std::end(table) ? QString() : qtTrId(found->id);
}

int libraryNumber(Der::Slice oid)
{
    const QByteArray encoded = Der::write(Der::ObjectIdentifier, oid.view());
    const auto object = decodeNative<ObjectHandle>(Der::sliceOf(encoded), d2i_ASN1_OBJECT);
    return object ? OBJ_obj2nid(object.get()) : NID_undef;
}

QString withOid(const QString &name, const QByteArray &oid)
{
    return QStringLiteral("%1 (%2)").arg(name, QString::fromLatin1(oid));
}

QString orOid(const QString &name, const QByteArray &oid)
{
    return name.isEmpty() ? QString::fromLatin1(oid) : name;
}

} // namespace

QString attributeName(const QByteArray &oid)
{
    return orOid(wordOf(Attributes, oid), oid);
}

QString attributeAbbreviation(const QByteArray &oid)
{
    const int number = OBJ_txt2nid(oid.constData());
    ERR_clear_error();
    return number == NID_undef ? QString::fromLatin1(oid) : QString::fromLatin1(OBJ_nid2sn(number));
}

QString purposeName(const QByteArray &oid)
{
    return orOid(wordOf(Purposes, oid), oid);
}

QString policyName(const QByteArray &oid)
{
    const QString word = wordOf(Policies, oid);
    return word.isEmpty() ? QString::fromLatin1(oid) : withOid(word, oid);
}

QString extensionName(const QByteArray &oid)
{
    return wordOf(Extensions, oid);
}

QString libraryName(Der::Slice oid)
{
    const int number = libraryNumber(oid);
    return number == NID_undef ? QString() : QString::fromLatin1(OBJ_nid2ln(number));
}

QString objectText(Der::Slice oid)
{
    const QByteArray dotted = Der::oidText(oid);
    if (dotted.isEmpty())
        return damagedText(oid);
    const QString name = libraryName(oid);
    return name.isEmpty() ? QString::fromLatin1(dotted) : withOid(name, dotted);
}

} // namespace Trivex
