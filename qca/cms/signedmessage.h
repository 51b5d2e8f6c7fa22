// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/content.h"

namespace Trivex {

/// A signed message in any of its forms: BER, PEM, plain Base64, S/MIME (RFC 8551).
struct TRIVEX_QCA_EXPORT SignedMessage {
    QByteArray skeleton; ///< DER or BER, without the document; see `MessageParts`
    QByteArray contentType; ///< the content of an OBJECT IDENTIFIER
    Content content; ///< null for one that is detached

    /// Null for what is no signed message. Only BER may be longer than `MaxFileBytes`: then its
    /// document stays where it is. Any thread.
    static SignedMessage read(const ByteSourcePtr &source);
    bool isNull() const { return skeleton.isEmpty(); }
    bool isAttached() const { return !content.isNull(); }
};

} // namespace Trivex
