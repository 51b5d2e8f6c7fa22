// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/systemlist.h"

#include "qca/x509/lightdecoding.h"

#include <QThread>

#include <memory>
#include <mutex>
#include <utility>

namespace Trivex {

namespace {

using StoreList = std::unique_ptr<QCA::KeyStoreListContext>;

/// QCA's own list of stores, made anew: it holds nothing but its settings.
StoreList defaultStoreList()
{
    QCA::Provider *provider = QCA::defaultProvider();
    QCA::Provider::Context *context =
        provider ? provider->createContext(QStringLiteral("keystorelist")) : nullptr;
    auto *list = qobject_cast<QCA::KeyStoreListContext *>(context);
    if (!list)
        delete context;
    else
        list->start();
    return StoreList(list);
}

class SystemListReader : public QThread {
public:
    explicit SystemListReader(QCA::KeyStore *store)
        : QThread(store)
    {
        // The name that QCA gives its own: the end of the process waits for threads of that name
        // before QCA ends.
        setObjectName(QStringLiteral("QCA::KeyStoreOperation"));
    }
    /// Whoever deletes it has seen that it does not run any more; what nobody took goes here.
    ~SystemListReader() override { take(); }
    QList<QCA::KeyStoreEntry> take()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_entries, {});
    }

protected:
    void run() override
    {
        QList<QCA::KeyStoreEntry> entries = systemList();
        const std::lock_guard lock(m_mutex);
        m_entries = std::move(entries);
    }

private:
    std::mutex m_mutex; ///< one that the thread sanitizer sees, as it does not see Qt's
    QList<QCA::KeyStoreEntry> m_entries;
};

} // namespace

bool isSystemList(const QCA::KeyStore &store)
{
    return store.type() == QCA::KeyStore::System
        && store.id() == QLatin1String("qca-default-systemstore");
}

QList<QCA::KeyStoreEntry> systemList()
{
    const LightDecoding light;
    QList<QCA::KeyStoreEntry> entries;
    const StoreList list = defaultStoreList();
    const QList<int> stores = list ? list->keyStores() : QList<int>();
    for (const int store : stores) {
        const QList<QCA::KeyStoreEntryContext *> contexts = list->entryList(store);
        for (QCA::KeyStoreEntryContext *context : contexts) {
            QCA::KeyStoreEntry entry;
            entry.change(context);
            entries.append(entry);
        }
    }
    return entries;
}

void readSystemList(QCA::KeyStore *store,
                    std::function<void(const QList<QCA::KeyStoreEntry> &)> done)
{
    auto *reader = new SystemListReader(store);
    QObject::connect(reader, &QThread::finished, store, [reader, done = std::move(done)] {
        reader->deleteLater();
        done(reader->take());
    });
    reader->start();
}

} // namespace Trivex
