// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/messagereport.h"
#include "qca/cms/signedmessage.h"

namespace Trivex {

/// Checks every signature of a message by libcrypto, each for itself. `known` are certificates
/// (DER) for signers whose own is not in the message. Reads the document once, or not at all where
/// none of its digests is known; any thread.
TRIVEX_QCA_EXPORT MessageReport checkMessage(const SignedMessage &message, const Content &outside,
                                             const QList<QByteArray> &known, LongWork &work);

} // namespace Trivex
