// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace Trivex {

/// The kind of a DER structure.
enum class ShownKind { Certificate, Request, RevocationList, PublicKey };

/// One value with its label, both in the user's language and without marks that hide or turn parts
/// of them.
struct ShownRow {
    /// Tells what it is, in every language: the dotted OID of an attribute or of an extension, else
    /// one of `ShownId`. Empty for what nobody asks for.
    QByteArray id;
    QString label;
    QString value; ///< never empty; long lists have a line for each member
    bool isFixed = false; ///< bytes and the like, to be shown in fixed width
};

namespace ShownId {
constexpr char SerialNumber[] = "serial";
constexpr char SignatureAlgorithm[] = "signature";
constexpr char ValidFrom[] = "from";
constexpr char ValidUntil[] = "until";
} // namespace ShownId

/// The subject of the rows of a group.
enum class ShownTopic {
    General,
    Holder,
    Issuer,
    Validity,
    PublicKey,
    Attributes, ///< of a request
    Extensions,
    Entries, ///< of a revocation list
    Fingerprints,
    Signature,
};

struct ShownGroup {
    ShownTopic topic = ShownTopic::General;
    QString title;
    QVector<ShownRow> rows; ///< never empty
};

} // namespace Trivex
