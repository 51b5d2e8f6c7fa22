// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/provider/fakestores.h"

namespace TrivexTest {

void FakeStores::addStore(const FakeStore &store)
{
    {
        const std::lock_guard lock(m_mutex);
        m_stores.append(store);
        // A store that comes back is a new one to QCA.
        m_stores.last().contextId = m_nextContext++;
    }
    Q_EMIT storesChanged();
}

void FakeStores::removeStore(const QString &id)
{
    {
        const std::lock_guard lock(m_mutex);
        for (int i = m_stores.size() - 1; i >= 0; --i) {
            if (m_stores.at(i).id == id)
                m_stores.removeAt(i);
        }
    }
    Q_EMIT storesChanged();
}

void FakeStores::setEntries(const QString &id, const QList<FakeEntry> &entries)
{
    int contextId = 0;
    {
        const std::lock_guard lock(m_mutex);
        for (FakeStore &store : m_stores) {
            if (store.id != id)
                continue;
            store.entries = entries;
            contextId = store.contextId;
        }
    }
    if (contextId)
        Q_EMIT entriesChanged(contextId);
}

void FakeStores::reset()
{
    unblock();
    {
        const std::lock_guard lock(m_mutex);
        m_stores.clear();
        m_calls.clear();
        m_reads.clear();
        m_written = QStringLiteral("written");
        m_removed = true;
        m_asking = false;
    }
    Q_EMIT storesChanged();
}

QList<FakeStore> FakeStores::stores() const
{
    const std::lock_guard lock(m_mutex);
    return m_stores;
}

FakeStore FakeStores::store(int contextId) const
{
    const std::lock_guard lock(m_mutex);
    for (const FakeStore &store : m_stores) {
        if (store.contextId == contextId)
            return store;
    }
    return FakeStore();
}

void FakeStores::setResults(const QString &writtenId, bool removed)
{
    const std::lock_guard lock(m_mutex);
    m_written = writtenId;
    m_removed = removed;
}

QString FakeStores::writeResult() const
{
    const std::lock_guard lock(m_mutex);
    return m_written;
}

bool FakeStores::removeResult() const
{
    const std::lock_guard lock(m_mutex);
    return m_removed;
}

void FakeStores::setAsking(bool asking)
{
    const std::lock_guard lock(m_mutex);
    m_asking = asking;
}

bool FakeStores::isAsking() const
{
    const std::lock_guard lock(m_mutex);
    return m_asking;
}

void FakeStores::block()
{
    const std::lock_guard lock(m_mutex);
    m_blocked = true;
}

void FakeStores::unblock()
{
    const std::lock_guard lock(m_mutex);
    m_blocked = false;
    m_unblocked.notify_all();
}

void FakeStores::waitWhileBlocked() const
{
    std::unique_lock lock(m_mutex);
    m_unblocked.wait(lock, [this] { return !m_blocked; });
}

void FakeStores::note(const FakeCall &call)
{
    const std::lock_guard lock(m_mutex);
    m_calls.append(call);
}

QVector<FakeCall> FakeStores::calls() const
{
    const std::lock_guard lock(m_mutex);
    QVector<FakeCall> copy = m_calls;
    copy.detach(); // the other thread goes on appending to its own
    return copy;
}

int FakeStores::reads(const QString &what) const
{
    const std::lock_guard lock(m_mutex);
    return m_reads.value(what);
}

void FakeStores::noteRead(const QString &what)
{
    const std::lock_guard lock(m_mutex);
    ++m_reads[what];
}

void FakeStores::forgetReads()
{
    const std::lock_guard lock(m_mutex);
    m_reads.clear();
}

int FakeStores::openQuestions() const
{
    const std::lock_guard lock(m_mutex);
    return m_openQuestions;
}

void FakeStores::countQuestion(int change)
{
    const std::lock_guard lock(m_mutex);
    m_openQuestions += change;
}

void FakeStores::forgetCalls()
{
    const std::lock_guard lock(m_mutex);
    m_calls.clear();
}

} // namespace TrivexTest
