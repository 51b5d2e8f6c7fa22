// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/stores.h"

#include "qca/adapter/entries.h"

namespace TrivexTest {

QCA::KeyStoreEntry withId(const QList<QCA::KeyStoreEntry> &entries, const QString &id)
{
    for (const QCA::KeyStoreEntry &one : entries) {
        if (one.id() == id)
            return one;
    }
    return {};
}

Stores::Stores()
{
    connect(&m_manager, &QCA::KeyStoreManager::keyStoreAvailable, this, &Stores::open);
    QCA::KeyStoreManager::start(QStringLiteral("qca-norvel-pkcs11"));
    const QStringList known = m_manager.keyStores();
    for (const QString &id : known)
        open(id);
}

void Stores::open(const QString &id)
{
    m_stores.push_back(std::make_unique<QCA::KeyStore>(id, &m_manager));
    m_stores.back()->startAsynchronousMode();
}

QCA::KeyStore *Stores::byName(const QString &name) const
{
    for (const auto &store : m_stores) {
        if (store->isValid() && store->name() == name)
            return store.get();
    }
    return nullptr;
}

QCA::KeyStore *Stores::waitFor(const QString &name, int patience)
{
    return QTest::qWaitFor([&] { return byName(name) != nullptr; }, patience) ? byName(name)
                                                                              : nullptr;
}

bool Stores::waitForEntries(const QString &name, int count, int patience)
{
    return QTest::qWaitFor([&] { return byName(name) && entries(name).size() == count; }, patience);
}

QList<QCA::KeyStoreEntry> Stores::entries(const QString &name) const
{
    const QCA::KeyStore *store = byName(name);
    return store ? store->entryList() : QList<QCA::KeyStoreEntry>();
}

QList<QCA::KeyStoreEntry> Stores::currentEntries(const QString &name)
{
    const QCA::KeyStore *store = byName(name);
    if (!store)
        return {};
    const QCA::KeyStore another(store->id(), &m_manager);
    return another.entryList();
}

QCA::KeyStoreEntry Stores::entry(const QString &storeName, const QString &entryName) const
{
    const auto all = entries(storeName);
    for (const QCA::KeyStoreEntry &one : all) {
        if (one.name() == entryName)
            return one;
    }
    return {};
}

QStringList Stores::names() const
{
    QStringList all;
    for (const auto &store : m_stores) {
        if (store->isValid())
            all.append(store->name());
    }
    return all;
}

bool Stores::remove(QCA::KeyStore *store, const QString &entryId, int patience)
{
    bool success = false;
    bool done = false;
    QObject context;
    connect(store, &QCA::KeyStore::entryRemoved, &context, [&](bool result) {
        success = result;
        done = true;
    });
    store->removeEntry(entryId);
    return QTest::qWaitFor([&] { return done; }, patience) && success;
}

} // namespace TrivexTest
