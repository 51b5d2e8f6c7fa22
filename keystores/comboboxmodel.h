// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <QVector>

/// The rows of a choice list: a number, a text to show and a text to work with.
///
/// | role | number | type |
/// |---|---|---|
/// | name | 257 | string, translated |
/// | id | 258 | int |
/// | type | 259 | string |
class ComboBoxModel : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        IdRole,
        TypeRole,
    };

    struct Row {
        int id = -1;
        QString name;
        QString type;
    };

    explicit ComboBoxModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    void addRow(int id, const QString &name, const QString &type);
    /// The row at `position`; one with id -1 and empty texts outside the list.
    Row rowAt(int position) const;
    /// True when a row has exactly this `type`.
    bool containsType(const QString &type) const;
    /// Sorts the rows by `type` and returns the id of the first; -1 without rows. Views are not
    /// told and see the order when they read next.
    int firstSortedId();

private:
    QVector<Row> m_rows;
};
