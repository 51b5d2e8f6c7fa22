// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/certificatemodel.h"
#include "certificates/keystoreentry.h"

#include <QAbstractListModel>
#include <QHash>
#include <QSharedPointer>
#include <QVector>

namespace TrivexTest {

/// A source for the filter model with the roles of the key store model, which counts its reads.
class CountingSource : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        NameRole = CertificateModel::NameRole,
        EntryRole,
        IssuerRole = NameRole + 3,
        TypeRole,
    };

    struct Row {
        QString name;
        QString issuer;
        int type = 0;
        QSharedPointer<KeyStoreEntry> entry;
    };

    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : m_rows.size();
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        ++m_reads[role];
        const Row &row = m_rows.at(index.row());
        switch (role) {
        case NameRole:
            return row.name;
        case EntryRole:
            return QVariant::fromValue(row.entry.data());
        case IssuerRole:
            return row.issuer;
        case TypeRole:
            return row.type;
        default:
            return QVariant();
        }
    }

    QHash<int, QByteArray> roleNames() const override
    {
        return {{NameRole, "name"},
                {EntryRole, "keyStoreEntry"},
                {IssuerRole, "issuer"},
                {TypeRole, "type"}};
    }

    void insert(int position, const QVector<Row> &rows)
    {
        beginInsertRows(QModelIndex(), position, position + rows.size() - 1);
        for (int i = 0; i < rows.size(); ++i)
            m_rows.insert(position + i, rows.at(i));
        endInsertRows();
    }
    void append(const Row &row) { insert(m_rows.size(), {row}); }
    void remove(int first, int count)
    {
        beginRemoveRows(QModelIndex(), first, first + count - 1);
        m_rows.remove(first, count);
        endRemoveRows();
    }
    void change(int position, const Row &row)
    {
        m_rows[position] = row;
        Q_EMIT dataChanged(index(position), index(position));
    }
    void moveRow(int from, int to) // `to` as in beginMoveRows
    {
        beginMoveRows(QModelIndex(), from, from, QModelIndex(), to);
        m_rows.move(from, to > from ? to - 1 : to);
        endMoveRows();
    }
    void reset(const QVector<Row> &rows)
    {
        beginResetModel();
        m_rows = rows;
        endResetModel();
    }

    int takeReads(int role) { return m_reads.take(role); }
    int takeReads()
    {
        int sum = 0;
        for (const int count : qAsConst(m_reads))
            sum += count;
        m_reads.clear();
        return sum;
    }
    const QVector<Row> &rows() const { return m_rows; }

protected:
    void setRows(const QVector<Row> &rows) { m_rows = rows; } // tells nobody

private:
    QVector<Row> m_rows;
    mutable QHash<int, int> m_reads;
};

/// The names that `model` shows, in its order.
inline QStringList names(const QAbstractItemModel &model)
{
    QStringList list;
    for (int row = 0; row < model.rowCount(); ++row)
        list << model.data(model.index(row, 0), CountingSource::NameRole).toString();
    return list;
}

/// Rows of the system, one for each name.
inline QVector<CountingSource::Row> systemRows(const QStringList &texts)
{
    QVector<CountingSource::Row> rows;
    for (const QString &text : texts)
        rows.append({text, QString(), 0, {}});
    return rows;
}

} // namespace TrivexTest
