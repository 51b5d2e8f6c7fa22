// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

namespace Trivex {

/// Whether a private key in DER, of any form, asks libcrypto for no more work than a bound. What is
/// no DER has no numbers.
bool isWithinKeyBounds(Der::Slice privateKey);

} // namespace Trivex
