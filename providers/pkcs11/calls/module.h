// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/modulehealth.h"
#include "providers/pkcs11/calls/tokensexport.h"
#include "qca/base/processend.h"

#include <QByteArray>
#include <QString>

#include <p11-kit/pkcs11.h>

#include <atomic>
#include <memory>

namespace Trivex::Pkcs11 {

/// Where a module comes from.
struct ModuleSource {
    /// Unique among the sources: the path of the library, or the name in p11-kit's configuration.
    QString key;
    /// The path of the library. The module counts as present while this file exists.
    QString library;
    /// What tells the library's file from others, whatever name leads to it; empty where it has
    /// none.
    QString file;
    /// Parameters for C_Initialize (its pReserved member), for modules that need some.
    QByteArray parameters;
    /// True for a module of trust anchors instead of tokens (p11-kit's "trust-policy").
    bool isTrust = false;
    /// The functions of a module that p11-kit has loaded; null for others.
    CK_FUNCTION_LIST *loaded = nullptr;

    /// True for a module that runs in a process of its own (p11-kit's "remote").
    bool isRemote() const { return loaded && library.isEmpty(); }
};

/// An initialised PKCS#11 module (PKCS#11 2.40, 5.4). The last reference finalises it. That call
/// may take long, so release references on a worker's thread. The library itself stays loaded,
/// because threads that it has made may still run its code.
///
/// The process has one object for each function list. A module that is opened again while a thread
/// is still inside it is shared, so that nobody finalises it while another uses it. Thread-safe.
class TRIVEX_TOKENS_EXPORT Module {
public:
    /// The functions for one call. The object lives until the end of the expression, so that the
    /// end of the process knows of the call (see `ForeignCall`).
    class Functions {
    public:
        explicit Functions(const CK_FUNCTION_LIST *functions) noexcept
            : m_functions(functions)
        {
        }
        const CK_FUNCTION_LIST *operator->() const { return m_functions; }
        const CK_FUNCTION_LIST &operator*() const { return *m_functions; }

    private:
        ForeignCall m_call;
        const CK_FUNCTION_LIST *m_functions;
    };

    /// Loads and initialises the module. Throws `Error`. Null while an earlier object for the same
    /// functions has not been finalised yet. The module decides how long it takes.
    static std::shared_ptr<Module> open(const ModuleSource &source);
    /// Tells that nobody opens this source any more, though somebody may be on the way to it. Until
    /// `hasLeft` and until its module has been finalised, the same library is not opened for
    /// another source: p11-kit's instance and a bare one have functions of their own, and whoever
    /// came second would be finalised by the first.
    static void leave(const ModuleSource &source);
    /// Once for each `leave`: whoever was on the way has let the module go.
    static void hasLeft(const ModuleSource &source);
    ~Module();
    Module(const Module &) = delete;
    Module &operator=(const Module &) = delete;

    Functions operator->() const { return Functions(m_functions); }

    /// Marks the module as faulty: `open` does not share this object any more, so that the module
    /// is finalised and initialised anew.
    void giveUp() { m_isGivenUp = true; }
    bool isGivenUp() const { return m_isGivenUp; }
    /// False when another part of the process has initialised the module and will finalise it.
    bool isOurs() const { return m_finalize; }
    /// The faults of its device so far.
    ModuleHealth &health() { return m_health; }

private:
    friend class OpenModules;
    Module(CK_FUNCTION_LIST *functions, bool finalize);

    CK_FUNCTION_LIST *m_functions;
    bool m_finalize;
    std::atomic<bool> m_isGivenUp{false};
    ModuleHealth m_health;
};

using ModulePtr = std::shared_ptr<Module>;

} // namespace Trivex::Pkcs11
