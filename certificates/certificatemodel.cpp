// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatemodel.h"

#include "qca/base/searchtext.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QRegExp>

using Trivex::CachedRow;

namespace {

/// A search that has to read more rows than these is done in slices. Reading a row of the key store
/// model and folding its texts takes a few microseconds, once for each row and searched roles.
constexpr int ReadsAtOnce = 16384;
/// So is one that has to look through more texts that were read already.
constexpr int TestsAtOnce = 131072;
/// The most that one slice reads; it ends before where that takes long.
constexpr int SliceRows = 2048;
constexpr qint64 SliceMs = 4;
/// Rows between two looks at the clock.
constexpr int Stride = 32;

} // namespace

CertificateModel::CertificateModel(QObject *parent)
    : SortedProxy(parent)
{
    setFilterRole(0);
    sort(0, Qt::AscendingOrder);
    setSortCaseSensitivity(Qt::CaseInsensitive);
    m_turn.setInterval(0);
    connect(&m_turn, &QTimer::timeout, this, &CertificateModel::testSlice);
    connect(this, &QSortFilterProxyModel::filterRoleChanged, this,
            &CertificateModel::changeCategory);
}

CertificateModel::~CertificateModel() = default;

int CertificateModel::rowCount(const QModelIndex &parent) const
{
    if (m_isFresh && !isChanging() && isSteady())
        const_cast<CertificateModel *>(this)->finishTests();
    return SortedProxy::rowCount(parent);
}

void CertificateModel::noteInserted(int first, int last)
{
    m_facts.cache().insert(first, last);
    m_nextTest = 0;
}

void CertificateModel::noteRemoved(int first, int last)
{
    m_facts.cache().remove(first, last);
    m_nextTest = 0;
}

void CertificateModel::noteChanged(int first, int last)
{
    m_facts.cache().forget(first, last);
    m_nextTest = 0;
}

void CertificateModel::noteAll(const QAbstractItemModel *source)
{
    m_facts.cache().clear();
    m_facts.setSource(source);
    m_searchKeysKnown = false;
    m_isFresh = false;
    m_turn.stop();
}

bool CertificateModel::matters(const QVector<int> &roles) const
{
    return roles.isEmpty() || std::any_of(roles.cbegin(), roles.cend(), [this](int role) {
               return role == NameRole || role == KeyStoreEntryRole || role == TypeRole
                   || m_facts.searched().contains(role);
           });
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
    setFilterRegExp(QRegExp(pattern, Qt::CaseInsensitive, QRegExp::FixedString));
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
    m_facts.setSearched(keys);
}

bool CertificateModel::matches(int sourceRow) const
{
    if (!m_searchKeysKnown)
        readSearchKeys();
    CachedRow &row = m_facts.at(sourceRow);
    row.set(CachedRow::Matched, m_facts.contains(sourceRow, m_needle));
    row.set(CachedRow::Tested);
    return row.has(CachedRow::Matched);
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
    for (CachedRow &row : m_facts.cache().rows()) {
        const bool isMatched = row.has(CachedRow::Matched);
        const bool wasTested = row.has(CachedRow::Tested);
        const bool holds = losesOnly ? !isMatched : gainsOnly && isMatched;
        if (!row.has(CachedRow::Waiting)) // else it is shown as before the search before
            row.set(CachedRow::Before, m_lastPattern.isEmpty() || (wasTested && isMatched));
        row.set(CachedRow::Tested, wasTested && holds);
        row.set(CachedRow::Waiting);
    }
    m_lastPattern = current;
    beginTests();
}

void CertificateModel::beginTests()
{
    m_turn.stop();
    m_isFresh = false;
    int reads = 0;
    int tests = 0;
    for (const int row : order()) {
        const CachedRow &facts = m_facts.at(row);
        tests += facts.has(CachedRow::Tested) ? 0 : 1;
        reads += facts.has(CachedRow::HaystackKnown) ? 0 : 1;
    }
    if (m_needle.isEmpty() || !isSteady() || (reads <= ReadsAtOnce && tests <= TestsAtOnce)) {
        finishTests();
        return;
    }
    m_isFresh = true;
    m_nextTest = 0;
    m_turn.start();
}

void CertificateModel::finishTests()
{
    m_turn.stop();
    m_isFresh = false;
    for (CachedRow &row : m_facts.cache().rows())
        row.set(CachedRow::Waiting, false);
    if (isBuilt() && isSteady() && !m_needle.isEmpty())
        testAll();
    refind(); // reads what it needs
}

/// Whether a row is shown or not only by a test that it has not had.
bool CertificateModel::isDue(int row) const
{
    return !m_facts.at(row).has(CachedRow::Tested) && belongs(row);
}

/// Tests the rows as they lie in memory, here and in the source: in the order of their names it
/// takes more than twice as long.
void CertificateModel::testAll()
{
    for (int row = 0; row < int(m_facts.cache().rows().size()) && isSteady(); ++row) {
        if (isDue(row))
            matches(row);
    }
}

void CertificateModel::testSlice()
{
    m_isFresh = false;
    if (!isSteady())
        return; // a listener has begun an event loop of its own
    QElapsedTimer clock;
    clock.start();
    int tests = 0;
    for (; m_nextTest < int(m_facts.cache().rows().size()); ++m_nextTest) {
        if (!isDue(m_nextTest))
            continue;
        if (tests == SliceRows || (tests > 0 && tests % Stride == 0 && clock.elapsed() >= SliceMs))
            return;
        matches(m_nextTest);
        ++tests;
    }
    finishTests();
}

void CertificateModel::changeCategory()
{
    if (!isBuilt())
        return;
    std::vector<CachedRow> &rows = m_facts.cache().rows();
    if (m_needle.isEmpty() || !isSteady() || rows.size() <= size_t(ReadsAtOnce)) {
        m_turn.stop();
        m_isFresh = false;
        for (CachedRow &row : rows)
            row.set(CachedRow::Waiting, false);
        rechoose();
        return;
    }
    // None of the new category is shown before its text is known.
    std::vector<bool> wasThere(rows.size());
    for (const int row : order())
        wasThere[size_t(row)] = true;
    for (size_t row = 0; row < rows.size(); ++row) {
        const bool isShown = rows[row].has(rows[row].has(CachedRow::Waiting) ? CachedRow::Before
                                                                             : CachedRow::Matched);
        rows[row].set(CachedRow::Before, wasThere[row] && isShown);
        rows[row].set(CachedRow::Waiting);
    }
    rechoose();
    beginTests();
}

bool CertificateModel::belongs(int sourceRow) const
{
    return m_facts.isIn(filterRole(), sourceRow);
}

bool CertificateModel::isFound(int sourceRow) const
{
    if (m_needle.isEmpty())
        return true;
    const CachedRow &row = m_facts.at(sourceRow);
    if (row.has(CachedRow::Waiting))
        return row.has(CachedRow::Before);
    return row.has(CachedRow::Tested) ? row.has(CachedRow::Matched) : matches(sourceRow);
}

int CertificateModel::compare(int sourceRow, int other) const
{
    return m_facts.compare(sourceRow, other);
}

bool CertificateModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    return !sourceParent.isValid() && belongs(sourceRow) && isFound(sourceRow);
}

bool CertificateModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    return compare(left.row(), right.row()) < 0;
}
