// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/contexts.h"

#include "providers/pkcs11/contexts/tokeneccontext.h"
#include "providers/pkcs11/contexts/tokenrsacontext.h"
#include "providers/pkcs11/contexts/tokenstorelist.h"

#include <atomic>

namespace Trivex {

namespace {

std::atomic<QCA::Provider *> currentProvider = nullptr;

template <class Context> QCA::Provider::Context *make(QCA::Provider *provider)
{
    return new Context(provider);
}

struct Maker {
    const char *type;
    QCA::Provider::Context *(*make)(QCA::Provider *);
};

constexpr Maker Makers[] = {
    {"keystorelist", make<TokenStoreList>},
    {"rsa", make<TokenRsaContext>},
    {"ec", make<TokenEcContext>},
};

} // namespace

QCA::Provider::Context *createTokenContext(QCA::Provider *provider, const QString &type)
{
    for (const Maker &maker : Makers) {
        if (type == QLatin1String(maker.type))
            return maker.make(provider);
    }
    return nullptr;
}

void setTokenProvider(QCA::Provider *provider)
{
    currentProvider = provider;
}

QCA::Provider *tokenProvider()
{
    return currentProvider;
}

} // namespace Trivex
