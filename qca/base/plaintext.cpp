// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/plaintext.h"

#include <algorithm>

namespace Trivex {

namespace {

bool turnsDirection(ushort unit)
{
    return unit == 0x200E || unit == 0x200F || unit == 0x061C || (unit >= 0x202A && unit <= 0x202E)
        || (unit >= 0x2066 && unit <= 0x2069);
}

bool isHidden(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return turnsDirection(c.unicode());
    }
}

} // namespace

QString plainText(QString text, QChar standIn)
{
    if (std::any_of(text.cbegin(), text.cend(), isHidden))
        std::replace_if(text.begin(), text.end(), isHidden, standIn);
    return text;
}

} // namespace Trivex
