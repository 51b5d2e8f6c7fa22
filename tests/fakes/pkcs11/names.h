// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/functions.h"

#include <p11-kit/pkcs11.h>

#include <optional>
#include <string>

namespace Faulty {

//! The function's name in the standard.
const char *functionName(Function function);
Kind functionKind(Function function);
std::optional<Function> functionByName(const std::string &name);

//! The name of a return value, or its number in hexadecimal when it has none here.
std::string resultName(CK_RV result);
//! A return value by name ("CKR_DEVICE_ERROR") or by number ("0x80000001").
std::optional<CK_RV> resultByName(const std::string &name);

//! A mechanism by name ("CKM_RSA_PKCS") or by number ("0x1").
std::optional<CK_MECHANISM_TYPE> mechanismByName(const std::string &name);

} // namespace Faulty
