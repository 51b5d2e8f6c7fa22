// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/storedanswers.h"

#include <optional>

namespace Trivex {

/// Takes the first registered set of stored answers that names `keyStoreId`, and clears it there.
/// With an empty `keyStoreId`, the first set that names any store. Thread-safe.
TRIVEX_QCA_EXPORT std::optional<Answers> takeStoredAnswers(const QString &keyStoreId);

} // namespace Trivex
