// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// Announces `store` of `list` once more, a moment after the update that somebody is looking at
/// now. A model that compares lists may keep a row that has gone until the next update, so there is
/// a next one: docs/decisions/012. On the thread of `list`, which may go meanwhile.
TRIVEX_QCA_EXPORT void announceAgain(QCA::KeyStoreListContext *list, int store);

} // namespace Trivex
