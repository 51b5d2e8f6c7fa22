// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "requests/requestsigning.h"

#include "qca/adapter/entries.h"
#include "qca/adapter/requestmaking.h"
#include "qca/base/providers.h"
#include "qca/base/requestfiles.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"

namespace Trivex {

namespace {

bool canMakeRequests(const QString &provider)
{
    return QCA::isSupported(qPrintable(requestExtension()), provider);
}

bool isOffered(const QCA::PrivateKey &key)
{
    return canMakeRequests(pkcs11ProviderName())
        || (key.provider() && canMakeRequests(key.provider()->name()));
}

/// The private key of the bundle in `store` that belongs to `key`.
QCA::PrivateKey bundleKey(QCA::KeyStore *store, const QCA::PublicKey &key)
{
    const auto entries = store->entryList();
    for (const QCA::KeyStoreEntry &entry : entries) {
        const QCA::KeyBundle bundle = entryKeyBundle(entry);
        if (!bundle.isNull() && isSamePublicKey(publicKeyOf(bundle.privateKey()), key))
            return bundle.privateKey();
    }
    return {};
}

} // namespace

QCA::CertificateRequest signedRequest(QCA::CertificateOptions options, QCA::PrivateKey key)
{
    const QString ours = pkcs11ProviderName();
    if (!isOffered(key))
        return {};
    const QCA::CertificateRequest made(options, key, ours);
    const bool isTokenKey = !keyStoreIdOf(key).isEmpty();
    if (isTokenKey && (!made.provider() || made.provider()->name() != ours))
        return {};
    return made;
}

QCA::CertificateRequest signedAnew(QCA::CertificateRequest original, RequestedFields fields,
                                   QCA::PrivateKey key)
{
    return isOffered(key) ? editedRequest(original, fields, key) : QCA::CertificateRequest();
}

QCA::PrivateKey findPrivateKey(QCA::PublicKey key, QCA::PrivateKey own,
                               QList<QPointer<QCA::KeyStore>> stores)
{
    if (key.isNull())
        return {};
    for (const auto &store : qAsConst(stores)) {
        const QCA::PrivateKey found = store ? bundleKey(store, key) : QCA::PrivateKey();
        if (!found.isNull())
            return found;
    }
    if (isSamePublicKey(publicKeyOf(own), key))
        return own;
    for (const auto &store : qAsConst(stores)) {
        const QCA::PrivateKey found = store ? findTokenKey(store->id(), key) : QCA::PrivateKey();
        if (!found.isNull())
            return found;
    }
    return {};
}

} // namespace Trivex
