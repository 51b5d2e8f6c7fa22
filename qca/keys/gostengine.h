// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace Trivex {

/// Loads libcrypto's engine "gost" where the system has it, once a process and only when the first
/// GOST key shows up. It becomes the default for the GOST algorithms only, which nothing else
/// serves. False when there is no engine. Thread-safe.
TRIVEX_QCA_EXPORT bool loadGostEngine();

/// Whether an object identifier of a Russian standard may stand in `der`: its arc is looked for
/// among all octets. All algorithms of GOST lie below it.
bool mayMentionGost(const QByteArray &der);

} // namespace Trivex
