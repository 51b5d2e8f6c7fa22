// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/bytesource.h"

namespace Trivex {

/// Tag and length of one element (X.690, 8.1).
struct BerHeader {
    int tag = 0; ///< the first octet; -1 for a tag of several octets
    qint64 begin = 0;
    qint64 content = 0; ///< where its contents begin
    qint64 length = 0; ///< of the contents; -1: indefinite, up to an end mark

    bool isIndefinite() const { return length < 0; }
    bool isConstructed() const { return isIndefinite() || constructed; }
    bool isEndMark() const { return tag == 0 && length == 0; }
    qint64 end() const { return content + length; }

    bool constructed = false;
};

/// Walks over BER elements of a source of any size, without loading what it steps over.
class BerReader {
public:
    BerReader(const ByteSource &source, qint64 begin, qint64 end)
        : m_source(source)
        , m_offset(begin)
        , m_end(end)
    {
    }

    qint64 offset() const { return m_offset; }
    bool atEnd() const { return m_offset >= m_end; }

    /// The next element, and moves behind its header. False at the end and for what is no element.
    bool enter(BerHeader *header);
    /// The same for an element with that tag; else it does not move.
    bool enter(int tag, BerHeader *header);
    /// Moves behind the next element, with everything in it; `*header` is that of the element.
    bool skip(BerHeader *header);
    /// Moves to `offset`.
    void moveTo(qint64 offset) { m_offset = offset; }

private:
    bool readHeader(BerHeader *header) const;

    const ByteSource &m_source;
    qint64 m_offset;
    const qint64 m_end;
};

} // namespace Trivex
