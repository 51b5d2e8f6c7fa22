// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/keyrows.h"

#include "tools/rows.h"

#include <algorithm>

namespace Trivex {

QVector<int> KeyRows::wanted(const QString &storeId, const SearchNeedle &needle)
{
    // The entries may have got another source since.
    m_roles.clear();
    QVector<QPair<QString, int>> found;
    const int count = m_model ? m_model->rowCount() : 0;
    for (int i = 0; i < count; ++i) {
        const QModelIndex index = m_model->index(i);
        if (index.data(EntryModel::StoreIdRole).toString() != storeId)
            continue;
        const QByteArray words = index.data(EntryModel::HaystackRole).toString().toUtf8();
        if (needle.isEmpty() || needle.isIn(words))
            found.append({index.data(TokenKeyModel::NameRole).toString(), numberOf(i)});
    }
    std::stable_sort(found.begin(), found.end(), [](const auto &one, const auto &other) {
        return QString::localeAwareCompare(one.first, other.first) < 0;
    });
    QVector<int> rows;
    rows.reserve(found.size());
    for (const auto &one : qAsConst(found))
        rows.append(one.second);
    return rows;
}

QVariant KeyRows::data(int number, int role, const EntryModel &entries)
{
    const int row = modelRow(number);
    if (row < 0)
        return {};
    const auto known = m_roles.constFind(role);
    if (known != m_roles.constEnd())
        return m_model->index(row).data(*known);
    const QByteArray name = entries.roleNames().value(role);
    const int own = name.isEmpty() ? role : roleNamed(*m_model, QString::fromLatin1(name));
    m_roles.insert(role, own);
    return m_model->index(row).data(own);
}

QString KeyRows::identityOf(int number) const
{
    const int row = modelRow(number);
    return row < 0 ? QString() : m_model->identityAt(row);
}

} // namespace Trivex
