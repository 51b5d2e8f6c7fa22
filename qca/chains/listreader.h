// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QVector>

namespace Trivex {

/// The revocation lists in the bytes of a file, PEM or DER; whatever else it holds is passed over.
/// Any thread; needs nothing of QCA's.
TRIVEX_QCA_EXPORT QVector<QByteArray> readLists(const QByteArray &bytes);

/// The canonical form of a list's issuer; empty for what is no revocation list.
QByteArray issuerOfList(const QByteArray &der);

} // namespace Trivex
