// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/requestcontents.h"

#include <QAbstractListModel>

namespace Trivex {

/// Values of a request that are being typed, one a row: the names of its subject, or other names.
/// `KeyRequest` has one of each. Rows without text stay out of the request.
class RequestValues : public QAbstractListModel {
    Q_OBJECT
    /// How many rows there are, empty values included.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// Every type that a row may have, in the order in which forms show them. An attribute of a
    /// name may have any other dotted OID as well.
    Q_PROPERTY(QStringList types READ types CONSTANT)
public:
    enum Kind { Names, AlternativeNames };
    enum Role {
        TypeRole = Qt::UserRole,
        TitleRole, ///< what people call the type
        ValueRole,
        ProblemRole, ///< what is wrong with the value, as a sentence; empty for a good one
    };

    explicit RequestValues(Kind kind, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_values.size()); }
    QStringList types() const;
    const QList<RequestValue> &values() const { return m_values; }
    void setValues(const QList<RequestValue> &values);

    /// Adds an empty row of that type behind the last one of it, else at the end, and returns its
    /// number; -1 for what is no type.
    Q_INVOKABLE int add(const QString &type);
    /// Gives the row a value; an empty one is left out of the request.
    Q_INVOKABLE void setValue(int row, const QString &value);
    /// Takes the row away.
    Q_INVOKABLE void remove(int row);
    /// The first row that a request is refused for; -1 without one.
    Q_INVOKABLE int firstRefused() const;
    /// What people call a type.
    Q_INVOKABLE static QString title(const QString &type);

Q_SIGNALS:
    void countChanged();
    /// A value, or the rows themselves.
    void edited();

private:
    RequestContents::Problem problemOf(const RequestValue &value) const;

    Kind m_kind;
    QList<RequestValue> m_values;
};

} // namespace Trivex
