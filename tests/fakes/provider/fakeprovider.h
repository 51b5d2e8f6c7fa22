// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/provider/fakestores.h"

#include <QStringList>
#include <QVariantMap>
#include <QtCrypto>

#include <memory>
#include <mutex>

namespace TrivexTest {

/// A QCA provider that does what a test tells it and notes what it is asked for. QCA owns it once
/// it is installed; `stores` is shared and may be used from the test's thread at any time.
class FakeProvider : public QCA::Provider {
public:
    FakeProvider(const QString &name, const QStringList &features);

    /// Makes a provider of that name and hands it to QCA; null when QCA has one of that name.
    /// Features: "keystorelist", "pkey", "rsa", "ec".
    static FakeProvider *install(const QString &name, const QStringList &features);

    void init() override;
    int qcaVersion() const override;
    QString name() const override;
    QStringList features() const override;
    Context *createContext(const QString &type) override;
    QVariantMap defaultConfig() const override;
    void configChanged(const QVariantMap &config) override;

    /// QCA looks at them at each question.
    void setFeatures(const QStringList &features);
    /// Empty at first, which QCA reports as no configuration.
    void setDefaultConfig(const QVariantMap &config);
    /// What was last configured.
    QVariantMap config() const;

    const std::shared_ptr<FakeStores> stores = std::make_shared<FakeStores>();

private:
    mutable std::mutex m_mutex; ///< of what follows, which QCA's own threads ask for too
    QString m_name;
    QStringList m_features;
    QVariantMap m_defaultConfig;
    QVariantMap m_config;
};

} // namespace TrivexTest
