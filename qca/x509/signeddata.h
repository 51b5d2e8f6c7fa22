// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

namespace Trivex {

/// The contents of a SignedData of PKCS#7 (RFC 2315, 9.1) or CMS (RFC 5652, 5.1).
struct SignedData {
    QList<QByteArray> certificates; ///< each as it lies there, not decoded
    QList<QByteArray> lists; ///< the same of revocation lists
    int signers = 0; ///< 0 for a mere collection
    bool hasContent = false; ///< the signed document itself is inside

    /// False when the bytes are no SignedData. Lengths may be indefinite.
    static bool read(const QByteArray &der, SignedData *data);
};

} // namespace Trivex
