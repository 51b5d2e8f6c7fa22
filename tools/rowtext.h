// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/description.h"

#include <QByteArrayMatcher>
#include <QHash>

namespace Trivex {

/// Everything that the viewer shows of a certificate or request, for the search: folded, in UTF-8,
/// which takes half the room of a string.
struct RowText {
    QByteArray words;
    /// Digits of what is shown as bytes, without separators. Apart, because some letters of a name
    /// are hex digits too, and would be found in every key.
    QByteArray bytes;
};

/// Any thread; the work is linear in the size of `der`.
RowText rowText(ShownKind kind, const QByteArray &der);

/// The texts of all that was described, each made once, however often its row comes and goes.
class RowTexts {
public:
    RowText of(ShownKind kind, const QByteArray &der);
    /// How many were made.
    int made() const { return m_texts.size(); }

private:
    QHash<QByteArray, RowText> m_texts; ///< by the digest of the DER
};

/// What is looked for, made ready once for many rows. Digits are found with and without the colons,
/// spaces and hyphens between them, whichever way they are typed.
class SearchNeedle {
public:
    SearchNeedle() = default;
    explicit SearchNeedle(const QString &pattern);

    bool isEmpty() const { return m_isEmpty; }
    /// False for one or two letters, which hardly any description lacks.
    bool isIn(const RowText &text) const;
    /// In what a row itself shows, folded.
    bool isIn(const QByteArray &words) const;

private:
    bool m_isEmpty = true;
    bool m_isShort = true;
    QByteArrayMatcher m_text;
    bool m_hasDigits = false; ///< enough of them to be looked for among bytes
    QByteArrayMatcher m_digits; ///< without separators
};

} // namespace Trivex
