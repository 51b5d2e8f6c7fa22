// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/extendedkey.h"

#include <QString>

namespace Trivex {

// Out of line: anchors the type information in this library.
ExtendedKey::~ExtendedKey() = default;

QString ExtendedKey::keyStoreId() const
{
    return {};
}

} // namespace Trivex
