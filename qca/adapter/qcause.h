// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

class QObject;

namespace Trivex {

/// Starts QCA, unless that has been done for this application object, and registers our providers
/// with it. It is given back with the application object, not later: QCA's threads work only under
/// one. A host's own initialiser may stand anywhere, or nowhere. Any thread.
TRIVEX_QCA_EXPORT void useQca();

/// Keeps QCA beyond the application object while `user` lives, which uses what QCA destroys with
/// itself. On the main thread, after `useQca`.
TRIVEX_QCA_EXPORT void keepQcaFor(QObject *user);

} // namespace Trivex
