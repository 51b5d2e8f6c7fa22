// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

namespace Trivex {

/// Runs functions on the thread that it lives in, in the order in which they were posted.
///
/// The same as a queued call, but the hand-over goes through a mutex of our own code, where a
/// thread sanitizer sees it; Qt's event queue is hidden from it, and every capture of a queued
/// lambda would be reported as a race.
class TRIVEX_QCA_EXPORT Mailbox : public QObject {
    Q_OBJECT
public:
    explicit Mailbox(QObject *parent = nullptr);
    /// What has not run by then never runs; it is destroyed with the mailbox.
    ~Mailbox() override;

    /// Of a mailbox that may go while it runs a function. What it has not run by then never runs,
    /// though Qt delivers the events that came before the deletion.
    struct DeleteLater {
        void operator()(Mailbox *mailbox) const
        {
            mailbox->clear();
            mailbox->deleteLater();
        }
    };

    /// Thread-safe. The function must not throw.
    void post(std::function<void()> function);

protected:
    void customEvent(QEvent *event) override;

private:
    void clear();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_functions;
};

} // namespace Trivex
