// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/question.h"
#include "tests/signing/scriptedkey.h"

#include <QStringList>

namespace TrivexTest {

/// A token that wants the PIN "1234" for each signature, and takes note of what it is given.
class PinToken {
public:
    explicit PinToken(const QString &storeId = QStringLiteral("store"));

    std::unique_ptr<KeyStoreEntry> entry();
    Trivex::QuestionInfo &question() { return m_question; }

    bool plain = false; ///< asks as any other provider does
    QStringList tried; ///< "-" for a rejected question

private:
    bool logIn();
    QString askOurWay() const;
    static QString askPlainly();

    Trivex::QuestionInfo m_question;
};

} // namespace TrivexTest
