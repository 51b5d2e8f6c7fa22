// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/pause.h"
#include "qca/questions/question.h"

#include <deque>
#include <optional>

namespace Trivex {

/// The questions for a PIN that wait for a person, in the order in which they came. They are put
/// one at a time: the next one follows, from the event loop, when the current one has been
/// answered, rejected or withdrawn. So an answer never reaches a question that the person has not
/// seen.
class PinQuestions : public QObject {
    Q_OBJECT
public:
    /// `handler` received the questions and gives the answers; must outlive this object.
    explicit PinQuestions(QCA::EventHandler *handler);

    bool isEmpty() const { return m_open.empty(); }
    /// `info` describes a question of our own providers. The question is put at once when no other
    /// one is open.
    void add(int id, const std::optional<QuestionInfo> &info);
    /// Answers the question that was put, in `AnswerDelay`. Ignored when none was, or while its
    /// answer is on its way.
    void accept(const QCA::SecureArray &pin);
    /// Rejects the question that was put, even when its answer is on its way. Ignored when none
    /// was.
    void reject();

    static constexpr Pause AnswerDelay{1000};

Q_SIGNALS:
    /// A person has to be asked; `info` describes the question.
    void put(const std::optional<Trivex::QuestionInfo> &info);
    /// The question gets this answer now.
    void answered(const std::optional<Trivex::QuestionInfo> &info, const QCA::SecureArray &pin);

private:
    enum class State { Waiting, Put, Answered };
    struct Question {
        int id = 0;
        int number = 0; ///< unlike the id never used again
        std::optional<QuestionInfo> info;
        State state = State::Waiting;
    };

    void putFirst();
    void deliver(int number, const QCA::SecureArray &pin);
    Question takeFirst();
    void withdraw(quintptr ticket);

    QCA::EventHandler *m_handler;
    std::deque<Question> m_open;
    int m_lastNumber = 0;
};

} // namespace Trivex
