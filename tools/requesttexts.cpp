// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/requesttexts.h"

#include "tools/checkdigits.h"
#include "tools/subjectattributes.h"

#include <algorithm>

namespace Trivex {

namespace {

struct Title {
    const char *name;
    const char *id;
};

constexpr Title Titles[] = {
    //% "Name (of the person or service)"
    {"commonName", QT_TRID_NOOP("trivex-app-field-name")},
    //% "Last name"
    {"surname", QT_TRID_NOOP("trivex-app-field-surname")},
    //% "First name and patronymic"
    {"givenName", QT_TRID_NOOP("trivex-app-field-given-name")},
    //% "Initials"
    {"initials", QT_TRID_NOOP("trivex-app-field-initials")},
    //% "Generation (Jr., Sr.)"
    {"generationQualifier", QT_TRID_NOOP("trivex-app-field-generation")},
    //% "Pseudonym"
    {"pseudonym", QT_TRID_NOOP("trivex-app-field-pseudonym")},
    //% "Position"
    {"title", QT_TRID_NOOP("trivex-app-field-title")},
    //% "Organization"
    {"organization", QT_TRID_NOOP("trivex-app-field-organization")},
    //% "Department"
    {"organizationalUnit", QT_TRID_NOOP("trivex-app-field-department")},
    //% "Number of the organization in a register"
    {"organizationIdentifier", QT_TRID_NOOP("trivex-app-field-organization-id")},
    //% "Kind of business"
    {"businessCategory", QT_TRID_NOOP("trivex-app-field-business")},
    //% "Country code"
    {"country", QT_TRID_NOOP("trivex-app-field-country")},
    //% "Region"
    {"state", QT_TRID_NOOP("trivex-app-field-state")},
    //% "City"
    {"locality", QT_TRID_NOOP("trivex-app-field-locality")},
    //% "Street and house"
    {"street", QT_TRID_NOOP("trivex-app-field-street")},
    //% "Postal code"
    {"postalCode", QT_TRID_NOOP("trivex-app-field-postal-code")},
    //% "Telephone"
    {"telephone", QT_TRID_NOOP("trivex-app-field-telephone")},
    //% "E-mail"
    {"email", QT_TRID_NOOP("trivex-app-field-email")},
    //% "User name"
    {"userId", QT_TRID_NOOP("trivex-app-field-user")},
    //% "Part of a domain name"
    {"domainComponent", QT_TRID_NOOP("trivex-app-field-domain")},
    //% "Serial number of the holder"
    {"serialNumber", QT_TRID_NOOP("trivex-app-field-serial")},
    //% "Qualifier of the name"
    {"nameQualifier", QT_TRID_NOOP("trivex-app-field-qualifier")},
    //% "Description"
    {"description", QT_TRID_NOOP("trivex-app-field-description")},
    //% "INN"
    {"inn", QT_TRID_NOOP("trivex-app-field-inn")},
    //% "INN of the organization"
    {"innle", QT_TRID_NOOP("trivex-app-field-innle")},
    //% "OGRN or OGRNIP"
    {"ogrn", QT_TRID_NOOP("trivex-app-field-ogrn")},
    //% "OGRNIP"
    {"ogrnip", QT_TRID_NOOP("trivex-app-field-ogrnip")},
    //% "SNILS"
    {"snils", QT_TRID_NOOP("trivex-app-field-snils")},
    //% "Host name"
    {"dns", QT_TRID_NOOP("trivex-app-field-dns")},
    //% "IP address"
    {"ip", QT_TRID_NOOP("trivex-app-field-ip")},
    //% "Web address (URI)"
    {"uri", QT_TRID_NOOP("trivex-app-field-uri")},
    //% "Sign data"
    {"digitalSignature", QT_TRID_NOOP("trivex-app-usage-sign")},
    //% "Sign for good, not to be denied"
    {"nonRepudiation", QT_TRID_NOOP("trivex-app-usage-commit")},
    //% "Encrypt keys"
    {"keyEncipherment", QT_TRID_NOOP("trivex-app-usage-encrypt-keys")},
    //% "Encrypt data"
    {"dataEncipherment", QT_TRID_NOOP("trivex-app-usage-encrypt-data")},
    //% "Agree on keys"
    {"keyAgreement", QT_TRID_NOOP("trivex-app-usage-agree")},
    //% "Sign certificates"
    {"keyCertSign", QT_TRID_NOOP("trivex-app-usage-sign-certificates")},
    //% "Sign lists of revoked certificates"
    {"cRLSign", QT_TRID_NOOP("trivex-app-usage-sign-lists")},
    //% "Agree on keys to encrypt only"
    {"encipherOnly", QT_TRID_NOOP("trivex-app-usage-encrypt-only")},
    //% "Agree on keys to decrypt only"
    {"decipherOnly", QT_TRID_NOOP("trivex-app-usage-decrypt-only")},
    //% "A server shows who it is"
    {"serverAuth", QT_TRID_NOOP("trivex-app-serves-server")},
    //% "A person or a client shows who it is"
    {"clientAuth", QT_TRID_NOOP("trivex-app-serves-client")},
    //% "Sign programs"
    {"codeSigning", QT_TRID_NOOP("trivex-app-serves-code")},
    //% "Protect e-mail"
    {"emailProtection", QT_TRID_NOOP("trivex-app-serves-mail")},
    //% "Sign time stamps"
    {"timeStamping", QT_TRID_NOOP("trivex-app-serves-time")},
    //% "Tell whether certificates are revoked"
    {"OCSPSigning", QT_TRID_NOOP("trivex-app-serves-status")},
};

struct ProblemText {
    RequestContents::Problem problem;
    const char *id;
};

constexpr ProblemText ProblemTexts[] = {
    //% "The request has no name. Enter a name."
    {RequestContents::NoName, QT_TRID_NOOP("trivex-app-request-problem-name")},
    //% "This field is not known. Use one of the listed fields, or a number such as 1.2.3."
    {RequestContents::UnknownType, QT_TRID_NOOP("trivex-app-request-problem-type")},
    //% "This value has a wrong form. Correct it."
    {RequestContents::WrongValue, QT_TRID_NOOP("trivex-app-request-problem-value")},
    //% "This value is too long. Shorten it."
    {RequestContents::TooLong, QT_TRID_NOOP("trivex-app-request-problem-long")},
    //% "There are more names than a certificate can have. Remove some."
    {RequestContents::TooMany, QT_TRID_NOOP("trivex-app-request-problem-many")},
};

struct FormText {
    const char *type;
    const char *id;
};

/// How values look that have a form of their own.
constexpr FormText FormTexts[] = {
    //% "Two capital Latin letters, as in RU."
    {"country", QT_TRID_NOOP("trivex-app-field-country-flag")},
    //% "This is no e-mail address. Write one in Latin letters, as in name@example.org."
    {"email", QT_TRID_NOOP("trivex-app-field-email-flag")},
    //% "This is no host name. Write one as in www.example.org or *.example.org."
    {"dns", QT_TRID_NOOP("trivex-app-field-dns-flag")},
    //% "This is no IP address. Write one as in 192.0.2.1 or 2001:db8::1."
    {"ip", QT_TRID_NOOP("trivex-app-field-ip-flag")},
    //% "This is no whole web address. Write one in Latin letters, with https:// at its beginning."
    {"uri", QT_TRID_NOOP("trivex-app-field-uri-flag")},
    //% "Only Latin letters, digits, blanks and the marks ' ( ) + , - . / : = ? are allowed here."
    {"telephone", QT_TRID_NOOP("trivex-app-field-printable-flag")},
    {"serialNumber", QT_TRID_NOOP("trivex-app-field-printable-flag")},
    {"nameQualifier", QT_TRID_NOOP("trivex-app-field-printable-flag")},
};

/// The text of the first row that matches; empty when none does.
template <class Row, size_t Size, class Matches>
QString textOf(const Row (&table)[Size], Matches matches)
{
    const auto *const found = std::find_if(std::begin(table), std::end(table), matches);
    return found == std::end(table) ? QString() : qtTrId(found->id);
}

} // namespace

QString requestTitle(const QString &name)
{
    const QString title =
        textOf(Titles, [&](const Title &one) { return name == QLatin1String(one.name); });
    return title.isEmpty() ? name : title;
}

QString requestProblemText(const QString &type, const QString &value,
                           RequestContents::Problem problem)
{
    const int digits = checkDigitsOf(subjectAttributeFor(type, value));
    if (digits >= 0 && problem != RequestContents::NoProblem)
        return CheckDigits::explain(digits, value);
    const QString form = problem == RequestContents::WrongValue
        ? textOf(FormTexts, [&](const FormText &one) { return type == QLatin1String(one.type); })
        : QString();
    return form.isEmpty()
        ? textOf(ProblemTexts, [&](const ProblemText &one) { return one.problem == problem; })
        : form;
}

} // namespace Trivex
