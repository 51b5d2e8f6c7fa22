// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatemodel.h"

#include "certificates/keystoreentry.h"
#include "qca/adapter/entries.h"
#include "qca/base/searchtext.h"
#include "qca/keys/keys.h"

#include <QCollator>
#include <QDebug>
#include <QRegExp>

using Trivex::CachedRow;
using Trivex::RowCache;

namespace {

/// Categories, numbered as the types of key stores and beyond.
enum Category : int {
    SystemCategory = 0,
    UserCategory = 1,
    KeyCategory = 3,
    RequestCategory = 5,
    ImportedCategory = 6,
    RootCategory = 7,
};

/// Up to this number, changed rows are inserted and removed one by one.
constexpr int RowByRowLimit = 64;

/// True when `collator` orders as `QString::localeAwareCompare()` does, which keeps to the locale
/// that was the default at its first use.
bool ordersAsLocale(const QCollator &collator)
{
    const QStringList probes = {QStringLiteral("a"),  QStringLiteral("B"), QStringLiteral("z"),
                                QStringLiteral("ä"),  QStringLiteral("ё"), QStringLiteral("я"),
                                QStringLiteral("ch"), QStringLiteral("h"), QStringLiteral("і"),
                                QStringLiteral("y"),  QStringLiteral("-"), QStringLiteral("1")};
    for (const QString &left : probes) {
        for (const QString &right : probes) {
            const int wanted = QString::localeAwareCompare(left, right);
            const int found = collator.compare(left, right);
            if ((wanted < 0) != (found < 0) || (wanted > 0) != (found > 0))
                return false;
        }
    }
    return true;
}

/// The collator whose sort keys give the order of `QString::localeAwareCompare()`; null if they
/// don't. A locale without rules of its own compares code units, which is as fast.
const QCollator *sortCollator()
{
    static const QCollator collator;
    static const bool usable =
        collator.locale().language() != QLocale::C && ordersAsLocale(collator);
    return usable ? &collator : nullptr;
}

} // namespace

CertificateModel::CertificateModel(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    setFilterRole(SystemCategory);
    sort(0, Qt::AscendingOrder);
    setSortCaseSensitivity(Qt::CaseInsensitive);
}

CertificateModel::~CertificateModel() = default;

void CertificateModel::setSourceModel(QAbstractItemModel *model)
{
    for (const QMetaObject::Connection &connection : qAsConst(m_connections))
        disconnect(connection);
    m_connections.clear();
    forgetAll();
    // Before the base class connects itself, because that asks for rows at each change.
    if (model)
        follow(model);
    QSortFilterProxyModel::setSourceModel(model);
}

void CertificateModel::follow(QAbstractItemModel *model)
{
    using Model = QAbstractItemModel;
    m_connections = {
        connect(model, &Model::rowsInserted, this,
                [this](const QModelIndex &parent, int first, int last) {
                    if (!parent.isValid())
                        m_rows.insert(first, last);
                }),
        connect(model, &Model::rowsRemoved, this,
                [this](const QModelIndex &parent, int first, int last) {
                    if (!parent.isValid())
                        m_rows.remove(first, last);
                }),
        connect(model, &Model::rowsMoved, this,
                [this](const QModelIndex &from, int first, int last, const QModelIndex &to,
                       int destination) {
                    if (!from.isValid() && !to.isValid())
                        m_rows.move(first, last, destination);
                    else
                        m_rows.clear();
                }),
        connect(model, &Model::dataChanged, this,
                [this](const QModelIndex &topLeft, const QModelIndex &bottomRight) {
                    if (!topLeft.parent().isValid())
                        m_rows.forget(topLeft.row(), bottomRight.row());
                }),
        connect(model, &Model::layoutChanged, this, [this] { m_rows.clear(); }),
        connect(model, &Model::modelReset, this, &CertificateModel::forgetAll),
        connect(model, &QObject::destroyed, this, &CertificateModel::forgetAll),
    };
}

void CertificateModel::forgetAll()
{
    m_rows.clear();
    m_searchKeysKnown = false;
}

void CertificateModel::setSearchRoles(const QStringList &roles)
{
    if (m_searchRoles == roles)
        return;
    m_searchRoles = roles;
    m_rolesChanged = true;
    Q_EMIT searchRolesChanged();
}

