// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// From the start of the process to the first frame, and to the last row, with and without tokens.
#include "benchmarks/measure.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

using TrivexTest::TestAuthority;
using TrivexTest::TestToken;

namespace {

constexpr int Rounds = 7;
constexpr int Bundles = 5; // on the token
constexpr int Settled = 400; // milliseconds without a change of the rows
constexpr int Patience = 15000; // milliseconds for the first row

const char emptyWindow[] = "import QtQuick 2.15\nRectangle { width: 640; height: 480 }\n";
const char listWindow[] = R"(
import QtQuick 2.15
import Trivex.Crypto 1.0
ListView {
    width: 640; height: 480
    property int rows: count
    model: KeyStoreModel
    delegate: Text { text: model.name }
}
)";

struct Times {
    double firstFrame = 0;
    double lastRow = 0;
    int rows = 0;
};

//! Shows one window in this process and prints its times, from main() on.
int show(const char *document, int argc, char **argv)
{
    QElapsedTimer timer;
    timer.start();
    QGuiApplication application(argc, argv);
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("window.qml")));
    if (!file.open(QIODevice::WriteOnly) || file.write(document) < 0)
        return 2;
    file.close();

    Times times;
    QQuickView view;
    QObject::connect(
        &view, &QQuickWindow::frameSwapped, &view,
        [&] {
            if (times.firstFrame == 0)
                times.firstFrame = double(timer.nsecsElapsed()) / 1e6;
        },
        Qt::DirectConnection);
    view.setSource(QUrl::fromLocalFile(file.fileName()));
    if (view.status() != QQuickView::Ready)
        return 2;
    view.show();
    QTimer quiet;
    quiet.setSingleShot(true);
    // Where no rows can come, the first frame is all there is to see.
    quiet.setInterval(view.rootObject()->property("rows").isValid() ? Patience : Settled);
    QObject::connect(&quiet, &QTimer::timeout, &application, &QCoreApplication::quit);
    QTimer watch;
    watch.setInterval(1);
    QObject::connect(&watch, &QTimer::timeout, &view, [&] {
        const int rows = view.rootObject()->property("rows").toInt();
        if (rows != times.rows) {
            times.rows = rows;
            times.lastRow = double(timer.nsecsElapsed()) / 1e6;
            quiet.start(Settled);
        }
    });
    watch.start();
    quiet.start();
    QGuiApplication::exec();
    std::printf("%f %f %d\n", times.firstFrame, times.lastRow, times.rows);
    return times.firstFrame > 0 ? 0 : 2;
}

Times childTimes(const QString &mode)
{
    QVector<double> frames;
    QVector<double> rows;
    int count = 0;
    for (int round = 0; round < Rounds; ++round) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(), {mode});
        child.waitForFinished(60000);
        const QList<QByteArray> fields = child.readAllStandardOutput().trimmed().split(' ');
        if (child.exitCode() != 0 || fields.size() != 3)
            std::fprintf(stderr, "a window failed to open\n");
        frames.append(fields.value(0).toDouble());
        rows.append(fields.value(1).toDouble());
        count = fields.value(2).toInt();
    }
    return {Measure::median(frames), Measure::median(rows), count};
}

//! Key pairs with a certificate each, as they come from an authority.
bool fill(const TestToken &token)
{
    const TestAuthority authority;
    for (int i = 1; i <= Bundles; ++i) {
        const QString id = QStringLiteral("0%1").arg(i);
        const QString name = QStringLiteral("Certificate %1").arg(i);
        if (!token.generateKeyPair(QStringLiteral("rsa:2048"), id, name))
            return false;
        const QByteArray certificate =
            authority.issue(token.publicKey(id), QStringLiteral("/CN=") + name);
        if (certificate.isEmpty()
            || !token.writeObject(QStringLiteral("cert"), certificate, id, name))
            return false;
    }
    return true;
}

void compare()
{
    Measure::Table table(QStringLiteral("From main() to the first frame"),
                         QStringLiteral("an empty Qt Quick window in the same run"));
    qputenv("TRIVEX_PKCS11_MODULES", "/nonexistent/module.so");
    const Times empty = childTimes(QStringLiteral("--empty"));
    const Times none = childTimes(QStringLiteral("--list"));
    const TestToken token(QStringLiteral("Start"));
    if (!token.isValid()) {
        std::fprintf(stderr, "SKIP %s\n", qPrintable(token.problem()));
        return;
    }
    if (!fill(token)) {
        std::fprintf(stderr, "SKIP the token can't be filled\n");
        return;
    }
    token.useInThisProcess();
    const Times one = childTimes(QStringLiteral("--list"));
    table.add(QStringLiteral("first frame, no token"), 0, none.firstFrame, empty.firstFrame);
    table.add(QStringLiteral("first frame, one token"), 0, one.firstFrame, empty.firstFrame);
    table.add(QStringLiteral("last row, no token"), 0, none.lastRow, empty.firstFrame);
    table.add(QStringLiteral("last row, one token"), 0, one.lastRow, empty.firstFrame);
    table.note(QStringLiteral("%1 rows without and %2 rows with the token, which has %3 "
                              "certificates with their keys; the others are the system's list, "
                              "which is read anew at each start.")
                   .arg(none.rows)
                   .arg(one.rows)
                   .arg(Bundles));
    if (one.rows != none.rows + Bundles)
        std::fprintf(stderr, "the token's certificates are not among the rows\n");
}

} // namespace

int main(int argc, char **argv)
{
    const QByteArray mode = argc > 1 ? argv[1] : "";
    if (mode == "--empty")
        return show(emptyWindow, argc, argv);
    if (mode == "--list")
        return show(listWindow, argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    compare();
    return 0;
}
