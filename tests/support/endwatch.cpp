// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/endwatch.h"

#include "qca/base/descriptor.h"
#include "tests/support/endingchild.h"

#include <QElapsedTimer>
#include <QFile>

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
    while (child > 0 && (isRunning || !ended.isClosed)) {
        if (ended.isClosed)
            usleep(PollPause * 1000);
        else
            ended.isClosed = !readSome(reader.get(), &ended.output);
        if (!ended.hasSaidSo && ended.output.contains(Word)) {
            ended.hasSaidSo = true;
            clock.start();
        }
        if (isRunning && waitpid(child, &ended.status, WNOHANG) == child)
            isRunning = false;
        if (clock.elapsed() <= (ended.hasSaidSo ? 2 * EndPatience : StartPatience))
            continue;
        if (!isRunning)
            break;
        kill(child, SIGKILL);
    }
    ended.milliseconds = clock.elapsed();
    return ended;
}

} // namespace TrivexTest
