// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/objectnames.h"

#include "qca/asn1/derwriter.h"
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
    {"2.5.4.3", QT_TRID_NOOP("trivex-app-attribute-name")},
    //% "Surname"
    {"2.5.4.4", QT_TRID_NOOP("trivex-app-attribute-surname")},
    //% "Given name"
    {"2.5.4.42", QT_TRID_NOOP("trivex-app-attribute-given-name")},
    {"2.5.4.43", "trivex-app-field-initials"},
    //% "Generation"
    {"2.5.4.44", QT_TRID_NOOP("trivex-app-attribute-generation")},
    {"2.5.4.65", "trivex-app-field-pseudonym"},
    {"2.5.4.10", "trivex-app-field-organization"},
    {"2.5.4.11", "trivex-app-field-department"},
    //% "Identifier of the organization"
    {"2.5.4.97", QT_TRID_NOOP("trivex-app-attribute-organization-id")},
    {"2.5.4.15", "trivex-app-field-business"},
    {"2.5.4.12", "trivex-app-field-title"},
    {"2.5.4.6", "trivex-app-field-country"},
    {"2.5.4.8", "trivex-app-field-state"},
    {"2.5.4.7", "trivex-app-field-locality"},
    //% "Street"
    {"2.5.4.9", QT_TRID_NOOP("trivex-app-attribute-street")},
    {"2.5.4.17", "trivex-app-field-postal-code"},
    {"2.5.4.20", "trivex-app-field-telephone"},
    //% "Serial number in the name"
    {"2.5.4.5", QT_TRID_NOOP("trivex-app-attribute-serial")},
    {"2.5.4.46", "trivex-app-field-qualifier"},
    {"2.5.4.13", "trivex-app-field-description"},
    {"0.9.2342.19200300.100.1.1", "trivex-app-field-user"},
    //% "Domain component"
    {"0.9.2342.19200300.100.1.25", QT_TRID_NOOP("trivex-app-attribute-domain")},
    //% "Country of registration"
    {"1.3.6.1.4.1.311.60.2.1.3", QT_TRID_NOOP("trivex-app-attribute-registration-country")},
    //% "Region of registration"
    {"1.3.6.1.4.1.311.60.2.1.2", QT_TRID_NOOP("trivex-app-attribute-registration-state")},
    //% "Place of registration"
    {"1.3.6.1.4.1.311.60.2.1.1", QT_TRID_NOOP("trivex-app-attribute-registration-locality")},
    {"1.2.840.113549.1.9.1", "trivex-app-field-email"},
    //% "Unstructured name"
    {"1.2.840.113549.1.9.2", QT_TRID_NOOP("trivex-app-attribute-unstructured")},
    {"1.2.643.3.131.1.1", "trivex-app-field-inn"},
    {"1.2.643.100.3", "trivex-app-field-snils"},
    //% "OGRN"
    {"1.2.643.100.1", QT_TRID_NOOP("trivex-app-attribute-ogrn")},
    {"1.2.643.100.5", "trivex-app-field-ogrnip"},
    {"1.2.643.100.4", "trivex-app-field-innle"},
};

constexpr ObjectWord Purposes[] = {
    //% "Any purpose"
    {"2.5.29.37.0", QT_TRID_NOOP("trivex-app-use-any")},
    //% "Web server"
    {"1.3.6.1.5.5.7.3.1", QT_TRID_NOOP("trivex-app-use-server")},
    //% "Client of a server"
    {"1.3.6.1.5.5.7.3.2", QT_TRID_NOOP("trivex-app-use-client")},
    //% "Signing programs"
    {"1.3.6.1.5.5.7.3.3", QT_TRID_NOOP("trivex-app-use-code")},
    //% "Protecting e-mail"
    {"1.3.6.1.5.5.7.3.4", QT_TRID_NOOP("trivex-app-use-email")},
    //% "Time stamps"
    {"1.3.6.1.5.5.7.3.8", QT_TRID_NOOP("trivex-app-use-time")},
    //% "Answers about revocation (OCSP)"
    {"1.3.6.1.5.5.7.3.9", QT_TRID_NOOP("trivex-app-use-ocsp")},
    //% "IPsec"
    {"1.3.6.1.5.5.7.3.17", QT_TRID_NOOP("trivex-app-use-ipsec")},
    //% "Signing documents"
    {"1.3.6.1.5.5.7.3.36", QT_TRID_NOOP("trivex-app-use-documents")},
    //% "Signing in with a token"
    {"1.3.6.1.4.1.311.20.2.2", QT_TRID_NOOP("trivex-app-use-logon")},
    //% "Encrypting files"
    {"1.3.6.1.4.1.311.10.3.4", QT_TRID_NOOP("trivex-app-use-files")},
    {"1.3.6.1.4.1.311.10.3.12", "trivex-app-use-documents"},
};

