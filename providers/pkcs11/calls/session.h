// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/module.h"

namespace Trivex::Pkcs11 {

/// Owns one open session (PKCS#11 2.40, 5.6) and a reference to its module. Move-only. For the
/// token's thread: a module need not accept calls in one session from two threads.
class TRIVEX_TOKENS_EXPORT Session {
public:
    enum Mode { ReadOnly, ReadWrite };

    /// Opens the session. Throws `Error`.
    Session(ModulePtr module, CK_SLOT_ID slot, Mode mode);
    ~Session();
    Session(Session &&other) noexcept;
    Session &operator=(Session &&other) noexcept;

    const Module &module() const { return *m_module; }
    CK_SESSION_HANDLE handle() const { return m_handle; }

    /// CKS_...: whether and how the token is logged in. Throws `Error` when the session has ended.
    CK_STATE state() const;
    bool isLoggedIn() const;

private:
    void close() noexcept;

    ModulePtr m_module;
    CK_SESSION_HANDLE m_handle = CK_INVALID_HANDLE;
};

} // namespace Trivex::Pkcs11
