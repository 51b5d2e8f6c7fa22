// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtCrypto>

namespace Trivex {

/// `original` (DER CertificationRequest, RFC 2986) with the values of `after` in place of `before`,
/// which are those that it has, signed by `key`. What stays keeps its bytes: other values with
/// their string types and their order, extensions and attributes, known or not. Empty when
/// `original` is no request or `key` can't sign. May block as long as a token takes.
QByteArray editRequest(const QByteArray &original, const QCA::CertificateInfo &before,
                       const QCA::CertificateInfo &after, const QCA::PKeyContext &key);

} // namespace Trivex
