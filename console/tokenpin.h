// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/pinprompt.h"

namespace Trivex {

/// Answers the questions for PINs while it lives: from a file, once, or by what is typed at the
/// terminal. What is to be a token's last try has to be typed.
class TokenPin : public QObject {
    Q_OBJECT
public:
    /// `file` may be empty.
    explicit TokenPin(const QString &file, QObject *parent = nullptr);

private:
    void answer();
    QString fromFile();

    QString m_file;
    bool m_isUsed = false;
    PinPrompt m_prompt;
};

} // namespace Trivex
