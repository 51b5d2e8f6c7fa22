// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QString>

namespace Trivex {

/// The structure of any DER encoding as a tree in text, an element a line: offset and length in
/// bytes, depth as indentation, the name of the type, and a short form of the value; OIDs with
/// their names. OCTET STRINGs and BIT STRINGs with DER in them are opened. English whatever the
/// user's language, because the words are those of X.680.
///
/// At most `most` lines; behind them an ellipsis with the number of bytes that they do not cover.
/// Bytes that are no DER are shown as such. Any thread.
TRIVEX_QCA_EXPORT QString structureText(const QByteArray &der, int most = 1500);

} // namespace Trivex
