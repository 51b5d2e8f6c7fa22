// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/modelcount.h"

namespace Trivex {

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
    if (m_model == model)
        return;
    if (m_model)
        disconnect(m_model, nullptr, &m_later, nullptr);
    m_model = model;
    if (model) {
        connect(model, &QAbstractItemModel::rowsInserted, &m_later, [this] { m_later.start(); });
        connect(model, &QAbstractItemModel::rowsRemoved, &m_later, [this] { m_later.start(); });
        connect(model, &QAbstractItemModel::modelReset, &m_later, [this] { m_later.start(); });
    }
    update();
    Q_EMIT modelChanged();
}

int ModelCount::count() const
{
    return m_count;
}

void ModelCount::update()
{
    const int count = m_model ? m_model->rowCount() : 0;
    if (m_count == count)
        return;
    m_count = count;
    Q_EMIT countChanged();
}

} // namespace Trivex
