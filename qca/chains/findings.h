// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/chain.h"

namespace Trivex {

/// The meaning of each finding for its step. Reasons are weighed only here.
ChainVerdict verdictOf(ChainReason reason);

/// The reason behind one of libcrypto's X509_V_ERR_ numbers at `depth`, 0 being the checked
/// certificate; `None` for what is no finding.
ChainReason reasonOf(int error, int depth);

} // namespace Trivex
