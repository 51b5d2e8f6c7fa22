// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <p11-kit/pkcs11.h>

#include <optional>
#include <string>
#include <vector>

namespace Faulty {

//! What a module may wrongly say of an attribute; see the README.
enum class LieKind {
    Needs,
    Larger,
    Beyond,
    Huge,
    Nothing,
    Grows,
    Moved,
    Sensitive,
    Invalid,
    Empty,
    Untouched,
    Stops,
    Fails
};

struct Lie {
    LieKind kind = LieKind::Huge;
    unsigned long size = 0;
};

//! One "lie" line of the control file.
struct LieRule {
    std::optional<CK_ATTRIBUTE_TYPE> type; //!< none: every attribute
    unsigned long first = 1; //!< the question after that attribute that is hit, counted from 1
    bool onwards = false;
    Lie lie;
    unsigned long seen = 0;

    //! Counts a question after \p asked; true when the rule hits it.
    bool hits(CK_ATTRIBUTE_TYPE asked);
};

//! The name of a lie ("needs") with its size where it has one.
std::optional<Lie> lieByName(const std::string &name, const std::string &size);
//! "CKA_VALUE", or a number.
std::optional<CK_ATTRIBUTE_TYPE> attributeByName(const std::string &name);

//! Asks the real module and tells the caller what \p lies (one an attribute) make of it.
CK_RV tellAttributes(CK_FUNCTION_LIST *module, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object,
                     CK_ATTRIBUTE *attributes, CK_ULONG count,
                     const std::vector<std::optional<Lie>> &lies);

} // namespace Faulty
