// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

namespace Trivex {

/// While one lives, the certificates that QCA makes in this thread are those of `makeCertificate`:
/// only their names are decoded at once, and they have no native object. For reading a list of
/// certificates through QCA that nobody but we will hold; ends on the thread that began it.
class TRIVEX_QCA_EXPORT LightDecoding {
public:
    LightDecoding();
    ~LightDecoding();
    LightDecoding(const LightDecoding &) = delete;
    LightDecoding &operator=(const LightDecoding &) = delete;

    /// Whether one lives in this thread.
    static bool isOn();
};

} // namespace Trivex