QString CertificateModel::pattern() const
{
    return filterRegExp().pattern();
}

void CertificateModel::setPattern(const QString &pattern)
{
    if (filterRegExp().pattern() == pattern)
        return;
    // The base class filters at once, by the old pattern and its matches, so nothing moves yet.
    setFilterRegExp(QRegExp(pattern, Qt::CaseInsensitive, QRegExp::FixedString));
    m_pattern = pattern;
    m_needle = Trivex::foldedText(pattern);
    refreshMatches();
    Q_EMIT patternChanged();
}

int CertificateModel::roleKey(const QString &roleName) const
{
    if (!sourceModel()) {
        qWarning() << "No matching role in model:" << roleName;
        return -1;
    }
    return sourceModel()->roleNames().key(roleName.toUtf8(), -1);
}

void CertificateModel::readSearchKeys() const
{
    QVector<int> keys;
    for (const QString &name : m_searchRoles) {
        const int key = roleKey(name);
        if (key >= 0)
            keys.append(key);
    }
    m_searchKeysKnown = true;
    if (keys == m_searchKeys)
        return;
    m_searchKeys = keys;
    for (CachedRow &row : m_rows.rows()) {
        row.set(CachedRow::HaystackKnown, false);
        row.haystack.clear();
    }
}

QString CertificateModel::haystack(int sourceRow) const
{
    QString text;
    const QModelIndex index = sourceModel()->index(sourceRow, 0);
    for (const int key : qAsConst(m_searchKeys)) {
        if (!text.isEmpty())
            text += RowCache::Separator;
        text += Trivex::foldedText(sourceModel()->data(index, key).toString());
    }
    return text;
}

bool CertificateModel::matches(int sourceRow) const
{
    if (m_pattern.isEmpty() || !sourceModel())
        return false;
    if (!m_searchKeysKnown)
        readSearchKeys();
    CachedRow &row = m_rows.at(sourceRow);
    if (!row.has(CachedRow::HaystackKnown)) {
        row.haystack = haystack(sourceRow);
        row.set(CachedRow::HaystackKnown);
    }
    return row.haystack.contains(m_needle);
}

void CertificateModel::refreshMatches()
{
    const QString current = pattern();
    const bool wasSearching = !m_lastPattern.isEmpty() && !m_rolesChanged;
    m_rolesChanged = false;
    if (!current.isEmpty())
        readSearchKeys();

    // Longer texts only lose rows and shorter ones only gain them; anything else starts afresh.
    const bool losesOnly = wasSearching && current.contains(m_lastPattern);
    const bool gainsOnly = wasSearching && !losesOnly && m_lastPattern.indexOf(filterRegExp()) >= 0;
    auto &rows = m_rows.rows();
    int changes = 0;
    for (int number = 0; number < int(rows.size()); ++number) {
        CachedRow &row = rows[size_t(number)];
        if (!row.has(CachedRow::Accepted))
            continue;
        const bool wasShown = m_lastPattern.isEmpty() || row.has(CachedRow::Matched);
        const bool retest =
            losesOnly ? row.has(CachedRow::Matched) : !gainsOnly || !row.has(CachedRow::Matched);
        if (retest) {
            row.set(CachedRow::Matched, matches(number));
            row.set(CachedRow::Tested);
        }
        const bool isShown = current.isEmpty() || row.has(CachedRow::Matched);
        changes += wasShown != isShown;
    }
    m_lastPattern = current;
    refilter(changes);
}

void CertificateModel::refilter(int changes)
{
    // Row by row, each run of changed rows costs a walk over all rows.
    if (changes > RowByRowLimit)
        invalidate();
    else
        invalidateFilter();
}

bool CertificateModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    CachedRow stranger; // child rows are not cached
    CachedRow &row = sourceParent.isValid() ? stranger : m_rows.at(sourceRow);
    if (!passesCategory(sourceRow, sourceParent, row))
        return false;
    row.set(CachedRow::Accepted);
    if (m_pattern.isEmpty())
        return true;
    if (!row.has(CachedRow::Tested) && m_lastPattern == m_pattern && !sourceParent.isValid()) {
        row.set(CachedRow::Matched, matches(sourceRow));
        row.set(CachedRow::Tested);
    }
    return row.has(CachedRow::Matched);
}

