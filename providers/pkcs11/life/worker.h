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
/// never return from a call: such a thread has to be left behind, and it may run on while the
/// process ends, holding all that it needs by itself.
class Worker {
public:
    using Job = std::function<void()>;
    using Milliseconds = std::chrono::milliseconds;
    using Deadline = std::chrono::steady_clock::time_point;

    Worker();
    /// As `stop`, and lets the thread go when it does not end in time.
    ~Worker();
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /// Starts the thread. When nothing was posted for `interval` (0: never), `idle` is run. `last`
    /// is run after `stop`, when the running job is over, and nothing after it: what closes a
    /// session or finalises a module belongs there, because such a call may take as long as the
    /// module likes.
    void start(Milliseconds interval = Milliseconds(0), Job idle = {}, Job last = {});
    /// False when the worker is stopped; the job never runs then. Jobs must not throw.
    bool post(Job job);
    /// Takes no more jobs and drops those that have not started. Does not wait.
    void stop();
    /// Waits for the threads of all workers of the process, stopped ones. Those that have not ended
    /// by then are let go: nobody waits for them again. Not to be called on one of them.
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
