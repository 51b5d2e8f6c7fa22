// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowselection.h"

#include <utility>

namespace Trivex {

RowSelection::RowSelection(QObject *parent)
    : QObject(parent)
{
}

RowSelection::~RowSelection() = default;

SectionedModel *RowSelection::rows() const
{
    return m_rows;
}

void RowSelection::setRows(SectionedModel *rows)
{
    if (m_rows == rows)
        return;
    if (m_rows)
        disconnect(m_rows, nullptr, this, nullptr);
    m_rows = rows;
    if (rows) {
        connect(rows, &QAbstractItemModel::modelReset, this, &RowSelection::follow);
        connect(rows, &QAbstractItemModel::rowsInserted, this, &RowSelection::follow);
        connect(rows, &QAbstractItemModel::rowsRemoved, this, &RowSelection::follow);
    }
    clear();
    Q_EMIT rowsChanged();
}

int RowSelection::row() const
{
    return m_row;
}

void RowSelection::setRow(int row)
{
    const int count = m_rows ? m_rows->rowCount() : 0;
    if (row < 0 || row >= count) {
        clear();
        return;
    }
    if (row == m_row)
        return;
    m_row = row;
    m_identity = value("identity").toString();
    m_certificate = value("certificate").value<QObject *>();
    Q_EMIT changed();
}

QString RowSelection::identity() const
{
    return m_identity;
}

void RowSelection::setIdentity(const QString &identity)
{
    if (identity == m_identity)
        return;
    m_identity = identity;
    m_certificate = nullptr;
    m_row = rowOfIdentity();
    m_certificate = value("certificate").value<QObject *>();
    Q_EMIT changed();
}

void RowSelection::clear()
{
    if (m_row < 0 && m_identity.isEmpty())
        return;
    m_row = -1;
    m_identity.clear();
    m_certificate = nullptr;
    Q_EMIT changed();
}

void RowSelection::follow()
{
    if (m_identity.isEmpty())
        return;
    const int row = rowOfIdentity();
    const QPointer<QObject> before = m_certificate;
    const int rowBefore = std::exchange(m_row, row);
    m_certificate = value("certificate").value<QObject *>();
    if (row != rowBefore || m_certificate != before)
        Q_EMIT changed();
}

int RowSelection::rowOfIdentity() const
{
    if (!m_rows || m_identity.isEmpty())
        return -1;
    // The very object, where it is still there: a store may hold two rows of one identity.
    const int same = m_certificate ? m_rows->rowOf(m_certificate) : -1;
    return same >= 0 ? same : m_rows->rowOfIdentity(m_identity);
}

QVariant RowSelection::value(const char *role) const
{
    return m_rows && m_row >= 0 ? m_rows->value(m_row, QLatin1String(role)) : QVariant();
}

QObject *RowSelection::certificate() const
{
    return m_row >= 0 ? m_certificate.data() : nullptr;
}

QString RowSelection::entryId() const
{
    return value("entryId").toString();
}

QString RowSelection::place() const
{
    return value("storeName").toString();
}

int RowSelection::type() const
{
    const QVariant type = value("type");
    return type.isValid() ? type.toInt() : -1;
}

bool RowSelection::hasKey() const
{
    return value("hasKey").toBool();
}

int RowSelection::keyKind() const
{
    return value("keyKind").toInt();
}

} // namespace Trivex
