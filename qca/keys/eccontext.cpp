// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/eccontext.h"

namespace Trivex {

ECContext::ECContext(QCA::Provider *provider)
    : NativeFirstKey(provider, QStringLiteral("ec"))
{
}

ECContext::~ECContext() = default;

QCA::PKey::Type ECContext::type() const
{
    // 3 fits the two bits of the enumeration, so the value is defined, but has no name.
    return static_cast<QCA::PKey::Type>(3);
}

} // namespace Trivex