bool CertificateModel::passesCategory(int sourceRow, const QModelIndex &sourceParent,
                                      CachedRow &row) const
{
    const QModelIndex index = row.has(CachedRow::TypeKnown) && row.has(CachedRow::EntryKnown)
            && row.has(CachedRow::OriginKnown)
        ? QModelIndex()
        : sourceModel()->index(sourceRow, 0, sourceParent);
    if (!row.has(CachedRow::TypeKnown)) {
        row.type = sourceModel()->data(index, TypeRole).toInt();
        row.set(CachedRow::TypeKnown);
    }
    const int category = filterRole();
    if (row.type == SystemCategory || row.type == RequestCategory)
        return row.type == category;
    return passesEntryCategory(category, index, row);
}

bool CertificateModel::passesEntryCategory(int category, const QModelIndex &index,
                                           CachedRow &row) const
{
    switch (category) {
    case UserCategory:
    case KeyCategory:
        readEntry(index, row);
        return row.has(category == UserCategory ? CachedRow::UserStore : CachedRow::KeyBundle);
    case ImportedCategory:
        readOrigin(index, row);
        return row.has(CachedRow::HasEntry) && !row.has(CachedRow::Root)
            && !row.has(CachedRow::PrivateKey);
    case RootCategory:
        readOrigin(index, row);
        return row.has(CachedRow::Root) && !row.has(CachedRow::PrivateKey);
    default:
        return false;
    }
}

const KeyStoreEntry *CertificateModel::entryAt(const QModelIndex &index) const
{
    auto *object = sourceModel()->data(index, KeyStoreEntryRole).value<QObject *>();
    return qobject_cast<const KeyStoreEntry *>(object);
}

void CertificateModel::readEntry(const QModelIndex &index, CachedRow &row) const
{
    if (row.has(CachedRow::EntryKnown))
        return;
    row.set(CachedRow::EntryKnown);
    const KeyStoreEntry *entry = entryAt(index);
    if (!entry)
        return;
    row.set(CachedRow::HasEntry);
    row.set(CachedRow::UserStore, Trivex::entryStoreName(*entry->data()) == QLatin1String("USER"));
    row.set(CachedRow::KeyBundle,
            Trivex::entryType(*entry->data()) == QCA::KeyStoreEntry::TypeKeyBundle);
}

void CertificateModel::readOrigin(const QModelIndex &index, CachedRow &row) const
{
    if (row.has(CachedRow::OriginKnown))
        return;
    readEntry(index, row);
    row.set(CachedRow::OriginKnown);
    const KeyStoreEntry *entry = row.has(CachedRow::HasEntry) ? entryAt(index) : nullptr;
    if (!entry)
        return;
    const bool isPrivate =
        Trivex::isPrivateKey(Trivex::entryKeyBundle(*entry->data()).privateKey());
    const Certificate *certificate = entry->certificate();
    row.set(CachedRow::PrivateKey, isPrivate);
    row.set(CachedRow::Root, !isPrivate && certificate && certificate->isRoot());
}

void CertificateModel::readName(const QModelIndex &index, CachedRow &row) const
{
    if (row.sortKey || !row.name.isNull())
        return;
    QString name = sourceModel()->data(index, NameRole).toString().toLower();
    if (name.isEmpty())
        name = qtTrId("plugin-la-unnamed");
    if (const QCollator *collator = sortCollator())
        row.sortKey = collator->sortKey(name);
    else
        row.name = name;
}

bool CertificateModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    CachedRow strangers[2];
    const bool known = !left.parent().isValid() && !right.parent().isValid();
    if (known) // makes room for both before any reference
        m_rows.at(qMax(left.row(), right.row()));
    CachedRow &first = known ? m_rows.at(left.row()) : strangers[0];
    CachedRow &second = known ? m_rows.at(right.row()) : strangers[1];
    readName(left, first);
    readName(right, second);
    if (first.sortKey && second.sortKey)
        return first.sortKey->compare(*second.sortKey) < 0;
    return QString::localeAwareCompare(first.name, second.name) < 0;
}
