// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/worker.h"

#include <set>
#include <utility>

namespace Trivex {

struct Worker::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Job> jobs;
    bool stopped = false;
    bool ended = false;
};

/// The threads of the process that somebody may wait for. Never deleted, because a thread that was
/// let go may end late.
class Worker::Running {
public:
    static Running &instance()
    {
        static auto *running = new Running;
        return *running;
    }

    void add(const Shared *one)
    {
        const std::lock_guard lock(m_mutex);
        m_all.insert(one);
    }

    void remove(const Shared *one)
    {
        const std::lock_guard lock(m_mutex);
        m_all.erase(one);
        m_changed.notify_all();
    }

    void wait(Deadline deadline)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_until(lock, deadline, [this] { return m_all.empty(); });
        m_all.clear();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::set<const Shared *> m_all;
};

Worker::Worker()
    : m_shared(std::make_shared<Shared>())
{
}

Worker::~Worker()
{
    stop();
    if (!m_thread.joinable())
        return;
    if (hasEnded())
        m_thread.join();
    else
        m_thread.detach();
}

void Worker::start(Milliseconds interval, Job idle, Job last)
{
    Running::instance().add(m_shared.get());
    m_thread = std::thread(
        [shared = m_shared, interval, idle = std::move(idle), last = std::move(last)]() mutable {
            run(shared, interval, idle);
            if (last)
                last();
            // The jobs release what they hold before the end is reported.
            idle = {};
            last = {};
            {
                const std::lock_guard lock(shared->mutex);
                shared->ended = true;
            }
            Running::instance().remove(shared.get());
        });
}

void Worker::run(const std::shared_ptr<Shared> &shared, Milliseconds interval, const Job &idle)
{
    const auto hasWork = [&] { return shared->stopped || !shared->jobs.empty(); };
    for (;;) {
        Job job = idle;
        {
            std::unique_lock lock(shared->mutex);
            if (interval.count() == 0)
                shared->changed.wait(lock, hasWork);
            else
                shared->changed.wait_for(lock, interval, hasWork);
            if (shared->stopped)
                return;
            if (!shared->jobs.empty()) {
                job = std::move(shared->jobs.front());
                shared->jobs.pop_front();
            }
        }
        job();
    }
}

bool Worker::post(Job job)
{
    const std::lock_guard lock(m_shared->mutex);
    if (m_shared->stopped)
        return false;
    m_shared->jobs.push_back(std::move(job));
    m_shared->changed.notify_all();
    return true;
}

void Worker::stop()
{
    std::deque<Job> dropped;
    const std::lock_guard lock(m_shared->mutex);
    m_shared->stopped = true;
    m_shared->jobs.swap(dropped);
    m_shared->changed.notify_all();
}

void Worker::joinAll(Deadline deadline)
{
    Running::instance().wait(deadline);
}

bool Worker::hasEnded() const
{
    const std::lock_guard lock(m_shared->mutex);
    return m_shared->ended;
}

} // namespace Trivex
