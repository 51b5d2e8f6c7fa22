// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/order.h"

#include <algorithm>

namespace Trivex {

namespace {

/// An option that stands for a work of its own.
struct Work {
    const char *option;
    Order::Kind kind;
    bool takesFiles;
    const char *meaning;
};

constexpr Work Works[] = {
    //% "List the certificates of the tokens, of your own store and of the system."
    {"list", Order::List, false, QT_TRID_NOOP("trivex-console-list")},
    //% "Show everything in the files: certificates, requests, lists, keys and bundles."
    {"show", Order::Show, true, QT_TRID_NOOP("trivex-console-show")},
};

const char JsonOption[] = "json";
const char PasswordOption[] = "password-file";

/// Answered by the parser itself.
bool asksAboutProgram(const QByteArray &argument)
{
    return argument == "--version" || argument == "-v" || argument == "--help" || argument == "-h"
        || argument == "--help-all";
}

bool isWork(const QByteArray &argument)
{
    return std::any_of(std::begin(Works), std::end(Works), [&](const Work &work) {
        return argument == QByteArray("--") + work.option;
    });
}

QString whatIsWrong(const Order &order, const Work *work, int asked)
{
    if (asked > 1) {
        //% "One work at a time: --list and --show exclude each other."
        return qtTrId("trivex-console-one-work");
    }
    if (!work) {
        //% "--json and --password-file go with --list or --show."
        return order.isJson || !order.passwordFile.isEmpty() ? qtTrId("trivex-console-no-work")
                                                             : QString();
    }
    const QString name = QStringLiteral("--") + QLatin1String(work->option);
    if (work->takesFiles && order.files.isEmpty()) {
        //% "%1 needs a file."
        return qtTrId("trivex-console-needs-file").arg(name);
    }
    if (!work->takesFiles && !order.files.isEmpty()) {
        //% "%1 takes no file."
        return qtTrId("trivex-console-takes-no-file").arg(name);
    }
    return {};
}

} // namespace

void describe(QCommandLineParser *parser)
{
    //% "Certificates, keys and requests"
    parser->setApplicationDescription(qtTrId("trivex-console-about"));
    parser->addHelpOption();
    parser->addVersionOption();
    for (const Work &work : Works)
        parser->addOption({QLatin1String(work.option), qtTrId(work.meaning)});
    //% "Answer in JSON (UTF-8), for programs."
    parser->addOption({QLatin1String(JsonOption), qtTrId("trivex-console-json")});
    parser->addOption({QLatin1String(PasswordOption),
                       //% "Take the password of a bundle from the first line of this file."
                       qtTrId("trivex-console-password-file"),
                       //% "file"
                       qtTrId("trivex-console-file")});
    //% "files"
    const QString files = qtTrId("trivex-console-files");
    //% "Certificates, bundles or documents; without another option they open in the window."
    parser->addPositionalArgument(files, qtTrId("trivex-console-files-about"),
                                  QStringLiteral("[%1...]").arg(files));
}

QByteArray questionIn(const QList<QByteArray> &arguments)
{
    const auto end = std::find(arguments.begin(), arguments.end(), QByteArray("--"));
    const auto found = std::find_if(arguments.begin(), end, asksAboutProgram);
    return found == end ? QByteArray() : *found;
}

bool needsNoDisplay(const QList<QByteArray> &arguments)
{
    const auto end = std::find(arguments.begin(), arguments.end(), QByteArray("--"));
    return !questionIn(arguments).isEmpty() || std::any_of(arguments.begin(), end, isWork);
}

Order orderOf(const QCommandLineParser &parser)
{
    Order order;
    order.files = parser.positionalArguments();
    order.isJson = parser.isSet(QLatin1String(JsonOption));
    order.passwordFile = parser.value(QLatin1String(PasswordOption));
    const Work *chosen = nullptr;
    int asked = 0;
    for (const Work &work : Works) {
        if (!parser.isSet(QLatin1String(work.option)))
            continue;
        ++asked;
        chosen = &work;
        order.kind = work.kind;
    }
    order.problem = whatIsWrong(order, chosen, asked);
    return order;
}

} // namespace Trivex
