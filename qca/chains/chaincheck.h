// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/chains/chain.h"

#include <atomic>

namespace Trivex {

/// Looks for the path from a certificate to an anchor and checks it by libcrypto (RFC 5280, 6):
/// signatures, dates, authorities, path lengths, names, strengths of 112 bits, and revocation as
/// far as the lists reach. Every finding of every step is kept. Where there is no path to an
/// anchor, the one that goes furthest is shown.
///
/// Takes up to seconds for input made to hurt; `isCancelled` may become true on any thread, and
/// what is returned then means nothing. Thread-safe; makes nothing of QCA's.
TRIVEX_QCA_EXPORT ChainResult checkChain(const ChainInput &input,
                                         const std::atomic<bool> &isCancelled);
/// The same, to the end.
TRIVEX_QCA_EXPORT ChainResult checkChain(const ChainInput &input);

} // namespace Trivex
