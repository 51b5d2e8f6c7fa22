// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace QCA {
class SecureArray;
}

namespace Trivex {

/// A typed PIN or password, encoded, in secure memory. The plain bytes are wiped: hand over the
/// only copy of them.
TRIVEX_QCA_EXPORT QCA::SecureArray securedText(QByteArray &&text);

} // namespace Trivex
