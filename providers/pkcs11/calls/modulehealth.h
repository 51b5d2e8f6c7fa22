// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <p11-kit/pkcs11.h>

#include <atomic>

namespace Trivex::Pkcs11 {

/// Counts the faults of a module's device. A module whose daemon was restarted fails at every call
/// until it is initialised anew, but its list of tokens often comes from memory; so looks for
/// tokens and operations on them are counted apart. Thread-safe.
class ModuleHealth {
public:
    /// True for what modules answer when their device fails; they answer so to requests that they
    /// only don't like, too.
    static bool isFault(CK_RV result);
    /// The end of a look or an operation, CKR_OK when it went well. Other failures than the
    /// device's tell nothing.
    void noteLook(CK_RV result) { note(&m_looks, result); }
    void noteOperation(CK_RV result);
    /// Enough faults in a row.
    bool needsRestart() const { return m_looks >= Limit || m_operations >= Limit; }

private:
    static constexpr int Limit = 3;
    static void note(std::atomic<int> *faults, CK_RV result);

    std::atomic<int> m_looks{0};
    std::atomic<int> m_operations{0};
};

} // namespace Trivex::Pkcs11
