// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/openssl/messagetask.h"
#include "qca/cms/messagereport.h"

namespace Trivex {

/// The certificates that a signer's own may be among, where the message does not hold it: DER.
QList<QByteArray> knownCertificates(const MessageMeans &means);

/// The signatures of a message as QCA tells them. One is valid when the document is the one that
/// was signed, and the signer's certificate leads to one of `means.trusted` and is good for mail.
QCA::SecureMessageSignatureList signaturesOf(const MessageReport &report,
                                             const MessageMeans &means);

} // namespace Trivex
