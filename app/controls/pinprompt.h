// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/eventhandler.h"

#include <QQueue>

namespace Trivex {

/// Takes the PIN and password questions that no stored answer serves and that are for nobody else,
/// and shows them one at a time to a dialog bound to it. With `enabled` false, which it is until a
/// dialog sets it, every question is declined at once, so that no operation waits for a person who
/// can't see it.
class PinPrompt : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged)
    /// True while a question waits for `submit` or `reject`.
    Q_PROPERTY(bool open READ isOpen NOTIFY questionChanged)
    Q_PROPERTY(QString storeId READ storeId NOTIFY questionChanged)
    Q_PROPERTY(QString tokenName READ tokenName NOTIFY questionChanged)
    Q_PROPERTY(int triesLeft READ triesLeft NOTIFY questionChanged)
    Q_PROPERTY(bool lastTry READ isLastTry NOTIFY questionChanged)
    Q_PROPERTY(QString pinText READ pinText NOTIFY questionChanged)
    /// What the PIN is wanted for, as a sentence.
    Q_PROPERTY(QString purposeText READ purposeText NOTIFY questionChanged)
public:
    explicit PinPrompt(QObject *parent = nullptr);
    ~PinPrompt() override;

    bool isEnabled() const;
    void setEnabled(bool enabled);
    bool isOpen() const;
    QString storeId() const;
    QString tokenName() const;
    int triesLeft() const;
    bool isLastTry() const;
    QString pinText() const;
    QString purposeText() const;

    /// Answers the open question. An empty PIN answers nothing: it is never tried on a token.
    Q_INVOKABLE void submit(const QString &pin);
    /// Declines the open question; its operation ends.
    Q_INVOKABLE void reject();

    static QString purposeText(Purpose purpose);

Q_SIGNALS:
    void enabledChanged();
    void questionChanged();
    /// The open question was ended by somebody else: the token went, the operation was stopped.
    void withdrawn();

private:
    struct Question {
        int id = 0;
        QuestionInfo info;
    };

    void take(int id, const QCA::Event &event);
    void withdraw(quintptr ticket);
    const QuestionInfo &current() const;

    EventHandler m_handler;
    QQueue<Question> m_questions;
    bool m_enabled = false;
};

} // namespace Trivex
