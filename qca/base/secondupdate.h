// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// Announces `store` of `list` once more, a moment after the current update. A model that compares
/// lists may keep a removed row until the next update, so this sends one: docs/decisions/012. Runs
/// on the thread of `list`, which may be destroyed meanwhile.
TRIVEX_QCA_EXPORT void announceAgain(QCA::KeyStoreListContext *list, int store);

} // namespace Trivex
