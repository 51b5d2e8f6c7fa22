// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keytypes.h"

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QVector>

namespace Trivex {

/// The facts that a token tells beside its names (PKCS#11 2.40, 3.2). They cost no further call.
struct TokenFacts {
    QString label; ///< the token's own; its key store may be named otherwise
    QString firmware; ///< "2.5"; empty where the token says 0.0
    QString hardware; ///< the same
    /// Bytes; -1 for what the token does not tell.
    qint64 totalSpace = -1;
    qint64 freeSpace = -1;
    bool needsLogin = false;
    bool hasUserPin = false;
};

inline bool operator==(const TokenFacts &a, const TokenFacts &b)
{
    return a.label == b.label && a.firmware == b.firmware && a.hardware == b.hardware
        && a.totalSpace == b.totalSpace && a.freeSpace == b.freeSpace
        && a.needsLogin == b.needsLogin && a.hasUserPin == b.hasUserPin;
}

/// A private key on a token, with or without a certificate.
struct TokenKeyFacts {
    enum Use { Signs = 1, Decrypts = 2, Derives = 4, Unwraps = 8 };
    enum Origin { OriginUnknown, MadeHere, BroughtHere };
    /// Whether a copy of the private half can be had (CKA_EXTRACTABLE).
    enum Leave { LeaveUnknown, Leaves, Stays };

    /// In its store; the same before and after a login, and after each start.
    QString id;
    /// Of the certificate that it belongs to; empty where the token has none for it. Of other keys
    /// than those nothing but the ids, the label, the public half, the uses and `leave` is told.
    QString entryId;
    int keyType = UnknownKey; ///< `KeyType`
    int bits = 0; ///< 0 where it is not known
    QString label;
    QByteArray tokenId; ///< CKA_ID
    QByteArray publicInfo; ///< DER SubjectPublicKeyInfo; empty where the token does not show it
    int uses = 0; ///< `Use`
    bool usesKnown = false; ///< the private half has been seen
    Origin origin = OriginUnknown;
    Leave leave = LeaveUnknown; ///< told of keys with a certificate, too

    bool isBare() const { return entryId.isEmpty(); }
};

inline bool operator==(const TokenKeyFacts &a, const TokenKeyFacts &b)
{
    return a.id == b.id && a.entryId == b.entryId && a.keyType == b.keyType && a.bits == b.bits
        && a.label == b.label && a.tokenId == b.tokenId && a.publicInfo == b.publicInfo
        && a.uses == b.uses && a.usesKnown == b.usesKnown && a.origin == b.origin
        && a.leave == b.leave;
}

/// The uses that a token has for keys of one kind.
struct TokenAbility {
    enum Kind { Rsa, EllipticCurve, Edwards, Gost };

    Kind kind = Rsa;
    bool makes = false;
    bool signs = false;
    bool decrypts = false;
    /// Sizes of the keys in bits that it uses in any way, and of those that it makes, which are
    /// often fewer; 0 for what the token does not tell.
    int smallest = 0;
    int largest = 0;
    int madeSmallest = 0;
    int madeLargest = 0;
};

/// Facts of a token that are read only when somebody wants to see them.
struct TokenLook {
    bool isTaken = false; ///< false: nobody has looked yet
    QVector<TokenAbility> abilities;
    int mechanisms = 0; ///< how many it knows in all
    /// The ids of the entries with a key that the token says it can't sign with.
    QSet<QString> unfitToSign;
    // Objects that show without a login, or with the one that there is.
    int secretKeys = 0;
    int dataObjects = 0;
};

} // namespace Trivex
