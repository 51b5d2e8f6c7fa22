// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/eventhandler.h"
#include "qca/adapter/storedanswers.h"

#include <QObject>

/// Answers the questions of QCA's providers without asking anybody: whoever starts an operation
/// stores the answers first, and the next question takes them.
///
/// Any question forgets all stored answers, answered or not. Operations of our own providers take
/// the whole set at their start instead (`Trivex::StoredAnswers`) and only ask where a person has
/// to answer; such questions are passed on to the next handler.
///
/// Lives on the thread of `QcaAskerThread`; the setters and `rejectPending()` are called from the
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

    /// Makes QCA ask this handler. Once only.
    void start();

private Q_SLOTS:
    void qcaEventReady(int id, QCA::Event event);

private:
    void answer(const QCA::Event &event);
    void answerKeyStoreId();
    void answerObjectId();
    void answerPassword();

    int m_id = 0;
    bool m_rejected = true;
    Trivex::EventHandler m_eventHandler;
    Trivex::StoredAnswers m_stored;
};
