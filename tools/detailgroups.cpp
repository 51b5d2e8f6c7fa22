// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/detailgroups.h"

#include <QVariantMap>

namespace Trivex {

void DetailGroups::begin(const QString &title)
{
    m_groups.append({title, {}});
}

void DetailGroups::add(const QString &label, const QString &value, Width width, const QString &flag)
{
    if (value.isEmpty() || m_groups.isEmpty())
        return;
    m_groups.last().rows.append(QVariantMap{{QStringLiteral("label"), label},
                                            {QStringLiteral("value"), value},
                                            {QStringLiteral("fixed"), width == FixedWidth},
                                            {QStringLiteral("flag"), flag}});
}

QVariantList DetailGroups::groups() const
{
    QVariantList groups;
    for (const Group &group : m_groups) {
        if (!group.rows.isEmpty())
            groups.append(QVariantMap{{QStringLiteral("title"), group.title},
                                      {QStringLiteral("rows"), group.rows}});
    }
    return groups;
}

} // namespace Trivex
