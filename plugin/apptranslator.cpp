// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "plugin/apptranslator.h"

#include "qca/base/places.h"

#include <QCoreApplication>
#include <QLocale>
#include <QQmlEngine>

AppTranslator::AppTranslator(QObject *parent)
    : QTranslator(parent)
{
}

namespace {

AppTranslator *installTranslator(QQmlEngine *engine)
{
    auto *translator = new AppTranslator(engine);
    QCoreApplication::installTranslator(translator);
    return translator;
}

} // namespace

QString catalogueDirectory()
{
    return Trivex::catalogueDirectory(QStringLiteral("trivex-qml-plugin_eng_en.qm"));
}

void installTranslators(QQmlEngine *engine, const QString &directory)
{
    installTranslator(engine)->load(QStringLiteral("trivex-qml-plugin_eng_en"), directory);
    // Qt asks it first, because it is installed last.
    installTranslator(engine)->load(QLocale(), QStringLiteral("trivex-qml-plugin"),
                                    QStringLiteral("-"), directory);
}
