// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// The whole program as people feel it: from the start of its process to the window and to the last
// row, and from page to page; against an empty window of Qt Quick Controls.
#include "app/application.h"
#include "app/singleinstance.h"
#include "benchmarks/measure.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

#include <time.h>

namespace {

constexpr int Rounds = 9;
constexpr int Settled = 400; // milliseconds without a change of the rows
constexpr int Patience = 15000; // milliseconds for the first row

const char emptyWindow[] = "import QtQuick 2.15\nimport QtQuick.Controls 2.15\n"
                           "ApplicationWindow { width: 1180; height: 760; visible: true }\n";

/// Of all processes alike, so that a child can count from the moment that it was started.
qint64 now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return qint64(time.tv_sec) * 1000000000 + time.tv_nsec;
}

/// Prints what a child found, for its parent to read.
void tell(const char *what, double value)
{
    std::printf("%s %f\n", what, value);
    std::fflush(stdout);
}

/// Tells of the first frame; `then` runs after it.
void onFirstFrame(QQuickWindow *window, qint64 started, const std::function<void()> &then)
{
    auto *once = new QObject(window);
    QObject::connect(window, &QQuickWindow::frameSwapped, once, [=] {
        tell("window", double(now() - started) / 1e6);
        tell("computed", Measure::computed());
        delete once;
        QTimer::singleShot(0, window, then);
    });
}

int showEmpty(int argc, char **argv, qint64 started)
{
    const QApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData(emptyWindow);
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window)
        return 2;
    onFirstFrame(window, started, &QCoreApplication::quit);
    return QApplication::exec();
}

/// The pages one after another, the next one when the last one is drawn.
class PageTurner : public QObject {
public:
    explicit PageTurner(QQuickWindow *window)
        : QObject(window)
        , m_window(window)
    {
        connect(window, &QQuickWindow::frameSwapped, this, [this] {
            if (m_asked != 0)
                turned();
        });
    }

    void next()
    {
        if (m_page == m_pages.size()) {
            QCoreApplication::quit();
            return;
        }
        m_asked = now();
        QMetaObject::invokeMethod(m_window, "show", Q_ARG(QVariant, m_pages.at(m_page)));
        m_window->update();
    }

private:
    void turned()
    {
        const QByteArray name = "page-" + m_pages.at(m_page).toLatin1()
            + (m_page < m_pages.size() / 2 ? "-first" : "-again");
        tell(name.constData(), double(now() - m_asked) / 1e6);
        m_asked = 0;
        ++m_page;
        QTimer::singleShot(50, this, [this] { next(); });
    }

    QQuickWindow *m_window;
    const QStringList m_pages{QStringLiteral("system"),     QStringLiteral("requests"),
                              QStringLiteral("newRequest"), QStringLiteral("sign"),
                              QStringLiteral("personal"),   QStringLiteral("system"),
                              QStringLiteral("requests"),   QStringLiteral("newRequest"),
                              QStringLiteral("sign"),       QStringLiteral("personal")};
    int m_page = 0;
    qint64 m_asked = 0;
};

/// Tells when the last row has come, and then turns the pages.
void watchRows(QQuickWindow *window, qint64 started)
{
    auto *library = window->property("library").value<QObject *>();
    auto *rows = library ? library->property("entries").value<QAbstractItemModel *>() : nullptr;
    if (!rows) {
        QCoreApplication::exit(2);
        return;
    }
    auto *quiet = new QTimer(window);
    const auto last = QSharedPointer<double>::create(double(now() - started) / 1e6);
    quiet->setSingleShot(true);
    quiet->setInterval(rows->rowCount() > 0 ? Settled : Patience);
    QObject::connect(rows, &QAbstractItemModel::rowsInserted, quiet, [=] {
        *last = double(now() - started) / 1e6;
        quiet->start(Settled);
    });
    QObject::connect(quiet, &QTimer::timeout, window, [=] {
        delete quiet;
        tell("rows", *last);
        tell("count", rows->rowCount());
        (new PageTurner(window))->next();
    });
    quiet->start();
}

int showProgram(int argc, char **argv, qint64 started, bool onlyWindow)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication program(argc, argv);
    Trivex::Application::prepare();
    Trivex::SingleInstance instance(QStringLiteral("trivex-benchmark"));
    if (instance.handOver({}))
        return 2;
    Trivex::Application application;
    if (!application.open())
        return 2;
    QQuickWindow *window = application.window();
    onFirstFrame(window, started, [=] {
        if (onlyWindow)
            QCoreApplication::quit();
        else
            watchRows(window, started);
    });
    application.activate({});
    return QApplication::exec();
}

