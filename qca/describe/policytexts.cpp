// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/extensionparts.h"

#include "qca/asn1/extensionids.h"
#include "qca/describe/nametexts.h"
#include "qca/describe/objectnames.h"

#include <algorithm>

namespace Trivex {

namespace {

/// UserNotice (RFC 5280, 4.2.1.4).
void addNotice(Der::Slice notice, Lines *lines)
{
    Der::Reader reader(notice);
    Der::Slice reference;
    Der::Element text;
    if (reader.next(Der::Sequence, &reference)) {
        Der::Reader parts(reference);
        Der::Element organization;
        Der::Slice numbers;
        QStringList words;
        if (parts.next(&organization))
            words += valueText(organization);
        if (parts.next(Der::Sequence, &numbers)) {
            Der::Reader list(numbers);
            Der::Slice number;
            while (words.size() < MaxShownRows && list.next(Der::Integer, &number))
                words += numberText(number);
        }
        //% "Statement of"
        lines->add(
            labeledText(qtTrId("trivex-app-policy-reference"), words.join(QStringLiteral(", "))));
    }
    if (reader.next(&text)) {
        //% "Notice"
        lines->add(labeledText(qtTrId("trivex-app-policy-notice"), valueText(text)));
    }
    if (!reader.atEnd())
        lines->add(damagedText(reader.rest()));
}

bool addQualifier(Der::Slice qualifier, Lines *lines)
{
    Der::Reader parts(qualifier);
    Der::Slice oid;
    Der::Element value;
    if (!parts.next(Der::ObjectIdentifier, &oid))
        return false;
    const QByteArray dotted = Der::oidText(oid);
    if (!parts.next(&value))
        lines->add(objectText(oid));
    else if (dotted == Oid::UserNotice && value.tag == Der::Sequence)
        addNotice(value.content, lines);
    else if (dotted == Oid::PracticeStatement) {
        //% "Rules"
        lines->add(labeledText(qtTrId("trivex-app-policy-rules"), valueText(value)));
    } else
        lines->add(labeledText(objectText(oid), valueText(value)));
    return parts.atEnd();
}

bool addPolicy(Der::Slice policy, Lines *lines)
{
    Der::Reader parts(policy);
    Der::Slice oid;
    Der::Element qualifiers;
    if (!parts.next(Der::ObjectIdentifier, &oid) || !Der::isOid(oid))
        return false;
    lines->add(policyName(Der::oidText(oid)));
    return !parts.nextList(Der::Sequence, &qualifiers)
        || addEach(qualifiers.whole, lines,
                   [lines](Der::Slice qualifier) { return addQualifier(qualifier, lines); });
}

struct StatementWord {
    const char *oid;
    const char *id;
};

/// ETSI EN 319 412-5 and RFC 3739.
constexpr StatementWord Statements[] = {
    //% "Qualified certificate of the EU"
    {Oid::QualifiedInEurope, QT_TRID_NOOP("trivex-app-qualified-eu")},
    //% "Limit of a transaction"
    {Oid::TransactionLimit, QT_TRID_NOOP("trivex-app-qualified-limit")},
    //% "Years that documents are kept"
    {Oid::RetentionPeriod, QT_TRID_NOOP("trivex-app-qualified-retention")},
    //% "The key is on a qualified device"
    {Oid::SecureDevice, QT_TRID_NOOP("trivex-app-qualified-device")},
    //% "Statements of the authority"
    {Oid::DisclosureStatements, QT_TRID_NOOP("trivex-app-qualified-statements")},
    //% "What it is for"
    {Oid::CertificateKind, QT_TRID_NOOP("trivex-app-qualified-type")},
};

QString statementName(Der::Slice oid)
{
    const QByteArray dotted = Der::oidText(oid);
    const auto *const found =
        std::find_if(std::begin(Statements), std::end(Statements),
                     [&dotted](const StatementWord &one) { return dotted == one.oid; });
    return found == std::end(Statements) ? objectText(oid) : qtTrId(found->id);
}

/// The strings, numbers and OIDs anywhere in a statement; its forms are many.
void collectValues(Der::Slice content, int depth, QStringList *values)
{
    Der::Reader reader(content);
    Der::Element element;
    while (values->size() < MaxShownRows && !reader.atEnd() && reader.next(&element)) {
        const bool isList = element.tag == Der::Sequence || element.tag == Der::Set;
        if (isList && depth < 8)
            collectValues(element.content, depth + 1, values);
        else if (element.tag == Der::ObjectIdentifier)
            *values += objectText(element.content);
        else if (element.tag == Der::Integer)
            *values += numberText(element.content);
        else
            *values += valueText(element);
    }
}

} // namespace

bool addPolicies(Der::Slice value, Lines *lines)
{
    return addEach(value, lines, [lines](Der::Slice policy) { return addPolicy(policy, lines); });
}

bool addPolicyMappings(Der::Slice value, Lines *lines)
{
    return addEach(value, lines, [lines](Der::Slice mapping) {
        Der::Reader parts(mapping);
        Der::Slice from;
        Der::Slice to;
        if (!parts.next(Der::ObjectIdentifier, &from) || !parts.next(Der::ObjectIdentifier, &to))
            return false;
        lines->add(policyName(Der::oidText(from)) + QStringLiteral(" → ")
                   + policyName(Der::oidText(to)));
        return parts.atEnd();
    });
}

bool addApplicationPurposes(Der::Slice value, Lines *lines)
{
    return addEach(value, lines, [lines](Der::Slice policy) {
        Der::Slice oid;
        if (!Der::Reader(policy).next(Der::ObjectIdentifier, &oid) || !Der::isOid(oid))
            return false;
        lines->add(purposeName(Der::oidText(oid)));
        return true;
    });
}

bool addQualifiedStatements(Der::Slice value, Lines *lines)
{
    return addEach(value, lines, [lines](Der::Slice statement) {
        Der::Reader parts(statement);
        Der::Slice oid;
        if (!parts.next(Der::ObjectIdentifier, &oid))
            return false;
        QStringList values;
        collectValues(parts.rest(), 0, &values);
        const QString name = statementName(oid);
        lines->add(values.isEmpty() ? name : labeledText(name, values.join(QStringLiteral(", "))));
        return true;
    });
}

} // namespace Trivex
