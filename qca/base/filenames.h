// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>

namespace Trivex {

/// The most bytes that a file name may have, in UTF-8 (NAME_MAX of every usual file system).
constexpr int MaxFileNameBytes = 255;

/// Makes a file name that stays in its directory from text that strangers choose (the names in
/// certificates and requests). Path separators, control characters, the invisible marks that change
/// the writing direction and a leading dot become "_". A name of more than `MaxFileNameBytes` is
/// cut between two characters, before its suffix. Everything else stays as it is. Empty for an
/// empty name.
TRIVEX_QCA_EXPORT QString safeFileName(const QString &name);

/// `base` and `suffix` (which keeps its whole length) as one safe name: `base` is cut until both
/// fit. For names that end in a number.
TRIVEX_QCA_EXPORT QString safeFileName(const QString &base, const QString &suffix);

/// The same, with `standIn` in place of a base without any text.
TRIVEX_QCA_EXPORT QString safeFileName(const QString &base, const QString &suffix,
                                       const QString &standIn);

} // namespace Trivex
