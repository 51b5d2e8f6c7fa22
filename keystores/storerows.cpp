// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/storerows.h"

#include "certificates/keystoreentry.h"
#include "qca/adapter/entries.h"

#include <QElapsedTimer>
#include <QQmlEngine>

#include <algorithm>

namespace {

/// How long one turn of the event loop may take new rows in, but for its last one, and how many.
/// Whoever shows them decodes each certificate, sorts and filters it, which takes as long as it
/// takes: what is short comes in a turn or two, and a store of thousands must not stop the window.
constexpr qint64 SliceTime = 8; // ms
constexpr int SliceRows = 96;

bool isRow(const QCA::KeyStoreEntry &entry)
{
    if (Trivex::entryName(entry).isEmpty())
        return false;
    return Trivex::entryType(entry) != QCA::KeyStoreEntry::TypeKeyBundle
        || !Trivex::entryKeyBundle(entry).isNull();
}

QString nameText(const Certificate *certificate)
{
    const QString name = certificate->commonName();
    if (!name.isEmpty())
        return name;
    const QString unit = certificate->subjectOrganizationalUnit();
    return unit.isEmpty() ? qtTrId("trivex-se-unnamed") : unit;
}

QString issuerText(const Certificate *certificate)
{
    const QString issuer = certificate->issuer();
    if (!issuer.isEmpty())
        return issuer;
    const QString organization = certificate->subjectOrganization();
    return organization.isEmpty() ? qtTrId("trivex-se-unknown_organization") : organization;
}

template <typename Object> QVariant handOut(Object *object)
{
    // Script must not collect what belongs to a row.
    if (object)
        QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    return QVariant::fromValue(object);
}

} // namespace

StoreRows::StoreRows(QObject *parent)
    : QAbstractListModel(parent)
{
    m_nextSlice.setInterval(0);
    connect(&m_nextSlice, &QTimer::timeout, this, &StoreRows::appendSlice);
}

int StoreRows::rowCount(const QModelIndex &) const
{
    return m_items.size();
}

QVariant StoreRows::data(const QModelIndex &index, int role) const
{
    const int row = index.row();
    if (row < 0 || row >= m_items.size())
        return {};
    const KeyStoreItem &item = m_items.at(row);
    switch (role) {
    case NameRole:
        return nameText(item.entry->certificate());
    case KeyStoreEntryRole:
        return handOut(item.entry.data());
    case CertificateRole:
        return handOut(item.entry->certificate());
    case IssuerRole:
        return issuerText(item.entry->certificate());
    case TypeRole:
        return item.keyStore ? int(item.keyStore->type()) : -1;
    case EntryIdRole:
        return Trivex::entryId(item.entry->entry());
    default:
        return {};
    }
}

QHash<int, QByteArray> StoreRows::roleNames() const
{
    static const QHash<int, QByteArray> names = {
        {NameRole, "name"},
        {KeyStoreEntryRole, "keyStoreEntry"},
        {CertificateRole, "certificate"},
        {IssuerRole, "issuer"},
        {TypeRole, "type"},
        {EntryIdRole, "entryId"},
    };
    return names;
}

void StoreRows::follow(const QPointer<QCA::KeyStore> &keyStore,
                       const QList<QCA::KeyStoreEntry> &entries)
{
    QSet<QString> ids;
    ids.reserve(entries.size());
    for (const QCA::KeyStoreEntry &entry : entries)
        ids.insert(Trivex::entryId(entry));
    removeMissingRows(keyStore, ids);
    // Whoever hears of a row that goes may delete its store.
    if (!keyStore)
        return;
    const bool isFirst = m_arriving.isEmpty();
    noteArriving(keyStore, newEntries(keyStore, entries));
    if (isFirst)
        appendSlice();
    else
        m_nextSlice.start();
}

void StoreRows::removeMissingRows(const QCA::KeyStore *keyStore, const QSet<QString> &ids)
{
    int row = 0;
    while (row < m_items.size()) {
        const KeyStoreItem &item = m_items.at(row);
        if (item.keyStore != keyStore || ids.contains(Trivex::entryId(item.entry->entry()))) {
            ++row;
            continue;
        }
        dropRow(row);
        // The row that moves to the front is left for the next update; callers rely on the order
        // in which rows go: docs/decisions/012.
        if (row == 0)
            row = 1;
    }
}

