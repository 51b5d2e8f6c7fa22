// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokenmaking.h"

#include <map>
#include <mutex>
#include <utility>

namespace Trivex {

struct TokenMakers::Offers {
    std::mutex mutex;
    std::map<QString, Start> byModule;
};

TokenMakers &TokenMakers::instance()
{
    static auto *makers = new TokenMakers;
    return *makers;
}

TokenMakers::TokenMakers()
    : m_offers(std::make_unique<Offers>())
{
}

TokenMakers::~TokenMakers() = default;

void TokenMakers::offer(const QString &module, Start start)
{
    {
        const std::lock_guard lock(m_offers->mutex);
        m_offers->byModule[module] = std::move(start);
    }
    Q_EMIT changed();
}

void TokenMakers::withdraw(const QString &module)
{
    {
        const std::lock_guard lock(m_offers->mutex);
        if (m_offers->byModule.erase(module) == 0)
            return;
    }
    Q_EMIT changed();
}

bool TokenMakers::isOffered() const
{
    const std::lock_guard lock(m_offers->mutex);
    return !m_offers->byModule.empty();
}

bool TokenMakers::start(TokenMaking making, TokenMakingDone done)
{
    Start start;
    {
        const std::lock_guard lock(m_offers->mutex);
        if (m_offers->byModule.empty())
            return false;
        start = m_offers->byModule.begin()->second;
    }
    start(std::move(making), std::move(done));
    return true;
}

} // namespace Trivex
