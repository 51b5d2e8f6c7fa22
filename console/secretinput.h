// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

#include <optional>

namespace Trivex {

/// What a person types at the terminal that the program was started from, without it being shown;
/// nothing without a terminal, or when the person gives up (Ctrl-D). The plain copy is wiped.
std::optional<QCA::SecureArray> typedSecret(const QString &question);

/// The first line of the file at `path`, without its end; nothing when it can't be read.
std::optional<QCA::SecureArray> secretFromFile(const QString &path);

} // namespace Trivex
