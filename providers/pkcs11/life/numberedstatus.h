// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenregistry.h"

namespace Trivex {

/// A status as it was under the lock, with its place among all of them.
struct NumberedStatus {
    TokenStatus status;
    quint64 number = 0;

    NumberedStatus() = default;
    explicit NumberedStatus(const TokenStatus &current)
        : status(current)
        , number(nextStatusNumber())
    {
    }
    void publish() const { publishTokenStatus(status, number); }
};

} // namespace Trivex
