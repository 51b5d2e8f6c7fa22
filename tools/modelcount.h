// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>
#include <QPointer>
#include <QTimer>

namespace Trivex {

/// The number of rows of any model, or of those that hold a value in a role, for a binding. Follows
/// once per turn of the event loop, and where values are looked at the more rarely the longer that
/// takes.
class ModelCount : public QObject {
    Q_OBJECT
    /// The model whose rows are counted. Not owned.
    Q_PROPERTY(QAbstractItemModel *model READ model WRITE setModel NOTIFY modelChanged)
    /// The name of the role; empty to count all rows.
    Q_PROPERTY(QString role READ role WRITE setRole NOTIFY criterionChanged)
    /// What the role has in the rows that are counted.
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY criterionChanged)
    /// How many rows there are with that value.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    explicit ModelCount(QObject *parent = nullptr);

    QAbstractItemModel *model() const;
    void setModel(QAbstractItemModel *model);
    QString role() const { return m_role; }
    void setRole(const QString &role);
    QVariant value() const { return m_value; }
    void setValue(const QVariant &value);
    int count() const;
    /// Counts anew, for values that change with time.
    Q_INVOKABLE void recount() { schedule(); }

Q_SIGNALS:
    void modelChanged();
    /// `role` or `value` has changed.
    void criterionChanged();
    void countChanged();

private:
    void schedule();
    void update();
    int counted() const;

    QPointer<QAbstractItemModel> m_model;
    QString m_role;
    QVariant m_value;
    int m_count = 0;
    QTimer m_later;
};

} // namespace Trivex
