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
    /// Destroys the functions that have not run; they never run.
    ~Mailbox() override;

    /// The deleter for a mailbox that may be given up while it runs a function. The functions that
    /// have not run by then never run, although Qt still delivers earlier events.
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
