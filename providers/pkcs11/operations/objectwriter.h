// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokenconnection.h"
#include "qca/keys/keymaterial.h"

namespace Trivex {

/// Writes a certificate, under the id of the key that it belongs to. One that the token has already
/// is not written again. The id of the entry. Throws `Pkcs11::Error`; nothing is left then.
QString writeCertificate(TokenConnection &connection, Operation &operation, const QByteArray &der);

/// A private key with its certificates.
struct BundleToWrite {
    QString name; ///< the label; the common name when empty
    std::vector<QByteArray> chain; ///< DER, the key's own certificate first
    KeyMaterial key;
};

/// Writes keys, certificate and chain, or nothing. What the token has already is not written again,
/// so that a bundle whose writing was cut short by the death of the process is completed. The id
/// of the entry. Throws `Pkcs11::Error`.
///
/// The keys come first: cut short, they are a key without a certificate, which shows nowhere.
QString writeBundle(TokenConnection &connection, Operation &operation, const BundleToWrite &bundle);

} // namespace Trivex
