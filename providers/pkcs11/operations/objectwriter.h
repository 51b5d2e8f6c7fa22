// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokenconnection.h"
#include "qca/keys/keymaterial.h"

#include <atomic>

namespace Trivex {

/// Writes a certificate (DER) with the CKA_ID of its key, unless the token has it already. Returns
/// the id of its entry. Throws `Pkcs11::Error`; the token has not changed then. On the token's
/// thread.
QString writeCertificate(TokenConnection &connection, Operation &operation, const QByteArray &der);

/// The same for several, in their order, in one session and after one look at the token. Each stays
/// once it is written, whatever becomes of the next; `*count` tells any thread how many are there.
void writeCertificates(TokenConnection &connection, Operation &operation,
                       const QVector<QByteArray> &ders, std::atomic<int> *count);

/// A private key with its certificates.
struct BundleToWrite {
    QString name; ///< the label; when empty, the common name is the label
    std::vector<QByteArray> chain; ///< DER; the key's own certificate comes first
    KeyMaterial key;
};

/// Writes the keys, the certificate and its chain, or nothing. Objects that the token has already
/// are not written again, so that a second try completes a bundle that a killed process has left.
/// Returns the id of the entry. Throws `Pkcs11::Error`. On the token's thread.
///
/// The keys are written first: an interruption leaves a key without a certificate, which no list
/// shows.
QString writeBundle(TokenConnection &connection, Operation &operation, const BundleToWrite &bundle);

} // namespace Trivex
