// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>

#include <functional>

namespace Trivex {

/// Runs `work` in a thread of its own, which nobody waits for, and then `then` on the thread of
/// `context`, unless that is gone by then. What `work` holds must be no memory of QCA's: the thread
/// may outlive QCA. At the end of the process nothing is started, and neither is ever called.
TRIVEX_QCA_EXPORT void runInBackground(std::function<void()> work, QObject *context,
                                       std::function<void()> then);

} // namespace Trivex
