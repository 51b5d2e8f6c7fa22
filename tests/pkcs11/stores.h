// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>
#include <QtCrypto>

#include <memory>

namespace TrivexTest {

/// The entry with that id; a null one when there is none.
QCA::KeyStoreEntry withId(const QList<QCA::KeyStoreEntry> &entries, const QString &id);

/// The key stores of the process, followed as an application follows them.
class Stores : public QObject {
    Q_OBJECT
public:
    Stores();

    /// The store of that name once it is there; null after `patience` ms.
    QCA::KeyStore *waitFor(const QString &name, int patience = 5000);
    /// Waits until the store has that many entries.
    bool waitForEntries(const QString &name, int count, int patience = 5000);
    QCA::KeyStore *byName(const QString &name) const;
    QList<QCA::KeyStoreEntry> entries(const QString &name) const;
    /// As the provider has them now, asked for without waiting for the store's update.
    QList<QCA::KeyStoreEntry> currentEntries(const QString &name);
    /// The entry with that name in the store; a null one when there is none.
    QCA::KeyStoreEntry entry(const QString &storeName, const QString &entryName) const;
    QStringList names() const;

    /// Starts a write or removal and waits for its result, which is an entry id or a truth value.
    template <class Written>
    QString write(QCA::KeyStore *store, const Written &what, int patience = 20000);
    bool remove(QCA::KeyStore *store, const QString &entryId, int patience = 20000);

    QCA::KeyStoreManager &manager() { return m_manager; }

private:
    void open(const QString &id);

    QCA::KeyStoreManager m_manager;
    std::vector<std::unique_ptr<QCA::KeyStore>> m_stores;
};

template <class Written>
QString Stores::write(QCA::KeyStore *store, const Written &what, int patience)
{
    QString result;
    bool done = false;
    QObject context;
    connect(store, &QCA::KeyStore::entryWritten, &context, [&](const QString &id) {
        result = id;
        done = true;
    });
    store->writeEntry(what);
    return QTest::qWaitFor([&] { return done; }, patience) ? result : QStringLiteral("no answer");
}

} // namespace TrivexTest
