// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <QByteArray>
#include <QString>

namespace Trivex {

/// A text of a token: UTF-8, padded with blanks to the width of its field (PKCS#11 2.40, 3.2), by
/// some with zeros. Where it was cut to that width inside a letter, that letter is left out.
TRIVEX_TOKENS_EXPORT QString tokenText(const QByteArray &field);

} // namespace Trivex
