// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/application.h"
#include "app/environment.h"
#include "app/privatetokens.h"
#include "app/singleinstance.h"
#include "app/standardstreams.h"
#include "console/work.h"
#include "qca/base/catalogues.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>

namespace {

/// What the program is asked for; a question about itself is answered here, and ends it. The
/// catalogues have to be there already.
Trivex::Order askedFor()
{
    QCommandLineParser parser;
    Trivex::describe(&parser);
    if (!parser.parse(QCoreApplication::arguments())) {
        Trivex::Order wrong;
        wrong.problem = parser.errorText();
        return wrong;
    }
    parser.process(QCoreApplication::arguments());
    return Trivex::orderOf(parser);
}

/// Answers and works without a display. A question is answered alone: what stands beside it may be
/// for a program with a display, and would be unknown here.
int runWithoutWindow(int argc, char **argv, QByteArray question, bool isForPrograms)
{
    char *asked[] = {argv[0], question.data(), nullptr};
    int count = question.isEmpty() ? argc : 2;
    const QCoreApplication program(count, question.isEmpty() ? argv : asked);
    if (isForPrograms)
        Trivex::speakToPrograms();
    // What libraries warn of is no answer (QCA's provider for GnuPG does so at each start where
    // there is no gpg). QT_LOGGING_RULES brings it back.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    Trivex::Application::introduce();
    Trivex::preparePluginPaths();
    Trivex::installQtTranslations();
    Trivex::installCatalogues(QStringLiteral("trivex-app"), QCoreApplication::instance());
    if (!question.isEmpty())
        Trivex::heedLostAnswers();
    return Trivex::carryOut(askedFor());
}

} // namespace

int main(int argc, char **argv)
{
    Trivex::occupyStandardStreams();
    Trivex::mendEnvironment();
    Trivex::usePrivateTokens();
    const QList<QByteArray> arguments(argv + 1, argv + argc);
    if (Trivex::needsNoDisplay(arguments))
        return runWithoutWindow(argc, argv, Trivex::questionIn(arguments),
                                Trivex::isForPrograms(arguments));
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication program(argc, argv);
    Trivex::Application::prepare();

    const Trivex::Order order = askedFor();
    if (!order.problem.isEmpty())
        return Trivex::carryOut(order);
    const QStringList files = Trivex::Application::absolute(order.files);

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
