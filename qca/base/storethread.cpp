// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/storethread.h"

#include "qca/base/descriptor.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <QtCrypto>

#include <array>
#include <atomic>
#include <cstring>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr std::chrono::milliseconds LookPause{1};
/// A new thread has the name of its creator until it gets its own, so the search is repeated.
constexpr std::chrono::milliseconds NamePause{3};
/// How often the main thread is seen asleep before it counts as waiting for something.
constexpr int WaitingLooks = 5;
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

/// The start of a small file, cut where the buffer ends. Without Qt's own files, which may be gone
/// at the end of the process.
using Start = std::array<char, 128>;

/// The length of what was read; 0 where nothing was.
size_t readStart(const char *path, Start *start)
{
    const Descriptor file(open(path, O_RDONLY | O_CLOEXEC));
    const ssize_t size = file.isOpen() ? read(file.get(), start->data(), start->size()) : -1;
    return size > 0 ? size_t(size) : 0;
}

bool isOperation(const char *task)
{
    Start text{};
    if (snprintf(text.data(), text.size(), "/proc/self/task/%s/comm", task) >= int(text.size()))
        return false;
    const size_t size = readStart(text.data(), &text);
    return size == sizeof OperationName - 1 && std::memcmp(text.data(), OperationName, size) == 0;
}

/// Whether the main thread sleeps at this moment: its state stands behind its name in parentheses.
bool isMainThreadAsleep()
{
    Start text{};
    const std::string_view stat(text.data(), readStart("/proc/self/stat", &text));
    const size_t name = stat.rfind(") ");
    return name != std::string_view::npos && name + 2 < stat.size() && stat[name + 2] == 'S';
}

/// Hosts start operations through objects that QCA does not list, but their threads have names.
bool hasOperations()
{
    const DirectoryStream tasks(opendir("/proc/self/task"));
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

/// Reports that the thread stops, and stops it for good, but for what the end itself waits for: the
/// destructor of a host's static object may ask a key store, or wait for an operation whose thread
/// had no name yet when they were looked for. What others ask is never answered, and nothing is
/// once another thread than the main one ends the process: that end asks nothing, and the main
/// thread, which sleeps whenever its loop is idle, would have programs started that nobody lets go
/// on.
[[noreturn]] void reportAndStay(const std::shared_ptr<std::atomic<bool>> &isStaying,
                                bool isMainThreadEnding)
{
    *isStaying = true;
    while (!isMainThreadEnding)
        ::pause();
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    for (int asleep = 0;;) {
        std::this_thread::sleep_for(LookPause);
        asleep = isMainThreadAsleep() ? asleep + 1 : 0;
        if (asleep < WaitingLooks || !dispatcher->hasPendingEvents())
            continue;
        dispatcher->processEvents(QEventLoop::AllEvents);
        asleep = 0;
    }
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
    const auto isStaying = std::make_shared<std::atomic<bool>>(false);
    const bool isMain = gettid() == getpid();
    {
        const std::lock_guard lock(mutex);
        if (!agent)
            return true;
        if (agent->thread() == QThread::currentThread())
            return false;
        isHeld = true;
        QMetaObject::invokeMethod(
            agent, [isStaying, isMain] { reportAndStay(isStaying, isMain); }, Qt::QueuedConnection);
    }
    // On another thread than the main one the process ends at once, and QCA may be locked.
    if (isMain)
        keepQca();
    // Without an application object nothing is delivered to any thread of Qt's.
    const auto isWaiting = [&] { return !*isStaying && known && QCoreApplication::instance(); };
    while (isWaiting() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(LookPause);
    return !isWaiting();
}

} // namespace Trivex
