// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/eventhandler.h"

namespace TrivexTest {

/// Answers PIN questions as a person at a prompt would, and counts them. Without a PIN it rejects.
class PinPrompt : public QObject {
    Q_OBJECT
public:
    explicit PinPrompt(const QByteArray &pin);

    void setPin(const QByteArray &pin) { m_pin = pin; }
    /// Types these one after the other, ready to be asked again each time; then rejects.
    void setTyped(const QList<QByteArray> &pins) { m_typed = pins; }
    /// Leaves questions open until `answer` is called.
    void setHolding(bool holding) { m_holding = holding; }
    void answer();

    int count() const { return m_count; }
    void resetCount() { m_count = 0; }
    const Trivex::QuestionInfo &last() const { return m_last; }
    Trivex::EventHandler *handler() { return &m_handler; }

private:
    void ask(int id, const QCA::Event &event);

    Trivex::EventHandler m_handler;
    QByteArray m_pin;
    Trivex::QuestionInfo m_last;
    QVector<int> m_open;
    QList<QByteArray> m_typed;
    QCA::Event m_event;
    int m_count = 0;
    bool m_holding = false;
};

} // namespace TrivexTest
