// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QThread>

#include <memory>
#include <mutex>

class QcaHandler;

/// The thread in which a `QcaHandler` answers: a question blocks whoever caused it, so it must be
/// answered elsewhere.
class QcaAskerThread : public QThread {
    Q_OBJECT
public:
    explicit QcaAskerThread(QObject *parent = nullptr);
    /// Deletes the handler. The thread must have finished; see `letGo()`.
    ~QcaAskerThread() override;

    /// The handler; null until the thread has run. Stays the same while the thread runs.
    QcaHandler *handler() const;
    /// The same, but waits a moment for a thread that has only just been started: answers that
    /// are stored nowhere would have a person asked for them.
    QcaHandler *startedHandler() const;

    /// Asks the thread to end, waits for it for `milliseconds` at most and deletes it. A thread
    /// that is still busy then is left to itself and deleted when it ends: to destroy it while it
    /// runs would end the process.
    static void letGo(QcaAskerThread *thread, unsigned long milliseconds);

protected:
    void run() override;

private:
    /// Puts `next` in the handler's place and hands out the one before.
    std::unique_ptr<QcaHandler> takeHandler(std::unique_ptr<QcaHandler> next);

    mutable std::mutex m_mutex;
    std::unique_ptr<QcaHandler> m_handler;
};
