// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/buserrorguard.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <mutex>

#include <sys/mman.h>
#include <unistd.h>

namespace Trivex {

/// Regions are linked once and used again, never freed: the signal handler walks the list at any
/// time, without a lock.
struct BusErrorGuard::Region {
    std::atomic<std::uintptr_t> begin{0};
    std::atomic<std::uintptr_t> end{0};
    std::atomic<bool> damaged{false};
    bool used = false; ///< under the mutex
    Region *next = nullptr; ///< written before the region is linked
};

namespace {

std::atomic<BusErrorGuard::Region *> firstRegion{nullptr};
struct sigaction previousAction;
std::uintptr_t pageSize = 4096;

std::mutex &regionMutex()
{
    static std::mutex mutex;
    return mutex;
}

BusErrorGuard::Region *regionAt(std::uintptr_t address)
{
    for (auto *region = firstRegion.load(); region; region = region->next) {
        if (address >= region->begin.load() && address < region->end.load())
            return region;
    }
    return nullptr;
}

/// Replaces the pages from `address` to the end of the region by zeros. All of them are behind the
/// end of the file.
bool replacePages(const BusErrorGuard::Region &region, std::uintptr_t address)
{
    const std::uintptr_t page = address & ~(pageSize - 1);
    void *const wanted = reinterpret_cast<void *>(page);
    return mmap(wanted, region.end.load() - page, PROT_READ | PROT_WRITE,
                MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0)
        == wanted;
}

/// True for a fault, false for a signal that a process sent: after a fault the instruction runs
/// again when the handler returns.
bool isFault(const siginfo_t *info)
{
    return info->si_code > 0;
}

/// Ends the process, once the handler has returned.
void endByDefault()
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigemptyset(&action.sa_mask);
    sigaction(SIGBUS, &action, nullptr);
    raise(SIGBUS);
}

/// Calls the earlier handler with the signals blocked that it asked for.
void callHandler(const struct sigaction &action, int signal, siginfo_t *info, void *context)
{
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &action.sa_mask, &before);
    if (action.sa_flags & SA_NODEFER) {
        sigset_t own;
        sigemptyset(&own);
        sigaddset(&own, signal);
        pthread_sigmask(SIG_UNBLOCK, &own, nullptr);
    }
    if (action.sa_flags & SA_SIGINFO)
        action.sa_sigaction(signal, info, context);
    else
        action.sa_handler(signal);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

bool isHandler(const struct sigaction &action)
{
    return action.sa_flags & SA_SIGINFO
        || (action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN);
}

/// Behaves as without our handler.
void callPrevious(int signal, siginfo_t *info, void *context)
{
    const struct sigaction action = previousAction;
    if (isHandler(action)) {
        // A handler that asked to be called once expects the default action the next time.
        if (action.sa_flags & int(SA_RESETHAND)) {
            previousAction = {};
            previousAction.sa_handler = SIG_DFL;
        }
        callHandler(action, signal, info, context);
    } else if (action.sa_handler == SIG_DFL || isFault(info)) {
        // The system does not let a process ignore a fault either: it would repeat for ever.
        endByDefault();
    }
}

void handleBusError(int signal, siginfo_t *info, void *context)
{
    const int savedErrno = errno;
    const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    auto *region = isFault(info) ? regionAt(address) : nullptr;
    if (region && replacePages(*region, address))
        region->damaged = true;
    else
        callPrevious(signal, info, context);
    errno = savedErrno;
}

void installHandler()
{
    pageSize = std::uintptr_t(sysconf(_SC_PAGESIZE));
    struct sigaction action = {};
    action.sa_sigaction = handleBusError;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    // Known before the first signal can arrive.
    sigaction(SIGBUS, nullptr, &previousAction);
    sigaction(SIGBUS, &action, nullptr);
}

BusErrorGuard::Region *freeRegion()
{
    for (auto *region = firstRegion.load(); region; region = region->next) {
        if (!region->used)
            return region;
    }
    auto *region = new BusErrorGuard::Region;
    region->next = firstRegion.load();
    firstRegion = region;
    return region;
}

} // namespace

BusErrorGuard::BusErrorGuard(const void *begin, std::size_t size)
{
    static std::once_flag installed;
    std::call_once(installed, installHandler);
    const std::lock_guard lock(regionMutex());
    m_region = freeRegion();
    m_region->used = true;
    m_region->damaged = false;
    m_region->begin = reinterpret_cast<std::uintptr_t>(begin);
    m_region->end = reinterpret_cast<std::uintptr_t>(begin) + size;
}

BusErrorGuard::~BusErrorGuard()
{
    const std::lock_guard lock(regionMutex());
    m_region->end = 0;
    m_region->begin = 0;
    m_region->used = false;
}

bool BusErrorGuard::isDamaged() const
{
    return m_region->damaged;
}

} // namespace Trivex
