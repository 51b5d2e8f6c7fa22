// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/environment.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QQuickStyle>
#include <QTranslator>

namespace Trivex {

QString moduleDirectory()
{
    const QString beside =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../qml"));
    if (QDir(beside + QStringLiteral("/Trivex/Crypto")).exists())
        return beside;
    return QStringLiteral(TRIVEX_INSTALL_QML_DIR);
}

void preparePluginPaths()
{
    const QString beside =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../qca"));
    if (!QDir(beside).exists())
        return;
    const QByteArray set = qgetenv("QCA_PLUGIN_PATH");
    const QByteArray own = QFile::encodeName(beside);
    if (!set.split(':').contains(own))
        qputenv("QCA_PLUGIN_PATH", set.isEmpty() ? own : QByteArray(own + ':' + set));
}

void installQtTranslations()
{
    const QString directory = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    for (const char *catalogue :
         {"qtbase", "qtdeclarative", "qtquickcontrols2", "qtquickcontrols"}) {
        auto *translator = new QTranslator(QCoreApplication::instance());
        if (translator->load(QLocale(), QLatin1String(catalogue), QStringLiteral("_"), directory))
            QCoreApplication::installTranslator(translator);
        else
            delete translator;
    }
}

void chooseStyle()
{
    QQuickStyle::setFallbackStyle(QStringLiteral("Fusion"));
    QQuickStyle::setStyle(moduleDirectory() + QStringLiteral("/Trivex/Crypto/Controls/Style"));
}

} // namespace Trivex
