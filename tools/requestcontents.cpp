// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/requestcontents.h"

#include "qca/asn1/attributeids.h"
#include "qca/base/bounds.h"
#include "qca/x509/infotypes.h"
#include "tools/subjectattributes.h"

#include <QJsonArray>

#include <algorithm>

namespace Trivex {

namespace {

/// What a dotted OID that nobody listed may hold: as much as the longest listed attribute.
constexpr int LongestOther = 1024;
constexpr int LongestAlternative = 2048;

struct AlternativeKind {
    const char *type;
    QCA::CertificateInfoTypeKnown known;
    ValueRule rule;
};

constexpr AlternativeKind AlternativeKinds[] = {
    {"dns", QCA::DNS, ValueRule::Host},
    {"email", QCA::Email, ValueRule::Mail},
    {"ip", QCA::IPAddress, ValueRule::Address},
    {"uri", QCA::URI, ValueRule::Uri},
};

struct Usage {
    const char *name;
    QCA::ConstraintTypeKnown known;
};

constexpr Usage KeyUsages[] = {
    {"digitalSignature", QCA::DigitalSignature},
    {"nonRepudiation", QCA::NonRepudiation},
    {"keyEncipherment", QCA::KeyEncipherment},
    {"dataEncipherment", QCA::DataEncipherment},
    {"keyAgreement", QCA::KeyAgreement},
    {"keyCertSign", QCA::KeyCertificateSign},
    {"cRLSign", QCA::CRLSign},
    {"encipherOnly", QCA::EncipherOnly},
    {"decipherOnly", QCA::DecipherOnly},
};

constexpr Usage Purposes[] = {
    {"serverAuth", QCA::ServerAuth},     {"clientAuth", QCA::ClientAuth},
    {"codeSigning", QCA::CodeSigning},   {"emailProtection", QCA::EmailProtection},
    {"timeStamping", QCA::TimeStamping}, {"OCSPSigning", QCA::OCSPSigning},
};

/// The row of a table whose `type` or `name` is `text`; null when there is none.
template <class Row, size_t Size, class Name>
const Row *find(const Row (&table)[Size], const QString &text, Name name)
{
    const auto *const found = std::find_if(std::begin(table), std::end(table), [&](const Row &row) {
        return text == QLatin1String(row.*name);
    });
    return found == std::end(table) ? nullptr : found;
}

/// Every `type` or `name` of a table, in its order.
template <class Row, size_t Size, class Name>
QStringList namesIn(const Row (&table)[Size], Name name)
{
    QStringList names;
    for (const Row &row : table)
        names.append(QString::fromLatin1(row.*name));
    return names;
}

/// The name of each of `constraints` in that section; its dotted OID where `table` has none.
template <size_t Size>
QStringList namesOf(const Usage (&table)[Size], const QCA::Constraints &constraints,
                    QCA::ConstraintType::Section section)
{
    QStringList names;
    for (const QCA::ConstraintType &constraint : constraints) {
        if (constraint.section() != section)
            continue;
        const auto *const known =
            std::find_if(std::begin(table), std::end(table), [&](const Usage &usage) {
                return constraint == QCA::ConstraintType(usage.known);
            });
        names += known == std::end(table) ? constraint.id() : QString::fromLatin1(known->name);
    }
    return names;
}

const AlternativeKind *findKind(const QString &type)
{
    return find(AlternativeKinds, type, &AlternativeKind::type);
}

RequestContents::Problem problemOf(ValueRule rule, int longest, const QString &value)
{
    const QString text = normalized(rule, value);
    if (text.isEmpty())
        return RequestContents::NoProblem;
    if (text.size() > longest)
        return RequestContents::TooLong;
    return obeys(rule, text) ? RequestContents::NoProblem : RequestContents::WrongValue;
}

bool isEmpty(const RequestValue &value)
{
    return value.value.trimmed().isEmpty();
}

QJsonArray listToJson(const QList<RequestValue> &values)
{
    QJsonArray list;
    for (const RequestValue &value : values)
        list.append(QJsonObject{{QStringLiteral("type"), value.type},
                                {QStringLiteral("value"), value.value}});
    return list;
}

QList<RequestValue> listFromJson(const QJsonValue &json)
{
    QList<RequestValue> values;
    for (const QJsonValue &one : json.toArray()) {
        const RequestValue value{one[QStringLiteral("type")].toString(),
                                 one[QStringLiteral("value")].toString()};
        if (!value.type.isEmpty())
            values.append(value);
    }
    return values;
}

QStringList textsFromJson(const QJsonValue &json)
{
    QStringList texts;
    for (const QJsonValue &one : json.toArray()) {
        if (one.isString())
            texts.append(one.toString());
    }
    return texts;
}

} // namespace

RequestContents::Problem RequestContents::problemOfName(const RequestValue &value)
{
    const QString type = subjectAttributeFor(value.type, value.value);
    if (subjectAttributeOid(type).isEmpty())
        return UnknownType;
    const SubjectAttribute *attribute = findSubjectAttribute(type);
    if (!attribute)
        return problemOf(ValueRule::Text, LongestOther, value.value);
    const Problem problem = problemOf(attribute->rule, attribute->longest, value.value);
    return problem == WrongValue && checkDigitsOf(type) >= 0 ? WrongDigits : problem;
}

RequestContents::Problem RequestContents::problemOfAlternativeName(const RequestValue &value)
{
    const AlternativeKind *kind = findKind(value.type);
    return kind ? problemOf(kind->rule, LongestAlternative, value.value) : UnknownType;
}

bool RequestContents::isRefused(Problem problem)
{
    return problem != NoProblem && problem != WrongDigits;
}

RequestContents::Finding RequestContents::check() const
{
    if (names.size() + alternativeNames.size() > MaxNameAttributes)
        return {TooMany, {}};
    for (const RequestValue &value : names) {
        if (const Problem problem = problemOfName(value); isRefused(problem))
            return {problem, value.type};
    }
    for (const RequestValue &value : alternativeNames) {
        if (const Problem problem = problemOfAlternativeName(value))
            return {problem, value.type};
    }
    for (const QString &usage : keyUsages) {
        if (!find(KeyUsages, usage, &Usage::name))
            return {UnknownType, usage};
    }
    for (const QString &purpose : purposes) {
        if (!find(Purposes, purpose, &Usage::name)
            && (findSubjectAttribute(purpose) || subjectAttributeOid(purpose).isEmpty()))
            return {UnknownType, purpose};
    }
    // A request without a subject would be one whose alternative names nobody may overlook.
    return std::all_of(names.cbegin(), names.cend(), &isEmpty) ? Finding{NoName, {}} : Finding();
}

QString RequestContents::title() const
{
    for (const RequestValue &value : names) {
        if (subjectAttributeOid(value.type) == QLatin1String(Oid::CommonName) && !isEmpty(value))
            return value.value.trimmed();
    }
    for (const RequestValue &value : names) {
        if (!isEmpty(value))
            return value.value.trimmed();
    }
    return {};
}

QCA::CertificateOptions RequestContents::options() const
{
    QCA::CertificateInfoOrdered info;
    for (const RequestValue &value : names) {
        const QString type = subjectAttributeFor(value.type, value.value);
        const SubjectAttribute *attribute = findSubjectAttribute(type);
        const QString text = normalized(attribute ? attribute->rule : ValueRule::Text, value.value);
        if (!text.isEmpty())
            info.append(QCA::CertificateInfoPair(
                QCA::CertificateInfoType(subjectAttributeOid(type), QCA::CertificateInfoType::DN),
                text));
    }
    for (const RequestValue &value : alternativeNames) {
        const AlternativeKind *kind = findKind(value.type);
        const QString text = kind ? normalized(kind->rule, value.value) : QString();
        if (!text.isEmpty())
            info.append(QCA::CertificateInfoPair(infoType(kind->known), text));
    }
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfoOrdered(info);
    options.setConstraints(constraints(keyUsages, purposes));
    return options;
}

QCA::Constraints RequestContents::constraints(const QStringList &keyUsages,
                                              const QStringList &purposes)
{
    QCA::Constraints constraints;
    for (const QString &usage : keyUsages) {
        if (const Usage *known = find(KeyUsages, usage, &Usage::name))
            constraints.append(known->known);
    }
    for (const QString &purpose : purposes) {
        const Usage *known = find(Purposes, purpose, &Usage::name);
        constraints.append(
            known ? QCA::ConstraintType(known->known)
                  : QCA::ConstraintType(purpose, QCA::ConstraintType::ExtendedKeyUsage));
    }
    return constraints;
}

QStringList RequestContents::keyUsagesOf(const QCA::Constraints &constraints)
{
    return namesOf(KeyUsages, constraints, QCA::ConstraintType::KeyUsage);
}

QStringList RequestContents::purposesOf(const QCA::Constraints &constraints)
{
    return namesOf(Purposes, constraints, QCA::ConstraintType::ExtendedKeyUsage);
}

QStringList RequestContents::alternativeTypes()
{
    return namesIn(AlternativeKinds, &AlternativeKind::type);
}

QStringList RequestContents::knownKeyUsages()
{
    return namesIn(KeyUsages, &Usage::name);
}

QStringList RequestContents::knownPurposes()
{
    return namesIn(Purposes, &Usage::name);
}

QJsonObject RequestContents::toJson() const
{
    return {{QStringLiteral("subject"), listToJson(names)},
            {QStringLiteral("alternativeNames"), listToJson(alternativeNames)},
            {QStringLiteral("keyUsage"), QJsonArray::fromStringList(keyUsages)},
            {QStringLiteral("extendedKeyUsage"), QJsonArray::fromStringList(purposes)}};
}

RequestContents RequestContents::fromJson(const QJsonObject &json)
{
    RequestContents contents;
    contents.names = listFromJson(json[QStringLiteral("subject")]);
    contents.alternativeNames = listFromJson(json[QStringLiteral("alternativeNames")]);
    contents.keyUsages = textsFromJson(json[QStringLiteral("keyUsage")]);
    contents.purposes = textsFromJson(json[QStringLiteral("extendedKeyUsage")]);
    return contents;
}

} // namespace Trivex
