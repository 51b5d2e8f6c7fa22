// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/processend.h"
#include "qca/base/storethread.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <cstdlib>
#include <future>
#include <iostream>
#include <streambuf>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

using Trivex::ForeignCall;
using Trivex::ProcessEnd;

namespace {

constexpr int Status = 7;

/// Past all buffers, so that it is seen however the process ends.
void say(const char *word)
{
    if (::write(STDOUT_FILENO, word, qstrlen(word)) < 0)
        std::_Exit(1);
}

void first(ProcessEnd::Deadline)
{
    say("first ");
}

void second(ProcessEnd::Deadline)
{
    say("second ");
}

/// Handlers of a host, one that is older than ours and one that is newer.
void prepare()
{
    std::atexit([] { say("older "); });
    ProcessEnd::add(&first);
    ProcessEnd::add(&second);
    ProcessEnd::add(&first);
    std::atexit([] { say("newer "); });
}

/// A thread is in a module's code from here to the end.
void enterForeignCode()
{
    std::promise<void> inside;
    std::thread([&inside] {
        const ForeignCall call;
        inside.set_value();
        for (;;)
            ::pause();
    }).detach();
    inside.get_future().wait();
}

std::atomic<bool> isFlushing{false};

/// The end of the process flushes the streams when all threads have been stopped, and waits a while
/// for that: long enough here that a thread which goes on is seen.
class SlowBuffer : public std::streambuf {
protected:
    int sync() override
    {
        isFlushing = true;
        for (;;)
            ::pause();
    }
};

/// QCA's store thread, as far as the end knows it, with a timer as those of QCA's providers that
/// start programs: the end stops it, and the main thread sleeps meanwhile.
int runStoreThread()
{
    int count = 1;
    char *arguments[] = {nullptr};
    const QCoreApplication application(count, arguments);
    std::cout.rdbuf(new SlowBuffer);
    auto *thread = new QThread;
    auto *timer = new QTimer;
    timer->moveToThread(thread);
    QObject::connect(timer, &QTimer::timeout, timer, [] {
        if (isFlushing.exchange(false))
            say("started ");
    });
    thread->start();
    QMetaObject::invokeMethod(
        timer,
        [timer] {
            Trivex::StoreThread::note();
            timer->start(1);
        },
        Qt::BlockingQueuedConnection);
    std::thread([] { std::exit(Status); }).join();
    return Status;
}

int runFork()
{
    const pid_t child = ::fork();
    if (child == 0)
        std::exit(Status);
    int status = 0;
    ::waitpid(child, &status, 0);
    say("| ");
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

int runChild(const QByteArray &way)
{
    std::ios::sync_with_stdio(false);
    prepare();
    if (way == "fork")
        return runFork();
    if (way == "thread, with a store thread")
        return runStoreThread();
    if (way.endsWith("call"))
        enterForeignCode();
    std::cout << "buffered ";
    if (way.startsWith("exit"))
        std::exit(Status);
    if (way.startsWith("thread"))
        std::thread([] { std::exit(Status); }).join();
    return Status;
}

} // namespace

/// What ends our threads runs once and in order, and the host's handlers only where no thread is
/// left that could be in what they take down.
class TestProcessEnd : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void ends_data();
    void ends();
};

void TestProcessEnd::ends_data()
{
    QTest::addColumn<QByteArray>("said");
    const auto row = [](const char *way, const char *said) {
        QTest::newRow(way) << QByteArray(said);
    };
    // Hooks come before all handlers on the main thread, in their place among them on another one.
    row("return", "second first newer older buffered ");
    row("exit", "second first newer older buffered ");
    row("thread", "newer second first older buffered ");
    row("return, in a call", "second first buffered ");
    row("exit, in a call", "second first buffered ");
    row("thread, in a call", "newer second first buffered ");
    row("thread, with a store thread", "newer second first ");
    row("fork", "newer older | second first newer older ");
}

void TestProcessEnd::ends()
{
    QFETCH(QByteArray, said);
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--end"), QString::fromLatin1(QTest::currentDataTag())});
    QVERIFY(process.waitForFinished(-1));
    QCOMPARE(process.readAllStandardOutput(), said);
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), Status);
}

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--end") == 0)
        return runChild(argv[2]);
    QCoreApplication application(argc, argv);
    TestProcessEnd test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_processend.moc"
