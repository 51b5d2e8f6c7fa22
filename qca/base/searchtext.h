// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>
#include <QVector>

namespace Trivex {

// The one way in which every list searches and marks: case counts for nothing, letter by letter
// (simple case folding of Unicode), and everything else has to be the same. So a final sigma is a
// sigma, but "ss" is not found in "ß", "i" not in a dotless one, and a letter with its accent is
// not the same as letter and accent apart.

/// `text` for such a search: `foldedText(text).contains(foldedText(pattern))`. Folding folded text
/// changes nothing.
TRIVEX_QCA_EXPORT QString foldedText(const QString &text);

/// Folds `text` behind what is in `folded`: takes no memory where that has reserved it.
TRIVEX_QCA_EXPORT void appendFolded(QString *folded, const QString &text);

/// A part of a text, in UTF-16 units.
struct TextPart {
    int start;
    int size;
};

/// The parts of `text`, not folded, in which that search finds `pattern`, from left to right and
/// without overlaps. None for an empty pattern.
TRIVEX_QCA_EXPORT QVector<TextPart> foundParts(const QString &text, const QString &pattern);

} // namespace Trivex
