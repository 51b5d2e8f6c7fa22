// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/keyextraction.h"

namespace TrivexTest {

/// What the token of that store gives out of the key that belongs to `publicInfo`; waits for it.
/// Without an answer the error is `NotFound`.
Trivex::ExtractedKey extracted(const QString &keyStoreId, const QByteArray &publicInfo);

} // namespace TrivexTest
