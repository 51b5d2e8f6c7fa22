// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/operationowner.h"
#include "qca/questions/question.h"

#include <functional>

namespace Trivex {

/// A write to a token's key store or a removal from it.
struct StoreChange {
    enum Kind { WriteCertificate, WriteBundle, RemoveEntry };

    Kind kind = WriteCertificate;
    QCA::Certificate certificate;
    QCA::KeyBundle bundle;
    QString entryId; ///< to remove
    OperationOwnerPtr owner; ///< null: nobody in particular
};

/// How a change has ended.
struct StoreChangeResult {
    bool succeeded = false;
    QString entryId; ///< what was written
};

/// Called once, on any thread.
using StoreChangeDone = std::function<void(const StoreChangeResult &)>;

} // namespace Trivex
