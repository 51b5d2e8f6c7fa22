// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>

namespace Trivex {

/// Installs the catalogues `name`_en and that of the user's locale for as long as `owner` lives.
/// English answers whatever the user's own catalogue lacks. Several modules may ask for the same
/// catalogues for one owner: they are installed once. Main thread.
TRIVEX_QCA_EXPORT void installCatalogues(const QString &name, QObject *owner);

} // namespace Trivex
