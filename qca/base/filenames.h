// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>

namespace Trivex {

/// The most bytes that a file name may have, in UTF-8 (NAME_MAX of every usual file system).
constexpr int maxFileNameBytes = 255;

/// A file name that stays in its directory, made from text that strangers choose (the names in
/// certificates and requests): path separators, control characters and the invisible marks that
/// turn the writing direction become "_", a leading dot too. A name of more than
/// `maxFileNameBytes` is cut between two characters, before its suffix. Everything else stays as
/// it is; empty for an empty name.
TRIVEX_QCA_EXPORT QString safeFileName(const QString &name);

/// `base` and `suffix` (which keeps its whole length) as one safe name: `base` is cut so far that
/// both fit. For names that get a number at their end.
TRIVEX_QCA_EXPORT QString safeFileName(const QString &base, const QString &suffix);

/// The same for a base that may be missing: `standIn` takes the place of one without any text.
TRIVEX_QCA_EXPORT QString safeFileName(const QString &base, const QString &suffix,
                                       const QString &standIn);

} // namespace Trivex
