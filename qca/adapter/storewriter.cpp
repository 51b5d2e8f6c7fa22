// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/storewriter.h"

#include "qca/questions/cancellationscope.h"
#include "qca/questions/mailbox.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/questionscope.h"
#include "qca/tokens/tokenregistry.h"
#include "qca/tokens/userstore.h"

#include <algorithm>
#include <vector>

namespace Trivex {

/// Shared with the threads of tokens.
struct StoreWriter::Shared {
    const OperationOwnerPtr owner = std::make_shared<OperationOwner>();
    std::mutex mutex;
    std::unique_ptr<Mailbox, Mailbox::DeleteLater> mailbox{new Mailbox};
    /// The tasks that have been started, for the writer's thread alone; null when over. Several may
    /// be at work at once, so each has its own.
    std::vector<std::weak_ptr<Cancellation>> tasks;

    void post(std::function<void()> function)
    {
        const std::lock_guard lock(mutex);
        if (mailbox)
            mailbox->post(std::move(function));
    }

    void close()
    {
        {
            const std::lock_guard lock(mutex);
            mailbox.reset();
        }
        refuseQuestions(owner);
    }
};

StoreWriter::StoreWriter(QObject *parent)
    : QObject(parent)
    , m_shared(std::make_shared<Shared>())
{
}

StoreWriter::~StoreWriter()
{
    m_shared->close();
}

void StoreWriter::write(QCA::KeyStore *store, const QCA::Certificate &certificate)
{
    StoreChange change;
    change.kind = StoreChange::WriteCertificate;
    change.certificate = certificate;
    if (!start(store->id(), change))
        store->writeEntry(certificate);
}

void StoreWriter::write(QCA::KeyStore *store, const QCA::KeyBundle &bundle)
{
    StoreChange change;
    change.kind = StoreChange::WriteBundle;
    change.bundle = bundle;
    if (!start(store->id(), change))
        store->writeEntry(bundle);
}

void StoreWriter::remove(QCA::KeyStore *store, const QString &entryId)
{
    StoreChange change;
    change.kind = StoreChange::RemoveEntry;
    change.entryId = entryId;
    if (!start(store->id(), change))
        store->removeEntry(entryId);
}

bool StoreWriter::write(const QString &storeId, const QCA::Certificate &certificate)
{
    if (storeId == userStoreId()) {
        return startUserWrite(certificate, [this, shared = m_shared](const QString &entryId) {
            shared->post([this, entryId] { Q_EMIT written(entryId); });
        });
    }
    StoreChange change;
    change.kind = StoreChange::WriteCertificate;
    change.certificate = certificate;
    return start(storeId, change);
}

bool StoreWriter::write(const QString &storeId, const QCA::KeyBundle &bundle)
{
    StoreChange change;
    change.kind = StoreChange::WriteBundle;
    change.bundle = bundle;
    return start(storeId, change);
}

bool StoreWriter::write(const QString &storeId, const QVector<QByteArray> &certificates)
{
    StoreChange change;
    change.kind = StoreChange::WriteCertificates;
    change.certificates = certificates;
    return start(storeId, change);
}

bool StoreWriter::removeKey(const QString &storeId, const QString &keyId)
{
    StoreChange change;
    change.kind = StoreChange::RemoveKey;
    change.entryId = keyId;
    return start(storeId, change);
}

bool StoreWriter::showKeys(const QString &storeId)
{
    StoreChange change;
    change.kind = StoreChange::ShowKeys;
    return start(storeId, change);
}

bool StoreWriter::start(const QString &storeId, StoreChange change)
{
    change.owner = m_shared->owner;
    // As on QCA's own thread, where no signer's scope is in force.
    const QuestionScope nobody(nullptr);
    const auto task = std::make_shared<Cancellation>();
    auto &tasks = m_shared->tasks;
    const auto isOver = [](const std::weak_ptr<Cancellation> &one) { return one.expired(); };
    tasks.erase(std::remove_if(tasks.begin(), tasks.end(), isOver), tasks.end());
    tasks.push_back(task);
    const CancellationScope scope(task);
    return startStoreChange(
        storeId, change,
        [this, shared = m_shared, kind = change.kind](const StoreChangeResult &result) {
            // Runs on this object's thread, and not when it has gone.
            shared->post([this, result, kind] { tell(kind, result); });
        });
}

void StoreWriter::cancel()
{
    const auto tasks = m_shared->tasks;
    for (const auto &one : tasks)
        cancelTokenTask(one.lock());
}

void StoreWriter::tell(int kind, const StoreChangeResult &result)
{
    switch (StoreChange::Kind(kind)) {
    case StoreChange::RemoveEntry:
    case StoreChange::RemoveKey:
        Q_EMIT removed(result.succeeded);
        break;
    case StoreChange::ShowKeys:
        Q_EMIT shown(result.succeeded);
        break;
    case StoreChange::WriteCertificate:
    case StoreChange::WriteBundle:
        Q_EMIT written(result.entryId);
        break;
    case StoreChange::WriteCertificates:
        Q_EMIT writtenSeveral(result.count, result.succeeded);
        break;
    }
}

} // namespace Trivex
