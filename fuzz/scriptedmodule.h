// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "fuzz/script.h"

#include <p11-kit/pkcs11.h>

namespace TrivexFuzz {

/// A PKCS#11 module whose every answer comes from a script: return codes, objects, attributes,
/// their lengths, true or not. It writes no further than a caller's buffer goes, as a module must;
/// what it says of lengths is another matter. Only what reading a token calls is there.
class ScriptedModule {
public:
    /// Answers by `script` from now on; not owned. At its end it answers CKR_OK and nothing more.
    static void follow(Script *script);
    static CK_FUNCTION_LIST *functions();
    static CK_TOKEN_INFO tokenInfo();
};

} // namespace TrivexFuzz
