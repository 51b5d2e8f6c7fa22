// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <p11-kit/pkcs11.h>

#include <atomic>

namespace Trivex::Pkcs11 {

/// Counts the faults of a module's device. A module whose daemon was restarted fails at every call
/// until it is initialised anew. Its list of tokens often comes from memory and still succeeds, so
/// searches for tokens and operations on tokens are counted separately. Thread-safe.
class ModuleHealth {
public:
    /// True for the return values that modules use when their device fails. Some modules also use
    /// them to refuse a request, so one fault alone proves nothing.
    static bool isFault(CK_RV result);
    /// Notes the result of a search or of an operation. CKR_OK resets the count; a failure that is
    /// not the device's does not change it.
    void noteLook(CK_RV result) { note(&m_looks, result); }
    void noteOperation(CK_RV result);
    /// True after `FaultLimit` faults in a row.
    bool needsRestart() const { return m_looks >= FaultLimit || m_operations >= FaultLimit; }

private:
    static constexpr int FaultLimit = 3;
    static void note(std::atomic<int> *faults, CK_RV result);

    std::atomic<int> m_looks{0};
    std::atomic<int> m_operations{0};
};

} // namespace Trivex::Pkcs11
