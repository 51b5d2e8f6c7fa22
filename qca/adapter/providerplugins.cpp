// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/providerplugins.h"

#include "qca/base/providers.h"

#include <QDir>
#include <QFileInfo>
#include <QPluginLoader>
#include <QtCrypto>

#include <memory>

namespace Trivex {

namespace {

/// QCA's place for a provider that was not given one: behind all others.
constexpr int LowestPriority = -1;

QString pluginFile(const QStringList &directories, const QString &provider)
{
    for (const QString &directory : directories) {
        const QString path = QStringLiteral("%1/lib%2.so").arg(directory, provider);
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

bool registerProvider(const QStringList &directories, const QString &name)
{
    // Makes QCA look through its own directories first, where that has not happened yet.
    if (QCA::findProvider(name))
        return true;
    const QString file = pluginFile(directories, name);
    if (file.isEmpty())
        return false;
    QPluginLoader loader(file); // leaves the plugin loaded when it goes
    auto *plugin = qobject_cast<QCAPlugin *>(loader.instance());
    std::unique_ptr<QCA::Provider> provider(plugin ? plugin->createProvider() : nullptr);
    if (!provider || provider->name() != name
        || !QCA::insertProvider(provider.get(), LowestPriority)) {
        qWarning("Provider %s could not be loaded from %s", qPrintable(name), qPrintable(file));
        return false;
    }
    static_cast<void>(provider.release()); // QCA's now
    return true;
}

} // namespace

bool registerProviders(const QStringList &directories)
{
    bool isComplete = true;
    for (const QString &name : {opensslProviderName(), pkcs11ProviderName(), gostProviderName()})
        isComplete = registerProvider(directories, name) && isComplete;
    rankProviders();
    return isComplete;
}

} // namespace Trivex
