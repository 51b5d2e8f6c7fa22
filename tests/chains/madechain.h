// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"
#include "qca/chains/chain.h"

#include <QByteArray>
#include <QVector>

/// Certificates and revocation lists with signatures, made by libcrypto as a test needs them.
namespace MadeChain {

constexpr int Year = 365; // days

/// What a certificate says; the rest has defaults.
struct Wish {
    const char *name = "Somebody";
    int from = -1; ///< days from now
    int to = Year;
    QVector<QPair<int, QByteArray>> extensions = {}; ///< number and libcrypto's text
    const EVP_MD *digest = EVP_sha256();
    bool withKeyIds = true;
};

QVector<QPair<int, QByteArray>> authority(const char *constraints = "critical,CA:TRUE");

/// A key with a certificate.
struct Party {
    Trivex::PKeyHandle key;
    Trivex::X509Handle certificate;

    QByteArray der() const;
    Trivex::ChainCandidate candidate(const char *place = "file", bool isAnchor = false) const;
    Trivex::ChainCandidate anchor() const { return candidate("system", true); }
};

Trivex::PKeyHandle curveKey();
Trivex::PKeyHandle rsaKey(unsigned bits);

/// Issued by `issuer`; by itself where that is null.
Party make(const Wish &wish, const Party *issuer, Trivex::PKeyHandle key = nullptr);

struct Revoked {
    const Party *party;
    int days; ///< from now
    int reason = Trivex::NoRevocationReason;
};
/// A revocation list from `from` to `to`, in days.
QByteArray list(const Party &issuer, const QVector<Revoked> &revoked, int from = -1, int to = 30);
/// The same in the name of `issuer`, signed by the key of `signer`.
QByteArray listSignedBy(const Party &issuer, const Party &signer, const QVector<Revoked> &revoked,
                        int from = -1, int to = 30);

QByteArray certificatePem(const QByteArray &der);
QByteArray listPem(const QByteArray &der);

} // namespace MadeChain
