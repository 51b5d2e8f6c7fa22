// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/describe/shown.h"

namespace Trivex {

/// Everything in `der`, which is what `kind` says, for people to read. Needs no provider and no
/// engine: algorithms and extensions that nobody knows are shown by their OID and bytes, damaged
/// parts as such with their bytes. Bytes that are no such structure at all give a group with a row
/// that says so, and their fingerprints.
///
/// Work and result are bounded: linear in the size of `der`, and long lists are shown up to a limit
/// and counted behind it. Any thread.
TRIVEX_QCA_EXPORT QVector<ShownGroup> describe(ShownKind kind, const QByteArray &der);

} // namespace Trivex
