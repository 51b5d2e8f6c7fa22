// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace Trivex {

/// Occupies the numbers of those standard streams that whoever started the program has closed.
/// Otherwise the next file or socket that anybody opens gets such a number, and what is meant for a
/// person is written into it. Reading from such a stream and writing to it fail as they did.
/// The first thing of the process, before any library opens a file.
void occupyStandardStreams();

} // namespace Trivex
