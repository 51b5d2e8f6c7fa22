// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/securedtext.h"

#include <QtCrypto>

namespace Trivex {

QCA::SecureArray securedText(QByteArray &&text)
{
    const QCA::SecureArray secure(text);
    text.fill('\0');
    return secure;
}

} // namespace Trivex
