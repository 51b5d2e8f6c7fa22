// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/signertrust.h"

#include <QString>

namespace Trivex {

/// What was found out about one signature, in words.
struct SignerText {
    int level = 0; ///< as those of a `Notice`: 1 all is well, 2 be careful, 3 don't rely on it
    QString headline;
    QString advice;
};

SignerText signerText(const SignerReport &signer, SignerTrust trust);

} // namespace Trivex
