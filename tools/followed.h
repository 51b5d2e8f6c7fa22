// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>
#include <QPointer>

namespace Trivex {

/// Lets `follower` follow `next`, or nothing for null: it hears no more of the object that it has
/// followed so far. False when that is the same. The caller connects what it wants to hear.
template <typename T> bool followNext(QPointer<T> *followed, T *next, const QObject *follower)
{
    if (*followed == next)
        return false;
    if (*followed)
        QObject::disconnect(*followed, nullptr, follower, nullptr);
    *followed = next;
    return true;
}

/// Calls `changed` each time rows of `model` have come or gone, as long as `follower` lives.
template <typename Function>
void followRows(const QAbstractItemModel *model, const QObject *follower, Function changed)
{
    QObject::connect(model, &QAbstractItemModel::rowsInserted, follower, changed);
    QObject::connect(model, &QAbstractItemModel::rowsRemoved, follower, changed);
    QObject::connect(model, &QAbstractItemModel::modelReset, follower, changed);
}

} // namespace Trivex
