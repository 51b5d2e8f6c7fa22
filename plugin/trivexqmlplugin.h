// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlExtensionPlugin>

/// The entry point of the QML module. QCA is initialised from the first import until the
/// application object ends, or longer while an engine lives.
class TrivexQmlPlugin : public QQmlExtensionPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)
public:
    explicit TrivexQmlPlugin(QObject *parent = nullptr);
    ~TrivexQmlPlugin() override;

    void registerTypes(const char *uri) override;
    void initializeEngine(QQmlEngine *engine, const char *uri) override;
};
