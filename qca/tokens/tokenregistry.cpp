// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokenregistry.h"

#include "qca/base/detachedwork.h"
#include "qca/keys/keys.h"
#include "qca/tokens/rememberedtokens.h"

#include <QHash>

#include <atomic>
#include <mutex>
#include <utility>

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

    struct Change {
        bool isNewest; ///< false when what is known of the token is newer
        bool isRemoval; ///< a token that was there is not; true even if it is back already
    };

    Change note(const TokenStatus &status, quint64 number);
    bool note(const QString &keyStoreId, const TokenLook &look);
    TokenBackend *currentBackend() const;

    mutable std::mutex mutex;
    QHash<QString, TokenStatus> tokens;
    QHash<QString, TokenLook> looks; ///< of tokens that are there
    /// The number of the last status of each token, even of forgotten ones: an older status must
    /// not bring them back.
    QHash<QString, quint64> numbers;
    QStringList order;
    TokenBackend *backend = nullptr;

Q_SIGNALS:
    void changed(const QString &keyStoreId);
    void removed(const QString &keyStoreId);
    void pinChanged(const QString &keyStoreId);
    void failed(const Trivex::TokenError &error);
    void moduleAnswered();
};

TokenHub::Change TokenHub::note(const TokenStatus &status, quint64 number)
{
    const std::lock_guard lock(mutex);
    quint64 &last = numbers[status.keyStoreId];
    const Change change = {number >= last,
                           !status.present && tokens.value(status.keyStoreId).present};
    if (!change.isNewest)
        return change;
    last = number;
    if (!status.present)
        looks.remove(status.keyStoreId);
    if (!status.present && status.name.isEmpty()) {
        tokens.remove(status.keyStoreId);
        order.removeAll(status.keyStoreId);
        return change;
    }
    if (!tokens.contains(status.keyStoreId))
        order.append(status.keyStoreId);
    tokens.insert(status.keyStoreId, status);
    return change;
}

/// False for a token that is not there.
bool TokenHub::note(const QString &keyStoreId, const TokenLook &look)
{
    const std::lock_guard lock(mutex);
    if (!tokens.value(keyStoreId).present)
        return false;
    looks.insert(keyStoreId, look);
    return true;
}

TokenBackend *TokenHub::currentBackend() const
{
    const std::lock_guard lock(mutex);
    return backend;
}

} // namespace

TokenBackend::~TokenBackend() = default;

void setTokenBackend(TokenBackend *backend)
{
    TokenHub &hub = TokenHub::instance();
    const std::lock_guard lock(hub.mutex);
    hub.backend = backend;
}

quint64 nextStatusNumber()
{
    static std::atomic<quint64> last{0};
    return ++last;
}

void publishTokenStatus(const TokenStatus &status, quint64 number)
{
    TokenHub &hub = TokenHub::instance();
    const TokenHub::Change change = hub.note(status, number);
    if (change.isRemoval)
        Q_EMIT hub.removed(status.keyStoreId);
    if (change.isNewest)
        Q_EMIT hub.changed(status.keyStoreId);
}

void publishTokenLook(const QString &keyStoreId, const TokenLook &look)
{
    TokenHub &hub = TokenHub::instance();
    if (hub.note(keyStoreId, look))
        Q_EMIT hub.changed(keyStoreId);
}

void publishModuleAnswer()
{
    Q_EMIT TokenHub::instance().moduleAnswered();
}

void publishTokenError(const TokenError &error)
{
    Q_EMIT TokenHub::instance().failed(error);
}

void publishPinChange(const QString &keyStoreId)
{
    Q_EMIT TokenHub::instance().pinChanged(keyStoreId);
}

void reportWrongKeyKind(const QCA::PKey &key)
{
    TokenError error;
    error.kind = TokenError::WrongKeyKind;
    error.keyStoreId = keyStoreIdOf(key);
    publishTokenError(error);
}

