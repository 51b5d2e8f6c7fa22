// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/openssl/messagetask.h"

namespace Trivex {

/// Does what the task says. An event loop runs on the GUI thread while a token signs or asks for
/// its PIN; whoever wanted it may be gone afterwards.
MessageResult workOn(const MessageTask &task, const MessageMeans &means);

} // namespace Trivex
