// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Faulty {

//! Appends one line to the log named by TRIVEX_FAULTY_LOG, in one write so that threads and
//! processes do not mix; does nothing when the variable is not set.
void writeLog(const std::string &line);

} // namespace Faulty
