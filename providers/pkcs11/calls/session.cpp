// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/session.h"

#include "providers/pkcs11/calls/error.h"

#include <utility>

namespace Trivex::Pkcs11 {

Session::Session(ModulePtr module, CK_SLOT_ID slot, Mode mode)
    : m_module(std::move(module))
{
    const CK_FLAGS flags = CKF_SERIAL_SESSION | (mode == ReadWrite ? CKF_RW_SESSION : 0UL);
    check((*m_module)->C_OpenSession(slot, flags, nullptr, nullptr, &m_handle), "C_OpenSession");
}

Session::~Session()
{
    close();
}

Session::Session(Session &&other) noexcept
    : m_module(std::move(other.m_module))
    , m_handle(std::exchange(other.m_handle, CK_INVALID_HANDLE))
{
}

Session &Session::operator=(Session &&other) noexcept
{
    if (this != &other) {
        close();
        m_module = std::move(other.m_module);
        m_handle = std::exchange(other.m_handle, CK_INVALID_HANDLE);
    }
    return *this;
}

CK_STATE Session::state() const
{
    CK_SESSION_INFO info = {};
    check((*m_module)->C_GetSessionInfo(m_handle, &info), "C_GetSessionInfo");
    return info.state;
}

bool Session::isLoggedIn() const
{
    const CK_STATE current = state();
    return current == CKS_RO_USER_FUNCTIONS || current == CKS_RW_USER_FUNCTIONS;
}

void Session::close() noexcept
{
    if (m_module && m_handle != CK_INVALID_HANDLE)
        (*m_module)->C_CloseSession(std::exchange(m_handle, CK_INVALID_HANDLE));
}

} // namespace Trivex::Pkcs11
