// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"

namespace Trivex {

namespace {

class ForwardingProvider : public QCA::Provider {
public:
    explicit ForwardingProvider(const QCA::Provider &target)
        : m_name(target.name())
        , m_qcaVersion(target.qcaVersion())
    {
    }

    int qcaVersion() const override { return m_qcaVersion; }
    QString name() const override { return m_name; }

    int version() const override
    {
        const QCA::Provider *provider = target();
        return provider ? provider->version() : 0;
    }

    QStringList features() const override
    {
        const QCA::Provider *provider = target();
        return provider ? provider->features() : QStringList();
    }

    QString credit() const override
    {
        const QCA::Provider *provider = target();
        return provider ? provider->credit() : QString();
    }

    Context *createContext(const QString &type) override
    {
        QCA::Provider *provider = target();
        return provider ? provider->createContext(type) : nullptr;
    }

    QVariantMap defaultConfig() const override
    {
        const QCA::Provider *provider = target();
        return provider ? provider->defaultConfig() : QVariantMap();
    }

private:
    // Looked up each time, because QCA may unload it behind our back.
    QCA::Provider *target() const
    {
        QCA::Provider *provider = QCA::findProvider(m_name);
        return provider == this ? nullptr : provider;
    }

    const QString m_name;
    const int m_qcaVersion;
};

} // namespace

QString opensslProviderName()
{
    return QStringLiteral("qca-norvel-openssl");
}

QString pkcs11ProviderName()
{
    return QStringLiteral("qca-norvel-pkcs11");
}

QString gostProviderName()
{
    return QStringLiteral("qca-norvel-gost");
}

void rankProviders()
{
    if (QCA::findProvider(opensslProviderName()))
        QCA::setProviderPriority(opensslProviderName(), 0);
}

QCA::Provider *forwardingProvider(QCA::Provider *provider)
{
    return provider ? new ForwardingProvider(*provider) : nullptr;
}

} // namespace Trivex
