// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace TrivexFuzz {

/// Takes an input as a row of decisions. At its end every decision is 0, so that each script ends.
class Script {
public:
    explicit Script(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    bool atEnd() const { return m_at >= m_bytes.size(); }
    uchar byte() { return atEnd() ? uchar(0) : uchar(m_bytes.at(m_at++)); }
    /// From 0 to below `end`, which is 256 at most.
    int below(int end) { return byte() % end; }
    bool flag() { return (byte() & 1) != 0; }
    /// Any number, most often a small one: the first byte says how many follow.
    quint64 number()
    {
        const int octets = below(9);
        quint64 value = 0;
        for (int i = 0; i < octets; ++i)
            value = value << 8 | byte();
        return value;
    }
    /// Up to `most` bytes: the next one or two say how many.
    QByteArray bytes(int most)
    {
        const int wanted = qMin(most, below(2) ? byte() << 8 | byte() : int(byte()));
        const QByteArray taken = m_bytes.mid(m_at, wanted);
        m_at += taken.size();
        return taken;
    }
    QByteArray rest()
    {
        const QByteArray taken = m_bytes.mid(m_at);
        m_at = m_bytes.size();
        return taken;
    }

private:
    QByteArray m_bytes;
    int m_at = 0;
};

} // namespace TrivexFuzz
