// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/storedanswers.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace Trivex {

class StoredAnswers::Private {
public:
    mutable std::mutex mutex;
    Answers answers;
    bool registered = false;
};

/// All registered sets, in the order of their registration.
class StoredAnswersRegistry {
public:
    static StoredAnswersRegistry &instance()
    {
        // Never deleted: sets may be static objects too.
        static auto *registry = new StoredAnswersRegistry;
        return *registry;
    }

    void add(StoredAnswers *set)
    {
        const std::lock_guard lock(m_mutex);
        m_sets.push_back(set);
    }

    void remove(StoredAnswers *set)
    {
        const std::lock_guard lock(m_mutex);
        m_sets.erase(std::remove(m_sets.begin(), m_sets.end(), set), m_sets.end());
    }

    std::optional<Answers> take(const QString &keyStoreId)
    {
        const std::lock_guard lock(m_mutex);
        for (StoredAnswers *set : m_sets) {
            const std::lock_guard setLock(set->m_private->mutex);
            const QString &stored = set->m_private->answers.keyStoreId;
            if (stored.isEmpty() || (!keyStoreId.isEmpty() && stored != keyStoreId))
                continue;
            const Answers taken = set->m_private->answers;
            set->m_private->answers = Answers();
            return taken;
        }
        return std::nullopt;
    }

private:
    std::mutex m_mutex;
    std::vector<StoredAnswers *> m_sets;
};

StoredAnswers::StoredAnswers()
    : m_private(std::make_unique<Private>())
{
}

StoredAnswers::~StoredAnswers()
{
    if (m_private->registered)
        StoredAnswersRegistry::instance().remove(this);
}

void StoredAnswers::registerSet()
{
    if (m_private->registered)
        return;
    m_private->registered = true;
    StoredAnswersRegistry::instance().add(this);
}

void StoredAnswers::setKeyStoreId(const QString &id)
{
    const std::lock_guard lock(m_private->mutex);
    m_private->answers.keyStoreId = id;
}

void StoredAnswers::setObjectId(const QString &id)
{
    const std::lock_guard lock(m_private->mutex);
    m_private->answers.objectId = id;
}

void StoredAnswers::setPassword(const QCA::SecureArray &password)
{
    const std::lock_guard lock(m_private->mutex);
    m_private->answers.password = password;
}

Answers StoredAnswers::answers() const
{
    const std::lock_guard lock(m_private->mutex);
    return m_private->answers;
}

void StoredAnswers::clear()
{
    const std::lock_guard lock(m_private->mutex);
    m_private->answers = Answers();
}

std::optional<Answers> takeStoredAnswers(const QString &keyStoreId)
{
    return StoredAnswersRegistry::instance().take(keyStoreId);
}

} // namespace Trivex
