// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Marks what the platform library shows to the QML plugin and to the provider plugins.
#if defined(TRIVEX_QCA_LIBRARY)
#define TRIVEX_QCA_EXPORT Q_DECL_EXPORT
#else
#define TRIVEX_QCA_EXPORT Q_DECL_IMPORT
#endif
