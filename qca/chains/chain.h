// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVector>

namespace Trivex {

/// The result of the check of a path or of one step in it. A later value outweighs an earlier one.
enum class ChainVerdict {
    Good,
    Doubtful, ///< nothing is wrong with it, and there is something to know
    Unknown, ///< it can't be checked here
    Bad,
};

/// Why a step is not simply good.
enum class ChainReason {
    None,
    Expired, ///< `date`: since when
    NotYetValid, ///< `date`: from when on
    Revoked, ///< `date`: since when; `revocation`: why
    RevokedLater, ///< the same, after the date of the check
    ListExpired, ///< the list of revoked certificates is older than it promises; `date`: since when
    ListNotYetValid, ///< the list is of a time after the check; `date`: from when on
    ListNotSigned, ///< a list in the issuer's name that the issuer has not signed; it does not
                   ///< count
    ListUnreadable, ///< a list that can't be understood in full; it does not count
    IssuerMissing,
    IssuerDiffers, ///< there is one of that name, which has another key
    RootNotTrusted, ///< a self-signed certificate that is none of the trusted ones
    SelfSigned, ///< the same, where it is the checked certificate itself
    WrongSignature,
    NotAuthority, ///< it may not issue certificates
    TooManyBelow, ///< it allows fewer authorities between itself and the checked certificate
    NameNotAllowed, ///< an issuer may not issue for such a name
    WrongPurpose,
    WeakKey,
    WeakSignature,
    KeyOfAnybody, ///< everybody can make signatures by its key
    AlgorithmUnknown, ///< this computer can't check such signatures
    Malformed, ///< it breaks the rules for certificates
    UnknownExtension, ///< it has an extension that must be understood, and is not
    TooLong, ///< the path is longer than `MaxChainLength`
    Other,
};

/// The reasons of RFC 5280, 5.3.1.
constexpr int NoRevocationReason = -1;

struct ChainFinding {
    ChainReason reason = ChainReason::None;
    int code = 0; ///< libcrypto's X509_V_ERR_ number; 0 where the finding is our own
    QDateTime date; ///< see `ChainReason`
    int revocation = NoRevocationReason;
};

/// A certificate that may be part of a path.
struct ChainCandidate {
    QByteArray der;
    QString place; ///< where it lies: a store or a file
    bool isAnchor = false; ///< a path may end here

    bool operator==(const ChainCandidate &other) const
    {
        return isAnchor == other.isAnchor && place == other.place && der == other.der;
    }
};

/// The purposes that a path may have to serve (RFC 5280, 4.2.1.12).
enum class ChainPurpose { Any, WebServer, WebClient, Email, TimeStamps, CodeSigning };

struct ChainInput {
    QByteArray certificate; ///< DER
    QVector<ChainCandidate> candidates; ///< in any order; may hold the certificate itself
    QVector<QByteArray> lists; ///< revocation lists, DER
    QDateTime date; ///< invalid for the time of the check
    ChainPurpose purpose = ChainPurpose::Any;

    bool operator==(const ChainInput &other) const
    {
        return purpose == other.purpose && date == other.date && certificate == other.certificate
            && candidates == other.candidates && lists == other.lists;
    }
};

/// One certificate of the path.
struct ChainStep {
    QByteArray der;
    QString subject; ///< the common name, else the organization, else the whole name
    QString issuer; ///< the same
    QString place; ///< empty for the checked certificate, where nobody said
    ChainVerdict verdict = ChainVerdict::Good;
    QVector<ChainFinding> findings; ///< the gravest first
    bool isAnchor = false;
    /// A revocation list of its issuer was there.
    bool isListed = false;
};

/// From the checked certificate towards its root; never empty where the certificate can be read.
struct ChainResult {
    ChainVerdict verdict = ChainVerdict::Unknown; ///< the gravest of the steps
    QVector<ChainStep> steps;
};

} // namespace Trivex
