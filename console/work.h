// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "console/order.h"
#include "console/patience.h"

namespace Trivex {

/// Does what is asked for without a window; the program's exit code. Under an application object.
/// Tests end the `patience` with modules that don't answer when they have seen enough.
int carryOut(const Order &order, const Patience &patience = aMinute());

/// Lets the process end with a failure where the answer to a question about the program could not
/// be written: Qt's parser writes it, and ends the process itself. Before it does, and under an
/// application object.
void heedLostAnswers();

/// From now on texts are English and times are those of UTC, because programs read them. Under an
/// application object, before it has catalogues.
void speakToPrograms();

} // namespace Trivex
