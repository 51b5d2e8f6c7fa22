// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/tokentext.h"

namespace Trivex {

namespace {

bool isContinuation(char byte)
{
    return (quint8(byte) & 0xC0) == 0x80;
}

/// The size of the letter that a byte begins; 0 when it begins none (RFC 3629, 3).
int letterSize(char byte)
{
    const auto first = quint8(byte);
    if (first < 0x80)
        return 1;
    if (first >= 0xF0)
        return first < 0xF5 ? 4 : 0;
    if (first >= 0xE0)
        return 3;
    return first >= 0xC2 ? 2 : 0;
}

/// Without the beginning of a letter that is missing its end.
QByteArray withoutCutLetter(const QByteArray &text)
{
    constexpr int LongestLetter = 4;
    int start = text.size() - 1;
    while (start > 0 && text.size() - start < LongestLetter && isContinuation(text.at(start)))
        --start;
    return start >= 0 && letterSize(text.at(start)) > text.size() - start ? text.left(start) : text;
}

QByteArray withoutPadding(const QByteArray &field)
{
    const int zero = field.indexOf('\0');
    int end = zero < 0 ? field.size() : zero;
    while (end > 0 && field.at(end - 1) == ' ')
        --end;
    return field.left(end);
}

} // namespace

QString tokenText(const QByteArray &field)
{
    return QString::fromUtf8(withoutCutLetter(withoutPadding(field))).trimmed();
}

} // namespace Trivex
