// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/userstorecontext.h"

#include "providers/openssl/userentrycontext.h"
#include "qca/base/secondupdate.h"
#include "qca/base/storethread.h"
#include "qca/questions/operation.h"
#include "qca/x509/makecertificate.h"

#include <QDeadlineTimer>

#include <mutex>
#include <set>

namespace Trivex {

namespace {

constexpr int StoreNumber = 0;

/// The threads that read directories. Never deleted, because the end of the process stops them.
struct Readers {
    std::mutex mutex;
    std::set<QThread *> threads;

    static Readers &instance()
    {
        static auto *readers = new Readers;
        return *readers;
    }
};

} // namespace

UserStoreContext::UserStoreContext(QCA::Provider *provider)
    : QCA::KeyStoreListContext(provider)
    , m_snapshot(std::make_shared<QVector<StoredCertificate>>())
    , m_directory(new UserDirectory(userStoreDirectory()))
{
    qRegisterMetaType<UserSnapshot>();
    m_thread.setObjectName(QStringLiteral("USER certificates"));
    m_directory->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_directory, &QObject::deleteLater);
    // The list is replaced where it is announced, so that a write that has returned is listed.
    connect(m_directory, &UserDirectory::changed, m_directory,
            [this](const UserSnapshot &snapshot) { setSnapshot(snapshot); });
    connect(m_directory, &UserDirectory::changed, this, &UserStoreContext::announce);
    connect(m_directory, &UserDirectory::ready, this, &UserStoreContext::busyEnd);
}

UserStoreContext::~UserStoreContext()
{
    unsetUserStore(this);
    // Nothing of the other thread may reach this object while it goes.
    m_directory->disconnect(this);
    {
        Readers &readers = Readers::instance();
        const std::lock_guard lock(readers.mutex);
        readers.threads.erase(&m_thread);
    }
    m_thread.quit();
    m_thread.wait();
    if (!m_thread.isFinished())
        delete m_directory; // never started
}

void UserStoreContext::announce(const UserSnapshot &snapshot)
{
    Q_EMIT updated(); // the store shows with its first entries, not with its last
    Q_EMIT storeUpdated(StoreNumber);
    if (snapshot->size() <= m_announced && m_announced > 0)
        announceAgain(this, StoreNumber);
    m_announced = snapshot->size();
}

void UserStoreContext::stopAll(ProcessEnd::Deadline deadline)
{
    Readers &readers = Readers::instance();
    const std::lock_guard lock(readers.mutex);
    for (QThread *thread : readers.threads) {
        thread->quit();
        thread->wait(QDeadlineTimer(deadline));
    }
}

void UserStoreContext::start()
{
    StoreThread::note();
    ProcessEnd::add(&UserStoreContext::stopAll);
    {
        Readers &readers = Readers::instance();
        const std::lock_guard lock(readers.mutex);
        readers.threads.insert(&m_thread);
    }
    m_thread.start(QThread::LowPriority);
    QMetaObject::invokeMethod(m_directory, &UserDirectory::start, Qt::QueuedConnection);
    setUserStore(this);
}

QList<int> UserStoreContext::keyStores()
{
    return {StoreNumber};
}

QCA::KeyStore::Type UserStoreContext::type(int) const
{
    return QCA::KeyStore::User;
}

QString UserStoreContext::storeId(int id) const
{
    return id == StoreNumber ? userStoreId() : QString();
}

QString UserStoreContext::name(int id) const
{
    return storeId(id);
}

bool UserStoreContext::isReadOnly(int id) const
{
    return id != StoreNumber;
}

QList<QCA::KeyStoreEntry::Type> UserStoreContext::entryTypes(int id) const
{
    if (id != StoreNumber)
        return {};
    return {QCA::KeyStoreEntry::TypeCertificate};
}

void UserStoreContext::setSnapshot(const UserSnapshot &snapshot)
{
    const std::lock_guard lock(m_mutex);
    m_snapshot = snapshot;
}

UserSnapshot UserStoreContext::snapshot() const
{
    const std::lock_guard lock(m_mutex);
    return m_snapshot;
}

QList<QCA::KeyStoreEntryContext *> UserStoreContext::entryList(int id)
{
    QList<QCA::KeyStoreEntryContext *> entries;
    if (id != StoreNumber)
        return entries;
    const UserSnapshot current = snapshot();
    entries.reserve(current->size());
    for (const StoredCertificate &certificate : *current)
        entries += new UserEntryContext(provider(), certificate);
    return entries;
}

QCA::KeyStoreEntryContext *UserStoreContext::entry(int id, const QString &entryId)
{
    const UserSnapshot current = snapshot();
    for (const StoredCertificate &certificate : *current) {
        if (id == StoreNumber && certificate.id == entryId)
            return new UserEntryContext(provider(), certificate);
    }
    return nullptr;
}

QCA::KeyStoreEntryContext *UserStoreContext::entryPassive(const QString &serialized)
{
    return UserEntryContext::deserialize(serialized, provider());
}

QString UserStoreContext::writeEntry(int id, const QCA::Certificate &certificate)
{
    // Files ask for no PIN; one that was stored for this operation must not stay for another.
    const Operation operation(Purpose::Write, userStoreId());
    QString entryId;
    if (id == StoreNumber && !certificate.isNull() && m_thread.isRunning())
        QMetaObject::invokeMethod(
            m_directory, [this, &certificate] { return m_directory->write(certificate); },
            Qt::BlockingQueuedConnection, &entryId);
    return entryId;
}

void UserStoreContext::startWrite(const QCA::Certificate &certificate, UserWriteDone done)
{
    // Two threads must not share QCA's values: the other one makes its own from the bytes.
    const QByteArray der = certificate.toDER();
    QMetaObject::invokeMethod(
        m_directory,
        [directory = m_directory, der, done = std::move(done)] {
            done(directory->write(makeCertificate(der)));
        },
        Qt::QueuedConnection);
}

bool UserStoreContext::removeEntry(int id, const QString &entryId)
{
    const Operation operation(Purpose::Remove, userStoreId());
    bool removed = false;
    if (id == StoreNumber && m_thread.isRunning())
        QMetaObject::invokeMethod(
            m_directory, [this, &entryId] { return m_directory->remove(entryId); },
            Qt::BlockingQueuedConnection, &removed);
    return removed;
}

} // namespace Trivex
