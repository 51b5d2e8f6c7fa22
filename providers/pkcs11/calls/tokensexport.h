// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Marks what the token library shows to the provider plugins and to the tests.
#if defined(TRIVEX_TOKENS_LIBRARY)
#define TRIVEX_TOKENS_EXPORT Q_DECL_EXPORT
#else
#define TRIVEX_TOKENS_EXPORT Q_DECL_IMPORT
#endif
