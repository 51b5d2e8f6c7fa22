// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>
#include <QPointer>
#include <QTimer>

namespace Trivex {

/// The number of rows of any model, for a binding; follows once per turn of the event loop.
class ModelCount : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel *model READ model WRITE setModel NOTIFY modelChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    explicit ModelCount(QObject *parent = nullptr);

    QAbstractItemModel *model() const;
    void setModel(QAbstractItemModel *model);
    int count() const;

Q_SIGNALS:
    void modelChanged();
    void countChanged();

private:
    void update();

    QPointer<QAbstractItemModel> m_model;
    int m_count = 0;
    QTimer m_later;
};

} // namespace Trivex
