// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

namespace Trivex {

/// Shared by all messages of one `QCA::CMS`.
struct MessageMeans {
    QCA::CertificateCollection trusted;
    QCA::CertificateCollection untrusted;
    QList<QCA::SecureMessageKey> keys; ///< to decrypt with
};

/// One message: what is wanted, and what there is for it.
struct MessageTask {
    QCA::MessageContext::Operation operation = QCA::MessageContext::Sign;
    QCA::SecureMessage::Format format = QCA::SecureMessage::Binary;
    QCA::SecureMessage::SignMode mode = QCA::SecureMessage::Message;
    bool bundlesSigner = true;
    QCA::SecureMessageKeyList signers; ///< the first one signs
    QCA::SecureMessageKeyList recipients;
    QByteArray signature; ///< of a document that is checked with a signature beside it
    QByteArray input;
};

struct MessageResult {
    bool isGood = false;
    QCA::SecureMessage::Error error = QCA::SecureMessage::ErrorUnknown;
    QByteArray output;
    QByteArray signature;
    QString digest; ///< as QCA calls it: "sha256"
    QCA::SecureMessageSignatureList signers;
};

} // namespace Trivex
