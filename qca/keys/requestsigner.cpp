// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/requestsigner.h"

namespace Trivex {

RequestSigner::~RequestSigner() = default;

} // namespace Trivex
