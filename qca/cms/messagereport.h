// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QVector>

namespace Trivex {

/// What is found out about one signature of a message. Whether its signer is to be believed is
/// another question: that of the chain.
struct SignerReport {
    enum Verdict {
        Good, ///< signed by the key of `certificate`, and the document is the one that was signed
        DocumentChanged,
        Damaged, ///< the signature is not that of the certificate's key over what it covers
        WrongCertificate, ///< the signature names another certificate as its own
        NoCertificate, ///< the signer's certificate is not there
        Unknown, ///< an algorithm that nothing here knows
        Unchecked, ///< there is no document to check it with
    };
    Verdict verdict = Unchecked;
    QByteArray certificate; ///< DER; empty when it is not there
    /// The issuer (DER Name) and serial number of the signer, for when the certificate is missing.
    QByteArray issuer;
    QByteArray serial; ///< big-endian
    QDateTime time; ///< as the signer claims; invalid when it says nothing
    QByteArray digest; ///< dotted OID
    bool isDigestWeak = false; ///< broken: documents can be forged that have the same digest
    bool namesCertificate = false; ///< by a signing-certificate attribute
};

struct MessageReport {
    enum Problem {
        NoProblem,
        Unreadable, ///< no file, or no signed message
        NoSigner,
        NoDocument, ///< a detached signature without its document
        DocumentUnreadable,
        Changed, ///< a file was changed while it was read
        Cancelled,
    };
    Problem problem = NoProblem;
    bool isAttached = false;
    QVector<SignerReport> signers;
    QList<QByteArray> certificates; ///< those in the message, DER
    QList<QByteArray> lists; ///< revocation lists in the message, DER
};

} // namespace Trivex
