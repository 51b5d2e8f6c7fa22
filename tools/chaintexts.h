// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/chain.h"

namespace Trivex {

// Paths in the user's language.

/// A word for a badge.
QString chainWord(ChainVerdict verdict);
/// What a finding says of its step, as a sentence.
QString chainText(const ChainFinding &finding, const ChainStep &step);
/// What can be done about it, as a sentence.
QString chainAdvice(ChainReason reason);
/// All findings of a step and the names of libcrypto's errors, for a report.
QString chainReport(const ChainResult &result);
/// What the whole comes to, as a sentence: the gravest finding, with the name of its step where
/// that is another certificate than the checked one.
QString chainSentence(const ChainResult &result);
/// The step whose finding that is; null where all are good.
const ChainStep *gravestStep(const ChainResult &result);

} // namespace Trivex
