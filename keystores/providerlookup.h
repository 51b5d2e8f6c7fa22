// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantMap>
#include <QtCrypto>

namespace Trivex {

/// QCA's provider `name`, and its configuration in `*config`. Null, with a warning and `*config`
/// as it was, when QCA has none of that name. The provider stays QCA's.
QCA::Provider *lookUpProvider(const QString &name, QVariantMap *config);

} // namespace Trivex
