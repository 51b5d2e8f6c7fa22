// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <QtCrypto>

namespace Trivex {

/// One value of a request: its type, and the text as it was typed.
struct RequestValue {
    QString type;
    QString value;

    bool operator==(const RequestValue &other) const
    {
        return type == other.type && value == other.value;
    }
};

/// What a person asks a certification authority for, and what a profile keeps of it: names, other
/// names, usages. Plain data; knows no key and no token.
struct RequestContents {
    enum Problem {
        NoProblem,
        NoName, ///< neither a name nor an alternative name
        UnknownType, ///< a type that is neither listed nor a dotted OID
        WrongValue, ///< against the rule of its type
        WrongDigits, ///< a number whose check digits are wrong, which its authority may know better
        TooLong, ///< beyond the upper bound of X.520
        TooMany, ///< more values than a reader has to accept
    };
    struct Finding {
        Problem problem = NoProblem;
        QString type; ///< of the first value that is wrong
    };

    /// In the order in which they are written; an attribute's name or its dotted OID.
    QList<RequestValue> names;
    /// "dns", "email", "ip" or "uri".
    QList<RequestValue> alternativeNames;
    /// As RFC 5280, 4.2.1.3 names the bits: "digitalSignature".
    QStringList keyUsages;
    /// As RFC 5280, 4.2.1.12 names them ("serverAuth"), or dotted OIDs.
    QStringList purposes;

    /// What is wrong with one value of `names` or `alternativeNames`; an empty value is none.
    static Problem problemOfName(const RequestValue &value);
    static Problem problemOfAlternativeName(const RequestValue &value);
    /// False for no problem, and for one that is only pointed out.
    static bool isRefused(Problem problem);
    /// The first thing that it is refused for.
    Finding check() const;

    /// The first common name, or the name by which the file is called without one.
    QString title() const;
    /// The options of a PKCS#10 request for it; only for contents without a finding.
    QCA::CertificateOptions options() const;

    /// What stands for usages and purposes in a request; names that it does not know are left out.
    static QCA::Constraints constraints(const QStringList &keyUsages, const QStringList &purposes);
    /// The other way round, in their order.
    static QStringList keyUsagesOf(const QCA::Constraints &constraints);
    static QStringList purposesOf(const QCA::Constraints &constraints);

    /// What `alternativeNames`, `keyUsages` and `purposes` know by name.
    static QStringList alternativeTypes();
    static QStringList knownKeyUsages();
    static QStringList knownPurposes();

    QJsonObject toJson() const;
    /// Takes what it knows and leaves out what it does not.
    static RequestContents fromJson(const QJsonObject &json);
};

} // namespace Trivex
