// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/processend.h"

#include "qca/base/parkthread.h"
#include "qca/base/storethread.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <system_error>
#include <thread>

#include <sys/syscall.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr std::chrono::milliseconds FlushPatience{500};
/// The wait for the store thread when operations have used up the rest.
constexpr std::chrono::milliseconds LeastPatience{200};
/// The part of the wait that is kept for QCA's threads when a module uses up the rest.
constexpr std::chrono::milliseconds StoreShare{300};
constexpr size_t MostHooks = 8;

// All of these are initialised before any code runs and need no destruction.
std::mutex hooksMutex;
std::array<ProcessEnd::Hook, MostHooks> hooks{};
size_t hookCount = 0;
std::atomic<pid_t> owner{0};
std::atomic<bool> begun{false};
std::atomic<bool> over{false};
std::atomic<int> foreignCalls{0};
/// True when QCA's threads have stopped.
std::atomic<bool> qcaRests{true};
/// QCA's threads were at work when the end began, or when this child was forked.
std::atomic<bool> qcaWorked{false};

bool isMainThread()
{
    return syscall(SYS_gettid) == getpid();
}

/// Runs after the hooks, which have ended every wait for a token or a person in QCA's threads.
void stopQca(ProcessEnd::Deadline end)
{
    const auto deadline = std::min(end, std::chrono::steady_clock::now() + StoreThread::Patience);
    qcaWorked = StoreThread::isKnown();
    // On any other thread the process ends without handlers, because the threads could disturb
    // them.
    const bool isQuiet = !isMainThread() || StoreThread::waitForOperations(deadline);
    qcaRests =
        StoreThread::hold(std::max(deadline, std::chrono::steady_clock::now() + LeastPatience))
        && isQuiet;
}

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
        all[i - 1](deadline - StoreShare);
    stopQca(deadline);
}

/// Flushes the streams, as `exit` would at its very end. A thread of its own does it, because a
/// stream that a module reads from is locked.
void flushStreams()
{
    static std::atomic<bool> done{false};
    try {
        std::thread([] {
            std::cout.flush();
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

/// False while a thread may be in what the next handlers destroy. Where another thread than the
/// main one ends the process, that one is such a thread: the host's loop goes on, and uses QCA.
bool mayGoOn()
{
    return foreignCalls == 0 && qcaRests && (isMainThread() || !qcaWorked);
}

/// If a handler of the host ended QCA, it would wait for threads that only the parent has.
void endForkedChild(int status)
{
    if (!StoreThread::isKnown())
        return;
    std::cout.flush();
    std::fflush(nullptr);
    _exit(status);
}

void atExit(int status, void *)
{
    if (owner == 0)
        return;
    if (ProcessEnd::isForkedChild())
        endForkedChild(status);
    else
        runHooks();
    over = !ProcessEnd::isForkedChild();
    if (!over || mayGoOn())
        return;
    flushStreams();
    _exit(status);
}

/// No handler runs and no static object is destroyed, but no thread may be halfway through starting
/// a program.
void atQuickExit()
{
    if (!ProcessEnd::isForkedChild())
        StoreThread::hold(std::chrono::steady_clock::now() + StoreThread::Patience);
}

struct EndOfMainThread {
    bool isWatched = false;
    ~EndOfMainThread()
    {
        if (!isWatched)
            return;
        runHooks();
        // Before all handlers: some were added after ours, and a thread may use what they destroy.
        if (!mayGoOn())
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
    at_quick_exit(&atQuickExit);
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
    if (isMainThread())
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

} // namespace Trivex
