// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/requestcontents.h"

namespace Trivex {

/// `wanted` with what was typed before: in the place of an empty value of the same type; else, for
/// what a name has once, in its only place, whatever the profile has there; else behind them.
QList<RequestValue> filled(QList<RequestValue> wanted, const QList<RequestValue> &typed);

/// The values of `values` that are not among `others`.
QList<RequestValue> without(QList<RequestValue> values, const QList<RequestValue> &others);

} // namespace Trivex
