// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/eventhandler.h"

#include <QQueue>

namespace Trivex {

/// Takes the PIN and password questions that no stored answer serves and that are for nobody else,
/// and shows them one at a time to a dialog bound to it. With `enabled` false, which it is until a
/// dialog sets it, every question is declined at once, so that no operation waits for a person who
/// can't see it.
class PinPrompt : public QObject {
    Q_OBJECT
    /// Whether it takes questions. Those that it does not take go to others, or are rejected.
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged)
    /// True while a question waits for `submit` or `reject`.
    Q_PROPERTY(bool open READ isOpen NOTIFY questionChanged)
    /// Names the open question, 0 for none. No number comes twice.
    Q_PROPERTY(int question READ question NOTIFY questionChanged)
    /// The label of the token that asks; empty without a question.
    Q_PROPERTY(QString tokenName READ tokenName NOTIFY questionChanged)
    /// Another wrong PIN locks the token.
    Q_PROPERTY(bool lastTry READ isLastTry NOTIFY questionChanged)
    /// What is known of the tries that are left, as a sentence; empty where all of them are.
    Q_PROPERTY(QString pinText READ pinText NOTIFY questionChanged)
    /// The PIN that was submitted before for the same operation was wrong; nothing is sent again
    /// but what is typed now.
    Q_PROPERTY(bool wasWrong READ wasWrong NOTIFY questionChanged)
    /// What the PIN is wanted for, as a sentence.
    Q_PROPERTY(QString purposeText READ purposeText NOTIFY questionChanged)
public:
    explicit PinPrompt(QObject *parent = nullptr);
    ~PinPrompt() override;

    bool isEnabled() const;
    void setEnabled(bool enabled);
    bool isOpen() const;
    int question() const;
    QString tokenName() const;
    bool isLastTry() const;
    QString pinText() const;
    bool wasWrong() const;
    QString purposeText() const;

    /// Answers `question`, if it is still the open one: what was typed for a question that has
    /// ended meanwhile goes nowhere, least of all to the token that asks now. An empty PIN answers
    /// nothing: it is never tried on a token.
    Q_INVOKABLE void submit(int question, const QString &pin);
    /// The same for a PIN that nobody typed: a wrong one is not asked for again.
    void submitKept(int question, const QString &pin);
    /// Declines `question`, if it is still the open one; its operation ends.
    Q_INVOKABLE void reject(int question);

    static QString purposeText(Purpose purpose);

Q_SIGNALS:
    void enabledChanged();
    void questionChanged();
    /// The open question was ended by somebody else: the token went, the operation was stopped.
    void withdrawn();

private:
    struct Question {
        int number = 0; ///< ours
        int id = 0; ///< QCA's
        QCA::Event event;
        QuestionInfo info;
    };

    void receive(int id, const QCA::Event &event);
    void withdraw(quintptr ticket);
    const QuestionInfo &current() const;

    EventHandler m_handler;
    QQueue<Question> m_questions;
    int m_lastNumber = 0;
    bool m_enabled = false;
};

} // namespace Trivex
