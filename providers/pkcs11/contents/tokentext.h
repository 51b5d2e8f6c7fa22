// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <QByteArray>
#include <QString>

namespace Trivex {

/// The text in a field of a token (PKCS#11 2.40, 3.2): UTF-8, padded to the width of the field with
/// blanks, by some tokens with zeros. Some tokens cut a text inside a letter; that letter is left
/// out.
TRIVEX_TOKENS_EXPORT QString tokenText(const QByteArray &field);

} // namespace Trivex
