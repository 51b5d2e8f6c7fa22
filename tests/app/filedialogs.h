// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/harness.h"

class QFileDialog;

namespace TrivexTest {

/// The file dialog that is open; Qt's own, because no platform theme brings another. Null for none.
QFileDialog *fileDialog();

/// Types a path into the file dialog, once it is open, and accepts or leaves it; a folder is gone
/// into where one is wanted. The window has the keyboard again afterwards.
bool answerFileDialog(WindowDriver &driver, const QString &path, bool accept = true);

} // namespace TrivexTest
