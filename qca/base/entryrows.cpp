// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/entryrows.h"

#include <QIdentityProxyModel>

namespace Trivex {

const EntryRows *entryRowsOf(const QAbstractItemModel *model)
{
    while (const auto *proxy = qobject_cast<const QIdentityProxyModel *>(model))
        model = proxy->sourceModel();
    return qobject_cast<EntryRows *>(model);
}

} // namespace Trivex
