// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokenservice.h"

#include "qca/questions/asker.h"

#include <QCoreApplication>

namespace Trivex {

namespace {

/// The part of the patience at the end that is reserved for answered questions.
constexpr std::chrono::milliseconds SettleShare{300};

} // namespace

TokenService::TokenService(TokenTable &tokens, FirstScan &scan, ProcessEnd::Hook atEnd)
    : m_tokens(tokens)
    , m_scan(scan)
    , m_atEnd(atEnd)
{
}

void TokenService::configure(const TokenSettings &settings)
{
    std::shared_ptr<ModuleWatch> watch;
    {
        const std::lock_guard lock(m_mutex);
        m_settings = settings;
        m_tokens.setLoginLifetime(settings.loginLifetime);
        m_tokens.rows().setOn(settings.rememberTokens);
        watch = m_watch;
    }
    if (watch)
        watch->configure(settings);
}

void TokenService::start()
{
    std::shared_ptr<ModuleWatch> watch;
    ProcessEnd::add(m_atEnd);
    {
        const std::lock_guard lock(m_mutex);
        // The end of the process has stopped it already, on another thread.
        if (m_watch || ProcessEnd::hasBegun())
            return;
        m_scan.begin();
        m_tokens.open();
        watch = m_watch = std::make_shared<ModuleWatch>(m_settings, m_tokens, m_scan);
    }
    // This thread is QCA's own.
    if (QCoreApplication *application = QCoreApplication::instance())
        QMetaObject::invokeMethod(application, &ProcessEnd::watchThisThread, Qt::QueuedConnection);
    watch->start();
}

void TokenService::stop(Worker::Deadline deadline)
{
    // Their threads are those of the parent, and a lock may be held by one of them for ever.
    if (ProcessEnd::isForkedChild())
        return;
    std::shared_ptr<ModuleWatch> watch;
    {
        const std::lock_guard lock(m_mutex);
        watch.swap(m_watch);
        m_tokens.close();
    }
    if (watch)
        watch->stop();
    // Also where another thread stops it at the moment.
    Worker::joinAll(deadline - SettleShare);
    if (!watch)
        return;
    watch.reset();
    m_tokens.clear();
    settleQuestions(deadline);
}

} // namespace Trivex
