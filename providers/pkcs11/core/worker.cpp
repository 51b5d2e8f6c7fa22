// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/worker.h"

#include <utility>

namespace Trivex {

struct Worker::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Job> jobs;
    bool stopped = false;
    bool ended = false;
};

Worker::Worker()
    : m_shared(std::make_shared<Shared>())
{
}

Worker::~Worker()
{
    stop();
    if (m_thread.joinable() && !join(Deadline()))
        m_thread.detach();
}

void Worker::start(Milliseconds interval, Job idle)
{
    m_thread = std::thread([shared = m_shared, interval, idle = std::move(idle)] {
        run(shared, interval, idle);
        const std::lock_guard lock(shared->mutex);
        shared->ended = true;
        shared->changed.notify_all();
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

bool Worker::join(Deadline deadline)
{
    if (!m_thread.joinable())
        return true;
    if (isCurrent())
        return false;
    {
        std::unique_lock lock(m_shared->mutex);
        if (!m_shared->changed.wait_until(lock, deadline, [this] { return m_shared->ended; }))
            return false;
    }
    m_thread.join();
    return true;
}

bool Worker::isCurrent() const
{
    return m_thread.get_id() == std::this_thread::get_id();
}

} // namespace Trivex
