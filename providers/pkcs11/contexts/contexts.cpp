// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/contexts.h"

#include "providers/pkcs11/contexts/providerbackend.h"
#include "providers/pkcs11/contexts/tokeneccontext.h"
#include "providers/pkcs11/contexts/tokenrsacontext.h"
#include "providers/pkcs11/contexts/tokenstorelist.h"

namespace Trivex {

namespace {

/// The tokens of the process and all that works on them.
struct ProcessTokens {
    /// Never deleted, because a thread that a module blocks may come back late.
    static ProcessTokens &instance()
    {
        static auto *all = new ProcessTokens;
        return *all;
    }

    static void stop(ProcessEnd::Deadline deadline) { instance().service.stop(deadline); }

    FirstScan scan;
    TokenTable tokens{scan};
    TokenService service{tokens, scan, &stop};
    ProviderBackend backend{tokens, scan};
};

QCA::Provider::Context *makeList(QCA::Provider *provider, ProcessTokens &all)
{
    return new TokenStoreList(provider, all.service, all.tokens, all.scan);
}

template <class Context>
QCA::Provider::Context *makeKey(QCA::Provider *provider, ProcessTokens &all)
{
    return new Context(provider, all.tokens);
}

struct ContextFactory {
    const char *type;
    QCA::Provider::Context *(*make)(QCA::Provider *, ProcessTokens &);
};

constexpr ContextFactory ContextFactories[] = {
    {"keystorelist", makeList},
    {"rsa", makeKey<TokenRsaContext>},
    {"ec", makeKey<TokenEcContext>},
};

} // namespace

QCA::Provider::Context *createTokenContext(QCA::Provider *provider, const QString &type)
{
    for (const ContextFactory &factory : ContextFactories) {
        if (type == QLatin1String(factory.type))
            return factory.make(provider, ProcessTokens::instance());
    }
    return nullptr;
}

void setTokenProvider(QCA::Provider *provider)
{
    ProcessTokens &all = ProcessTokens::instance();
    all.backend.setProvider(provider);
    setTokenBackend(provider ? &all.backend : nullptr);
    if (!provider)
        all.service.stop();
}

void configureTokens(const TokenSettings &settings)
{
    ProcessTokens::instance().service.configure(settings);
}

} // namespace Trivex
