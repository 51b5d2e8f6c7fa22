// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// How rows are known again, and what the list does with keys without a certificate; the rest of it
// is in sectionedmodel.cpp.
#include "tools/sectionedmodel.h"
#include "tools/validity.h"

#include <algorithm>

namespace Trivex {

void SectionedModel::setKeys(TokenKeyModel *keys)
{
    if (m_keys.model() == keys)
        return;
    if (m_keys.model())
        disconnect(m_keys.model(), nullptr, this, nullptr);
    m_keys.setModel(keys);
    if (keys) {
        connect(keys, &QAbstractItemModel::rowsInserted, this, &SectionedModel::schedule);
        connect(keys, &QAbstractItemModel::rowsAboutToBeRemoved, this,
                [this](const QModelIndex &, int first, int last) { keysAboutToGo(first, last); });
        connect(keys, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex &first, const QModelIndex &last) {
                    keysChange(first.row(), last.row());
                });
    }
    schedule();
    Q_EMIT keysChanged();
}

QString SectionedModel::identityAt(int row) const
{
    return identityOf(m_rows.at(row));
}

int SectionedModel::rowOfIdentity(const QString &identity) const
{
    const auto found = std::find_if(m_rows.cbegin(), m_rows.cend(),
                                    [&](int row) { return identityOf(row) == identity; });
    return found == m_rows.cend() ? -1 : int(found - m_rows.cbegin());
}

/// Where the rows of entries from `first` to `last` are listed: thousands of them mostly stand
/// together, and whoever hears of them has work at each time.
QVector<SectionedModel::Run> SectionedModel::runsOf(int first, int last) const
{
    QVector<Run> runs;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i) < first || m_rows.at(i) > last)
            continue;
        if (!runs.isEmpty() && runs.last().last == i - 1)
            runs.last().last = i;
        else
            runs.append({i, i});
    }
    return runs;
}

QString SectionedModel::heirOf(const QString &identity) const
{
    return m_keys.model() ? m_keys.model()->heirOf(identity) : QString();
}

void SectionedModel::keysAboutToGo(int first, int last)
{
    const int before = m_rows.size();
    for (int key = first; key <= last; ++key) {
        const int row = m_rows.indexOf(m_keys.numberOf(key));
        if (row < 0)
            continue;
        beginRemoveRows({}, row, row);
        m_rows.removeAt(row);
        endRemoveRows();
    }
    if (m_rows.size() != before)
        Q_EMIT countChanged();
}

void SectionedModel::keysChange(int first, int last)
{
    for (int key = first; key <= last; ++key) {
        const int row = m_rows.indexOf(m_keys.numberOf(key));
        if (row >= 0)
            Q_EMIT dataChanged(index(row), index(row));
    }
    // A search may find it now.
    schedule();
}

/// Puts the wanted keys behind the rows of their token.
void SectionedModel::addKeys(QVector<int> *rows)
{
    if (m_storeId.isEmpty() || m_keyKind != EntryModel::NoKey)
        return;
    const QVector<int> keys = m_keys.wanted(m_storeId, m_needle);
    // They end at no time.
    if (m_ready.validity == Validity::Unknown)
        *rows += keys;
    else
        setHidden(m_hidden + keys.size());
}

QString SectionedModel::section(const QModelIndex &entry) const
{
    //% "Certificates"
    return hasKeys() ? qtTrId("trivex-app-section-certificates")
                     : entry.data(EntryModel::StoreNameRole).toString();
}

QString SectionedModel::identityOf(int row) const
{
    return KeyRows::isKey(row) ? m_keys.identityOf(row) : m_entries->identityAt(row);
}

} // namespace Trivex
