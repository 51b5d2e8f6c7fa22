// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/order.h"

#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace Trivex {

namespace {

/// An option that stands for a work of its own.
struct Work {
    const char *option;
    Order::Kind kind;
    int leastFiles;
    int mostFiles; ///< -1: any number
    const char *meaning;
};

constexpr Work Works[] = {
    //% "List the certificates of the tokens, of your own store and of the system."
    {"list", Order::List, 0, 0, QT_TRID_NOOP("trivex-console-list")},
    //% "Show everything in the files: certificates, requests, lists, keys and bundles."
    {"show", Order::Show, 1, -1, QT_TRID_NOOP("trivex-console-show")},
    //% "Sign the file with the key that --key names; the result (CMS) lies beside it."
    {"sign", Order::Sign, 1, 1, QT_TRID_NOOP("trivex-console-sign")},
    //% "Check the signatures in the file, or those of the file in the .p7s beside it."
    {"verify", Order::Verify, 1, 1, QT_TRID_NOOP("trivex-console-verify")},
};

/// An option that goes with some works.
struct Option {
    const char *name;
    int works; ///< an "or" of `Order::Kind`
    const char *meaning;
    QString Order::*text; ///< where its value goes
    bool Order::*flag; ///< the same for one without a value
};

constexpr int AnyWork = Order::List | Order::Show | Order::Sign | Order::Verify;

constexpr Option Options[] = {
    //% "Answer in JSON (UTF-8), for programs."
    {"json", AnyWork, QT_TRID_NOOP("trivex-console-json"), nullptr, &Order::isJson},
    //% "Take the password of a bundle from the first line of this file."
    {"password-file", Order::Show, QT_TRID_NOOP("trivex-console-password-file"),
     &Order::passwordFile, nullptr},
    //% "Whose key signs: the name of its certificate, or its SHA-256 fingerprint."
    {"key", Order::Sign, QT_TRID_NOOP("trivex-console-key"), &Order::key, nullptr},
    //% "Take the PIN of the token from the first line of this file."
    {"pin-file", Order::Sign, QT_TRID_NOOP("trivex-console-pin-file"), &Order::pinFile, nullptr},
    //% "Write the signature to this file."
    {"output", Order::Sign, QT_TRID_NOOP("trivex-console-output"), &Order::output, nullptr},
    //% "Put the document into the signature (.p7m)."
    {"attached", Order::Sign, QT_TRID_NOOP("trivex-console-attached"), nullptr, &Order::isAttached},
    //% "Replace the file of the signature where there is one."
    {"replace", Order::Sign, QT_TRID_NOOP("trivex-console-replace"), nullptr, &Order::mayReplace},
    //% "The document that the signature belongs to."
    {"document", Order::Verify, QT_TRID_NOOP("trivex-console-document-option"), &Order::document,
     nullptr},
};

QString valueOf(const Option &option, const QCommandLineParser &parser)
{
    const QString value = parser.value(QLatin1String(option.name));
    // All others name files.
    return option.text == &Order::key ? value : pathOf(value);
}

/// Only files follow.
QList<QByteArray>::const_iterator endOfOptions(const QList<QByteArray> &arguments)
{
    return std::find(arguments.begin(), arguments.end(), QByteArray("--"));
}

QString dashed(const char *name)
{
    return QStringLiteral("--") + QLatin1String(name);
}

/// Answered by the parser itself.
bool asksAboutProgram(const QByteArray &argument)
{
    return argument == "--version" || argument == "-v" || argument == "--help" || argument == "-h"
        || argument == "--help-all";
}

/// An option for the terminal; one with its value behind a "=" too.
bool isForTerminal(const QByteArray &argument)
{
    const QByteArray name = argument.split('=').first();
    const auto is = [&](const char *option) { return name == QByteArray("--") + option; };
    return std::any_of(std::begin(Works), std::end(Works),
                       [&](const Work &work) { return is(work.option); })
        || std::any_of(std::begin(Options), std::end(Options),
                       [&](const Option &option) { return is(option.name); });
}

/// An option of Qt's that chooses where windows are shown, with one dash or two.
bool choosesDisplay(const QByteArray &argument)
{
    return argument == "-platform" || argument == "--platform" || argument == "-display"
        || argument == "--display";
}

/// False where nobody named a display, neither the environment nor the arguments.
bool mayHaveDisplay(const QList<QByteArray> &arguments)
{
    constexpr const char *Names[] = {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET",
                                     "QT_QPA_PLATFORM"};
    return std::any_of(std::begin(Names), std::end(Names),
                       [](const char *name) { return !qEnvironmentVariableIsEmpty(name); })
        || std::any_of(arguments.begin(), arguments.end(), choosesDisplay);
}

/// What is wrong with the number of files.
QString whatIsWrong(const Work &work, int files)
{
    if (files < work.leastFiles) {
        //% "%1 needs a file."
        return qtTrId("trivex-console-needs-file").arg(dashed(work.option));
    }
    if (work.mostFiles < 0 || files <= work.mostFiles)
        return {};
    if (work.mostFiles == 0) {
        //% "%1 takes no file."
        return qtTrId("trivex-console-takes-no-file").arg(dashed(work.option));
    }
    //% "%1 takes one file."
    return qtTrId("trivex-console-one-file").arg(dashed(work.option));
}

QString whatIsWrong(const Order &order, const QCommandLineParser &parser)
{
    QVector<Work> asked;
    std::copy_if(std::begin(Works), std::end(Works), std::back_inserter(asked),
                 [&](const Work &work) { return parser.isSet(QLatin1String(work.option)); });
    if (asked.size() > 1) {
        //% "%1 and %2 exclude each other."
        return qtTrId("trivex-console-one-work")
            .arg(dashed(asked.at(0).option), dashed(asked.at(1).option));
    }
    for (const Option &option : Options) {
        if (parser.isSet(QLatin1String(option.name)) && !(option.works & order.kind)) {
            //% "%1 does not fit here. See --help."
            return qtTrId("trivex-console-option-alone").arg(dashed(option.name));
        }
    }
    if (order.kind == Order::Sign && order.key.isEmpty()) {
        //% "--sign needs --key: the name of a certificate with a key, as --list shows it."
        return qtTrId("trivex-console-needs-key");
    }
    return asked.isEmpty() ? QString() : whatIsWrong(asked.first(), order.files.size());
}

} // namespace

