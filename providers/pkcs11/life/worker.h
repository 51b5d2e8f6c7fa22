// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace Trivex {

/// A thread that runs jobs in order. It is a plain thread, not a QThread, because a module may
/// never return from a call: the worker abandons such a thread, which owns all that it needs and
/// may still run while the process ends. `post` and `stop` are thread-safe.
class Worker {
public:
    using Job = std::function<void()>;
    using Milliseconds = std::chrono::milliseconds;
    using Deadline = std::chrono::steady_clock::time_point;

    Worker();
    /// Stops, and abandons the thread if it still runs a job.
    ~Worker();
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /// Starts the thread. It runs `idle` whenever no job was posted for `interval` (0: never), and
    /// `last` as its last job after `stop`. Calls that close a session or finalise a module belong
    /// into `last`, because the module decides how long they take.
    void start(Milliseconds interval = Milliseconds(0), Job idle = {}, Job last = {});
    /// Queues a job, which must not throw. False when the worker is stopped: the job never runs.
    bool post(Job job);
    /// Accepts no more jobs and drops the queued ones. Does not wait.
    void stop();
    /// Waits until `deadline` for the threads of all stopped workers of the process. Threads that
    /// have not ended by then are abandoned: no later call waits for them. Not to be called on one
    /// of these threads.
    static void joinAll(Deadline deadline);

private:
    struct Shared;
    class Running;
    static void run(const std::shared_ptr<Shared> &shared, Milliseconds interval, const Job &idle);
    bool hasEnded() const;

    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
};

} // namespace Trivex
