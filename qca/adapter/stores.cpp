// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/stores.h"

#include "qca/base/processend.h"
#include "qca/base/storethread.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/question.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QSet>
#include <QThread>

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

namespace Trivex {

namespace {

// In ms. What answers from memory ends long before the first one is over.
constexpr int QuietPatience = 50;
constexpr int ClosePatience = 200;
constexpr int AskPause = 10;
constexpr int EndPatience = 1000;

/// The stores that were let go. Never deleted: an application object may end late.
struct ClosedStores {
    std::mutex mutex;
    QVector<QPointer<QCA::KeyStore>> stores;
    std::atomic<bool> endWithApplication{false};

    static ClosedStores &instance()
    {
        static auto *closed = new ClosedStores;
        return *closed;
    }
    QVector<QPointer<QCA::KeyStore>> takeAll()
    {
        const std::lock_guard lock(mutex);
        return std::exchange(stores, {});
    }
    void add(QCA::KeyStore *store)
    {
        const std::lock_guard lock(mutex);
        stores.removeAll(nullptr);
        stores.append(store);
    }
};

/// Stock QCA runs each asynchronous operation in a thread below the store, and waits for it in the
/// store's destructor.
QList<QThread *> runningOperations(const QCA::KeyStore &store)
{
    QList<QThread *> running;
    const auto threads = store.findChildren<QThread *>();
    for (QThread *thread : threads) {
        if (thread->isRunning())
            running.append(thread);
    }
    return running;
}

/// False when an operation of the store still runs at `deadline`.
bool waitForOperations(const QCA::KeyStore &store, const QDeadlineTimer &deadline)
{
    const auto running = runningOperations(store);
    for (QThread *thread : running) {
        if (!thread->wait(deadline))
            return false;
    }
    return true;
}

bool endsSoon(const QCA::KeyStore &store, const QDeadlineTimer &quiet,
              const QDeadlineTimer &deadline)
{
    bool isOver = waitForOperations(store, quiet);
    while (!isOver && !deadline.hasExpired()) {
        if (!store.id().isEmpty())
            cancelQuestions(store.id()); // each time: who was refused may ask once more
        isOver = waitForOperations(store, QDeadlineTimer(AskPause));
    }
    return isOver;
}

/// A share in QCA, for as long as its parent lives.
class QcaShare : public QObject {
public:
    explicit QcaShare(QObject *parent)
        : QObject(parent)
    {
    }

private:
    QCA::Initializer m_qca;
};

/// Before QCA's own routine, which counts one user of QCA only.
void endClosedStores()
{
    ClosedStores::instance().endWithApplication = false;
    if (!ProcessEnd::hasBegun() && !ProcessEnd::isForkedChild())
        static_cast<void>(deleteClosedStores());
}

void letGo(QCA::KeyStore *store)
{
    store->setParent(nullptr);
    // QCA waits for the operation in hand when it ends, and not for those that have still to ask:
    // they would ask a thread that has gone.
    new QcaShare(store);
    const auto running = runningOperations(*store);
    const auto left = std::make_shared<QSet<QThread *>>(running.begin(), running.end());
    const auto settle = [store, left](QThread *thread) {
        if (left->remove(thread) && left->isEmpty())
            store->deleteLater();
    };
    for (QThread *thread : running) {
        // QCA would follow it up with the next operation, of a store that nobody has any more.
        QObject::disconnect(thread, nullptr, thread->parent(), nullptr);
        QObject::connect(thread, &QThread::finished, store, [settle, thread] { settle(thread); });
        // It may have ended between the lines above.
        if (thread->isFinished())
            settle(thread);
    }
    if (running.isEmpty())
        store->deleteLater();
    ClosedStores::instance().add(store);
    if (!ClosedStores::instance().endWithApplication.exchange(true))
        qAddPostRoutine(&endClosedStores);
}

/// A provider that has no stores: QCA asks it for them on the store thread, which is all that it is
/// for.
class StoreThreadFinder : public QCA::Provider {
public:
    int qcaVersion() const override { return QCA_VERSION; }
    QString name() const override { return QStringLiteral("trivex-store-thread"); }
    QStringList features() const override { return {QStringLiteral("keystorelist")}; }
    Context *createContext(const QString &) override
    {
        StoreThread::note();
        return nullptr;
    }
};

/// Where none of our providers has made the thread known, for whatever reason it is missing.
void findStoreThread()
{
    ProcessEnd::expect();
    auto finder = std::make_unique<StoreThreadFinder>();
    const QString name = finder->name();
    if (!QCA::insertProvider(finder.get()))
        return;
    static_cast<void>(finder.release()); // QCA's now
    QCA::KeyStoreManager::start(name);
    QCA::unloadProvider(name);
}

QStringList providerMarks()
{
    QStringList marks;
    const QCA::ProviderList providers = QCA::providers();
    for (const QCA::Provider *provider : providers)
        marks << QStringLiteral("%1 %2 %3")
                     .arg(provider->name())
                     .arg(quintptr(provider))
                     .arg(provider->features().join(QLatin1Char(',')));
    return marks;
}

} // namespace

void startStores()
{
    ProcessEnd::watchThisThread();
    // Forgotten when QCA ends, like the stores that were started.
    const QString property = QStringLiteral("trivex-started-stores");
    const QStringList marks = providerMarks();
    if (QCA::getProperty(property).toStringList() == marks)
        return;
    QCA::KeyStoreManager::start();
    if (!StoreThread::isKnown())
        findStoreThread();
    QCA::setProperty(property, marks);
}

void closeStores(const QVector<QCA::KeyStore *> &stores)
{
    const QDeadlineTimer quiet(QuietPatience);
    const QDeadlineTimer deadline(ClosePatience);
    for (QCA::KeyStore *store : stores) {
        if (!store)
            continue;
        store->disconnect();
        if (endsSoon(*store, quiet, deadline))
            delete store;
        else
            letGo(store);
    }
}

bool deleteClosedStores()
{
    const QDeadlineTimer deadline(EndPatience);
    bool areAllDeleted = true;
    const auto closed = ClosedStores::instance().takeAll();
    for (const QPointer<QCA::KeyStore> &store : closed) {
        if (!store)
            continue;
        if (endsSoon(*store, QDeadlineTimer(0), deadline)) {
            delete store;
        } else {
            ClosedStores::instance().add(store);
            areAllDeleted = false;
        }
    }
    return areAllDeleted;
}

} // namespace Trivex