QString pathOf(const QString &argument)
{
    const QUrl url(argument);
    return url.isLocalFile() && !QFileInfo::exists(argument) ? url.toLocalFile() : argument;
}

void describe(QCommandLineParser *parser)
{
    //% "Certificates, keys and requests"
    parser->setApplicationDescription(qtTrId("trivex-console-about"));
    parser->addHelpOption();
    parser->addVersionOption();
    for (const Work &work : Works)
        parser->addOption({QLatin1String(work.option), qtTrId(work.meaning)});
    for (const Option &option : Options) {
        QCommandLineOption described(QLatin1String(option.name), qtTrId(option.meaning));
        if (option.text) {
            //% "text"
            described.setValueName(qtTrId("trivex-console-value"));
        }
        parser->addOption(described);
    }
    //% "files"
    const QString files = qtTrId("trivex-console-files");
    //% "Certificates, bundles or documents; without another option they open in the window."
    parser->addPositionalArgument(files, qtTrId("trivex-console-files-about"),
                                  QStringLiteral("[%1...]").arg(files));
}

QByteArray questionIn(const QList<QByteArray> &arguments)
{
    const auto end = endOfOptions(arguments);
    const auto found = std::find_if(arguments.begin(), end, asksAboutProgram);
    return found == end ? QByteArray() : *found;
}

bool isForPrograms(const QList<QByteArray> &arguments)
{
    const auto end = endOfOptions(arguments);
    return std::find(arguments.begin(), end, QByteArray("--json")) != end;
}

bool needsNoDisplay(const QList<QByteArray> &arguments)
{
    return !questionIn(arguments).isEmpty()
        || std::any_of(arguments.begin(), endOfOptions(arguments), isForTerminal)
        || !mayHaveDisplay(arguments);
}

Order orderOf(const QCommandLineParser &parser)
{
    Order order;
    const QStringList arguments = parser.positionalArguments();
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(order.files), pathOf);
    for (const Work &work : Works) {
        if (parser.isSet(QLatin1String(work.option)))
            order.kind = work.kind;
    }
    for (const Option &option : Options) {
        if (option.text)
            order.*option.text = valueOf(option, parser);
        else
            order.*option.flag = parser.isSet(QLatin1String(option.name));
    }
    order.problem = whatIsWrong(order, parser);
    return order;
}

} // namespace Trivex
