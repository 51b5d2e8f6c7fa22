// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/module.h"

namespace Trivex::Pkcs11 {

/// An open session (PKCS#11 2.40, 5.6); closed with the object. Move-only.
class TRIVEX_TOKENS_EXPORT Session {
public:
    enum Mode { ReadOnly, ReadWrite };

    /// Throws `Error`.
    Session(ModulePtr module, CK_SLOT_ID slot, Mode mode);
    ~Session();
    Session(Session &&other) noexcept;
    Session &operator=(Session &&other) noexcept;

    const Module &module() const { return *m_module; }
    CK_SESSION_HANDLE handle() const { return m_handle; }

    /// The state of the session; throws `Error` when it has ended.
    CK_STATE state() const;
    bool isLoggedIn() const;

private:
    void close() noexcept;

    ModulePtr m_module;
    CK_SESSION_HANDLE m_handle = CK_INVALID_HANDLE;
};

} // namespace Trivex::Pkcs11
