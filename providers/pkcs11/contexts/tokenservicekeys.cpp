// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The search for the private key of a public one.
#include "providers/pkcs11/contexts/contexts.h"
#include "providers/pkcs11/contexts/tokenentrycontext.h"
#include "providers/pkcs11/life/tokenservice.h"
#include "qca/keys/keys.h"
#include "qca/keys/pkeycontainer.h"

namespace Trivex {

QCA::PrivateKey TokenService::findPrivateKey(const QString &keyStoreId,
                                             const QCA::PublicKey &publicKey)
{
    QCA::PrivateKey result;
    const QByteArray publicInfo = encodedPublicKey(publicKey);
    QCA::Provider *provider = tokenProvider();
    if (!provider || publicInfo.isEmpty())
        return result;
    TokenKeyPtr key = keyIn(keyStoreId, publicInfo);
    if (!key && logIn(keyStoreId))
        key = keyIn(keyStoreId, publicInfo);
    if (QCA::PKeyBase *context = makeTokenKey(provider, keyStoreId, key))
        result.change(new PKeyContainer(provider, context));
    return result;
}

TokenKeyPtr TokenService::keyIn(const QString &keyStoreId, const QByteArray &publicInfo) const
{
    const auto found = store(keyStoreId);
    const TokenKeyPtr key = found ? found->contents->keyFor(publicInfo) : nullptr;
    if (!key || !key->publicInfo.isEmpty())
        return key;
    // Known by its id only: the public half is the one that was asked for.
    auto complete = std::make_shared<TokenKey>(*key);
    complete->publicInfo = publicInfo;
    return complete;
}

bool TokenService::logIn(const QString &keyStoreId)
{
    const auto found = store(keyStoreId);
    const TokenPtr live = token(keyStoreId);
    // The store may have gone between the two look-ups.
    if (!live || !found || !found->contents->keysHidden)
        return false;
    const TokenError error =
        live->run(Operation(Purpose::Sign, keyStoreId),
                  [](TokenConnection &connection, Operation &operation) {
                      connection.login(operation, TokenConnection::LoginFor::PrivateKeys);
                  });
    return error.kind == TokenError::NoError;
}

} // namespace Trivex
