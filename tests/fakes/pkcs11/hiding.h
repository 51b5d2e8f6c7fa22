// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/functions.h"

#include <p11-kit/pkcs11.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <vector>

namespace Faulty {

using Mechanisms = std::set<CK_MECHANISM_TYPE>;

inline bool names(const Mechanisms &hidden, CK_MECHANISM *mechanism)
{
    return mechanism && hidden.count(mechanism->mechanism) > 0;
}

template <typename Other> bool names(const Mechanisms &, Other)
{
    return false;
}

//! Whether a call is about one of the mechanisms that the token is not to know.
template <Function Id, typename... Args> bool isHidden(const Mechanisms &hidden, Args... args)
{
    if constexpr (Id == Function::C_GetMechanismInfo)
        return hidden.count(std::get<1>(std::make_tuple(args...))) > 0;
    else
        return (names(hidden, args) || ...);
}

//! The list of mechanisms that \p list gives with \p member, without those that are hidden.
template <typename List, typename Member>
CK_RV tellMechanisms(const Mechanisms &hidden, List list, Member member, CK_SLOT_ID slot,
                     CK_MECHANISM_TYPE *types, CK_ULONG *count)
{
    if (hidden.empty() || !count)
        return list(member, slot, types, count);
    CK_ULONG known = 0;
    if (const CK_RV result = list(member, slot, nullptr, &known); result != CKR_OK)
        return result;
    std::vector<CK_MECHANISM_TYPE> all(known);
    if (const CK_RV result = list(member, slot, all.data(), &known); result != CKR_OK)
        return result;
    all.resize(known);
    all.erase(std::remove_if(all.begin(), all.end(),
                             [&](CK_MECHANISM_TYPE one) { return hidden.count(one) > 0; }),
              all.end());
    const CK_ULONG room = *count;
    *count = all.size();
    if (types && room < all.size())
        return CKR_BUFFER_TOO_SMALL;
    if (types)
        std::copy(all.begin(), all.end(), types);
    return CKR_OK;
}

} // namespace Faulty
