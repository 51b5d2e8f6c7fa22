// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <initializer_list>

namespace TrivexTest {

/// The list of these ASCII texts.
inline QStringList list(std::initializer_list<const char *> items)
{
    QStringList result;
    for (const char *item : items)
        result << QLatin1String(item);
    return result;
}

} // namespace TrivexTest
