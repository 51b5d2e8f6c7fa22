// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/subjectattributes.h"

#include "qca/asn1/attributeids.h"
#include "tools/checkdigits.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

#include <arpa/inet.h>

namespace Trivex {

namespace {

// X.520, RFC 4519, PKCS#9, ETSI EN 319 412-1 and the Russian profile (order 795 of 2021).
constexpr SubjectAttribute Attributes[] = {
    {"commonName", Oid::CommonName, ValueRule::Text, 64},
    {"surname", Oid::Surname, ValueRule::Text, 64},
    {"givenName", Oid::GivenName, ValueRule::Text, 64},
    {"initials", Oid::Initials, ValueRule::Text, 64},
    {"generationQualifier", Oid::GenerationQualifier, ValueRule::Text, 64},
    {"pseudonym", Oid::Pseudonym, ValueRule::Text, 128},
    {"title", Oid::Title, ValueRule::Text, 64},
    {"organization", Oid::Organization, ValueRule::Text, 64},
    {"organizationalUnit", Oid::OrganizationalUnit, ValueRule::Text, 64},
    {"organizationIdentifier", Oid::OrganizationId, ValueRule::Text, 64},
    {"businessCategory", Oid::BusinessCategory, ValueRule::Text, 128},
    {"country", Oid::Country, ValueRule::Country, 2},
    {"state", Oid::State, ValueRule::Text, 128},
    {"locality", Oid::Locality, ValueRule::Text, 128},
    {"street", Oid::Street, ValueRule::Text, 128},
    {"postalCode", Oid::PostalCode, ValueRule::Text, 40},
    {"telephone", Oid::Telephone, ValueRule::Printable, 32},
    {"email", Oid::EmailAddress, ValueRule::Mail, 255},
    {"userId", Oid::UserId, ValueRule::Text, 256},
    {"domainComponent", Oid::DomainComponent, ValueRule::Host, 63},
    {"serialNumber", Oid::SerialNumber, ValueRule::Printable, 64},
    {"nameQualifier", Oid::NameQualifier, ValueRule::Printable, 64},
    {"description", Oid::Description, ValueRule::Text, 1024},
    {"inn", Oid::Inn, ValueRule::Inn, 12},
    {"innle", Oid::Innle, ValueRule::Innle, 10},
    {"ogrn", Oid::Ogrn, ValueRule::Ogrn, 13},
    {"ogrnip", Oid::Ogrnip, ValueRule::Ogrnip, 15},
    {"snils", Oid::Snils, ValueRule::Snils, 11},
};

struct Pattern {
    ValueRule rule;
    const char *pattern;
};

constexpr Pattern Patterns[] = {
    {ValueRule::Country, "^[A-Z]{2}$"},
    {ValueRule::Printable, "^[A-Za-z0-9 '()+,./:=?-]+$"},
    {ValueRule::Mail,
     "^[\\w!#$%&'*+/=?^`{|}~-]+(\\.[\\w!#$%&'*+/=?^`{|}~-]+)*"
     "@[A-Za-z0-9]([A-Za-z0-9-]*[A-Za-z0-9])?(\\.[A-Za-z0-9]([A-Za-z0-9-]*"
     "[A-Za-z0-9])?)*$"},
    {ValueRule::Host,
     "^(\\*\\.)?[A-Za-z0-9_]([A-Za-z0-9_-]{0,61}[A-Za-z0-9_])?"
     "(\\.[A-Za-z0-9_]([A-Za-z0-9_-]{0,61}[A-Za-z0-9_])?)*$"},
};

struct Digits {
    ValueRule rule;
    int kind; ///< a `CheckDigits::Kind`
};

constexpr Digits Identifiers[] = {
    {ValueRule::Inn, CheckDigits::Inn},     {ValueRule::Innle, CheckDigits::Innle},
    {ValueRule::Ogrn, CheckDigits::Ogrn},   {ValueRule::Ogrnip, CheckDigits::Ogrnip},
    {ValueRule::Snils, CheckDigits::Snils},
};

const Digits *digitsOf(ValueRule rule)
{
    const auto *const found = std::find_if(std::begin(Identifiers), std::end(Identifiers),
                                           [rule](const Digits &one) { return one.rule == rule; });
    return found == std::end(Identifiers) ? nullptr : found;
}

/// A number of another kind than its field's, by its length.
struct OtherNumber {
    const char *type;
    int length;
    const char *otherType;
};

constexpr OtherNumber OtherNumbers[] = {
    {"inn", 10, "innle"},
    {"innle", 12, "inn"},
    {"ogrn", 15, "ogrnip"},
    {"ogrnip", 13, "ogrn"},
};

bool isDottedOid(const QString &text)
{
    static const QRegularExpression dotted(QStringLiteral("^[0-2](\\.(0|[1-9][0-9]{0,18}))+$"),
                                           QRegularExpression::DontCaptureOption);
    return dotted.match(text).hasMatch();
}

bool isAddress(const QString &value)
{
    char octets[16];
    const QByteArray text = value.toLatin1();
    return inet_pton(AF_INET, text.constData(), octets) == 1
        || inet_pton(AF_INET6, text.constData(), octets) == 1;
}

bool isUri(const QString &value)
{
    const QUrl url(value, QUrl::StrictMode);
    const bool isAscii = std::all_of(value.cbegin(), value.cend(), [](QChar c) {
        return c.unicode() > ' ' && c.unicode() < 127;
    });
    return isAscii && url.isValid() && !url.isRelative();
}

} // namespace

const SubjectAttribute *findSubjectAttribute(const QString &type)
{
    const auto *const found = std::find_if(
        std::begin(Attributes), std::end(Attributes), [&type](const SubjectAttribute &one) {
            return type == QLatin1String(one.type) || type == QLatin1String(one.oid);
        });
    return found == std::end(Attributes) ? nullptr : found;
}

QStringList subjectAttributeTypes()
{
    QStringList types;
    for (const SubjectAttribute &attribute : Attributes)
        types.append(QString::fromLatin1(attribute.type));
    return types;
}

QString subjectAttributeOid(const QString &type)
{
    if (const SubjectAttribute *attribute = findSubjectAttribute(type))
        return QString::fromLatin1(attribute->oid);
    return isDottedOid(type) ? type : QString();
}

QString subjectAttributeFor(const QString &type, const QString &value)
{
    for (const OtherNumber &other : OtherNumbers) {
        if (type == QLatin1String(other.type)
            && normalized(ValueRule::Inn, value).size() == other.length)
            return QString::fromLatin1(other.otherType);
    }
    return type;
}

int checkDigitsOf(const QString &type)
{
    const SubjectAttribute *attribute = findSubjectAttribute(type);
    const Digits *digits = attribute ? digitsOf(attribute->rule) : nullptr;
    return digits ? digits->kind : -1;
}

QString normalized(ValueRule rule, const QString &value)
{
    QString text = value.trimmed();
    if (digitsOf(rule))
        return text.remove(QRegularExpression(QStringLiteral("[\\s-]")));
    if (rule == ValueRule::Host) {
        const bool isAny = text.startsWith(QLatin1String("*."));
        const QString ascii = QString::fromLatin1(QUrl::toAce(isAny ? text.mid(2) : text));
        if (!ascii.isEmpty())
            return isAny ? QLatin1String("*.") + ascii : ascii;
    }
    return text;
}

bool obeys(ValueRule rule, const QString &value)
{
    if (const Digits *digits = digitsOf(rule))
        return CheckDigits::check(digits->kind, value) == CheckDigits::Good;
    if (rule == ValueRule::Address)
        return isAddress(value);
    if (rule == ValueRule::Uri)
        return isUri(value);
    const auto *const found = std::find_if(std::begin(Patterns), std::end(Patterns),
                                           [rule](const Pattern &one) { return one.rule == rule; });
    // Without the option letters and digits are those of ASCII only.
    return found == std::end(Patterns)
        || QRegularExpression(QString::fromLatin1(found->pattern)).match(value).hasMatch();
}

} // namespace Trivex
