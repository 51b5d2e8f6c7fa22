// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import Trivex.Crypto.Tools 1.0

/// How many rows a model has; none of them ends.
ModelCount {
    readonly property int expiring: 0
}
