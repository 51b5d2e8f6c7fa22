// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/requestcontents.h"

namespace Trivex {

/// What people call a value or a usage of a request, by the name that profiles have for it; a name
/// that has no text comes back as it is.
QString requestTitle(const QString &name);

/// What is wrong with a value, as a sentence that says how a right one looks; empty for a good one.
QString requestProblemText(const QString &type, const QString &value,
                           RequestContents::Problem problem);

} // namespace Trivex
