// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/der.h"

#include <algorithm>
#include <cstring>

namespace Trivex::Der {

namespace {

constexpr int MultiOctetTag = 0x1F;
constexpr int LongLength = 0x80;
/// The length of an element that ends with two octets of zero.
constexpr int Indefinite = -2;
constexpr int EndSize = 2;
/// Octets of seven bits: as many as fit into 64 bits, and as many as any OID needs.
constexpr int LargestNumber = 9;
constexpr int LargestArc = 20;
/// As deep as libcrypto goes.
constexpr int DeepestPiece = 6;

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

// Reads the length at `*position` and moves behind it. -1 when it does not fit; `Indefinite`.
int readLength(Slice rest, int *position)
{
    if (*position >= rest.size)
        return -1;
    const int first = rest.at((*position)++);
    if (first < LongLength)
        return first;
    const int count = first & 0x7F;
    if (count == 0)
        return Indefinite;
    if (count > rest.size - *position)
        return -1;
    quint64 length = 0;
    for (int i = 0; i < count; ++i) {
        length = length << 8 | rest.at((*position)++);
        if (length > quint64(rest.size))
            return -1;
    }
    return int(length);
}

// The size of the content before the end mark that belongs to `start`; -1 when there is no end
// mark. One pass, however deep the elements are nested.
int sizeBeforeEnd(Slice rest, int start)
{
    int position = start;
    for (int open = 1; position + EndSize <= rest.size;) {
        if (rest.at(position) == 0 && rest.at(position + 1) == 0) {
            if (--open == 0)
                return position - start;
            position += EndSize;
            continue;
        }
        const Slice inner{rest.data + position, rest.size - position};
        int headerSize = tagSize(inner);
        const int length = headerSize > 0 ? readLength(inner, &headerSize) : -1;
        const bool isOpen = length == Indefinite && inner.at(0) & ConstructedBit;
        if (!isOpen && (length < 0 || length > inner.size - headerSize))
            return -1;
        open += isOpen ? 1 : 0;
        position += headerSize + (isOpen ? 0 : length);
    }
    return -1;
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

// The octets of the arc at `*position`, which moves behind it; none when it has no end.
Slice readArc(Slice content, int *position)
{
    const int start = *position;
    while (*position < content.size) {
        if (!(content.at((*position)++) & 0x80))
            return {content.data + start, *position - start};
    }
    return {};
}

quint64 arcNumber(Slice arc)
{
    quint64 number = 0;
    for (int i = 0; i < arc.size; ++i)
        number = number << 7 | (arc.at(i) & 0x7F);
    return number;
}

// In decimal digits, however many.
QByteArray arcText(Slice arc)
{
    if (arc.size <= LargestNumber)
        return QByteArray::number(arcNumber(arc));
    QByteArray digits; // the last one first
    for (int i = 0; i < arc.size; ++i) {
        int carry = arc.at(i) & 0x7F;
        for (char &digit : digits) {
            carry += digit * 128;
            digit = char(carry % 10);
            carry /= 10;
        }
        for (; carry > 0; carry /= 10)
            digits += char(carry % 10);
    }
    std::reverse(digits.begin(), digits.end());
    for (char &digit : digits)
        digit = char(digit + '0');
    return digits;
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
    int length = readLength(rest, &position);
    const bool hasEnd = length == Indefinite && rest.at(0) & ConstructedBit;
    if (hasEnd)
        length = sizeBeforeEnd(rest, position);
    if (length < 0 || length > rest.size - position)
        return false;
    const int size = position + length + (hasEnd ? EndSize : 0);
    *element = {tag, {rest.data + position, length}, {rest.data, size}};
    m_rest = {rest.data + size, rest.size - size};
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

bool isOid(Slice content)
{
    int position = 0;
    while (position < content.size) {
        const Slice arc = readArc(content, &position);
        // An arc with a leading zero could be written shorter and would pass for another one.
        if (arc.isEmpty() || arc.at(0) == 0x80)
            return false;
    }
    return position > 0;
}

QByteArray oidText(Slice content)
{
    if (!isOid(content))
        return {};
    QByteArray text;
    for (int position = 0; position < content.size;) {
        const Slice arc = readArc(content, &position);
        if (arc.size > LargestArc)
            return {};
        if (!text.isEmpty()) {
            text.append('.').append(arcText(arc));
        } else if (arc.size <= LargestNumber) {
            const quint64 both = arcNumber(arc);
            const quint64 root = qMin<quint64>(both / 40, 2);
            text.setNum(root).append('.').append(QByteArray::number(both - root * 40));
        } else {
            return {};
        }
    }
    return text;
}

bool isInteger(Slice content)
{
    if (content.size < 2)
        return content.size == 1;
    const bool isPadded = (content.at(0) == 0 && !(content.at(1) & 0x80))
        || (content.at(0) == 0xFF && content.at(1) & 0x80);
    return !isPadded;
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
