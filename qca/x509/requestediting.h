// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/requestedfields.h"

#include <QByteArray>

namespace Trivex {

/// `original` (DER CertificationRequest, RFC 2986) with what `after` asks for in place of `before`,
/// which is what it has, signed by `key`. What stays keeps its bytes: other values with
/// their string types and their order, extensions and attributes, known or not. Empty when
/// `original` is no request, `key` can't sign, or the change would lose something. May block as
/// long as a token takes.
QByteArray editRequest(const QByteArray &original, const RequestedFields &before,
                       const RequestedFields &after, const QCA::PKeyContext &key);

/// Why `editRequest` makes no such change, whatever the key. Asks no token.
EditLoss lossOfEdit(const QByteArray &original, const RequestedFields &before,
                    const RequestedFields &after);

} // namespace Trivex