constexpr ObjectWord Policies[] = {
    //% "Any policy"
    {"2.5.29.32.0", QT_TRID_NOOP("trivex-app-policy-any")},
    //% "Signature tool of class KS1"
    {"1.2.643.100.113.1", QT_TRID_NOOP("trivex-app-policy-ks1")},
    //% "Signature tool of class KS2"
    {"1.2.643.100.113.2", QT_TRID_NOOP("trivex-app-policy-ks2")},
    //% "Signature tool of class KS3"
    {"1.2.643.100.113.3", QT_TRID_NOOP("trivex-app-policy-ks3")},
    //% "Signature tool of class KV1"
    {"1.2.643.100.113.4", QT_TRID_NOOP("trivex-app-policy-kv1")},
    //% "Signature tool of class KV2"
    {"1.2.643.100.113.5", QT_TRID_NOOP("trivex-app-policy-kv2")},
    //% "Signature tool of class KA1"
    {"1.2.643.100.113.6", QT_TRID_NOOP("trivex-app-policy-ka1")},
    //% "Domain validated"
    {"2.23.140.1.2.1", QT_TRID_NOOP("trivex-app-policy-domain")},
    //% "Organization validated"
    {"2.23.140.1.2.2", QT_TRID_NOOP("trivex-app-policy-organization")},
    //% "Person validated"
    {"2.23.140.1.2.3", QT_TRID_NOOP("trivex-app-policy-person")},
    //% "Extended validation"
    {"2.23.140.1.1", QT_TRID_NOOP("trivex-app-policy-extended")},
};

