// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>

namespace Trivex {

/// The number of the role that `model` calls `name`; -1, which no row has a value for, where it has
/// none. The types here know the models of other modules by the names of their roles.
int roleNamed(const QAbstractItemModel &model, const QString &name);

/// The row of `model` that `index` shows, through any proxies between them; -1 for none.
int rowIn(const QAbstractItemModel &model, QModelIndex index);

/// Rows of any model, read by the names of their roles, which a model of its own gives to delegates
/// only. A singleton in QML.
class Rows : public QObject {
    Q_OBJECT
public:
    explicit Rows(QObject *parent = nullptr);

    /// Undefined without a model, such a row or such a role.
    Q_INVOKABLE QVariant value(QAbstractItemModel *model, int row, const QString &role) const;
};

} // namespace Trivex
