// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowselection.h"

#include "tools/followed.h"
#include "tools/rows.h"

#include <algorithm>
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
        followRows(rows, this, [this] { follow(); });
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
    if (row == m_row && m_several.isEmpty())
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
    if (identity == m_current.identity && m_several.isEmpty())
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
    if (m_several.isEmpty())
        return row >= 0 && row == m_row;
    if (!isListed(row))
        return false;
    const auto range = m_several.equal_range(m_rows->identityAt(row));
    if (range.first == range.second)
        return false;
    const QObject *here = certificateAt(row);
    return std::any_of(range.first, range.second, [here](const QPointer<QObject> &certificate) {
        return !certificate || certificate == here;
    });
}

QVariantList RowSelection::chosenRows() const
{
    QVariantList rows;
    for (int row = 0; m_rows && row < m_rows->count(); ++row) {
        if (isChosen(row))
            rows.append(row);
    }
    return rows;
}

QStringList RowSelection::chosenIdentities() const
{
    QStringList identities;
    for (int row = 0; m_rows && row < m_rows->count(); ++row) {
        if (isChosen(row) && !m_rows->isKeyAt(row))
            identities.append(m_rows->identityAt(row));
    }
    return identities;
}

void RowSelection::toggle(int row)
{
    if (!isListed(row))
        return;
    if (m_several.isEmpty() && m_row >= 0)
        add(m_row);
    if (isChosen(row)) {
        const Known gone = known(row);
        m_several.remove(gone.identity, gone.certificate);
        m_several.remove(gone.identity, nullptr);
        const QVariantList left = chosenRows();
        if (left.size() <= 1) {
            setRow(left.isEmpty() ? -1 : left.first().toInt());
            return;
        }
        if (row == m_row)
            makeCurrent(left.first().toInt());
    } else {
        add(row);
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
    for (int one = qMin(from, row); from != row && one <= qMax(from, row); ++one)
        add(one);
    makeCurrent(row);
    m_anchor = known(from);
    recount();
    Q_EMIT changed();
}

void RowSelection::chooseAll()
{
    const int count = m_rows ? m_rows->count() : 0;
    if (count == 0)
        return;
    m_several.clear();
    for (int row = 0; count > 1 && row < count; ++row)
        add(row);
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
    if (m_row < 0 && m_current.identity.isEmpty() && m_several.isEmpty())
        return;
    m_row = -1;
    m_several.clear();
    m_current = {};
    m_anchor = {};
    m_count = 0;
    Q_EMIT changed();
}

void RowSelection::follow()
{
    if (m_current.identity.isEmpty())
        return;
    const QPointer<QObject> before = m_current.certificate;
    const int rowBefore = std::exchange(m_row, rowOf(m_current));
    // What is known of the current row speaks for all that are chosen: it is one that is seen.
    const int seen = m_row < 0 ? firstOfSeveral() : -1;
    if (seen >= 0)
        makeCurrent(seen);
    else if (!takeHeir())
        m_current.certificate = value("certificate").value<QObject *>();
    const int countBefore = m_count;
    recount();
    if (m_row != rowBefore || m_current.certificate != before || m_count != countBefore
        || !m_several.isEmpty())
        Q_EMIT changed();
}

bool RowSelection::isAwaited() const
{
    return m_row < 0 && m_rows && !m_rows->heirOf(m_current.identity).isEmpty();
}

bool RowSelection::takeHeir()
{
    if (m_row >= 0 || !m_rows || !m_several.isEmpty())
        return false;
    const QString heir = m_rows->heirOf(m_current.identity);
    const int row = heir.isEmpty() ? -1 : m_rows->rowOfIdentity(heir);
    if (row < 0)
        return false;
    makeCurrent(row);
    m_anchor = m_current;
    return true;
}

int RowSelection::firstOfSeveral() const
{
    const int count = m_rows && !m_several.isEmpty() ? m_rows->count() : 0;
    for (int row = 0; row < count; ++row) {
        if (isChosen(row))
            return row;
    }
    return -1;
}

void RowSelection::recount()
{
    m_count = m_several.isEmpty() ? int(m_row >= 0) : chosenRows().size();
}

RowSelection::Known RowSelection::known(int row) const
{
    if (!isListed(row))
        return {};
    return {m_rows->identityAt(row), certificateAt(row)};
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
    return m_rows && row >= 0 && row < m_rows->count();
}

void RowSelection::makeCurrent(int row)
{
    m_row = row;
    m_current = known(row);
}

void RowSelection::add(int row)
{
    const Known one = known(row);
    m_several.insert(one.identity, one.certificate);
}

int RowSelection::rowOf(const Known &wanted) const
{
    if (!m_rows || wanted.identity.isEmpty())
        return -1;
    // The very object, where it is still there.
    const int same = wanted.certificate ? m_rows->rowOf(wanted.certificate) : -1;
    return same >= 0 ? same : m_rows->rowOfIdentity(wanted.identity);
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