constexpr ObjectWord Extensions[] = {
    //% "Attributes of the holder"
    {"2.5.29.9", QT_TRID_NOOP("trivex-app-ext-directory-attributes")},
    //% "Key identifier"
    {"2.5.29.14", QT_TRID_NOOP("trivex-app-ext-key-id")},
    //% "Key usage"
    {"2.5.29.15", QT_TRID_NOOP("trivex-app-ext-key-usage")},
    //% "Usage period of the private key"
    {"2.5.29.16", QT_TRID_NOOP("trivex-app-ext-key-period")},
    //% "Other names of the holder"
    {"2.5.29.17", QT_TRID_NOOP("trivex-app-ext-holder-names")},
    //% "Other names of the issuer"
    {"2.5.29.18", QT_TRID_NOOP("trivex-app-ext-issuer-names")},
    //% "Basic constraints"
    {"2.5.29.19", QT_TRID_NOOP("trivex-app-ext-basic")},
    //% "Number of the list"
    {"2.5.29.20", QT_TRID_NOOP("trivex-app-ext-list-number")},
    //% "Reason"
    {"2.5.29.21", QT_TRID_NOOP("trivex-app-ext-reason")},
    //% "Invalid since"
    {"2.5.29.24", QT_TRID_NOOP("trivex-app-ext-invalid-since")},
    //% "Changes since the list"
    {"2.5.29.27", QT_TRID_NOOP("trivex-app-ext-delta")},
    //% "What the list covers"
    {"2.5.29.28", QT_TRID_NOOP("trivex-app-ext-list-scope")},
    //% "Issuer of the certificate"
    {"2.5.29.29", QT_TRID_NOOP("trivex-app-ext-certificate-issuer")},
    //% "Name constraints"
    {"2.5.29.30", QT_TRID_NOOP("trivex-app-ext-name-constraints")},
    //% "Lists of revoked certificates"
    {"2.5.29.31", QT_TRID_NOOP("trivex-app-ext-list-points")},
    //% "Certificate policies"
    {"2.5.29.32", QT_TRID_NOOP("trivex-app-ext-policies")},
    //% "Policy mappings"
    {"2.5.29.33", QT_TRID_NOOP("trivex-app-ext-policy-mappings")},
    //% "Issuer's key identifier"
    {"2.5.29.35", QT_TRID_NOOP("trivex-app-ext-issuer-key-id")},
    //% "Policy constraints"
    {"2.5.29.36", QT_TRID_NOOP("trivex-app-ext-policy-constraints")},
    //% "Purposes"
    {"2.5.29.37", QT_TRID_NOOP("trivex-app-ext-purposes")},
    //% "Lists of changes"
    {"2.5.29.46", QT_TRID_NOOP("trivex-app-ext-fresh-lists")},
    //% "Certificates to skip before any policy counts no more"
    {"2.5.29.54", QT_TRID_NOOP("trivex-app-ext-inhibit-any")},
    //% "Addresses of the issuer"
    {"1.3.6.1.5.5.7.1.1", QT_TRID_NOOP("trivex-app-ext-issuer-access")},
    //% "Addresses of the holder"
    {"1.3.6.1.5.5.7.1.11", QT_TRID_NOOP("trivex-app-ext-holder-access")},
    //% "Statements of a qualified certificate"
    {"1.3.6.1.5.5.7.1.3", QT_TRID_NOOP("trivex-app-ext-qualified")},
    //% "Required TLS extensions"
    {"1.3.6.1.5.5.7.1.24", QT_TRID_NOOP("trivex-app-ext-tls")},
    //% "No revocation check of this OCSP key"
    {"1.3.6.1.5.5.7.48.1.5", QT_TRID_NOOP("trivex-app-ext-ocsp-no-check")},
    //% "Certificate transparency"
    {"1.3.6.1.4.1.11129.2.4.2", QT_TRID_NOOP("trivex-app-ext-transparency")},
    //% "Draft for certificate transparency"
    {"1.3.6.1.4.1.11129.2.4.3", QT_TRID_NOOP("trivex-app-ext-draft")},
    //% "Certificate template"
    {"1.3.6.1.4.1.311.20.2", QT_TRID_NOOP("trivex-app-ext-template")},
    {"1.3.6.1.4.1.311.21.7", "trivex-app-ext-template"},
    //% "Purposes for applications"
    {"1.3.6.1.4.1.311.21.10", QT_TRID_NOOP("trivex-app-ext-application-purposes")},
    //% "Version of the authority"
    {"1.3.6.1.4.1.311.21.1", QT_TRID_NOOP("trivex-app-ext-authority-version")},
    //% "Netscape: type of certificate"
    {"2.16.840.1.113730.1.1", QT_TRID_NOOP("trivex-app-ext-netscape-type")},
    //% "Netscape: base address"
    {"2.16.840.1.113730.1.2", QT_TRID_NOOP("trivex-app-ext-netscape-base")},
    //% "Netscape: revocation address"
    {"2.16.840.1.113730.1.3", QT_TRID_NOOP("trivex-app-ext-netscape-revocation")},
    //% "Netscape: revocation address of the authority"
    {"2.16.840.1.113730.1.4", QT_TRID_NOOP("trivex-app-ext-netscape-authority")},
    //% "Netscape: renewal address"
    {"2.16.840.1.113730.1.7", QT_TRID_NOOP("trivex-app-ext-netscape-renewal")},
    //% "Netscape: policy address"
    {"2.16.840.1.113730.1.8", QT_TRID_NOOP("trivex-app-ext-netscape-policy")},
    //% "Netscape: server name"
    {"2.16.840.1.113730.1.12", QT_TRID_NOOP("trivex-app-ext-netscape-server")},
    //% "Netscape: comment"
    {"2.16.840.1.113730.1.13", QT_TRID_NOOP("trivex-app-ext-netscape-comment")},
    //% "Signature tool of the holder"
    {"1.2.643.100.111", QT_TRID_NOOP("trivex-app-ext-holder-tool")},
    //% "Signature tools of the issuer"
    {"1.2.643.100.112", QT_TRID_NOOP("trivex-app-ext-issuer-tools")},
    //% "How the identity was checked"
    {"1.2.643.100.114", QT_TRID_NOOP("trivex-app-ext-identification")},
    //% "Challenge password"
    {"1.2.840.113549.1.9.7", QT_TRID_NOOP("trivex-app-ext-challenge")},
    {"1.2.840.113549.1.9.2", "trivex-app-attribute-unstructured"},
    //% "Wanted extensions"
    {"1.2.840.113549.1.9.14", QT_TRID_NOOP("trivex-app-ext-wanted")},
    {"1.3.6.1.4.1.311.2.1.14", "trivex-app-ext-wanted"},
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
