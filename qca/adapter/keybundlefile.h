// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// `QCA::KeyBundle::fromFile` that never asks: with an empty password the stock function blocks its
/// thread on a question about whatever it can't read, for ever on the GUI thread. Here a missing
/// password is a wrong one.
///
/// `*result` always gets a value: `ErrorFile` (missing, unreadable or no regular file),
/// `ErrorPassphrase`, `ErrorDecode` (no key bundle, or no provider of that name), or `ConvertGood`.
TRIVEX_QCA_EXPORT QCA::KeyBundle readKeyBundle(const QString &path,
                                               const QCA::SecureArray &password,
                                               QCA::ConvertResult *result, const QString &provider);

} // namespace Trivex
