// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>

namespace Trivex {

/// Stands for whoever has started operations on tokens, where several may work on one token: a
/// question can be told by it from those of others. Shared with the operations, which may outlive
/// whoever it stands for.
class OperationOwner {
public:
    bool isClosed() const { return m_closed; }

private:
    friend class QuestionService;
    std::atomic_bool m_closed{false};
};

using OperationOwnerPtr = std::shared_ptr<OperationOwner>;

} // namespace Trivex
