// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/bytesource.h"
#include "qca/cms/longwork.h"

#include <functional>

namespace Trivex {

enum class ReadResult {
    Done,
    Cancelled,
    Failed,
    Changed, ///< the file was changed while it was read
    Refused, ///< whoever got the pieces wanted no more
};

/// The document of a message: a whole file, or what lies inside of the message.
struct Content {
    ByteSourcePtr source; ///< null: there is none
    qint64 begin = 0;
    qint64 end = 0;
    /// It lies there as OCTET STRINGs one behind the other (X.690, 8.7.3); else as it is.
    bool inPieces = false;

    bool isNull() const { return !source; }
};

TRIVEX_QCA_EXPORT Content wholeContent(const ByteSourcePtr &source);

/// Takes a piece of a document; false to stop.
using ContentSink = std::function<bool(const char *data, qint64 size)>;

/// Reads the document from its beginning to its end, in pieces of at most 256 KiB.
TRIVEX_QCA_EXPORT ReadResult readContent(const Content &content, LongWork &work,
                                         const ContentSink &sink);

} // namespace Trivex