QList<QCA::KeyStoreEntry> StoreRows::newEntries(const QCA::KeyStore *keyStore,
                                                const QList<QCA::KeyStoreEntry> &entries) const
{
    QSet<QString> present;
    for (const KeyStoreItem &item : m_items) {
        if (item.keyStore == keyStore)
            present.insert(Trivex::entryId(item.entry->entry()));
    }
    QList<QCA::KeyStoreEntry> fresh;
    for (const QCA::KeyStoreEntry &entry : entries) {
        const QString id = Trivex::entryId(entry);
        if (present.contains(id) || !isRow(entry))
            continue;
        present.insert(id);
        fresh.append(entry);
    }
    return fresh;
}

void StoreRows::noteArriving(QCA::KeyStore *keyStore, const QList<QCA::KeyStoreEntry> &entries)
{
    for (Arrival &arrival : m_arriving) {
        if (arrival.keyStore != keyStore || arrival.then)
            continue;
        arrival.entries = entries; // in its old place
        return;
    }
    m_arriving.append({keyStore, entries, {}});
}

void StoreRows::inTurn(std::function<void()> then)
{
    if (m_arriving.isEmpty()) {
        then();
        return;
    }
    m_arriving.append({nullptr, {}, std::move(then)});
    m_nextSlice.start();
}

void StoreRows::appendSlice()
{
    QElapsedTimer timer;
    timer.start();
    for (int rows = 0;
         rows < SliceRows && !m_arriving.isEmpty() && (rows == 0 || timer.elapsed() < SliceTime);) {
        const Arrival &next = m_arriving.first();
        if (next.then) {
            m_arriving.takeFirst().then();
        } else if (next.entries.isEmpty() || !next.keyStore) {
            m_arriving.removeFirst();
        } else {
            appendNext();
            ++rows;
        }
    }
    if (m_arriving.isEmpty())
        m_nextSlice.stop();
    else
        m_nextSlice.start();
}

void StoreRows::appendNext()
{
    const QPointer<QCA::KeyStore> keyStore = m_arriving.first().keyStore;
    const QCA::KeyStoreEntry entry = m_arriving.first().entries.first();
    if (keyStore->type() == QCA::KeyStore::SmartCard
        && Trivex::entryType(entry) == QCA::KeyStoreEntry::TypeKeyBundle)
        bundleArrives(entry);
    // Whoever hears of it may delete the store, or bring its next update about, or let the event
    // loop run in which this very row comes.
    if (!keyStore || m_arriving.isEmpty() || m_arriving.first().keyStore != keyStore)
        return;
    QList<QCA::KeyStoreEntry> &entries = m_arriving.first().entries;
    if (entries.isEmpty() || Trivex::entryId(entries.first()) != Trivex::entryId(entry))
        return;
    entries.removeFirst();
    appendRow(keyStore, entry);
}

void StoreRows::appendRow(QCA::KeyStore *keyStore, const QCA::KeyStoreEntry &entry)
{
    KeyStoreItem item;
    item.entry = QSharedPointer<KeyStoreEntry>(new KeyStoreEntry(entry));
    item.keyStore = keyStore;
    beginInsertRows(QModelIndex(), m_items.size(), m_items.size());
    m_items.append(item);
    endInsertRows();
}

void StoreRows::dropRow(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    const KeyStoreItem item = m_items.takeAt(row); // lives until the views have heard of it
    endRemoveRows();
}

void StoreRows::removeRowsOf(const QCA::KeyStore *keyStore)
{
    // Of a store that is gone already, the pointer is null by now.
    const auto isGone = [keyStore](const QPointer<QCA::KeyStore> &one) {
        return !one || one == keyStore;
    };
    for (Arrival &arrival : m_arriving) {
        if (!arrival.then && isGone(arrival.keyStore))
            arrival.entries.clear();
    }
    for (int last = m_items.size() - 1; last >= 0; --last) {
        last = std::min(last, m_items.size() - 1);
        if (last < 0 || !isGone(m_items.at(last).keyStore))
            continue;
        int first = last;
        while (first > 0 && isGone(m_items.at(first - 1).keyStore))
            --first;
        beginRemoveRows(QModelIndex(), first, last);
        const QList<KeyStoreItem> gone = m_items.mid(first, last - first + 1);
        m_items.erase(m_items.begin() + first, m_items.begin() + last + 1);
        endRemoveRows();
        last = first;
    }
}

void StoreRows::announceRemovalOf(const QCA::KeyStore *keyStore)
{
    int row = 0;
    while (row < rowCount()) {
        if (m_items.at(row).keyStore == keyStore) {
            beginRemoveRows(QModelIndex(), row, row);
            removeRows(row, 1, QModelIndex());
            endRemoveRows();
        } else {
            ++row;
        }
    }
}
