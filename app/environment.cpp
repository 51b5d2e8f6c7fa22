// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/environment.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QQuickStyle>
#include <QTranslator>

#include <array>

#include <pwd.h>
#include <unistd.h>

namespace Trivex {

QString moduleDirectory()
{
    QStringList candidates;
    // Where QML itself would look first.
    const QByteArray set = qgetenv("QML2_IMPORT_PATH");
    for (const QByteArray &path : set.split(':'))
        candidates += QFile::decodeName(path);
    candidates +=
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../qml"));
    for (const QString &candidate : qAsConst(candidates)) {
        if (!candidate.isEmpty()
            && QDir(candidate + QStringLiteral("/Trivex/Crypto/Controls")).exists())
            return candidate;
    }
    return QDir::cleanPath(QCoreApplication::applicationDirPath()
                           + QStringLiteral("/" TRIVEX_QML_FROM_PROGRAM));
}

void mendEnvironment()
{
    for (const char *name :
         {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        if (qEnvironmentVariableIsSet(name) && !qgetenv(name).startsWith('/'))
            qunsetenv(name);
    }
    if (qgetenv("HOME").startsWith('/'))
        return;
    std::array<char, 16 * 1024> texts{};
    passwd entry = {};
    passwd *found = nullptr;
    getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found);
    if (found && found->pw_dir && found->pw_dir[0] == '/')
        qputenv("HOME", found->pw_dir);
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
