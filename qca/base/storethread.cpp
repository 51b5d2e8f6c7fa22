// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/storethread.h"

#include "qca/base/descriptor.h"
#include "qca/base/parkthread.h"

#include <QCoreApplication>
#include <QThread>
#include <QtCrypto>

#include <array>
#include <atomic>
#include <cstring>
#include <memory>
#include <mutex>
#include <thread>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr std::chrono::milliseconds LookPause{1};
/// A new thread has the name of its creator until it gets its own, so the search is repeated.
constexpr std::chrono::milliseconds NamePause{3};
/// QCA::KeyStoreOperation, as far as the kernel keeps names.
constexpr char OperationName[] = "QCA::KeyStoreOp\n";

// All of these are initialised before any code runs and need no destruction.
std::mutex mutex;
/// Lives on the store thread; null while that is not known.
QObject *agent = nullptr;
/// The same, for a forked child too, where the mutex may be held for ever.
std::atomic<bool> known{false};
bool isRoutineAdded = false;
/// True when the process is ending and QCA is kept from ending before it.
std::atomic<bool> isHeld{false};

bool isOperation(const char *task)
{
    std::array<char, 64> text{};
    if (snprintf(text.data(), text.size(), "/proc/self/task/%s/comm", task) >= int(text.size()))
        return false;
    const Descriptor file(open(text.data(), O_RDONLY | O_CLOEXEC));
    const ssize_t size = file.isOpen() ? read(file.get(), text.data(), text.size()) : -1;
    return size == ssize_t(sizeof OperationName - 1)
        && std::memcmp(text.data(), OperationName, size_t(size)) == 0;
}

/// Hosts start operations through objects that QCA does not list, but their threads have names.
bool hasOperations()
{
    const std::unique_ptr<DIR, int (*)(DIR *)> tasks(opendir("/proc/self/task"), &closedir);
    while (const dirent *task = tasks ? readdir(tasks.get()) : nullptr) {
        if (isOperation(task->d_name))
            return true;
    }
    return false;
}

/// From now on QCA never ends: it would wait for its thread.
void keepQca()
{
    // One is for the routine that QCA has added for itself, which gives back what is another's.
    QCA::init();
    QCA::init();
}

/// Called before QCA ends with its application.
void endWithApplication()
{
    {
        const std::lock_guard lock(mutex);
        isRoutineAdded = false;
    }
    if (!known || isHeld)
        return;
    // QCA would wait without end for an operation that is not over by then.
    if (!StoreThread::waitForOperations(std::chrono::steady_clock::now() + StoreThread::Patience))
        keepQca();
}

/// Reports that the thread stops, and stops it.
void reportAndPark(const std::shared_ptr<std::atomic<bool>> &isParked)
{
    *isParked = true;
    parkThread();
}

} // namespace

void StoreThread::note()
{
    const std::lock_guard lock(mutex);
    if (!std::exchange(isRoutineAdded, true))
        qAddPostRoutine(&endWithApplication);
    if (agent)
        return;
    agent = new QObject;
    known = true;
    // Emitted on the thread itself, while it can still delete what is its own.
    QObject::connect(
        QThread::currentThread(), &QThread::finished, agent,
        [] {
            const std::lock_guard lock(mutex);
            known = false;
            delete std::exchange(agent, nullptr);
        },
        Qt::DirectConnection);
}

bool StoreThread::isKnown()
{
    return known;
}

bool StoreThread::waitForOperations(Deadline deadline)
{
    for (int quiet = 0; known && quiet < 2;) {
        if (!hasOperations()) {
            if (++quiet < 2)
                std::this_thread::sleep_for(NamePause);
            continue;
        }
        quiet = 0;
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(LookPause);
    }
    return true;
}

bool StoreThread::hold(Deadline deadline)
{
    const auto isParked = std::make_shared<std::atomic<bool>>(false);
    {
        const std::lock_guard lock(mutex);
        if (!agent)
            return true;
        if (agent->thread() == QThread::currentThread())
            return false;
        isHeld = true;
        QMetaObject::invokeMethod(
            agent, [isParked] { reportAndPark(isParked); }, Qt::QueuedConnection);
    }
    // On another thread than the main one the process ends at once, and QCA may be locked.
    if (gettid() == getpid())
        keepQca();
    // Without an application object nothing is delivered to any thread of Qt's.
    const auto isWaiting = [&] { return !*isParked && known && QCoreApplication::instance(); };
    while (isWaiting() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(LookPause);
    return !isWaiting();
}

} // namespace Trivex
