// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStandardPaths>

namespace TrivexTest {

/// The folder of the user's own files, which the store "USER" lists, in the home that the
/// environment names now. It need not be there.
inline QString userFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/trivex/certificates");
}

/// The path of the file `name` in that folder.
inline QString userFile(const QString &name)
{
    return userFolder() + QLatin1Char('/') + name;
}

} // namespace TrivexTest
