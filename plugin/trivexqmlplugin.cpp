// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "plugin/trivexqmlplugin.h"

#include "plugin/apptranslator.h"
#include "plugin/registration.h"
#include "qca/adapter/qcause.h"

#include <QQmlEngine>

TrivexQmlPlugin::TrivexQmlPlugin(QObject *parent)
    : QQmlExtensionPlugin(parent)
{
    Trivex::useQca();
}

TrivexQmlPlugin::~TrivexQmlPlugin() = default;

void TrivexQmlPlugin::registerTypes(const char *uri)
{
    registerTrivexTypes(uri);
}

void TrivexQmlPlugin::initializeEngine(QQmlEngine *engine, const char *uri)
{
    Q_UNUSED(uri)
    // Qt makes the plugin once for all application objects of the process.
    Trivex::useQca();
    Trivex::keepQcaFor(engine);
    installTranslators(engine);
}
