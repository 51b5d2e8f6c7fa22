// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/eventhandler.h"
#include "qca/questions/storedanswers.h"

#include <QObject>
#include <QSet>

/// Answers the questions of QCA's providers without asking anybody: whoever starts an operation
/// stores the answers first, and the next question takes them.
///
/// Any question forgets all stored answers, answered or not. Operations of our own providers take
/// the whole set at their start instead (`Trivex::StoredAnswers`) and only ask where a person has
/// to answer; such questions are passed on to the next handler.
///
/// Lives on the thread of `QcaAskerThread`; the setters and the rejections are called from the
/// thread that starts the operations.
class QcaHandler : public QObject {
    Q_OBJECT
public:
    explicit QcaHandler(QObject *parent = nullptr);

    /// The id of the key store that the next operation works on.
    void setKeyStoreId(const QString &id);
    /// The name of the object that the next operation works on.
    void setObjectId(const QString &id);
    /// The password or PIN for the next operation.
    void setPassword(const QCA::SecureArray &password);

    /// Rejects the last question, once; does nothing until another has come. A question that was
    /// answered counts too: QCA ignores the rejection then.
    void rejectPending();

    /// Rejects what was left open for want of a stored answer, and from here on any question that
    /// nothing is stored for: whoever asks would wait for ever once nobody is there to store it.
    void rejectUnanswered();

    /// Makes QCA ask this handler. Once only.
    void start();

private Q_SLOTS:
    void qcaEventReady(int id, QCA::Event event);

private:
    // False when nothing is stored that answers it.
    bool answer(const QCA::Event &event);
    bool answerKeyStoreId();
    bool answerObjectId();
    bool answerPassword();
    void leaveOpen();

    int m_id = 0;
    bool m_rejected = true;
    bool m_rejectsUnanswered = false;
    QSet<int> m_unanswered;
    Trivex::EventHandler m_eventHandler;
    Trivex::StoredAnswers m_stored;
};
