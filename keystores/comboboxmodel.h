// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <QVector>

/// A choice list for QML: each row is a value, its text and a data string.
///
/// | role | number | content |
/// |---|---|---|
/// | "name" | 257 | the display text |
/// | "id" | 258 | the value, an int |
/// | "type" | 259 | the data string |
class ComboBoxModel : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role { NameRole = Qt::UserRole + 1, IdRole, TypeRole };

    struct Row {
        int id = -1;
        QString name;
        QString type;
    };

    explicit ComboBoxModel(QObject *parent = nullptr);
    ~ComboBoxModel() override;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void addRow(int id, const QString &name, const QString &type);
    /// The row at `position`; outside the list one with the id -1 and empty texts.
    Row rowAt(int position) const;
    /// True when some row's type is exactly `text`.
    bool containsType(const QString &text) const;
    /// Sorts the rows by their type and returns the id of the first; -1 without rows. Views are
    /// not told: they see the new order when they read the rows the next time.
    int firstSortedId();

private:
    QVector<Row> m_rows;
};
