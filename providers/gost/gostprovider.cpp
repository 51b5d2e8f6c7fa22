// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/gost/gostprovider.h"

#include "providers/pkcs11/contexts/contexts.h"
#include "qca/base/providers.h"
#include "qca/keys/pkeycontainer.h"

namespace Trivex {

int GostProvider::qcaVersion() const
{
    return QCA_VERSION;
}

QString GostProvider::name() const
{
    return gostProviderName();
}

QStringList GostProvider::features() const
{
    return {QStringLiteral("ec"), QStringLiteral("pkey")};
}

QCA::Provider::Context *GostProvider::createContext(const QString &type)
{
    if (type == QLatin1String("pkey"))
        return new PKeyContainer(this);
    return type == QLatin1String("ec") ? createTokenContext(this, type) : nullptr;
}

} // namespace Trivex
