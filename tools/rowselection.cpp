// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowselection.h"

#include "qca/base/entryrows.h"
#include "tools/followed.h"
#include "tools/rows.h"
#include "tools/rowsummary.h"

#include <limits>
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
    if (!followNext(&m_rows, rows, this))
        return;
    if (rows) {
        connect(rows, &SectionedModel::entriesChanged, this, [this] { m_role = -1; });
        using Model = QAbstractItemModel;
        const auto read = [this](int row) { return knownOfSeveral(row); };
        connect(rows, &Model::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { noteInserted(first, last); });
        connect(rows, &Model::rowsAboutToBeRemoved, this,
                [this, read](const QModelIndex &, int first, int last) {
                    m_several.noteGoing(first, last, read);
                });
        connect(rows, &Model::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { noteRemoved(first, last); });
        connect(rows, &Model::modelAboutToBeReset, this,
                [this, read] { m_several.noteGoing(0, listed() - 1, read); });
        connect(rows, &Model::modelReset, this, &RowSelection::noteReset);
    }
    m_role = -1;
    clear();
    Q_EMIT rowsChanged();
}

int RowSelection::row() const
{
    return m_row;
}

void RowSelection::setRow(int row)
{
    if (!isListed(row)) {
        clear();
        return;
    }
    if (row == m_row && !m_several.isActive())
        return;
    m_several.clear();
    makeCurrent(row);
    m_anchor = m_current;
    recount();
    Q_EMIT changed();
}

QString RowSelection::identity() const
{
    return m_current.identity;
}

void RowSelection::setIdentity(const QString &identity)
{
    if (identity == m_current.identity && !m_several.isActive())
        return;
    m_several.clear();
    m_current = {identity, nullptr};
    m_row = rowOf(m_current);
    m_current.certificate = value("certificate").value<QObject *>();
    m_anchor = m_current;
    recount();
    Q_EMIT changed();
}

int RowSelection::count() const
{
    return m_count;
}

bool RowSelection::isChosen(int row) const
{
    return m_several.isActive() ? m_several.isAt(row) : row >= 0 && row == m_row;
}

QVector<int> RowSelection::chosen() const
{
    if (!m_rows)
        return {};
    if (m_several.isActive())
        return m_several.all();
    return m_row >= 0 ? QVector<int>{m_row} : QVector<int>();
}

QVariantList RowSelection::chosenRows() const
{
    QVariantList rows;
    for (const int row : chosen())
        rows.append(row);
    return rows;
}

QStringList RowSelection::chosenIdentities() const
{
    QStringList identities;
    for (const int row : chosen()) {
        if (!m_rows->isKeyAt(row))
            identities.append(m_rows->identityAt(row));
    }
    return identities;
}

QVariantMap RowSelection::summary(int names) const
{
    return m_rows ? summaryOf(*m_rows, chosen(), names) : QVariantMap();
}

void RowSelection::toggle(int row)
{
    if (!isListed(row))
        return;
    if (!m_several.isActive() && m_row >= 0)
        m_several.add(listed(), m_row);
    if (isChosen(row)) {
        m_several.take(row);
        if (m_several.count() <= 1) {
            setRow(m_several.first());
            return;
        }
        if (row == m_row)
            makeCurrent(m_several.first());
    } else {
        m_several.add(listed(), row);
        makeCurrent(row);
    }
    m_anchor = known(row);
    recount();
    Q_EMIT changed();
}

void RowSelection::extendTo(int row)
{
    if (!isListed(row))
        return;
    const int anchor = rowOf(m_anchor);
    const int from = anchor >= 0 ? anchor : m_row >= 0 ? m_row : row;
    m_several.clear();
    if (from != row)
        m_several.choose(listed(), qMin(from, row), qMax(from, row));
    makeCurrent(row);
    m_anchor = known(from);
    recount();
    Q_EMIT changed();
}

void RowSelection::chooseAll()
{
    const int count = listed();
    if (count == 0)
        return;
    m_several.clear();
    if (count > 1)
        m_several.choose(count, 0, count - 1);
    if (m_row < 0)
        makeCurrent(0);
    recount();
    Q_EMIT changed();
}

void RowSelection::chooseCurrent()
{
    if (m_row >= 0)
        setRow(m_row);
}

void RowSelection::clear()
{
    if (m_row < 0 && m_current.identity.isEmpty() && !m_several.isActive())
        return;
    m_row = -1;
    m_several.clear();
    m_current = {};
    m_anchor = {};
    m_count = 0;
    Q_EMIT changed();
}

