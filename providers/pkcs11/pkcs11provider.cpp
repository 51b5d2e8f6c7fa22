// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/pkcs11provider.h"

#include "providers/pkcs11/contexts/contexts.h"
#include "qca/base/processend.h"
#include "qca/base/providers.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/x509/requestcontext.h"

#include <algorithm>

namespace Trivex {

namespace {

/// Ten years, in minutes: of much longer ones the end lies beyond what clocks count.
constexpr int LongestLoginLifetime = 10 * 366 * 24 * 60;

} // namespace

void Pkcs11Provider::init()
{
    // QCA makes its providers on the thread that starts it, the main one as a rule.
    ProcessEnd::watchThisThread();
    setTokenProvider(this);
}

void Pkcs11Provider::deinit()
{
    setTokenProvider(nullptr);
}

int Pkcs11Provider::qcaVersion() const
{
    return QCA_VERSION;
}

QString Pkcs11Provider::name() const
{
    return pkcs11ProviderName();
}

QStringList Pkcs11Provider::features() const
{
    return {QStringLiteral("keystorelist"), QStringLiteral("pkey"), QStringLiteral("rsa"),
            QStringLiteral("ec"), QStringLiteral("csr")};
}

QCA::Provider::Context *Pkcs11Provider::createContext(const QString &type)
{
    if (type == QLatin1String("pkey"))
        return new PKeyContainer(this);
    if (type == QLatin1String("csr"))
        return new RequestContext(this);
    return createTokenContext(this, type);
}

QVariantMap Pkcs11Provider::defaultConfig() const
{
    // QCA takes a configuration without a form type for an empty one.
    return {{QStringLiteral("formtype"), QStringLiteral("http://trivex/forms/pkcs11#1.0")},
            {QStringLiteral("allow_load_rootca"), false},
            {QStringLiteral("modules"), QString()},
            {QStringLiteral("login_lifetime"), 0},
            {QStringLiteral("remember_tokens"), false}};
}

void Pkcs11Provider::configChanged(const QVariantMap &config)
{
    TokenSettings settings;
    settings.allowRootCa = config.value(QStringLiteral("allow_load_rootca")).toBool();
    settings.modules = config.value(QStringLiteral("modules")).toString();
    const int minutes = config.value(QStringLiteral("login_lifetime")).toInt();
    settings.loginLifetime = std::chrono::minutes(std::clamp(minutes, 0, LongestLoginLifetime));
    settings.rememberTokens = config.value(QStringLiteral("remember_tokens")).toBool();
    configureTokens(settings);
}

} // namespace Trivex
