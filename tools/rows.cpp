// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rows.h"

#include <QAbstractProxyModel>

namespace Trivex {

int roleNamed(const QAbstractItemModel &model, const QString &name)
{
    return model.roleNames().key(name.toUtf8(), -1);
}

int rowIn(const QAbstractItemModel &model, QModelIndex index)
{
    while (index.isValid() && index.model() != &model) {
        const auto *proxy = qobject_cast<const QAbstractProxyModel *>(index.model());
        index = proxy ? proxy->mapToSource(index) : QModelIndex();
    }
    return index.isValid() ? index.row() : -1;
}

Rows::Rows(QObject *parent)
    : QObject(parent)
{
}

QVariant Rows::value(QAbstractItemModel *model, int row, const QString &role) const
{
    return model ? model->index(row, 0).data(roleNamed(*model, role)) : QVariant();
}

} // namespace Trivex
