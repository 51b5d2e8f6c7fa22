// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringBuilder>

namespace TrivexTest {

/// Tag, length and content (X.690), for encodings that nobody else would write.
inline QByteArray derElement(int tag, const QByteArray &content)
{
    QByteArray length;
    if (content.size() < 128) {
        length += char(content.size());
    } else {
        length += char(0x84);
        for (int shift = 24; shift >= 0; shift -= 8)
            length += char(content.size() >> shift);
    }
    return QByteArray(1, char(tag)) + length + content;
}

} // namespace TrivexTest
