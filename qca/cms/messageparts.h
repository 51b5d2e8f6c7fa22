// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/content.h"

namespace Trivex {

/// A signed message (RFC 5652, 5; PKCS#7 too) taken apart, so that the document in it needs no
/// memory, however long it is.
struct TRIVEX_QCA_EXPORT MessageParts {
    /// The message as it would be without the document: a detached one.
    QByteArray skeleton;
    Content content; ///< null for a message that is detached
    /// The type of the document, the content of an OBJECT IDENTIFIER.
    QByteArray contentType;

    /// Takes BER with definite or indefinite lengths. False for what is no signed message, or has
    /// more than `MaxFileBytes` beside the document.
    static bool read(const ByteSourcePtr &source, MessageParts *parts);
};

} // namespace Trivex
