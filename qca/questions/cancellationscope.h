// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/cancellation.h"

namespace Trivex {

/// While one lives, the operations that this thread starts are those of one task: they have its
/// cancellation instead of one of their own. So who has started them, whether directly or through
/// QCA, can ask for their end and for that of nothing else; those that the task would start later
/// never begin. One operation at a time, because one question at a time is withdrawn.
class TRIVEX_QCA_EXPORT CancellationScope {
public:
    /// Null: operations have their own again.
    explicit CancellationScope(CancellationPtr task);
    ~CancellationScope();
    CancellationScope(const CancellationScope &) = delete;
    CancellationScope &operator=(const CancellationScope &) = delete;

    /// The cancellation of the task in force on this thread, or null.
    static CancellationPtr current();

private:
    CancellationPtr m_previous;
};

} // namespace Trivex
