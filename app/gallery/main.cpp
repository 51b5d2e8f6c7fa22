// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/application.h"
#include "app/environment.h"

#include <QApplication>
#include <QQmlApplicationEngine>

/// Shows every component of Trivex.Crypto.Controls with data of its own, without a token.
int main(int argc, char **argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication program(argc, argv);
    Trivex::Application::prepare();
    QQmlApplicationEngine engine;
    engine.addImportPath(Trivex::moduleDirectory());
    engine.load(QUrl(QStringLiteral("qrc:/gallery/Gallery.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QApplication::exec();
}
