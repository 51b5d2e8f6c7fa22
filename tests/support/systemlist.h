// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

namespace TrivexTest {

/// Makes QCA's list of the system's roots that file, whatever the machine has; empty without one.
/// QCA must have been started.
inline void setSystemList(const QString &file = {})
{
    const QString provider = QStringLiteral("default");
    QVariantMap config = QCA::getProviderConfig(provider);
    config.insert(QStringLiteral("use_system"), false);
    config.insert(QStringLiteral("roots_file"), file);
    QCA::setProviderConfig(provider, config);
}

} // namespace TrivexTest
