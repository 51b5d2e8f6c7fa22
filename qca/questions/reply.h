// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/secret.h"

#include <QString>

namespace Trivex {

/// The answer to a question. `accepted` is false when it was rejected, withdrawn, or when nobody
/// was there to answer.
struct Reply {
    bool accepted = false;
    Secret password; ///< kind 0
    QString text; ///< kinds 2 and 4
    /// True if the person who answered can be asked again when the PIN is wrong.
    bool asksAgain = false;
};

} // namespace Trivex
