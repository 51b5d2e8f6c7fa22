// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(TRIVEX_QML_IMPORT_DIR));
    engine.load(QUrl(QStringLiteral("qrc:/main.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
