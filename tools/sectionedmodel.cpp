// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/sectionedmodel.h"

#include "tools/followed.h"
#include "tools/rows.h"

#include <QMap>

#include <algorithm>

namespace Trivex {

/// While the rows of a long list arrive, a pass is followed by a rest this many times as long.
constexpr qint64 RestFactor = 4;

SectionedModel::SectionedModel(QObject *parent)
    : QAbstractListModel(parent)
{
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(0);
    connect(&m_refresh, &QTimer::timeout, this, &SectionedModel::refresh);
}

SectionedModel::~SectionedModel() = default;

EntryModel *SectionedModel::entries() const
{
    return m_entries;
}

void SectionedModel::setEntries(EntryModel *entries)
{
    if (m_entries == entries)
        return;
    if (m_entries)
        disconnect(m_entries, nullptr, this, nullptr);
    beginResetModel();
    m_rows.clear();
    m_roles.clear();
    m_entries = entries;
    endResetModel();
    if (entries) {
        if (!m_pattern.isEmpty())
            entries->noteSearch();
        connect(entries, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { entriesInserted(first, last); });
        connect(
            entries, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex &, int first, int last) { entriesAboutToGo(first, last); });
        connect(entries, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
            if (!m_rows.isEmpty())
                replaceMiddle({}, 0, 0);
        });
        connect(entries, &QAbstractItemModel::modelReset, this, [this] {
            m_roles.clear();
            schedule();
        });
        connect(entries, &QAbstractItemModel::dataChanged, this, &SectionedModel::entriesChange);
    }
    schedule();
    Q_EMIT entriesChanged();
}

QAbstractItemModel *SectionedModel::filter() const
{
    return m_filter;
}

void SectionedModel::setFilter(QAbstractItemModel *filter)
{
    if (!followNext(&m_filter, filter, this))
        return;
    if (filter) {
        connect(filter, &QAbstractItemModel::rowsInserted, this, &SectionedModel::scheduleInTurn);
        connect(filter, &QAbstractItemModel::rowsRemoved, this, &SectionedModel::schedule);
        connect(filter, &QAbstractItemModel::rowsMoved, this, &SectionedModel::schedule);
        connect(filter, &QAbstractItemModel::layoutChanged, this, &SectionedModel::schedule);
        connect(filter, &QAbstractItemModel::modelReset, this, &SectionedModel::schedule);
    }
    schedule();
    Q_EMIT filterChanged();
}

QString SectionedModel::storeId() const
{
    return m_storeId;
}

void SectionedModel::setStoreId(const QString &storeId)
{
    if (m_storeId == storeId)
        return;
    m_storeId = storeId;
    schedule();
    Q_EMIT storeIdChanged();
}

QString SectionedModel::pattern() const
{
    return m_pattern;
}

void SectionedModel::setPattern(const QString &pattern)
{
    if (m_pattern == pattern)
        return;
    m_pattern = pattern;
    m_needle = SearchNeedle(pattern);
    if (m_entries && !pattern.isEmpty())
        m_entries->noteSearch();
    schedule();
    Q_EMIT patternChanged();
}

int SectionedModel::keyKind() const
{
    return m_keyKind;
}

void SectionedModel::setKeyKind(int kind)
{
    if (m_keyKind == kind)
        return;
    m_keyKind = kind;
    schedule();
    Q_EMIT keyKindChanged();
}

void SectionedModel::liftFilters()
{
    setReady({});
}

void SectionedModel::setReady(const ReadyFilter &ready)
{
    if (ready == m_ready)
        return;
    m_ready = ready;
    schedule();
    Q_EMIT readyChanged();
}

int SectionedModel::sortKey() const
{
    return m_order.key();
}

void SectionedModel::setSortKey(int key)
{
    if (key >= RowOrder::Given && key <= RowOrder::Place)
        setOrder(RowOrder::Key(key), m_order.isDescending());
}

bool SectionedModel::isDescending() const
{
    return m_order.isDescending();
}

void SectionedModel::setDescending(bool descending)
{
    setOrder(m_order.key(), descending);
}

void SectionedModel::setOrder(RowOrder::Key key, bool descending)
{
    if (!m_order.set(key, descending))
        return;
    schedule();
    Q_EMIT orderChanged();
}

int SectionedModel::count() const
{
    return m_rows.size();
}

int SectionedModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant SectionedModel::data(const QModelIndex &index, int role) const
{
    if (!m_entries || index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const int row = m_rows.at(index.row());
    if (KeyRows::isKey(row)) {
        return role == SectionRole ? QVariant(qtTrId("trivex-app-keys-bare"))
                                   : m_keys.data(row, role, *m_entries);
    }
    const QModelIndex entry = m_entries->index(row, 0);
    return role == SectionRole ? QVariant(section(entry)) : entry.data(role);
}

QHash<int, QByteArray> SectionedModel::roleNames() const
{
    QHash<int, QByteArray> names;
    if (m_entries)
        names = m_entries->roleNames();
    names.insert(SectionRole, QByteArrayLiteral("section"));
    names.insert(TokenKeyModel::IsKeyRole, QByteArrayLiteral("isKey"));
    names.insert(TokenKeyModel::KeyIdRole, QByteArrayLiteral("keyId"));
    names.insert(TokenKeyModel::CanRequestRole, QByteArrayLiteral("canRequest"));
    names.insert(TokenKeyModel::RequestRole, QByteArrayLiteral("request"));
    return names;
}

int SectionedModel::rowOf(QObject *certificate) const
{
    const int row = m_entries ? m_entries->rowOfCertificate(certificate) : -1;
    return row < 0 ? -1 : m_rows.indexOf(row);
}

QVariant SectionedModel::value(int row, const QString &role) const
{
    // Found once: a value is asked for again and again, of each of thousands of rows.
    auto known = m_roles.find(role);
    if (known == m_roles.end())
        known = m_roles.insert(role, roleNamed(*this, role));
    return data(index(row), *known);
}

int SectionedModel::countWithValidity(int state) const
{
    return int(std::count_if(m_rows.cbegin(), m_rows.cend(), [this, state](int row) {
        return !KeyRows::isKey(row)
            && m_entries->index(row, 0).data(EntryModel::ValidityRole).toInt() == state;
    }));
}

void SectionedModel::schedule()
{
    m_refresh.start(0);
}

void SectionedModel::scheduleInTurn()
{
    if (m_refresh.isActive())
        return;
    const qint64 rested = m_sinceRefresh.isValid() ? m_sinceRefresh.elapsed() : m_rest;
    m_refresh.start(int(qMax<qint64>(0, m_rest - rested)));
}

void SectionedModel::entriesChange(const QModelIndex &first, const QModelIndex &last,
                                   const QVector<int> &roles)
{
    // Nothing that is drawn: only what is found changes, and thousands of rows one by one.
    if (roles.size() == 1 && roles.first() == EntryModel::HaystackRole) {
        if (!m_pattern.isEmpty())
            scheduleInTurn();
        return;
    }
    for (const Run &run : runsOf(first.row(), last.row()))
        Q_EMIT dataChanged(index(run.first), index(run.last), roles);
}

void SectionedModel::entriesInserted(int first, int last)
{
    const int added = last - first + 1;
    scheduleInTurn();
    // The usual case, and a store of thousands of rows arrives one by one.
    if (last == m_entries->rowCount() - 1)
        return;
    for (int &row : m_rows) {
        if (row >= first)
            row += added;
    }
}

void SectionedModel::entriesAboutToGo(int first, int last)
{
    const int gone = last - first + 1;
    const int before = m_rows.size();
    const QVector<Run> runs = runsOf(first, last);
    for (auto run = runs.crbegin(); run != runs.crend(); ++run) {
        beginRemoveRows({}, run->first, run->last);
        m_rows.remove(run->first, run->last - run->first + 1);
        endRemoveRows();
    }
    for (int &row : m_rows) {
        if (row > last)
            row -= gone;
    }
    if (m_rows.size() != before)
        Q_EMIT countChanged();
    schedule();
}

bool SectionedModel::isWanted(int entryRow) const
{
    const QModelIndex index = m_entries->index(entryRow, 0);
    if (!m_storeId.isEmpty() && index.data(EntryModel::StoreIdRole).toString() != m_storeId)
        return false;
    if (m_keyKind != EntryModel::NoKey && index.data(EntryModel::KeyKindRole).toInt() != m_keyKind)
        return false;
    return m_pattern.isEmpty() || m_entries->isFound(entryRow, m_needle);
}

QVector<int> SectionedModel::wantedRows()
{
    QVector<int> rows;
    if (!m_entries)
        return rows;
    const QAbstractItemModel *model = m_filter ? m_filter.data() : m_entries.data();
    const int count = model->rowCount();
    rows.reserve(count);
    int hidden = 0;
    for (int i = 0; i < count; ++i) {
        const int row = rowIn(*m_entries, model->index(i, 0));
        if (row < 0 || !isWanted(row))
            continue;
        if (m_ready.wants(*m_entries, row))
            rows.append(row);
        else
            ++hidden;
    }
    setHidden(hidden);
    if (m_storeId.isEmpty())
        return groupedByStore(rows);
    m_order.sort(*m_entries, rows, m_filter);
    addKeys(&rows);
    return rows;
}

void SectionedModel::setHidden(int count)
{
    if (count == m_hidden)
        return;
    m_hidden = count;
    Q_EMIT hiddenCountChanged();
}

QVector<int> SectionedModel::groupedByStore(const QVector<int> &rows)
{
    QMap<QString, QVector<int>> stores;
    for (const int row : rows)
        stores[m_entries->storeNameAt(row)].append(row);
    QVector<int> grouped;
    grouped.reserve(rows.size());
    const QStringList places = m_order.sortedPlaces(stores.keys());
    for (const QString &place : places) {
        QVector<int> &store = stores[place];
        // A filter has them by name.
        m_order.sort(*m_entries, store, m_filter);
        grouped += store;
    }
    return grouped;
}

void SectionedModel::refresh()
{
    QElapsedTimer clock;
    clock.start();
    takeUp(wantedRows());
    m_rest = clock.elapsed() * RestFactor;
    m_sinceRefresh.start();
}

void SectionedModel::takeUp(const QVector<int> &rows)
{
    if (rows == m_rows)
        return;
    const int shorter = qMin(rows.size(), m_rows.size());
    int prefix = 0;
    while (prefix < shorter && rows.at(prefix) == m_rows.at(prefix))
        ++prefix;
    int suffix = 0;
    while (suffix < shorter - prefix
           && rows.at(rows.size() - 1 - suffix) == m_rows.at(m_rows.size() - 1 - suffix))
        ++suffix;
    replaceMiddle(rows, prefix, suffix);
}

void SectionedModel::replaceMiddle(const QVector<int> &rows, int prefix, int suffix)
{
    const int oldLast = m_rows.size() - 1 - suffix;
    const int newLast = rows.size() - 1 - suffix;
    if (newLast < prefix) {
        beginRemoveRows({}, prefix, oldLast);
        m_rows = rows;
        endRemoveRows();
    } else if (oldLast < prefix) {
        beginInsertRows({}, prefix, newLast);
        m_rows = rows;
        endInsertRows();
    } else {
        beginResetModel();
        m_rows = rows;
        endResetModel();
    }
    Q_EMIT countChanged();
}

} // namespace Trivex
