// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/application.h"
#include "app/singleinstance.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char **argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication program(argc, argv);
    Trivex::Application::prepare();

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Certificates, keys and requests"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QStringLiteral("Certificates, bundles or documents to open"),
                                 QStringLiteral("[files...]"));
    parser.process(program);
    const QStringList files = Trivex::Application::filesOf(parser.positionalArguments());

    Trivex::SingleInstance instance(QStringLiteral("trivex"));
    if (instance.handOver(files))
        return 0;

    Trivex::Application application;
    QObject::connect(&instance, &Trivex::SingleInstance::started, &application,
                     &Trivex::Application::activate);
    if (!application.open())
        return 1;
    application.activate(files);
    return QApplication::exec();
}
