// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/content.h"

#include "qca/asn1/der.h"
#include "qca/cms/berreader.h"

#include <algorithm>

namespace Trivex {

namespace {

constexpr qint64 PieceSize = 256 * 1024;

ReadResult readRange(const Content &content, qint64 begin, qint64 end, LongWork &work,
                     const ContentSink &sink)
{
    QByteArray piece(int(std::min(PieceSize, end - begin)), Qt::Uninitialized);
    while (begin < end) {
        if (work.isCancelled())
            return ReadResult::Cancelled;
        const qint64 count = std::min<qint64>(piece.size(), end - begin);
        if (!content.source->readAt(begin, piece.data(), count))
            return content.source->isUnchanged() ? ReadResult::Failed : ReadResult::Changed;
        if (!sink(piece.constData(), count))
            return ReadResult::Refused;
        begin += count;
        work.advance(count);
    }
    return ReadResult::Done;
}

/// The string's own pieces may be of several pieces again; where each ends does not matter.
ReadResult readPieces(const Content &content, LongWork &work, const ContentSink &sink)
{
    BerReader reader(*content.source, content.begin, content.end);
    while (!reader.atEnd()) {
        BerHeader piece;
        if (!reader.enter(&piece))
            return ReadResult::Failed;
        if (piece.tag == Der::OctetString) {
            const ReadResult result = readRange(content, piece.content, piece.end(), work, sink);
            if (result != ReadResult::Done)
                return result;
            reader.moveTo(piece.end());
        } else if (piece.tag != (Der::OctetString | Der::ConstructedBit) && !piece.isEndMark()) {
            return ReadResult::Failed;
        }
    }
    return ReadResult::Done;
}

} // namespace

Content wholeContent(const ByteSourcePtr &source)
{
    return source ? Content{source, 0, source->size(), false} : Content();
}

ReadResult readContent(const Content &content, LongWork &work, const ContentSink &sink)
{
    const ReadResult result = content.inPieces
        ? readPieces(content, work, sink)
        : readRange(content, content.begin, content.end, work, sink);
    if (result == ReadResult::Done && !content.source->isUnchanged())
        return ReadResult::Changed;
    return result;
}

} // namespace Trivex
