// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/endwatch.h"

#include "qca/base/descriptor.h"
#include "tests/support/endingchild.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>

#include <array>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace TrivexTest {

namespace {

constexpr int StartPatience = 60000; // ms
constexpr int PollPause = 5; // ms
const char *const Word = "ending";

pid_t start(const QString &program, const QStringList &arguments, int output)
{
    std::vector<QByteArray> words = {QFile::encodeName(program)};
    for (const QString &argument : arguments)
        words.push_back(QFile::encodeName(argument));
    std::vector<char *> pointers;
    for (QByteArray &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
    pid_t child = -1;
    if (posix_spawnp(&child, pointers.front(), &actions, nullptr, pointers.data(), environ) != 0)
        child = -1;
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

/// Waits a moment for output and takes it; false when there will be none any more.
bool readSome(int pipe, QByteArray *output)
{
    pollfd wanted = {pipe, POLLIN, 0};
    if (poll(&wanted, 1, PollPause) <= 0)
        return true;
    std::array<char, 4096> bytes{};
    const ssize_t count = read(pipe, bytes.data(), bytes.size());
    if (count > 0)
        output->append(bytes.data(), int(count));
    return count > 0;
}

/// How long the threads of a process have waited for a processor since this was made.
class Starving {
public:
    explicit Starving(pid_t process)
        : m_tasks(QStringLiteral("/proc/%1/task").arg(process))
    {
    }

    /// Before the clock begins anew.
    void forget()
    {
        look();
        m_before = m_waits;
    }
    /// In ms. To be asked often: what a thread waited since the last look goes with it.
    qint64 look()
    {
        const QDir tasks(m_tasks);
        const QStringList threads = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &thread : threads) {
            QFile file(tasks.filePath(thread + QStringLiteral("/schedstat")));
            // Three numbers: the time it ran, the time it waited to run, how often it ran.
            if (file.open(QIODevice::ReadOnly))
                m_waits[thread] = file.readAll().split(' ').value(1).toLongLong();
        }
        qint64 nanoseconds = 0;
        for (auto wait = m_waits.cbegin(); wait != m_waits.cend(); ++wait)
            nanoseconds += wait.value() - m_before.value(wait.key());
        return nanoseconds / 1000000;
    }

private:
    QString m_tasks;
    QHash<QString, qint64> m_waits;
    QHash<QString, qint64> m_before;
};

} // namespace

QString Ended::problem(int exitStatus) const
{
    if (!hasSaidSo)
        return QStringLiteral("it has not come to its end, status %1: %2")
            .arg(status)
            .arg(QString::fromUtf8(output));
    if (WIFSIGNALED(status))
        return QStringLiteral("signal %1 after %2 ms: %3")
            .arg(WTERMSIG(status))
            .arg(milliseconds)
            .arg(QString::fromUtf8(output));
    if (WEXITSTATUS(status) != exitStatus)
        return QStringLiteral("it has ended with status %1").arg(WEXITSTATUS(status));
    if (!isClosed)
        return QStringLiteral("somebody holds its output");
    return milliseconds > EndPatience ? QStringLiteral("it took %1 ms").arg(milliseconds)
                                      : QString();
}

Ended watchEnd(const QString &program, const QStringList &arguments)
{
    Ended ended;
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return ended;
    const Trivex::Descriptor reader(ends[0]);
    Trivex::Descriptor writer(ends[1]);
    lookForNoLeaks();
    const pid_t child = start(program, arguments, writer.get());
    writer.reset();
    bool isRunning = child > 0;
    QElapsedTimer clock;
    clock.start();
    Starving starving(child);
    while (child > 0 && (isRunning || !ended.isClosed)) {
        if (ended.isClosed)
            usleep(PollPause * 1000);
        else
            ended.isClosed = !readSome(reader.get(), &ended.output);
        if (!ended.hasSaidSo && ended.output.contains(Word)) {
            ended.hasSaidSo = true;
            clock.start();
            starving.forget();
        }
        ended.milliseconds = clock.elapsed() - starving.look();
        if (isRunning && waitpid(child, &ended.status, WNOHANG) == child)
            isRunning = false;
        if (ended.milliseconds <= (ended.hasSaidSo ? 2 * EndPatience : StartPatience))
            continue;
        if (!isRunning)
            break;
        kill(child, SIGKILL);
    }
    return ended;
}

} // namespace TrivexTest
