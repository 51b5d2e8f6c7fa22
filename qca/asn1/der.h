// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QtGlobal>

namespace Trivex::Der {

/// Tags of X.690 as the first octet holds them, constructed bit included.
enum Tag : int {
    Boolean = 0x01,
    Integer = 0x02,
    BitString = 0x03,
    OctetString = 0x04,
    Null = 0x05,
    ObjectIdentifier = 0x06,
    Enumerated = 0x0A,
    Utf8String = 0x0C,
    NumericString = 0x12,
    PrintableString = 0x13,
    T61String = 0x14,
    Ia5String = 0x16,
    UtcTime = 0x17,
    GeneralizedTime = 0x18,
    VisibleString = 0x1A,
    UniversalString = 0x1C,
    BmpString = 0x1E,
    Sequence = 0x30,
    Set = 0x31,
};

constexpr int ConstructedBit = 0x20;

/// The octet of a context-specific tag.
constexpr int context(int number, bool constructed = true)
{
    return (constructed ? 0xA0 : 0x80) | number;
}

/// Whether it is the tag of a Time (RFC 5280, 4.1), in one piece or in several.
constexpr bool isTime(int tag)
{
    return (tag & ~ConstructedBit) == UtcTime || (tag & ~ConstructedBit) == GeneralizedTime;
}

/// A view of bytes that somebody else owns.
struct Slice {
    const char *data = nullptr;
    int size = 0;

    bool isEmpty() const { return size == 0; }
    uchar at(int i) const { return uchar(data[i]); }
    /// A copy.
    QByteArray bytes() const { return QByteArray(data, size); }
    /// Not a copy: valid as long as the underlying bytes.
    QByteArray view() const { return QByteArray::fromRawData(data, size); }
    bool operator==(const Slice &other) const;
};

inline Slice sliceOf(const QByteArray &bytes)
{
    return {bytes.constData(), bytes.size()};
}

struct Element {
    int tag = 0; ///< the first octet; -1 for a tag of several octets
    Slice content;
    Slice whole; ///< with tag and length, and with the end mark of an indefinite length
};

/// Walks over the elements of a DER encoding (X.690). Never reads outside of its slice; an element
/// that does not fit ends the walk. Lengths may be longer than needed or indefinite (X.690,
/// 8.1.3.6), as libcrypto has them.
class TRIVEX_QCA_EXPORT Reader {
public:
    explicit Reader(Slice slice)
        : m_rest(slice)
    {
    }

    bool atEnd() const { return m_rest.size == 0; }
    /// The next tag octet, or -1 at the end.
    int peek() const { return atEnd() ? -1 : m_rest.at(0); }
    Slice rest() const { return m_rest; }

    /// Reads any element. When the bytes are no element it returns false and moves to the end.
    bool next(Element *element);
    /// Reads an element with that tag. When another tag follows it returns false and does not move.
    bool next(int tag, Element *element);
    /// The same, for callers that need only the content.
    bool next(int tag, Slice *content);
    /// Reads a SEQUENCE OF or SET OF. `tag` has the constructed bit, the encoding may lack it:
    /// libcrypto does not check the bit there, so such certificates exist.
    bool nextList(int tag, Element *element);
    bool nextList(int tag, Slice *content);
    /// Reads a string. `tag` is that of the form in one piece; a string in several pieces is
    /// joined.
    bool nextString(int tag, QByteArray *content);
    /// Skips an element that may be absent.
    void skip(int tag);

private:
    Slice m_rest;
};

/// The only element of `slice`, with that tag; trailing bytes are refused.
TRIVEX_QCA_EXPORT bool single(Slice slice, int tag, Slice *content);
/// The same for a SEQUENCE OF or SET OF; see `Reader::nextList`.
bool singleList(Slice slice, int tag, Slice *content);

/// The octets of a string type (X.690, 8.14, 8.23): a view of a string in one piece, a joined copy
/// of one in several pieces. False when a piece is no string or the nesting is too deep.
bool joinString(const Element &element, QByteArray *content);

/// Whether this is the content of an OBJECT IDENTIFIER: whole arcs, none longer than needed.
bool isOid(Slice content);

/// Dotted form of an OBJECT IDENTIFIER's content. Empty for other content and for an arc of more
/// than 20 octets (those of UUIDs, X.667, have 19).
TRIVEX_QCA_EXPORT QByteArray oidText(Slice content);

/// Whether this is the content of an INTEGER in its shortest form (X.690, 8.3.2).
bool isInteger(Slice content);

/// The value of a small non-negative INTEGER; -1 for others.
int smallInteger(Slice content);

/// The bits of a BIT STRING with whole octets; false when it has unused bits or none at all.
bool wholeBits(Slice content, Slice *bits);

} // namespace Trivex::Der
