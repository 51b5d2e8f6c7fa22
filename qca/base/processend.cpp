// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/processend.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <system_error>
#include <thread>

#include <sys/syscall.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr std::chrono::milliseconds FlushPatience{500};
constexpr size_t MostHooks = 8;

// All of these are there before the first line of code runs and need no destruction.
std::mutex hooksMutex;
std::array<ProcessEnd::Hook, MostHooks> hooks{};
size_t hookCount = 0;
std::atomic<pid_t> owner{0};
std::atomic<bool> begun{false};
std::atomic<bool> over{false};
std::atomic<int> foreignCalls{0};

void runHooks()
{
    if (ProcessEnd::isForkedChild() || begun.exchange(true))
        return;
    std::array<ProcessEnd::Hook, MostHooks> all{};
    size_t count = 0;
    {
        const std::lock_guard lock(hooksMutex);
        all = hooks;
        count = hookCount;
    }
    const auto deadline = std::chrono::steady_clock::now() + ProcessEnd::Patience;
    for (size_t i = count; i > 0; --i)
        all[i - 1](deadline);
}

/// What `exit` would do at its very end. In a thread of its own, because a stream that a module
/// reads from is locked.
void flushStreams()
{
    static std::atomic<bool> done{false};
    try {
        std::thread([] {
            std::fflush(nullptr);
            done = true;
        }).detach();
    } catch (const std::system_error &) {
        return;
    }
    const auto deadline = std::chrono::steady_clock::now() + FlushPatience;
    while (!done && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void atExit(int status, void *)
{
    if (owner == 0 || ProcessEnd::isForkedChild())
        return;
    runHooks();
    over = true;
    if (foreignCalls == 0)
        return;
    // The next handlers would destroy the library that a thread is in.
    flushStreams();
    _exit(status);
}

struct EndOfMainThread {
    bool isWatched = false;
    ~EndOfMainThread()
    {
        if (!isWatched)
            return;
        runHooks();
        // First of all handlers: some came later than ours, and a thread may use what they destroy.
        if (foreignCalls > 0)
            ProcessEnd::renew();
    }
};

thread_local EndOfMainThread endOfMainThread;

} // namespace

void ProcessEnd::expect()
{
    pid_t nobody = 0;
    if (!owner.compare_exchange_strong(nobody, getpid()))
        return;
    renew();
}

void ProcessEnd::add(Hook hook)
{
    expect();
    {
        const std::lock_guard lock(hooksMutex);
        const auto end = hooks.begin() + hookCount;
        if (std::find(hooks.begin(), end, hook) != end || hookCount == MostHooks)
            return;
        hooks[hookCount++] = hook;
    }
    watchThisThread();
    renew();
}

void ProcessEnd::watchThisThread()
{
    if (syscall(SYS_gettid) == getpid())
        endOfMainThread.isWatched = true;
}

void ProcessEnd::renew()
{
    on_exit(atExit, nullptr);
}

bool ProcessEnd::hasBegun()
{
    return begun;
}

bool ProcessEnd::isForkedChild()
{
    const pid_t first = owner;
    return first != 0 && first != getpid();
}

ForeignCall::ForeignCall() noexcept
{
    ++foreignCalls;
    if (over) {
        --foreignCalls;
        parkThread();
    }
}

ForeignCall::~ForeignCall()
{
    --foreignCalls;
    if (over)
        parkThread();
}

void parkThread() noexcept
{
    for (;;)
        pause();
}

} // namespace Trivex
