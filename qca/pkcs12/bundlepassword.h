// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/secret.h"

#include <QList>

namespace Trivex {

/// The password of a bundle in the form in which libcrypto takes it.
struct BundlePassword {
    Secret value;
    bool isNull = false; ///< no password at all, which differs from an empty one

    const char *data() const
    {
        if (isNull)
            return nullptr;
        return value.isEmpty() ? "" : value.constData();
    }
    int size() const { return isNull ? 0 : value.size(); }
};

/// The forms of `password` (UTF-8) from which programs have derived keys: UTF-16, as the standard
/// has it, and the octets of UTF-8 or of a Cyrillic code page widened one by one.
QList<BundlePassword> passwordForms(const Secret &password);

} // namespace Trivex
