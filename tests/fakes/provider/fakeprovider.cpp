// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/provider/fakeprovider.h"

#include "tests/fakes/provider/fakekeys.h"
#include "tests/fakes/provider/fakekeystorelist.h"

namespace TrivexTest {

namespace {

/// A map of its own: no two threads share what is in it.
QVariantMap detached(QVariantMap map)
{
    map.detach();
    return map;
}

} // namespace

FakeProvider::FakeProvider(const QString &name, const QStringList &features)
{
    // QCA hands it to threads that are there already.
    const std::lock_guard lock(m_mutex);
    m_name = name;
    m_features = features;
}

FakeProvider *FakeProvider::install(const QString &name, const QStringList &features)
{
    auto provider = std::make_unique<FakeProvider>(name, features);
    return QCA::insertProvider(provider.get(), 0) ? provider.release() : nullptr;
}

void FakeProvider::init() { }

int FakeProvider::qcaVersion() const
{
    return QCA_VERSION;
}

QString FakeProvider::name() const
{
    const std::lock_guard lock(m_mutex);
    return m_name;
}

QStringList FakeProvider::features() const
{
    const std::lock_guard lock(m_mutex);
    QStringList copy = m_features;
    copy.detach();
    return copy;
}

void FakeProvider::setFeatures(const QStringList &features)
{
    const std::lock_guard lock(m_mutex);
    m_features = features;
    m_features.detach();
}

QCA::Provider::Context *FakeProvider::createContext(const QString &type)
{
    if (type == QLatin1String("keystorelist"))
        return new FakeKeyStoreList(this, stores);
    if (type == QLatin1String("pkey"))
        return new FakePKey(this);
    if (type == QLatin1String("rsa"))
        return new FakeRsa(this, stores);
    if (type == QLatin1String("ec"))
        return new FakeEC(this, stores);
    return nullptr;
}

QVariantMap FakeProvider::defaultConfig() const
{
    const std::lock_guard lock(m_mutex);
    return detached(m_defaultConfig);
}

void FakeProvider::configChanged(const QVariantMap &config)
{
    const std::lock_guard lock(m_mutex);
    m_config = detached(config);
}

void FakeProvider::setDefaultConfig(const QVariantMap &config)
{
    const std::lock_guard lock(m_mutex);
    m_defaultConfig = detached(config);
}

QVariantMap FakeProvider::config() const
{
    const std::lock_guard lock(m_mutex);
    return detached(m_config);
}

} // namespace TrivexTest
