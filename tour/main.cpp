// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tour/toolbox.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

// A step that never ends must not hang the machine that runs the tour unattended.
constexpr int WatchdogMilliseconds = 10 * 60 * 1000;

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication program(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 2) {
        std::fputs("Usage: trivex-tour DIRECTORY (started by ./run --tour)\n", stderr);
        return 2;
    }
    Trivex::Toolbox toolbox(arguments.at(1));
    QTimer::singleShot(WatchdogMilliseconds, &program, [&toolbox] {
        toolbox.step(false, QStringLiteral("the tour"), QStringLiteral("did not end in time"));
        QCoreApplication::exit(1);
    });
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("toolbox"), &toolbox);
    QObject::connect(&engine, &QQmlEngine::quit, &program, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/tour/Tour.qml")));
    const std::unique_ptr<QObject> tour(component.create());
    if (!tour) {
        toolbox.step(false, QStringLiteral("the QML module"), component.errorString());
        return 1;
    }
    const int code = QGuiApplication::exec();
    return code == 0 && toolbox.failures() == 0 ? 0 : 1;
}
