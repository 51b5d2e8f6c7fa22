// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/providerlookup.h"

namespace Trivex {

QCA::Provider *lookUpProvider(const QString &name, QVariantMap *config)
{
    QCA::ProviderList providers = QCA::providers();
    providers.append(QCA::defaultProvider());
    for (QCA::Provider *provider : qAsConst(providers)) {
        if (!provider || provider->name() != name)
            continue;
        *config = QCA::getProviderConfig(provider->name());
        return provider;
    }
    qWarning("Provider %s not supported!", qPrintable(name));
    return nullptr;
}

} // namespace Trivex
