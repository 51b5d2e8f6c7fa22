// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/plaintoken.h"
#include "benchmarks/tokenstore.h"
#include "tests/support/testcertificates.h"

/// Certificates and bundles, written by us and with plain PKCS#11 calls, each way on a token of its
/// own that has nothing else on it.
void benchWriting(Store &store, const TrivexTest::TestAuthority &authority);
