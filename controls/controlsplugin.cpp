// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "controls/controlsplugin.h"

#include "controls/desktop.h"
#include "controls/detailspdf.h"
#include "qca/base/catalogues.h"

#include <QQmlEngine>

TrivexControlsPlugin::TrivexControlsPlugin(QObject *parent)
    : QQmlExtensionPlugin(parent)
{
}

void TrivexControlsPlugin::registerTypes(const char *uri)
{
    qmlRegisterType<Trivex::DetailsPdf>(uri, 1, 0, "DetailsPdf");
    qmlRegisterSingletonType<Trivex::Desktop>(
        uri, 1, 0, "Desktop",
        [](QQmlEngine *, QJSEngine *) -> QObject * { return new Trivex::Desktop; });
}

void TrivexControlsPlugin::initializeEngine(QQmlEngine *engine, const char *)
{
    Trivex::installCatalogues(QStringLiteral("trivex-app"), engine);
}
