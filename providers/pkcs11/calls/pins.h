// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/session.h"
#include "qca/base/secret.h"

namespace Trivex::Pkcs11 {

/// A PIN as a call takes it. Without one, a reader with a keypad asks for it by itself.
struct PinArgument {
    PinArgument(Secret &pin, bool hasPinPad);

    CK_UTF8CHAR *text;
    CK_ULONG length;
};

/// For calls that set a PIN: two return values speak of the new one (PKCS#11 2.40, 5.1.6). Throws
/// `Error`.
void checkSetting(CK_RV result, const char *function);

/// A login for as long as it lives; one that was there already stays. Beside a read-only session of
/// anybody no administrator gets in (PKCS#11 2.40, 5.6.7). Throws `Error`.
class Login {
public:
    Login(const Session &session, CK_USER_TYPE user, PinArgument pin);
    ~Login();
    Login(const Login &) = delete;
    Login &operator=(const Login &) = delete;

private:
    const Session &m_session;
    bool m_isOurs = false;
};

} // namespace Trivex::Pkcs11
