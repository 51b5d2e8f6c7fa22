// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/requestedfields.h"

#include <QByteArray>

namespace Trivex {

/// `original` (DER CertificationRequest, RFC 2986) with what `after` asks for in place of `before`,
/// which is what it has, signed by `key`. What stays keeps its bytes: other values with
/// their string types and their order, extensions and attributes, known or not. Empty when
/// `original` is no request, `key` can't sign, or a change would lose bytes that can't be read or
/// would concern one of two extensions of one kind. May block as long as a token takes.
QByteArray editRequest(const QByteArray &original, const RequestedFields &before,
                       const RequestedFields &after, const QCA::PKeyContext &key);

} // namespace Trivex