TokenMonitor::TokenMonitor(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<Trivex::TokenError>();
    connect(&TokenHub::instance(), &TokenHub::changed, this, &TokenMonitor::changed);
    connect(&TokenHub::instance(), &TokenHub::removed, this, &TokenMonitor::removed);
    connect(&TokenHub::instance(), &TokenHub::pinChanged, this, &TokenMonitor::pinChanged);
    connect(&TokenHub::instance(), &TokenHub::failed, this, &TokenMonitor::failed);
    connect(&TokenHub::instance(), &TokenHub::moduleAnswered, this, &TokenMonitor::moduleAnswered);
}

TokenMonitor::~TokenMonitor() = default;

QVector<TokenStatus> TokenMonitor::tokens()
{
    TokenHub &hub = TokenHub::instance();
    const std::lock_guard lock(hub.mutex);
    QVector<TokenStatus> all;
    for (const QString &id : qAsConst(hub.order))
        all.append(hub.tokens.value(id));
    return all;
}

TokenStatus TokenMonitor::token(const QString &keyStoreId)
{
    TokenHub &hub = TokenHub::instance();
    const std::lock_guard lock(hub.mutex);
    return hub.tokens.value(keyStoreId);
}

QStringList TokenMonitor::silentModules()
{
    const TokenBackend *backend = TokenHub::instance().currentBackend();
    return backend ? backend->silentModules() : QStringList();
}

TokenLook TokenMonitor::look(const QString &keyStoreId)
{
    TokenHub &hub = TokenHub::instance();
    const std::lock_guard lock(hub.mutex);
    return hub.looks.value(keyStoreId);
}

void TokenMonitor::takeLook(const QString &keyStoreId)
{
    if (TokenBackend *backend = TokenHub::instance().currentBackend())
        backend->takeLook(keyStoreId);
}

bool startStoreChange(const QString &keyStoreId, const StoreChange &change, StoreChangeDone done)
{
    TokenBackend *backend = TokenHub::instance().currentBackend();
    return backend && backend->startChange(keyStoreId, change, std::move(done));
}

CancellationPtr startKeyExtraction(const QString &keyStoreId, const QByteArray &publicInfo,
                                   ExtractionDone done)
{
    TokenBackend *backend = TokenHub::instance().currentBackend();
    return backend ? backend->startExtraction(keyStoreId, publicInfo, std::move(done)) : nullptr;
}

CancellationPtr startTokenAdministration(const QString &keyStoreId, TokenAdministration task,
                                         TokenAdministrationDone done)
{
    TokenBackend *backend = TokenHub::instance().currentBackend();
    if (!backend)
        return {};
    return backend->startAdministration(keyStoreId, std::move(task), std::move(done));
}

void cancelTokenTask(const CancellationPtr &task)
{
    if (!task)
        return;
    task->request();
    if (TokenBackend *backend = TokenHub::instance().currentBackend())
        backend->cancelTask(task);
}

void forgetTokens()
{
    // A provider that is writing a file at the moment has to be waited for.
    if (TokenBackend *backend = TokenHub::instance().currentBackend())
        backend->forgetTokens();
    else
        startDetached([] { removeRememberedTokens(rememberedTokensDirectory()); });
}

void TokenMonitor::cancel(const QString &keyStoreId)
{
    if (TokenBackend *backend = TokenHub::instance().currentBackend())
        backend->cancelOperation(keyStoreId);
}

QCA::PrivateKey findTokenKey(const QString &keyStoreId, const QCA::PublicKey &publicKey)
{
    TokenBackend *backend = TokenHub::instance().currentBackend();
    return backend ? backend->findPrivateKey(keyStoreId, publicKey) : QCA::PrivateKey();
}

QCA::PrivateKey tokenKeyOfId(const QString &keyStoreId, const QString &keyId)
{
    TokenBackend *backend = TokenHub::instance().currentBackend();
    return backend ? backend->keyOfId(keyStoreId, keyId) : QCA::PrivateKey();
}

} // namespace Trivex

#include "tokenregistry.moc"
