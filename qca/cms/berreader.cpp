// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/berreader.h"

#include "qca/asn1/der.h"

#include <algorithm>

namespace Trivex {

namespace {

/// Room for a tag of up to five octets and a length of up to nine.
constexpr int LongestHeader = 14;

/// The octets of a tag; 0 for one that is longer than any in use.
int tagSize(const uchar *bytes, int count)
{
    if (count < 1)
        return 0;
    if ((bytes[0] & 0x1f) != 0x1f)
        return 1;
    for (int i = 1; i < std::min(count, 5); ++i) {
        if (!(bytes[i] & 0x80))
            return i + 1;
    }
    return 0;
}

} // namespace

bool BerReader::readHeader(BerHeader *header) const
{
    uchar bytes[LongestHeader];
    const int count = int(std::min<qint64>(LongestHeader, m_end - m_offset));
    if (count < 2 || !m_source.readAt(m_offset, reinterpret_cast<char *>(bytes), count))
        return false;
    int at = tagSize(bytes, count);
    if (at == 0 || at >= count)
        return false;
    header->tag = at == 1 ? bytes[0] : -1;
    header->constructed = bytes[0] & Der::ConstructedBit;
    header->begin = m_offset;
    const int first = bytes[at++];
    header->length = first;
    if (first == 0x80) {
        header->length = -1;
    } else if (first > 0x80) {
        const int octets = first & 0x7f;
        if (octets > 8 || at + octets > count || (octets == 8 && bytes[at] >= 0x80))
            return false;
        header->length = 0;
        for (int i = 0; i < octets; ++i)
            header->length = (header->length << 8) | bytes[at++];
    }
    header->content = m_offset + at;
    if (header->isIndefinite())
        return header->constructed;
    return header->length <= m_end - header->content;
}

bool BerReader::enter(BerHeader *header)
{
    if (!readHeader(header))
        return false;
    m_offset = header->content;
    return true;
}

bool BerReader::enter(int tag, BerHeader *header)
{
    if (!readHeader(header) || header->tag != tag)
        return false;
    m_offset = header->content;
    return true;
}

// A counter in the place of a recursion: strangers choose how deep it goes.
bool BerReader::skip(BerHeader *header)
{
    if (!enter(header))
        return false;
    if (!header->isIndefinite()) {
        m_offset = header->end();
        return true;
    }
    for (qint64 open = 1; open > 0;) {
        BerHeader inner;
        if (!enter(&inner))
            return false;
        if (inner.isEndMark())
            --open;
        else if (inner.isIndefinite())
            ++open;
        else
            m_offset = inner.end();
    }
    return true;
}

} // namespace Trivex
