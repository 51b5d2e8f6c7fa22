// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/secret.h"

#include <QString>
#include <QVector>

namespace Trivex {

/// The contents of a PKCS#12 file that is to be written.
struct BundleParts {
    QString name; ///< of the key and its certificate, for people; may be empty
    Secret privateInfo; ///< DER PrivateKeyInfo (RFC 5208), of any algorithm
    QVector<QByteArray> chain; ///< DER; the key's own certificate first
};

/// DER PKCS#12 (RFC 7292): key and certificates encrypted by AES-256-CBC with a key from PBKDF2 and
/// SHA-256, and a MAC with SHA-256, which all current readers know. `password` is UTF-8. Empty for
/// an empty password, because everybody could read the key, and where a part can't be read. Takes
/// a while; any thread.
TRIVEX_QCA_EXPORT QByteArray writeBundleFile(const BundleParts &parts, const Secret &password);

} // namespace Trivex
