// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"

#include "certificates/keystoreentry.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/keys.h"

#include <QDebug>
#include <QMetaMethod>

/// How the rows follow the entries of the stores.

namespace {

/// New rows of one turn of the event loop. Whoever shows them decodes each certificate, sorts and
/// filters it, a few hundred microseconds in all; a store of thousands must not stop the window.
constexpr int SliceRows = 32;

bool isRow(const QCA::KeyStoreEntry &entry)
{
    if (Trivex::entryName(entry).isEmpty())
        return false;
    return Trivex::entryType(entry) != QCA::KeyStoreEntry::TypeKeyBundle
        || !Trivex::entryKeyBundle(entry).isNull();
}

} // namespace

void KeyStoreModel::ksUpdated()
{
    auto *keyStore = static_cast<QCA::KeyStore *>(sender());
    if (!keyStore || !keyStore->isValid() || keyStore->name().isEmpty()) {
        qWarning() << "Error: KeyStore not valid";
        return;
    }
    refreshBusy();
    const QList<QCA::KeyStoreEntry> entries = keyStore->entryList();
    QSet<QString> ids;
    ids.reserve(entries.size());
    for (const QCA::KeyStoreEntry &entry : entries)
        ids.insert(Trivex::entryId(entry));
    removeMissingRows(keyStore, ids);
    m_arriving.insert(keyStore, newEntries(keyStore, entries));
    appendSlice(keyStore);
}

void KeyStoreModel::removeMissingRows(const QCA::KeyStore *keyStore, const QSet<QString> &ids)
{
    int row = 0;
    while (row < m_items.size()) {
        const KeyStoreItem &item = m_items.at(row);
        if (item.keyStore != keyStore || ids.contains(Trivex::entryId(item.entry->entry()))) {
            ++row;
            continue;
        }
        takeRow(row);
        // The row that moves to the front is left for the next update; callers rely on the order
        // in which rows go.
        if (row == 0)
            row = 1;
    }
}

QList<QCA::KeyStoreEntry> KeyStoreModel::newEntries(const QCA::KeyStore *keyStore,
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

void KeyStoreModel::appendSlice(QCA::KeyStore *keyStore)
{
    for (int i = 0; i < SliceRows; ++i) {
        // Looked up each time: whoever hears of a row may bring the store's next update about.
        const auto arriving = m_arriving.find(keyStore);
        if (arriving == m_arriving.end())
            return;
        if (arriving->isEmpty()) {
            m_arriving.erase(arriving);
            return;
        }
        const QCA::KeyStoreEntry entry = arriving->takeFirst();
        if (keyStore->type() == QCA::KeyStore::SmartCard
            && Trivex::entryType(entry) == QCA::KeyStoreEntry::TypeKeyBundle)
            announce(entry);
        appendRow(keyStore, entry);
    }
    m_nextSlice.start();
}

void KeyStoreModel::appendNextSlice()
{
    if (m_arriving.isEmpty())
        m_nextSlice.stop();
    else
        appendSlice(m_arriving.begin().key());
}

void KeyStoreModel::announce(const QCA::KeyStoreEntry &entry)
{
    // The public key is costly to make, and without saved requests nobody listens.
    static const QMetaMethod signal = QMetaMethod::fromSignal(&KeyStoreModel::keyBundleWritten);
    if (isSignalConnected(signal))
        Q_EMIT keyBundleWritten(Trivex::publicKeyOf(Trivex::entryKeyBundle(entry).privateKey()));
}

void KeyStoreModel::appendRow(QCA::KeyStore *keyStore, const QCA::KeyStoreEntry &entry)
{
    KeyStoreItem item;
    item.entry = QSharedPointer<KeyStoreEntry>(new KeyStoreEntry(entry));
    item.keyStore = keyStore;
    beginInsertRows(QModelIndex(), m_items.size(), m_items.size());
    m_items.append(item);
    endInsertRows();
}

void KeyStoreModel::takeRow(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    const KeyStoreItem item = m_items.takeAt(row); // lives until the views have heard of it
    endRemoveRows();
}

void KeyStoreModel::removeRowsOf(QCA::KeyStore *keyStore)
{
    m_arriving.remove(keyStore);
    for (int last = m_items.size() - 1; last >= 0; --last) {
        if (m_items.at(last).keyStore != keyStore)
            continue;
        int first = last;
        while (first > 0 && m_items.at(first - 1).keyStore == keyStore)
            --first;
        beginRemoveRows(QModelIndex(), first, last);
        const QList<KeyStoreItem> gone = m_items.mid(first, last - first + 1);
        m_items.erase(m_items.begin() + first, m_items.begin() + last + 1);
        endRemoveRows();
        last = first;
    }
}
