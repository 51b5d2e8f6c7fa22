// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QVector>

namespace Trivex {

/// Certificates in one PKCS#7 file without a signature (RFC 2315, 9.1; ".p7b"), in that order. Each
/// is DER; the result is DER too, and empty when one of them can't be read or there is none. Any
/// thread.
TRIVEX_QCA_EXPORT QByteArray writeCollection(const QVector<QByteArray> &certificates);

} // namespace Trivex
