// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>

namespace Trivex {

/// How long modules and tokens are waited for: calls `done` once that is over, while `context`
/// lives, on its thread.
using Patience = std::function<void(QObject *context, std::function<void()> done)>;

/// A minute.
Patience aMinute();

} // namespace Trivex
