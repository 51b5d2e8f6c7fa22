// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

/// Registers every QML type of the module under `uri` at version 1.0, then the meta-types.
void registerTrivexTypes(const char *uri);
