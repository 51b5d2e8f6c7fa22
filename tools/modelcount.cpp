// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/modelcount.h"

#include "tools/followed.h"
#include "tools/rows.h"

#include <QElapsedTimer>

namespace Trivex {

/// A count is followed by a rest so many times as long.
constexpr int RestFactor = 8;

ModelCount::ModelCount(QObject *parent)
    : QObject(parent)
{
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &ModelCount::update);
}

QAbstractItemModel *ModelCount::model() const
{
    return m_model;
}

void ModelCount::setModel(QAbstractItemModel *model)
{
    if (!followNext(&m_model, model, &m_later))
        return;
    if (model) {
        followRows(model, &m_later, [this] { schedule(); });
        connect(model, &QAbstractItemModel::dataChanged, &m_later, [this] {
            if (!m_role.isEmpty())
                schedule();
        });
    }
    update();
    Q_EMIT modelChanged();
}

int ModelCount::count() const
{
    return m_count;
}

void ModelCount::setRole(const QString &role)
{
    if (m_role == role)
        return;
    m_role = role;
    schedule();
    Q_EMIT criterionChanged();
}

void ModelCount::setValue(const QVariant &value)
{
    if (m_value == value)
        return;
    m_value = value;
    schedule();
    Q_EMIT criterionChanged();
}

void ModelCount::schedule()
{
    if (!m_later.isActive())
        m_later.start();
}

int ModelCount::counted() const
{
    if (!m_model || m_role.isEmpty())
        return m_model ? m_model->rowCount() : 0;
    const int role = roleNamed(*m_model, m_role);
    int count = 0;
    for (int row = 0; row < m_model->rowCount(); ++row)
        count += m_model->index(row, 0).data(role) == m_value ? 1 : 0;
    return count;
}

void ModelCount::update()
{
    QElapsedTimer clock;
    clock.start();
    const int count = counted();
    // While thousands of rows arrive, most of the time is theirs.
    m_later.setInterval(int(clock.elapsed()) * RestFactor);
    if (m_count == count)
        return;
    m_count = count;
    Q_EMIT countChanged();
}

} // namespace Trivex
