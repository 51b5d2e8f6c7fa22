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
    /// The file that must be there for the module to count as present.
    QString library;
    /// Parameters for C_Initialize (its pReserved member), for modules that need some.
    QByteArray parameters;
    /// Supplies trust anchors, no tokens (p11-kit's "trust-policy").
    bool isTrust = false;
    /// Already loaded by p11-kit's configuration; else null.
    CK_FUNCTION_LIST *loaded = nullptr;

    /// Runs in a process of its own (p11-kit's "remote").
    bool isRemote() const { return loaded && library.isEmpty(); }
};

/// An initialised PKCS#11 module; finalised with the last reference, so give references back where
/// a call may take as long as it likes: on the thread of a worker. The library itself stays loaded:
/// code of it may still run in threads that it made, and it comes back when its file does.
///
/// There is one for each function list of the process. Who gives a module up and takes it again
/// while a thread is still inside it shares it, so that nobody finalises it under another.
class TRIVEX_TOKENS_EXPORT Module {
public:
    /// The functions, for the call that is written behind it. Lives until the end of that
    /// expression, so that the end of the process knows of the call (see `ForeignCall`).
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

    /// Loads and initialises; throws `Error`. Null while the one before has not ended. May take as
    /// long as the module likes.
    static std::shared_ptr<Module> open(const ModuleSource &source);
    ~Module();
    Module(const Module &) = delete;
    Module &operator=(const Module &) = delete;

    Functions operator->() const { return Functions(m_functions); }

    /// It has to be finalised and initialised anew; nobody else gets it from now on.
    void giveUp() { m_isGivenUp = true; }
    bool isGivenUp() const { return m_isGivenUp; }
    /// False when somebody else in the process has initialised it, who will also finalise it.
    bool isOurs() const { return m_finalize; }
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
