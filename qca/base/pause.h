// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

namespace Trivex {

/// A pause that is part of what the module promises, such as the three seconds before a signature.
///
/// Every program waits for it as it is. A test program whose subject is something else may shorten
/// all pauses alike, so that their order stays; one test waits for the real ones.
class TRIVEX_QCA_EXPORT Pause {
public:
    explicit constexpr Pause(int milliseconds)
        : m_milliseconds(milliseconds)
    {
    }

    /// How long to wait now. Thread-safe.
    int milliseconds() const;

    /// From now on every pause of this process takes that part of its time; 1 makes them real
    /// again. For tests alone. Thread-safe.
    static void shorten(int times);

private:
    int m_milliseconds;
};

} // namespace Trivex
