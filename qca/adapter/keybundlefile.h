// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// `QCA::KeyBundle::fromFile` that never asks: with an empty password and a file that needs one,
/// the stock function blocks its thread on a question, for ever on the GUI thread. Here that is
/// `QCA::ErrorPassphrase`.
///
/// `*result` always gets a value: `ErrorFile` (missing or unreadable), `ErrorPassphrase`,
/// `ErrorDecode` (no key bundle, or no provider of that name), or `ConvertGood`.
TRIVEX_QCA_EXPORT QCA::KeyBundle readKeyBundle(const QString &path,
                                               const QCA::SecureArray &password,
                                               QCA::ConvertResult *result, const QString &provider);

} // namespace Trivex