void RowSelection::noteInserted(int first, int last)
{
    m_several.noteInserted(first, last, [this](int row) { return knownOfSeveral(row); });
    // What was not listed before can only be among these.
    if (m_row < 0)
        follow(rowOf(m_current, first, last));
    else
        follow(m_row < first ? m_row : m_row + last - first + 1);
}

void RowSelection::noteRemoved(int first, int last)
{
    m_several.noteRemoved(first, last);
    if (m_row > last)
        follow(m_row - (last - first + 1));
    else if (m_row < first)
        follow(m_row);
    else
        follow(entryRowsOf(m_rows->entries()) ? -1 : rowOf(m_current));
}

void RowSelection::noteReset()
{
    m_several.noteRemoved(0, std::numeric_limits<int>::max() - 1);
    if (listed() > 0)
        m_several.noteInserted(0, listed() - 1, [this](int row) { return knownOfSeveral(row); });
    follow(rowOf(m_current));
}

void RowSelection::follow(int row)
{
    if (m_current.identity.isEmpty())
        return;
    const QPointer<QObject> before = m_current.certificate;
    const int rowBefore = std::exchange(m_row, row);
    // What is known of the current row speaks for all that are chosen: it is one that is seen.
    const int seen = m_row < 0 ? m_several.first() : -1;
    if (seen >= 0)
        makeCurrent(seen);
    else if (!takeHeir())
        m_current.certificate = value("certificate").value<QObject *>();
    const int countBefore = m_count;
    recount();
    if (m_row != rowBefore || m_current.certificate != before || m_count != countBefore
        || m_several.isActive())
        Q_EMIT changed();
}

bool RowSelection::isAwaited() const
{
    return m_row < 0 && m_rows && !m_rows->heirOf(m_current.identity).isEmpty();
}

bool RowSelection::takeHeir()
{
    if (m_row >= 0 || !m_rows || m_several.isActive())
        return false;
    const QString heir = m_rows->heirOf(m_current.identity);
    const int row = heir.isEmpty() ? -1 : m_rows->rowOfIdentity(heir);
    if (row < 0)
        return false;
    makeCurrent(row);
    m_anchor = m_current;
    return true;
}

void RowSelection::recount()
{
    m_count = m_several.isActive() ? m_several.count() : int(m_row >= 0);
}

KnownRow RowSelection::known(int row) const
{
    if (!isListed(row))
        return {};
    return {m_rows->identityAt(row), certificateAt(row)};
}

KnownRow RowSelection::knownOfSeveral(int row) const
{
    if (!isListed(row) || !m_rows->entries())
        return {};
    // The entries of key stores have no identity twice.
    const bool isUnique = entryRowsOf(m_rows->entries());
    return {m_rows->identityAt(row), isUnique ? nullptr : certificateAt(row)};
}

QObject *RowSelection::certificateAt(int row) const
{
    // Looked up once: a row is read for each of thousands that are chosen.
    if (m_role < 0)
        m_role = roleNamed(*m_rows, QStringLiteral("certificate"));
    return m_rows->index(row, 0).data(m_role).value<QObject *>();
}

bool RowSelection::isListed(int row) const
{
    return row >= 0 && row < listed();
}

int RowSelection::listed() const
{
    return m_rows ? m_rows->count() : 0;
}

void RowSelection::makeCurrent(int row)
{
    m_row = row;
    m_current = known(row);
}

int RowSelection::rowOf(const KnownRow &wanted) const
{
    if (!m_rows || wanted.identity.isEmpty())
        return -1;
    // The very object, where it is still there.
    const int same = wanted.certificate ? m_rows->rowOf(wanted.certificate) : -1;
    return same >= 0 ? same : m_rows->rowOfIdentity(wanted.identity);
}

int RowSelection::rowOf(const KnownRow &wanted, int first, int last) const
{
    if (wanted.identity.isEmpty())
        return -1;
    int found = -1;
    for (int row = last; row >= first; --row) {
        if (m_rows->identityAt(row) == wanted.identity)
            found = row;
    }
    return found;
}

QVariant RowSelection::value(const char *role) const
{
    return m_rows && m_row >= 0 ? m_rows->value(m_row, QLatin1String(role)) : QVariant();
}

QObject *RowSelection::certificate() const
{
    return m_row >= 0 ? m_current.certificate.data() : nullptr;
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

bool RowSelection::isKey() const
{
    return value("isKey").toBool();
}

int RowSelection::keyKind() const
{
    return value("keyKind").toInt();
}

} // namespace Trivex
