// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/operationowner.h"
#include "qca/questions/question.h"

#include <functional>

namespace Trivex {

/// A write to a token's key store, a removal from it, or a login that shows what hides there.
struct StoreChange {
    enum Kind {
        WriteCertificate,
        WriteCertificates,
        WriteBundle,
        RemoveEntry,
        RemoveKey,
        ShowKeys
    };

    Kind kind = WriteCertificate;
    QCA::Certificate certificate;
    QVector<QByteArray> certificates; ///< DER; each stays once it is written
    QCA::KeyBundle bundle;
    QString entryId; ///< to remove: of an entry, or of a key without a certificate
    OperationOwnerPtr owner; ///< null: nobody in particular
};

/// How a change has ended.
struct StoreChangeResult {
    bool succeeded = false;
    QString entryId; ///< what was written
    int count = 0; ///< so many of `StoreChange::certificates` are there, when it failed too
};

/// Called once, on any thread.
using StoreChangeDone = std::function<void(const StoreChangeResult &)>;

} // namespace Trivex
