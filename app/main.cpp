// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/application.h"
#include "app/singleinstance.h"

#include <QApplication>
#include <QCommandLineParser>

#include <algorithm>

namespace {

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Certificates, keys and requests"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QStringLiteral("Certificates, bundles or documents to open"),
                                 QStringLiteral("[files...]"));
}

/// A question about the program itself, which needs no display.
bool asksAboutProgram(const QByteArray &argument)
{
    return argument == "--version" || argument == "-v" || argument == "--help" || argument == "-h"
        || argument == "--help-all";
}

/// Answers the question alone: what stands beside it is for a program with a display, and would be
/// unknown here.
int tellAboutProgram(char *name, char *question)
{
    int argc = 2;
    char *argv[] = {name, question, nullptr};
    const QCoreApplication program(argc, argv);
    Trivex::Application::introduce();
    QCommandLineParser parser;
    describe(parser);
    parser.process(program);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    // What follows "--" is a file, whatever it is called.
    char **const end = std::find(argv + 1, argv + argc, QByteArray("--"));
    char **const question = std::find_if(argv + 1, end, asksAboutProgram);
    if (question != end)
        return tellAboutProgram(argv[0], *question);
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication program(argc, argv);
    Trivex::Application::prepare();

    QCommandLineParser parser;
    describe(parser);
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
