// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keymaker.h"

#include <openssl/err.h>

namespace Trivex {

void bringToThisThread(QObject *context)
{
    if (!context->thread())
        context->moveToThread(QThread::currentThread());
}

KeyMaker::KeyMaker(const char *type, SetUp setUp)
    : m_context(EVP_PKEY_CTX_new_from_name(nullptr, type, nullptr))
    , m_setUp(std::move(setUp))
{
}

KeyMaker::KeyMaker(PKeyHandle domain)
    : m_domain(std::move(domain))
    , m_context(m_domain ? EVP_PKEY_CTX_new(m_domain.get(), nullptr) : nullptr)
{
}

KeyMaker::~KeyMaker()
{
    m_abandoned = true;
    wait();
}

void KeyMaker::make(QCA::PKeyBase *owner, bool block, std::function<void(PKeyHandle)> done)
{
    if (block) {
        run();
        done(takeKey());
        return;
    }
    bringToThisThread(owner);
    connect(this, &QThread::finished, owner, [this, owner, done = std::move(done)] {
        done(takeKey());
        Q_EMIT owner->finished();
    });
    start();
}

void KeyMaker::run()
{
    EVP_PKEY *key = nullptr;
    if (m_context && EVP_PKEY_keygen_init(m_context.get()) == 1
        && (!m_setUp || m_setUp(m_context.get()))) {
        EVP_PKEY_CTX_set_app_data(m_context.get(), this);
        EVP_PKEY_CTX_set_cb(m_context.get(), &KeyMaker::goOn);
        if (EVP_PKEY_keygen(m_context.get(), &key) != 1)
            key = nullptr;
    }
    ERR_clear_error();
    m_key.reset(key);
}

int KeyMaker::goOn(EVP_PKEY_CTX *context)
{
    const auto *maker = static_cast<const KeyMaker *>(EVP_PKEY_CTX_get_app_data(context));
    return maker->m_abandoned ? 0 : 1;
}

} // namespace Trivex
