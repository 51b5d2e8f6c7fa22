// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QChar>
#include <QString>

namespace Trivex {

/// `bytes` in upper-case hex with `separator` between them. Each byte is read with its sign: 0xC3
/// is "-3D". The last byte gets a separator too, unless the text is then 3 * n - 1 characters long,
/// so {00, C3} is "00:-3D:". A single byte has no leading zero. Empty for no bytes.
QString hexText(const QByteArray &bytes, QChar separator);

/// The text of signature algorithm `number` (`Trivex::signatureAlgorithm()`).
QString signatureText(int number);

} // namespace Trivex
