// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/application.h"

#include "app/environment.h"
#include "app/latepopups.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QLocale>

static void initializeResources()
{
    Q_INIT_RESOURCE(app);
}

namespace Trivex {

Application::Application(QObject *parent)
    : QObject(parent)
{
    m_engine.addImportPath(moduleDirectory());
}

Application::~Application() = default;

void Application::introduce()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Trivex"));
    QCoreApplication::setApplicationName(QStringLiteral("trivex"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRIVEX_VERSION));
}

void Application::prepare()
{
    initializeResources();
    introduce();
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Trivex"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.trivex.Trivex"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/trivex/trivex.svg")));
    preparePluginPaths();
    installQtTranslations();
    chooseStyle();
    qApp->installEventFilter(new LatePopups(qApp));
}

bool Application::open()
{
    m_engine.setInitialProperties({{QStringLiteral("manual"), manual()}});
    m_engine.load(QUrl(QStringLiteral("qrc:/trivex/qml/Main.qml")));
    return window() != nullptr;
}

QQuickWindow *Application::window() const
{
    const QList<QObject *> roots = m_engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
}

void Application::activate(const QStringList &files)
{
    QQuickWindow *shown = window();
    if (!shown)
        return;
    shown->show();
    shown->raise();
    shown->requestActivate();
    if (!files.isEmpty())
        QMetaObject::invokeMethod(shown, "openFiles", Q_ARG(QVariant, QVariant(files)));
}

QString Application::manual()
{
    // English answers where there is none in the user's own language.
    const QStringList languages = QLocale().uiLanguages() + QStringList{QStringLiteral("en")};
    for (const QString &language : languages) {
        QFile file(QStringLiteral(":/trivex/manual/manual-%1.html").arg(language.left(2)));
        if (file.open(QIODevice::ReadOnly))
            return QString::fromUtf8(file.readAll());
    }
    return {};
}

QStringList Application::absolute(const QStringList &files)
{
    QStringList paths;
    for (const QString &file : files)
        paths += QFileInfo(file).absoluteFilePath();
    return paths;
}

} // namespace Trivex
