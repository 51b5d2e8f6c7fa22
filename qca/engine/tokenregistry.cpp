// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/tokenregistry.h"

#include <QHash>

#include <mutex>

namespace Trivex {

namespace {

/// The hub that monitors listen to; never deleted, so that a module's thread that ends late still
/// finds it.
class TokenHub : public QObject {
    Q_OBJECT
public:
    static TokenHub &instance()
    {
        static auto *hub = new TokenHub;
        return *hub;
    }

    mutable std::mutex mutex;
    QHash<QString, TokenStatus> tokens;
    QStringList order;
    TokenBackend *backend = nullptr;

Q_SIGNALS:
    void changed(const QString &keyStoreId);
    void failed(const Trivex::TokenError &error);
};

} // namespace

TokenBackend::~TokenBackend() = default;

void setTokenBackend(TokenBackend *backend)
{
    TokenHub &hub = TokenHub::instance();
    const std::lock_guard locker(hub.mutex);
    hub.backend = backend;
}

void publishTokenStatus(const TokenStatus &status)
{
    TokenHub &hub = TokenHub::instance();
    {
        const std::lock_guard locker(hub.mutex);
        if (!status.present && status.name.isEmpty()) {
            hub.tokens.remove(status.keyStoreId);
            hub.order.removeAll(status.keyStoreId);
        } else {
            if (!hub.tokens.contains(status.keyStoreId))
                hub.order.append(status.keyStoreId);
            hub.tokens.insert(status.keyStoreId, status);
        }
    }
    Q_EMIT hub.changed(status.keyStoreId);
}

void publishTokenError(const TokenError &error)
{
    Q_EMIT TokenHub::instance().failed(error);
}

TokenMonitor::TokenMonitor(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<Trivex::TokenError>();
    connect(&TokenHub::instance(), &TokenHub::changed, this, &TokenMonitor::changed);
    connect(&TokenHub::instance(), &TokenHub::failed, this, &TokenMonitor::failed);
}

TokenMonitor::~TokenMonitor() = default;

QVector<TokenStatus> TokenMonitor::tokens()
{
    TokenHub &hub = TokenHub::instance();
    const std::lock_guard locker(hub.mutex);
    QVector<TokenStatus> all;
    for (const QString &id : qAsConst(hub.order))
        all.append(hub.tokens.value(id));
    return all;
}

TokenStatus TokenMonitor::token(const QString &keyStoreId)
{
    TokenHub &hub = TokenHub::instance();
    const std::lock_guard locker(hub.mutex);
    return hub.tokens.value(keyStoreId);
}

void TokenMonitor::cancel(const QString &keyStoreId)
{
    TokenHub &hub = TokenHub::instance();
    const std::lock_guard locker(hub.mutex);
    if (hub.backend)
        hub.backend->cancelOperation(keyStoreId);
}

QCA::PrivateKey findTokenKey(const QString &keyStoreId, const QCA::PublicKey &publicKey)
{
    TokenBackend *backend = nullptr;
    {
        TokenHub &hub = TokenHub::instance();
        const std::lock_guard locker(hub.mutex);
        backend = hub.backend;
    }
    return backend ? backend->findPrivateKey(keyStoreId, publicKey) : QCA::PrivateKey();
}

} // namespace Trivex

#include "tokenregistry.moc"