using Values = QMap<QString, QVector<double>>;

void runChild(const QString &mode, const QString &prefix, Values *values)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::SeparateChannels);
    child.start(QCoreApplication::applicationFilePath(), {mode, QString::number(now())});
    child.waitForFinished(120000);
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        std::fprintf(stderr, "%s failed: %s\n", qPrintable(mode),
                     child.readAllStandardError().constData());
    const QList<QByteArray> lines = child.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() == 2)
            (*values)[prefix + QString::fromLatin1(fields.at(0))] += fields.at(1).toDouble();
    }
}

void useCache(const QString &path)
{
    qputenv("XDG_CACHE_HOME", QFile::encodeName(path));
}

/// A display of its own where there is one to be had; it lives as long as `server`.
bool startDisplay(QProcess *server)
{
    server->start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                   QStringLiteral("0"), QStringLiteral("1920x1200x24"), QStringLiteral("-nolisten"),
                   QStringLiteral("tcp")});
    QByteArray number;
    while (!number.contains('\n') && server->waitForReadyRead(15000))
        number += server->readAllStandardOutput();
    if (!number.contains('\n'))
        return false;
    qputenv("DISPLAY", ':' + number.trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    return true;
}

void compare()
{
    QProcess server;
    const bool isShown = startDisplay(&server);
    qputenv("TRIVEX_PKCS11_MODULES", "/nonexistent/module.so");
    Values values;
    const QTemporaryDir warm;
    for (int round = 0; round <= Rounds; ++round) {
        const QTemporaryDir cold;
        Values found;
        useCache(cold.path());
        runChild(QStringLiteral("--window"), QStringLiteral("cold-"), &found);
        useCache(warm.path());
        runChild(QStringLiteral("--empty"), QStringLiteral("empty-"), &found);
        runChild(QStringLiteral("--window"), QStringLiteral("warm-"), &found);
        runChild(QStringLiteral("--program"), QStringLiteral("whole-"), &found);
        // The first round fills the caches.
        for (auto it = found.cbegin(); round > 0 && it != found.cend(); ++it)
            values[it.key()] += it.value();
    }
    const auto median = [&](const char *name) {
        return Measure::median(values.value(QLatin1String(name)));
    };
    {
        Measure::Table table(QStringLiteral("From the start of the process to the first frame"),
                             QStringLiteral("an empty window of Qt Quick Controls"));
        const double empty = median("empty-window");
        table.add(QStringLiteral("window, very first start"), 0, median("cold-window"), empty);
        table.add(QStringLiteral("window"), 0, median("warm-window"), empty);
        table.add(QStringLiteral("last row"), 0, median("whole-rows"), empty);
        table.note(isShown ? QStringLiteral("Under Xvfb, drawn by software.")
                           : QStringLiteral("Without a display (Xvfb is not installed)."));
        table.note(QStringLiteral("%1 rows, the system's list.").arg(int(median("whole-count"))));
    }
    {
        Measure::Table table(QStringLiteral("Processor time until the first frame, all threads"),
                             QStringLiteral("an empty window of Qt Quick Controls"));
        const double empty = median("empty-computed");
        table.add(QStringLiteral("window, very first start"), 0, median("cold-computed"), empty);
        table.add(QStringLiteral("window"), 0, median("warm-computed"), empty);
    }
    Measure::Table table(QStringLiteral("From page to page, to its first frame"),
                         QStringLiteral("the list of the system's certificates"));
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        if (it.key().startsWith(QLatin1String("whole-page-")))
            table.add(it.key().mid(11), 0, Measure::median(it.value()),
                      median("whole-page-system-again"));
    }
    server.terminate();
    server.waitForFinished();
}

} // namespace

int main(int argc, char **argv)
{
    const QByteArray mode = argc > 1 ? argv[1] : "";
    const qint64 started = argc > 2 ? QByteArray(argv[2]).toLongLong() : now();
    if (mode == "--empty")
        return showEmpty(argc, argv, started);
    if (mode == "--window" || mode == "--program")
        return showProgram(argc, argv, started, mode == "--window");
    qputenv("QT_QUICK_BACKEND", "software");
    const QCoreApplication application(argc, argv);
    compare();
    return 0;
}
