// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/chainsources.h"

#include "qca/adapter/entries.h"
#include "qca/tokens/userstore.h"
#include "qca/x509/certificatefields.h"
#include "tools/rowentry.h"
#include "tools/rows.h"

#include <QElapsedTimer>

namespace Trivex {

namespace {

constexpr qint64 PortionMs = 3;
constexpr int SettleMs = 30;
constexpr int SystemStore = 0; // as the key store model's `Type`

} // namespace

ChainSources *ChainSources::of(EntryModel *entries)
{
    if (!entries)
        return nullptr;
    auto *known = entries->findChild<ChainSources *>(QString(), Qt::FindDirectChildrenOnly);
    return known ? known : new ChainSources(entries);
}

ChainSources::ChainSources(EntryModel *entries)
    : QObject(entries)
    , m_entries(entries)
    , m_lists(userStoreDirectory())
{
    m_idle.setInterval(0);
    connect(&m_idle, &QTimer::timeout, this, &ChainSources::readAhead);
    m_announce.setSingleShot(true);
    m_announce.setInterval(SettleMs);
    // More rows may have come since: their end is told, and until then what was found stands.
    connect(&m_announce, &QTimer::timeout, this, [this] {
        if (isComplete())
            Q_EMIT changed();
    });
    connect(&m_lists, &ListFolder::changed, this, &ChainSources::takeLists);
    connect(entries, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &, int first, int last) { insert(first, last); });
    connect(entries, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex &, int first, int last) { remove(first, last); });
    connect(entries, &QAbstractItemModel::modelReset, this, &ChainSources::reset);
    reset();
}

void ChainSources::reset()
{
    m_index = CandidateIndex();
    for (const QByteArray &list : m_lists.lists())
        m_index.addList(list);
    m_entryRole = roleNamed(*m_entries, QStringLiteral("keyStoreEntry"));
    m_typeRole = roleNamed(*m_entries, QStringLiteral("type"));
    m_rows.fill(ChainCandidate(), m_entries->rowCount());
    m_next = 0;
    m_idle.start();
}

void ChainSources::insert(int first, int last)
{
    m_rows.insert(first, last - first + 1, ChainCandidate());
    m_next = qMin(m_next, first);
    m_idle.start();
}

void ChainSources::remove(int first, int last)
{
    for (int i = first; i <= last; ++i)
        m_index.remove(m_rows.at(i));
    m_rows.remove(first, last - first + 1);
    m_next = qMin(m_next, first);
    m_idle.start();
}

void ChainSources::readAhead()
{
    QElapsedTimer clock;
    clock.start();
    for (; m_next < m_rows.size() && clock.elapsed() < PortionMs; ++m_next) {
        if (!m_rows.at(m_next).der.isEmpty())
            continue;
        m_rows[m_next] = candidate(m_next);
        m_index.add(m_rows.at(m_next));
    }
    if (m_next < m_rows.size())
        return;
    m_idle.stop();
    m_lists.watch();
    noteChange();
}

void ChainSources::noteChange()
{
    if (isComplete() && !m_announce.isActive())
        m_announce.start();
}

QList<QByteArray> ChainSources::certificates() const
{
    QList<QByteArray> all;
    all.reserve(m_rows.size());
    for (const ChainCandidate &row : m_rows) {
        if (!row.der.isEmpty())
            all += row.der;
    }
    return all;
}

QByteArray ChainSources::certificateOf(int row) const
{
    const QCA::KeyStoreEntry *entry = entryAt(*m_entries, row, m_entryRole);
    if (!entry)
        return {};
    if (entryType(*entry) != QCA::KeyStoreEntry::TypeKeyBundle) {
        const QCA::Certificate certificate = entryCertificate(*entry);
        return certificate.isNull() ? QByteArray() : certificate.toDER();
    }
    const QCA::CertificateChain chain = entryKeyBundle(*entry).certificateChain();
    return chain.isEmpty() ? QByteArray() : chain.primary().toDER();
}

ChainCandidate ChainSources::candidate(int row) const
{
    ChainCandidate result;
    result.der = certificateOf(row);
    result.place = m_entries->storeNameAt(row);
    const QModelIndex index = m_entries->index(row, 0);
    const QVariant type = index.data(m_typeRole);
    result.isAnchor = isAnchor(result.der, index.data(EntryModel::StoreIdRole).toString(),
                               type.isValid() && type.toInt() == SystemStore);
    return result;
}

bool ChainSources::isAnchor(const QByteArray &der, const QString &storeId, bool isSystemStore)
{
    const bool isTrusted = isSystemStore || storeId == userStoreId();
    return isTrusted && !der.isEmpty() && isSelfIssued(Der::sliceOf(der));
}

void ChainSources::takeLists()
{
    m_index.clearLists();
    for (const QByteArray &list : m_lists.lists())
        m_index.addList(list);
    noteChange();
}

} // namespace Trivex
