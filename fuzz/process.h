// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace TrivexFuzz {

/// What every target stands on, made once and never taken down: an application, QCA with the
/// certificate provider of this build, a home of its own.
void prepareProcess();

} // namespace TrivexFuzz
