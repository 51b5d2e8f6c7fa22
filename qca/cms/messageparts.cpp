// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/messageparts.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/der.h"
#include "qca/asn1/derwriter.h"
#include "qca/base/bounds.h"
#include "qca/cms/berreader.h"

namespace Trivex {

namespace {

constexpr int StringInPieces = Der::OctetString | Der::ConstructedBit;

class Splitter {
public:
    explicit Splitter(const ByteSourcePtr &source)
        : m_source(source)
        , m_reader(*source, 0, source->size())
    {
    }

    bool split(MessageParts *parts)
    {
        QByteArray type;
        QByteArray body;
        BerHeader wrapped;
        return enter(Der::Sequence) && copyOid(&type) && oidOf(type) == Oid::SignedData
            && enter(Der::context(0)) && m_reader.enter(Der::Sequence, &wrapped)
            && takeSignedData(wrapped, parts, &body) && finish(parts, type, body);
    }

private:
    static QByteArray oidOf(const QByteArray &element)
    {
        Der::Slice content;
        Der::single(Der::sliceOf(element), Der::ObjectIdentifier, &content);
        return Der::oidText(content);
    }

    bool enter(int tag)
    {
        BerHeader header;
        return m_reader.enter(tag, &header);
    }

    bool append(qint64 begin, qint64 end, QByteArray *to)
    {
        if (end - begin > MaxFileBytes - to->size())
            return false;
        const int old = to->size();
        to->resize(old + int(end - begin));
        return m_source->readAt(begin, to->data() + old, end - begin);
    }

    bool copyElement(BerHeader *header, QByteArray *to)
    {
        return m_reader.skip(header) && append(header->begin, m_reader.offset(), to);
    }

    bool copyOid(QByteArray *to)
    {
        BerHeader header;
        return copyElement(&header, to) && header.tag == Der::ObjectIdentifier;
    }

    /// Whether the end of `outer` is reached, whose mark is then left behind.
    bool leaves(const BerHeader &outer)
    {
        if (!outer.isIndefinite())
            return m_reader.offset() >= outer.end();
        BerHeader mark;
        const qint64 before = m_reader.offset();
        if (m_reader.enter(&mark) && mark.isEndMark())
            return true;
        m_reader.moveTo(before);
        return false;
    }

    bool takeDocument(MessageParts *parts)
    {
        BerHeader wrapped;
        BerHeader string;
        if (!m_reader.enter(Der::context(0), &wrapped))
            return false;
        const qint64 begin = m_reader.offset();
        if (!m_reader.skip(&string))
            return false;
        if (string.tag == Der::OctetString)
            parts->content = {m_source, string.content, string.end(), false};
        else if (string.tag == StringInPieces)
            parts->content = {m_source, begin, m_reader.offset(), true};
        else
            return false;
        return leaves(wrapped);
    }

    /// EncapsulatedContentInfo.
    bool takeEncapsulated(MessageParts *parts, QByteArray *body)
    {
        BerHeader header;
        QByteArray type;
        if (!m_reader.enter(Der::Sequence, &header) || !copyOid(&type))
            return false;
        Der::Slice content;
        Der::single(Der::sliceOf(type), Der::ObjectIdentifier, &content);
        parts->contentType = content.bytes();
        *body += Der::write(Der::Sequence, type);
        return leaves(header) || (takeDocument(parts) && leaves(header));
    }

    bool takeSignedData(const BerHeader &outer, MessageParts *parts, QByteArray *body)
    {
        BerHeader version;
        BerHeader digests;
        if (!copyElement(&version, body) || version.tag != Der::Integer
            || !copyElement(&digests, body) || digests.tag != Der::Set
            || !takeEncapsulated(parts, body))
            return false;
        while (!leaves(outer)) {
            BerHeader rest;
            if (!copyElement(&rest, body))
                return false;
        }
        return true;
    }

    static bool finish(MessageParts *parts, const QByteArray &type, const QByteArray &body)
    {
        const QByteArray data = Der::write(Der::Sequence, body);
        parts->skeleton = Der::writeSequence({type, Der::write(Der::context(0), data)});
        return true;
    }

    const ByteSourcePtr m_source;
    BerReader m_reader;
};

} // namespace

bool MessageParts::read(const ByteSourcePtr &source, MessageParts *parts)
{
    *parts = {};
    return source && Splitter(source).split(parts);
}

} // namespace Trivex
