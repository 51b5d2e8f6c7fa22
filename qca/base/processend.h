// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <chrono>

namespace Trivex {

/// The end of the process, told before anything of it is taken down.
///
/// Threads of ours may be inside a module of somebody else when `exit` is called, and exit destroys
/// the static objects of every library, Qt's and the module's included, while they run on. So the
/// hooks run first of all: from a thread-local object of the main thread, which goes before every
/// static object, or, where another thread calls `exit`, from an exit handler. See decision 018.
///
/// Nothing happens in a forked child: the threads are its parent's. Thread-safe.
class TRIVEX_QCA_EXPORT ProcessEnd {
public:
    using Deadline = std::chrono::steady_clock::time_point;
    /// Stops threads and waits for them until the deadline at most. Must not throw.
    using Hook = void (*)(Deadline);

    /// What the end waits for at most, for all hooks together.
    static constexpr std::chrono::milliseconds Patience{3000};

    /// Has `hook` called at the end of the process, after those that were added later. Added twice
    /// it is called once.
    static void add(Hook hook);
    /// To be called before a thread starts that makes foreign calls and that nobody stops.
    static void expect();
    /// To be called on threads that may be the main thread; does nothing on any other.
    static void watchThisThread();
    /// To be called when a library has been loaded or started whose code our threads are going to
    /// run: its static objects go after the handler that is added here.
    static void renew();
    /// The hooks have run or are running: nothing is to be started any more.
    static bool hasBegun();
    /// True in a child that was forked after the first call of `add`.
    static bool isForkedChild();
};

/// While one lives, this thread is inside somebody else's library. When the process has ended
/// meanwhile, the thread stops for good where the object is made or destroyed, because whatever it
/// would use is gone.
class TRIVEX_QCA_EXPORT ForeignCall {
public:
    ForeignCall() noexcept;
    ~ForeignCall();
    ForeignCall(const ForeignCall &) = delete;
    ForeignCall &operator=(const ForeignCall &) = delete;
};

} // namespace Trivex
