// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/module.h"
#include "qca/tokens/tokenmaking.h"

#include <deque>
#include <mutex>

namespace Trivex {

/// The free slot of a module of software tokens, in which the next one can be made. The module's
/// own thread makes it between two looks at the slots, so that nobody takes the token in before it
/// has its PIN. `ask` is thread-safe.
class BlankSlot {
public:
    /// True for the free slot of SoftHSM: what is blank elsewhere is somebody's card.
    static bool isOne(const CK_TOKEN_INFO &info);

    BlankSlot() = default;
    /// Ends the tasks that have not begun, because the module has gone.
    ~BlankSlot();
    BlankSlot(const BlankSlot &) = delete;
    BlankSlot &operator=(const BlankSlot &) = delete;

    void ask(TokenMaking making, TokenMakingDone done);
    /// Makes the first token that was asked for; false when there is none to make.
    bool serve(const Pkcs11::ModulePtr &module, CK_SLOT_ID slot);

private:
    struct Wish {
        TokenMaking making;
        TokenMakingDone done;
    };

    std::mutex m_mutex;
    std::deque<Wish> m_wishes;
};

} // namespace Trivex
