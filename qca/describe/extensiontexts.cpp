// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/extensiontexts.h"

#include "qca/asn1/derwriter.h"
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
    {"2.5.29.14", &addSubjectKeyId},
    {"2.5.29.15", &addKeyUsage},
    {"2.5.29.16", &addKeyPeriod},
    {"2.5.29.17", &addNames},
    {"2.5.29.18", &addNames},
    {"2.5.29.19", &addBasicConstraints},
    {"2.5.29.20", &addNumber},
    {"2.5.29.21", &addReason},
    {"2.5.29.24", &addTime},
    {"2.5.29.27", &addNumber},
    {"2.5.29.28", &addListScope},
    {"2.5.29.29", &addNames},
    {"2.5.29.30", &addNameConstraints},
    {"2.5.29.31", &addListPoints},
    {"2.5.29.32", &addPolicies},
    {"2.5.29.33", &addPolicyMappings},
    {"2.5.29.35", &addAuthorityKeyId},
    {"2.5.29.36", &addPolicyConstraints},
    {"2.5.29.37", &addPurposes},
    {"2.5.29.46", &addListPoints},
    {"2.5.29.54", &addNumber},
    {"1.3.6.1.5.5.7.1.1", &addAccess},
    {"1.3.6.1.5.5.7.1.3", &addQualifiedStatements},
    {"1.3.6.1.5.5.7.1.11", &addAccess},
    {"1.3.6.1.5.5.7.1.24", &addTlsFeatures},
    {"1.3.6.1.5.5.7.48.1.5", &addNull},
    {"1.3.6.1.4.1.11129.2.4.2", &addTransparency},
    {"1.3.6.1.4.1.11129.2.4.3", &addNull},
    {"1.3.6.1.4.1.311.20.2", &addString},
    {"1.3.6.1.4.1.311.21.1", &addNumber},
    {"1.3.6.1.4.1.311.21.7", &addTemplate},
    {"1.3.6.1.4.1.311.21.10", &addApplicationPurposes},
    {"2.16.840.1.113730.1.1", &addNetscapeType},
    {"2.16.840.1.113730.1.2", &addString},
    {"2.16.840.1.113730.1.3", &addString},
    {"2.16.840.1.113730.1.4", &addString},
    {"2.16.840.1.113730.1.7", &addString},
    {"2.16.840.1.113730.1.8", &addString},
    {"2.16.840.1.113730.1.12", &addString},
    {"2.16.840.1.113730.1.13", &addString},
    {"1.2.643.100.111", &addString},
    {"1.2.643.100.112", &addIssuerTools},
    {"1.2.643.100.114", &addIdentification},
    {"1.2.840.113549.1.9.2", &addString},
    {"1.2.840.113549.1.9.7", &addString},
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
