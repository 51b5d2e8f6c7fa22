// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/core/tokensexport.h"

#include <QByteArray>
#include <QString>

#include <p11-kit/pkcs11.h>

#include <memory>

namespace Trivex::Pkcs11 {

/// Where a module comes from.
struct ModuleSource {
    /// Unique among the sources: the path of the library, or the name in p11-kit's configuration.
    QString key;
    /// The files that must be there for the module to count as present.
    QString library;
    QString configFile;
    /// Parameters for C_Initialize (its pReserved member), for modules that need some.
    QByteArray parameters;
    /// Supplies trust anchors, no tokens (p11-kit's "trust-policy").
    bool isTrust = false;
    /// Already loaded by p11-kit's configuration; else null.
    CK_FUNCTION_LIST *loaded = nullptr;

    /// Runs in a process of its own (p11-kit's "remote").
    bool isRemote() const { return loaded && library.isEmpty(); }
};

/// An initialised PKCS#11 module; finalised with the last reference. The library itself stays
/// loaded: code of it may still run in threads that it made, and it comes back when its file does.
class TRIVEX_TOKENS_EXPORT Module {
public:
    /// Loads and initialises; throws `Error`. May take as long as the module likes.
    static std::shared_ptr<Module> open(const ModuleSource &source);
    ~Module();
    Module(const Module &) = delete;
    Module &operator=(const Module &) = delete;

    const CK_FUNCTION_LIST *operator->() const { return m_functions; }

private:
    Module(CK_FUNCTION_LIST *functions, bool finalize);

    CK_FUNCTION_LIST *m_functions;
    bool m_finalize;
};

using ModulePtr = std::shared_ptr<Module>;

} // namespace Trivex::Pkcs11
