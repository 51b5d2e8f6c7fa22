// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/application.h"
#include "tests/app/harness.h"
#include "tests/support/endingchild.h"
#include "tests/support/endwatch.h"
#include "tests/support/testtoken.h"

#include <QApplication>
#include <QTest>

#include <cstdio>

using namespace TrivexTest;

namespace {

constexpr int NoWindow = 3;
constexpr int Rounds = 5;
constexpr int Delays[] = {0, 30, 150, 600}; // ms

/// The program, whose window is closed after `delay` ms.
int runProgram(int argc, char *argv[], int delay)
{
    QApplication program(argc, argv);
    Trivex::Application::prepare();
    Trivex::Application application;
    if (!application.open())
        return NoWindow;
    application.activate({});
    QTimer::singleShot(delay, &application, [&application] {
        sayEnding();
        application.window()->close();
    });
    return QApplication::exec();
}

} // namespace

/// The program that is closed while its stores and its token are still being read.
class TestAppEnds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void closedAtOnce_data();
    void closedAtOnce();
};

void TestAppEnds::closedAtOnce_data()
{
    QTest::addColumn<int>("delay");
    for (const int delay : Delays)
        QTest::addRow("after %d ms", delay) << delay;
}

void TestAppEnds::closedAtOnce()
{
    QFETCH(int, delay);
    for (int round = 0; round < Rounds; ++round) {
        const Ended ended = watchEnd(QCoreApplication::applicationFilePath(),
                                     {QStringLiteral("--program"), QString::number(delay)});
        QVERIFY2(ended.problem(0).isEmpty(), qPrintable(ended.problem(0)));
    }
}

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--program") == 0)
        return runProgram(argc, argv, atoi(argv[2]));
    const WindowEnvironment environment;
    const TestToken token(QStringLiteral("App ends"));
    for (const QString &problem : {environment.problem(), token.problem()}) {
        if (!problem.isEmpty()) {
            std::printf("SKIP %s\n", qPrintable(problem));
            return 0;
        }
    }
    token.useInThisProcess();
    QCoreApplication application(argc, argv);
    TestAppEnds test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_app_ends.moc"
