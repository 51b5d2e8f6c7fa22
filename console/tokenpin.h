// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/pinprompt.h"

#include <optional>

namespace Trivex {

/// Answers the questions for PINs while it lives: from a file, once, or by what is typed at the
/// terminal. What is to be a token's last try has to be typed.
class TokenPin : public QObject {
    Q_OBJECT
public:
    /// `file` may be empty.
    explicit TokenPin(const QString &file, QObject *parent = nullptr);

    /// Why the file holds no PIN; empty when it does, or when there is none.
    QString problem() const { return m_problem; }

private:
    void answer();
    QString fromFile();

    std::optional<QCA::SecureArray> m_secret;
    QString m_problem;
    bool m_isUsed = false;
    PinPrompt m_prompt;
};

} // namespace Trivex
