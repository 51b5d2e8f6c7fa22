// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keymaterial.h"

#include <QList>
#include <QString>

namespace Trivex {

/// The first private key of a PKCS#12 file (RFC 7292) that has a certificate, with its chain.
struct Bundle {
    QString name; ///< the friendly name of the key, else of its certificate; may be empty
    KeyMaterial key;
    QList<QByteArray> chain; ///< DER: the key's certificate, then its issuers as far as they are in
};

/// Reads a bundle, encrypted by any cipher that libcrypto has, old ones included. Touches no object
/// of QCA, so that a thread may run it while QCA ends.
///
/// The password is UTF-8; where its integrity check fails, the ways in which older programs
/// encoded letters beyond ASCII are tried too. `ErrorPassphrase`: the password is missing or wrong.
/// `ErrorDecode`: no bundle, a broken one, or one without a private key
/// and its certificate.
QCA::ConvertResult readBundle(const QByteArray &der, const Secret &password, Bundle *bundle);

} // namespace Trivex
