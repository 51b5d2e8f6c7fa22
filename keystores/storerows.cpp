// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/storerows.h"

#include "certificates/keystoreentry.h"
#include "keystores/rowreading.h"
#include "keystores/storechanges.h"
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
        return shownName(factsOf(item));
    case KeyStoreEntryRole:
        return handOut(objectOf(item));
    case CertificateRole:
        return handOut(certificateObjectOf(item));
    case IssuerRole:
        return shownIssuer(factsOf(item));
    case TypeRole:
        return item.keyStore ? int(item.keyStore->type()) : -1;
    case EntryIdRole:
        return Trivex::entryId(item.entry);
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

const KeyStoreItem::Facts &StoreRows::factsOf(const KeyStoreItem &item) const
{
    if (!item.facts.isRead)
        item.facts = readFacts(item, *certificateOf(item));
    return item.facts;
}

/// The object that QML has, or one that goes with whoever reads it.
std::shared_ptr<const Certificate> StoreRows::certificateOf(const KeyStoreItem &item) const
{
    const auto known = item.object ? item.object->knownCertificate() : nullptr;
    return known ? known : m_recent.of(item.entry);
}

/// One that lives as long as the row.
Certificate *StoreRows::certificateObjectOf(const KeyStoreItem &item) const
{
    KeyStoreEntry *object = objectOf(item);
    if (!object->knownCertificate()) {
        object->setCertificate(m_recent.of(item.entry));
        m_recent.forget(item.entry);
    }
    return object->certificate();
}

KeyStoreEntry *StoreRows::objectOf(const KeyStoreItem &item) const
{
    if (!item.object)
        item.object.reset(new KeyStoreEntry(item.entry));
    return item.object.data();
}

const QCA::KeyStoreEntry *StoreRows::entryOf(int row) const
{
    return row >= 0 && row < m_items.size() ? &m_items.at(row).entry : nullptr;
}

Trivex::RowOrigin StoreRows::originOf(int row) const
{
    return row >= 0 && row < m_items.size() ? factsOf(m_items.at(row)).origin : Trivex::RowOrigin();
}

void StoreRows::lookAtCertificate(int row, const std::function<void(const QObject &)> &look) const
{
    if (row >= 0 && row < m_items.size())
        look(*certificateOf(m_items.at(row)));
}

int StoreRows::rowOf(const QObject *certificate) const
{
    const auto item = std::find_if(m_items.cbegin(), m_items.cend(), [&](const KeyStoreItem &one) {
        return one.object && certificate && one.object->knownCertificate().get() == certificate;
    });
    return item == m_items.cend() ? -1 : int(item - m_items.cbegin());
}

void StoreRows::follow(const QPointer<QCA::KeyStore> &keyStore,
                       const QList<QCA::KeyStoreEntry> &entries)
{
    StoreChanges changes = changesOf(m_items, keyStore, entries);
    if (!changes.gone.isEmpty()) {
        removeMissingRows(keyStore, changes.gone);
        // Whoever hears of a row that goes may delete its store, or let others come meanwhile.
        if (!keyStore)
            return;
        changes = changesOf(m_items, keyStore, entries);
    }
    const bool isFirst = m_arriving.isEmpty();
    noteArriving({keyStore, entries, changes.first, changes.end, changes.known, {}});
    if (isFirst)
        appendSlice();
    else
        m_nextSlice.start();
}

void StoreRows::removeMissingRows(const QCA::KeyStore *keyStore, const QSet<QString> &gone)
{
    int row = gone.isEmpty() ? m_items.size() : 0;
    while (row < m_items.size()) {
        const KeyStoreItem &item = m_items.at(row);
        if (item.keyStore != keyStore || !gone.contains(Trivex::entryId(item.entry))) {
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

void StoreRows::noteArriving(const Arrival &arrival)
{
    for (Arrival &known : m_arriving) {
        if (known.keyStore != arrival.keyStore || known.then)
            continue;
        known = arrival; // in its old place
        return;
    }
    m_arriving.append(arrival);
}

void StoreRows::inTurn(std::function<void()> then)
{
    if (m_arriving.isEmpty()) {
        then();
        return;
    }
    m_arriving.append({nullptr, {}, 0, 0, {}, std::move(then)});
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
        } else if (next.isEmpty() || !next.keyStore) {
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
    const QCA::KeyStoreEntry entry = m_arriving.first().entries.at(m_arriving.first().next);
    const QString id = Trivex::entryId(entry);
    if (m_arriving.first().seen.contains(id) || !isRow(entry)) {
        ++m_arriving.first().next;
        return;
    }
    if (keyStore->type() == QCA::KeyStore::SmartCard
        && Trivex::entryType(entry) == QCA::KeyStoreEntry::TypeKeyBundle)
        bundleArrives(entry);
    // Whoever hears of it may delete the store, or bring its next update about, or let the event
    // loop run in which this very row comes.
    if (!keyStore || m_arriving.isEmpty() || m_arriving.first().keyStore != keyStore)
        return;
    Arrival &arrival = m_arriving.first();
    if (arrival.isEmpty() || arrival.seen.contains(id)
        || Trivex::entryId(arrival.entries.at(arrival.next)) != id)
        return;
    ++arrival.next;
    arrival.seen.insert(id);
    appendRow(keyStore, entry);
}

void StoreRows::appendRow(QCA::KeyStore *keyStore, const QCA::KeyStoreEntry &entry)
{
    KeyStoreItem item;
    item.entry = entry;
    item.facts.name = Trivex::entryName(entry);
    item.keyStore = keyStore;
    beginInsertRows(QModelIndex(), m_items.size(), m_items.size());
    m_items.append(item);
    endInsertRows();
}

void StoreRows::dropRow(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    m_recent.forget(m_items.at(row).entry);
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
            arrival.end = arrival.next;
    }
    for (int last = m_items.size() - 1; last >= 0; --last) {
        last = std::min(last, m_items.size() - 1);
        if (last < 0 || !isGone(m_items.at(last).keyStore))
            continue;
        int first = last;
        while (first > 0 && isGone(m_items.at(first - 1).keyStore))
            --first;
        beginRemoveRows(QModelIndex(), first, last);
        m_recent.clear();
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
