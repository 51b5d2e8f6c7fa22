// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/providerbackend.h"

#include "providers/pkcs11/contents/tokenlook.h"
#include "providers/pkcs11/contexts/tokenentrycontext.h"
#include "providers/pkcs11/operations/administration.h"
#include "providers/pkcs11/operations/extraction.h"
#include "providers/pkcs11/operations/signing.h"
#include "providers/pkcs11/operations/storechanges.h"
#include "qca/base/detachedwork.h"
#include "qca/keys/keys.h"
#include "qca/keys/pkeycontainer.h"

#include <utility>

namespace Trivex {

ProviderBackend::ProviderBackend(TokenTable &tokens, const FirstScan &scan)
    : m_tokens(tokens)
    , m_scan(scan)
{
    QObject::connect(&scan, &FirstScan::moduleFulfilled, &publishModuleAnswer);
}

void ProviderBackend::setProvider(QCA::Provider *provider)
{
    m_provider = provider;
}

QCA::PrivateKey ProviderBackend::findPrivateKey(const QString &keyStoreId,
                                                const QCA::PublicKey &publicKey)
{
    const QByteArray publicInfo = encodedPublicKey(publicKey);
    if (!m_provider || publicInfo.isEmpty())
        return {};
    TokenKeyPtr key = keyIn(keyStoreId, publicInfo);
    if (!key && logIn(keyStoreId))
        key = keyIn(keyStoreId, publicInfo);
    return privateKeyOf(keyStoreId, key);
}

QCA::PrivateKey ProviderBackend::keyOfId(const QString &keyStoreId, const QString &keyId)
{
    const auto found = m_tokens.store(keyStoreId);
    const TokenKeyPtr key = found ? found->contents->keyOfId(keyId) : nullptr;
    // Another key than the shown one would sign.
    return privateKeyOf(keyStoreId, key && !key->isGuessed ? key : nullptr);
}

QCA::PrivateKey ProviderBackend::privateKeyOf(const QString &keyStoreId,
                                              const TokenKeyPtr &key) const
{
    QCA::PrivateKey result;
    QCA::Provider *provider = m_provider;
    QCA::PKeyBase *context = provider ? makeTokenKey(provider, m_tokens, keyStoreId, key) : nullptr;
    if (context)
        result.change(new PKeyContainer(provider, context));
    return result;
}

void ProviderBackend::takeLook(const QString &keyStoreId)
{
    const auto look = std::make_shared<TokenLook>();
    m_tokens.post(
        Operation::unattended(Purpose::Look, keyStoreId),
        [look](TokenConnection &connection, Operation &) {
            *look = lookAt(connection.open(Pkcs11::Session::ReadOnly), connection.slot());
            look->unfitToSign = unfitToSign(connection);
        },
        [look, keyStoreId](const TokenError &error) {
            if (error.kind == TokenError::NoError)
                publishTokenLook(keyStoreId, *look);
        });
}

void ProviderBackend::cancelOperation(const QString &keyStoreId)
{
    m_tokens.cancel(keyStoreId);
}

bool ProviderBackend::startChange(const QString &keyStoreId, const StoreChange &change,
                                  StoreChangeDone done)
{
    return Trivex::startChange(m_tokens, keyStoreId, change, std::move(done));
}

CancellationPtr ProviderBackend::startAdministration(const QString &keyStoreId,
                                                     TokenAdministration task,
                                                     TokenAdministrationDone done)
{
    return Trivex::startAdministration(m_tokens, keyStoreId, std::move(task), std::move(done));
}

CancellationPtr ProviderBackend::startExtraction(const QString &keyStoreId,
                                                 const QByteArray &publicInfo, ExtractionDone done)
{
    return Trivex::startExtraction(m_tokens, keyStoreId, publicInfo, std::move(done));
}

void ProviderBackend::cancelTask(const CancellationPtr &task)
{
    m_tokens.cancel(task);
}

void ProviderBackend::forgetTokens()
{
    // It waits for a file that is being written. The table lives until the process ends.
    startDetached([&tokens = m_tokens] { tokens.rows().clear(); });
}

QStringList ProviderBackend::silentModules() const
{
    return m_scan.silentModules();
}

TokenKeyPtr ProviderBackend::keyIn(const QString &keyStoreId, const QByteArray &publicInfo) const
{
    const auto found = m_tokens.store(keyStoreId);
    const TokenKeyPtr key = found ? found->contents->keyFor(publicInfo) : nullptr;
    if (!key || !key->publicInfo.isEmpty())
        return key;
    // A key that is known by its id only has the public half that the caller looks for.
    auto complete = std::make_shared<TokenKey>(*key);
    complete->publicInfo = publicInfo;
    return complete;
}

bool ProviderBackend::logIn(const QString &keyStoreId) const
{
    const auto found = m_tokens.store(keyStoreId);
    // The store of a token that has gone hides nothing.
    if (!found || !found->contents->keysHidden)
        return false;
    const TokenError error =
        m_tokens.run(Operation(Purpose::Sign, keyStoreId),
                     [](TokenConnection &connection, Operation &operation) {
                         connection.login(operation, TokenConnection::LoginFor::PrivateKeys);
                     });
    return error.kind == TokenError::NoError;
}

} // namespace Trivex
