// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/endingchild.h"

#include "tests/support/standstill.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace TrivexTest {

namespace {

constexpr int WordPatience = 60000; // ms
const char *const Word = "ending";

} // namespace

void sayEnding()
{
    std::puts(Word);
    std::fflush(stdout);
}

void endProcess(const QString &way)
{
    if (way == QLatin1String("exit"))
        std::exit(ToldStatus);
    if (way == QLatin1String("thread"))
        std::thread([] { std::exit(ToldStatus); }).join();
    QCoreApplication::exit(ToldStatus);
}

void lookForNoLeaks()
{
#ifdef __SANITIZE_ADDRESS__
    qputenv("ASAN_OPTIONS", "detect_leaks=0");
#endif
}

QString childProblem(const QStringList &arguments)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    lookForNoLeaks();
    child.start(QCoreApplication::applicationFilePath(), arguments);
    const QString problem = problemBefore(Word, child);
    if (!problem.isEmpty())
        return QStringLiteral("it has not come to its end: ") + problem;
    QElapsedTimer clock;
    clock.start();
    const bool hasEnded = child.waitForFinished(EndPatience);
    if (!hasEnded) {
        const QString where = whereItStands(child.processId());
        child.waitForFinished(WordPatience);
        return QStringLiteral("it has ended after %1 ms; before that %2")
            .arg(clock.elapsed())
            .arg(where);
    }
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != ToldStatus)
        return QStringLiteral("it has ended with status %1, %2")
            .arg(child.exitCode())
            .arg(child.errorString());
    return {};
}

} // namespace TrivexTest
