// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/x509/der.h"

#include <cstring>

namespace Trivex::Der {

namespace {

constexpr int MultiOctetTag = 0x1F;
constexpr int LongLength = 0x80;
/// As deep as libcrypto goes.
constexpr int DeepestPiece = 5;

// The octets of the tag; 0 when they don't end.
int tagSize(Slice rest)
{
    if ((rest.at(0) & MultiOctetTag) != MultiOctetTag)
        return 1;
    for (int i = 1; i < rest.size; ++i) {
        if (!(rest.at(i) & 0x80))
            return i + 1;
    }
    return 0;
}

// Reads the length at `*position` and moves behind it; -1 when it does not fit.
int readLength(Slice rest, int *position)
{
    if (*position >= rest.size)
        return -1;
    const int first = rest.at((*position)++);
    if (first < LongLength)
        return first;
    const int count = first & 0x7F;
    if (count == 0 || count > rest.size - *position)
        return -1;
    quint64 length = 0;
    for (int i = 0; i < count; ++i) {
        length = length << 8 | rest.at((*position)++);
        if (length > quint64(rest.size))
            return -1;
    }
    return int(length);
}

bool appendPieces(Slice pieces, int depth, QByteArray *content)
{
    Reader reader(pieces);
    Element piece;
    while (!reader.atEnd()) {
        if (depth > DeepestPiece || !reader.next(&piece) || piece.tag < 0)
            return false;
        if (!(piece.tag & ConstructedBit))
            content->append(piece.content.data, piece.content.size);
        else if (!appendPieces(piece.content, depth + 1, content))
            return false;
    }
    return true;
}

} // namespace

bool Slice::operator==(const Slice &other) const
{
    return size == other.size && (size == 0 || std::memcmp(data, other.data, size_t(size)) == 0);
}

bool Reader::next(Element *element)
{
    const Slice rest = m_rest;
    m_rest = {rest.data + rest.size, 0};
    if (rest.size < 2)
        return false;
    int position = tagSize(rest);
    if (position == 0)
        return false;
    const int tag = position == 1 ? rest.at(0) : -1;
    const int length = readLength(rest, &position);
    if (length < 0 || length > rest.size - position)
        return false;
    *element = {tag, {rest.data + position, length}, {rest.data, position + length}};
    m_rest = {rest.data + position + length, rest.size - position - length};
    return true;
}

bool Reader::next(int tag, Element *element)
{
    return peek() == tag && next(element);
}

bool Reader::next(int tag, Slice *content)
{
    Element element;
    if (!next(tag, &element))
        return false;
    *content = element.content;
    return true;
}

bool Reader::nextList(int tag, Element *element)
{
    return (peek() | ConstructedBit) == tag && next(element);
}

bool Reader::nextList(int tag, Slice *content)
{
    Element element;
    if (!nextList(tag, &element))
        return false;
    *content = element.content;
    return true;
}

bool Reader::nextString(int tag, QByteArray *content)
{
    Element element;
    return (peek() & ~ConstructedBit) == tag && next(&element) && joinString(element, content);
}

void Reader::skip(int tag)
{
    Element element;
    next(tag, &element);
}

bool single(Slice slice, int tag, Slice *content)
{
    Reader reader(slice);
    return reader.next(tag, content) && reader.atEnd();
}

bool singleList(Slice slice, int tag, Slice *content)
{
    Reader reader(slice);
    return reader.nextList(tag, content) && reader.atEnd();
}

bool joinString(const Element &element, QByteArray *content)
{
    if (!(element.tag & ConstructedBit)) {
        *content = element.content.view();
        return true;
    }
    content->clear();
    return appendPieces(element.content, 1, content);
}

QByteArray oidText(Slice content)
{
    QByteArray text;
    quint64 arc = 0;
    bool first = true;
    bool open = false;
    for (int i = 0; i < content.size; ++i) {
        // An arc that does not fit is no attribute that anybody knows (UUID arcs have 128 bits,
        // and are left to be shown by their encoding elsewhere).
        if (arc >> 57)
            return {};
        arc = arc << 7 | (content.at(i) & 0x7F);
        open = content.at(i) & 0x80;
        if (open)
            continue;
        if (first) {
            const quint64 root = qMin<quint64>(arc / 40, 2);
            text.setNum(root).append('.').append(QByteArray::number(arc - root * 40));
        } else {
            text.append('.').append(QByteArray::number(arc));
        }
        first = false;
        arc = 0;
    }
    return open ? QByteArray() : text;
}

int smallInteger(Slice content)
{
    if (content.isEmpty() || content.size > 4 || content.at(0) & 0x80)
        return -1;
    int value = 0;
    for (int i = 0; i < content.size; ++i)
        value = value << 8 | content.at(i);
    return value;
}

bool wholeBits(Slice content, Slice *bits)
{
    if (content.isEmpty() || content.at(0) != 0)
        return false;
    *bits = {content.data + 1, content.size - 1};
    return true;
}

} // namespace Trivex::Der
