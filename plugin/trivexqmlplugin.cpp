// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "plugin/trivexqmlplugin.h"

#include "plugin/apptranslator.h"
#include "plugin/registration.h"
#include "qca/adapter/providerplugins.h"
#include "qca/base/places.h"

namespace {

constexpr int secureMemoryKiB = 64;

} // namespace

TrivexQmlPlugin::TrivexQmlPlugin(QObject *parent)
    : QQmlExtensionPlugin(parent)
    , m_initializer(QCA::Practical, secureMemoryKiB)
{
    Trivex::registerProviders(Trivex::providerDirectories());
}

TrivexQmlPlugin::~TrivexQmlPlugin() = default;

void TrivexQmlPlugin::registerTypes(const char *uri)
{
    registerTrivexTypes(uri);
}

void TrivexQmlPlugin::initializeEngine(QQmlEngine *engine, const char *uri)
{
    Q_UNUSED(uri)
    installTranslators(engine);
}
