// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

namespace Trivex::Der {

/// The content octets of an OBJECT IDENTIFIER (X.690, 8.19), made of its dotted form when the
/// program is compiled: looking for octets takes less time than making the dotted text of all that
/// is there.
class OidOctets {
public:
    /// `dotted` has two arcs or more; a dot behind the last one changes nothing. One that does not
    /// fit, or is no dotted form, does not compile as a constant.
    constexpr explicit OidOctets(const char *dotted)
    {
        const quint64 first = nextArc(&dotted);
        append(first * SecondArcs + nextArc(&dotted));
        while (*dotted)
            append(nextArc(&dotted));
    }

    Slice slice() const { return {m_octets, m_size}; }
    /// Not a copy: valid as long as this object.
    QByteArray view() const { return slice().view(); }

private:
    static constexpr int Capacity = 16;
    // The first octet holds two arcs.
    static constexpr quint64 SecondArcs = 40;

    static constexpr quint64 nextArc(const char **text)
    {
        quint64 arc = 0;
        while (**text && **text != '.')
            arc = arc * 10 + digit(*(*text)++);
        if (**text)
            ++*text;
        return arc;
    }

    static constexpr unsigned digit(char character)
    {
        return character >= '0' && character <= '9' ? unsigned(character - '0')
                                                    : throw "no dotted form";
    }

    constexpr void append(quint64 arc)
    {
        int octets = 1;
        while (octets < 9 && arc >> (7 * octets))
            ++octets;
        while (octets-- > 0) {
            const auto bits = unsigned(arc >> (7 * octets)) & 0x7F;
            m_octets[m_size++] = char(octets > 0 ? bits | 0x80 : bits);
        }
    }

    char m_octets[Capacity] = {};
    int m_size = 0;
};

} // namespace Trivex::Der
