// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QStringList>

namespace Trivex {

/// Registers with QCA those of our providers that it has not found itself, from the first of
/// `directories` that holds their plugins, and ranks them as `rankProviders` does. A host that
/// says nothing of our providers has them all the same.
///
/// Once at plugin start, after QCA's initialisation. The plugins stay loaded until the process
/// ends. True when all of our providers are there afterwards.
TRIVEX_QCA_EXPORT bool registerProviders(const QStringList &directories);

} // namespace Trivex
