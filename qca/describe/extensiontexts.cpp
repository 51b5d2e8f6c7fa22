// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/extensiontexts.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/derwriter.h"
#include "qca/asn1/extensionids.h"
#include "qca/asn1/nativecoding.h"
#include "qca/describe/extensionparts.h"
#include "qca/describe/objectnames.h"

#include <openssl/x509v3.h>

#include <algorithm>

namespace Trivex {

namespace {

struct ExtensionWriter {
    const char *oid;
    bool (*add)(Der::Slice value, Lines *lines);
};

constexpr ExtensionWriter Writers[] = {
    {Oid::SubjectKeyId, &addSubjectKeyId},
    {Oid::KeyUsage, &addKeyUsage},
    {Oid::KeyUsagePeriod, &addKeyPeriod},
    {Oid::SubjectAlternativeName, &addNames},
    {Oid::IssuerAlternativeName, &addNames},
    {Oid::BasicConstraints, &addBasicConstraints},
    {Oid::CrlNumber, &addNumber},
    {Oid::ReasonCode, &addReason},
    {Oid::InvalidityDate, &addTime},
    {Oid::DeltaCrlIndicator, &addNumber},
    {Oid::IssuingDistributionPoint, &addListScope},
    {Oid::CertificateIssuer, &addNames},
    {Oid::NameConstraints, &addNameConstraints},
    {Oid::CrlDistributionPoints, &addListPoints},
    {Oid::CertificatePolicies, &addPolicies},
    {Oid::PolicyMappings, &addPolicyMappings},
    {Oid::AuthorityKeyId, &addAuthorityKeyId},
    {Oid::PolicyConstraints, &addPolicyConstraints},
    {Oid::ExtendedKeyUsage, &addPurposes},
    {Oid::FreshestCrl, &addListPoints},
    {Oid::InhibitAnyPolicy, &addNumber},
    {Oid::AuthorityInfoAccess, &addAccess},
    {Oid::QualifiedStatements, &addQualifiedStatements},
    {Oid::SubjectInfoAccess, &addAccess},
    {Oid::TlsFeatures, &addTlsFeatures},
    {Oid::OcspNoCheck, &addNull},
    {Oid::CertificateTransparency, &addTransparency},
    {Oid::TransparencyDraft, &addNull},
    {Oid::MicrosoftTemplateName, &addString},
    {Oid::MicrosoftAuthorityVersion, &addNumber},
    {Oid::MicrosoftTemplate, &addTemplate},
    {Oid::MicrosoftPurposes, &addApplicationPurposes},
    {Oid::NetscapeType, &addNetscapeType},
    {Oid::NetscapeBaseUrl, &addString},
    {Oid::NetscapeRevocationUrl, &addString},
    {Oid::NetscapeAuthorityUrl, &addString},
    {Oid::NetscapeRenewalUrl, &addString},
    {Oid::NetscapePolicyUrl, &addString},
    {Oid::NetscapeServerName, &addString},
    {Oid::NetscapeComment, &addString},
    {Oid::SubjectTool, &addString},
    {Oid::IssuerTools, &addIssuerTools},
    {Oid::IdentificationKind, &addIdentification},
    {Oid::UnstructuredName, &addString},
    {Oid::ChallengePassword, &addString},
};

/// Values that libcrypto is asked to print. Its printing may be slow on larger ones.
constexpr int LargestPrinted = 4096;

/// As libcrypto prints it; empty for an extension that it doesn't know, and one that it can't read.
QString printedText(Der::Slice oid, Der::Slice value)
{
    if (value.size > LargestPrinted)
        return {};
    const QByteArray whole = Der::writeSequence({Der::write(Der::ObjectIdentifier, oid.view()),
                                                 Der::write(Der::OctetString, value.view())});
    using ExtensionHandle = Handle<X509_EXTENSION, X509_EXTENSION_free>;
    const auto extension = decodeNative<ExtensionHandle>(Der::sliceOf(whole), d2i_X509_EXTENSION);
    const BioHandle out(BIO_new(BIO_s_mem()));
    const bool isPrinted =
        extension && out && X509V3_EXT_print(out.get(), extension.get(), 0, 0) == 1;
    ERR_clear_error();
    char *data = nullptr;
    const long size = isPrinted ? BIO_get_mem_data(out.get(), &data) : 0;
    Lines lines;
    const auto printed = QString::fromUtf8(data, int(size)).split(QLatin1Char('\n'));
    for (const QString &line : printed) {
        if (!line.trimmed().isEmpty())
            lines.add(line.trimmed());
    }
    return lines.text();
}

QString unknownText(Der::Slice oid, Der::Slice value)
{
    const QString printed = printedText(oid, value);
    return printed.isEmpty() ? bytesText(value) : printed;
}

bool isCritical(Der::Reader &parts)
{
    Der::Slice flag;
    return parts.next(Der::Boolean, &flag) && flag.size == 1 && flag.at(0) != 0;
}

ShownRow extensionRow(Der::Slice extension)
{
    Der::Reader parts(extension);
    Der::Slice oid;
    if (!parts.next(Der::ObjectIdentifier, &oid))
        return {{}, qtTrId("trivex-app-damaged-part"), damagedText(extension), true};
    const bool critical = isCritical(parts);
    QByteArray value;
    const bool hasValue = parts.nextString(Der::OctetString, &value);
    QString label = extensionLabel(oid);
    if (critical) {
        //% "%1 (critical)"
        label = qtTrId("trivex-app-ext-critical").arg(label);
    }
    QString text = hasValue ? extensionText(oid, Der::sliceOf(value)) : damagedText(extension);
    if (text.isEmpty()) {
        //% "empty"
        text = qtTrId("trivex-app-ext-empty");
    }
    return {Der::oidText(oid), label, text, false};
}

} // namespace

QString extensionLabel(Der::Slice oid)
{
    const QString name = extensionName(Der::oidText(oid));
    return name.isEmpty() ? objectText(oid) : name;
}

QString extensionText(Der::Slice oid, Der::Slice value)
{
    const QByteArray dotted = Der::oidText(oid);
    const auto *const writer =
        std::find_if(std::begin(Writers), std::end(Writers),
                     [&dotted](const ExtensionWriter &one) { return dotted == one.oid; });
    if (writer == std::end(Writers))
        return unknownText(oid, value);
    Lines lines;
    return writer->add(value, &lines) ? lines.text() : damagedText(value);
}

QVector<ShownRow> extensionRows(Der::Slice extensions)
{
    QVector<ShownRow> rows;
    Der::Reader reader(extensions);
    while (!reader.atEnd()) {
        const Der::Slice rest = reader.rest();
        Der::Slice extension;
        const bool isWhole = reader.next(Der::Sequence, &extension);
        // The rows behind those that are shown are only counted.
        if (rows.size() > MaxShownRows)
            rows += ShownRow();
        else if (isWhole)
            rows += extensionRow(extension);
        else
            rows += {{}, qtTrId("trivex-app-damaged-part"), damagedText(rest), true};
        if (!isWhole)
            break;
    }
    return rows;
}

} // namespace Trivex
