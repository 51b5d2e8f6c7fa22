// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

namespace Trivex {

/// Texts that were typed as secrets and that others still hold, most of them scripts: kept until
/// nobody else has them, and wiped then. One for the process, for the user interface's thread; it
/// outlives the fields.
class TypedTexts {
public:
    static TypedTexts &instance();

    /// Wipes a text, at once if nobody else holds it.
    void drop(QString &&text);
    /// Wipes those that nobody else holds any more.
    void wipe();
    bool isEmpty() const { return m_texts.empty(); }

    ~TypedTexts();
    Q_DISABLE_COPY(TypedTexts)

private:
    TypedTexts() = default;

    std::vector<QString> m_texts;
};

} // namespace Trivex
