// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <chrono>

namespace Trivex {

/// Calls hooks at the end of the process, before anything is destroyed.
///
/// When `exit` is called, our threads may be inside a foreign module. They run on while exit
/// destroys the static objects of every library, Qt's and the module's included. So the hooks run
/// first: from a thread-local object of the main thread, which is destroyed before every static
/// object, or from an exit handler when another thread calls `exit`. See decision 018.
///
/// Hooks don't run in a forked child, because the threads are its parent's. Thread-safe.
class TRIVEX_QCA_EXPORT ProcessEnd {
public:
    using Deadline = std::chrono::steady_clock::time_point;
    /// Stops threads and waits for them, at most until the deadline. Must not throw.
    using Hook = void (*)(Deadline);

    /// The longest wait for all hooks together.
    static constexpr std::chrono::milliseconds Patience{3000};

    /// Registers `hook` for the end of the process. Hooks that were added later run earlier; a hook
    /// that is added twice runs once.
    static void add(Hook hook);
    /// Call it before starting a thread that makes foreign calls and that nobody stops.
    static void expect();
    /// Call it on threads that may be the main thread; it does nothing on any other.
    static void watchThisThread();
    /// Call it after loading or starting a library whose code our threads will run: the handler
    /// that it adds runs before that library's static objects are destroyed.
    static void renew();
    /// True once the hooks have begun to run: nothing may be started any more.
    static bool hasBegun();
    /// True in a child that was forked after the first call of `add`.
    static bool isForkedChild();
};

/// Marks this thread as inside a foreign library for as long as the object lives. When the process
/// ends meanwhile, the thread stops for good in the constructor or destructor, because everything
/// that it would use is gone.
class TRIVEX_QCA_EXPORT ForeignCall {
public:
    ForeignCall() noexcept;
    ~ForeignCall();
    ForeignCall(const ForeignCall &) = delete;
    ForeignCall &operator=(const ForeignCall &) = delete;
};

} // namespace Trivex
