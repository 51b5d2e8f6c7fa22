// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace Trivex {

/// What a value of a request is.
enum class ValueRule {
    Text,
    Country, ///< two capital letters (ISO 3166)
    Printable, ///< PrintableString (X.680, 41.4)
    Mail, ///< an address in ASCII
    Inn,
    Innle,
    Ogrn,
    Ogrnip,
    Snils,
    Host, ///< a host name, which may begin with "*."
    Address, ///< IPv4 or IPv6
    Uri, ///< absolute
};

/// An attribute of a name that people put into requests.
struct SubjectAttribute {
    const char *type; ///< its name in profiles and in QML
    const char *oid;
    ValueRule rule;
    int longest; ///< upper bound of X.520 in characters
};

/// The attribute of this name, or with this dotted OID; null for one that is not listed.
const SubjectAttribute *findSubjectAttribute(const QString &type);

/// The names of all listed attributes, in the order in which forms show them.
QStringList subjectAttributeTypes();

/// The OID of a listed attribute, and any other dotted OID itself; empty for anything else.
QString subjectAttributeOid(const QString &type);

/// The attribute that a value goes into: by their lengths, numbers of a company that were typed for
/// those of a person, or the other way round, are told apart. `type` itself for everything else.
QString subjectAttributeFor(const QString &type, const QString &value);

/// The `CheckDigits::Kind` of an attribute; -1 for one that has no check digits.
int checkDigitsOf(const QString &type);

/// `value` as it goes into a request: trimmed, identifiers without the blanks and hyphens that they
/// are written with, host names in ASCII.
QString normalized(ValueRule rule, const QString &value);

/// Whether a normalised value obeys its rule. Identifiers have their check digits right.
bool obeys(ValueRule rule, const QString &value);

} // namespace Trivex
