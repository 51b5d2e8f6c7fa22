// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/standstill.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QtDebug>

namespace TrivexTest {

namespace {

constexpr int Looks = 5;

QString firstLine(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readLine()).trimmed()
                                          : QString();
}

/// What stands behind the name of the thread in `stat`, see proc(5): a name may hold anything.
QStringList statFields(const QString &thread)
{
    const QString stat = firstLine(thread + QLatin1String("/stat"));
    return stat.mid(stat.lastIndexOf(QLatin1Char(')')) + 2).split(QLatin1Char(' '));
}

QString threadText(const QString &thread)
{
    constexpr int State = 0;
    constexpr int UserTime = 11;
    constexpr int SystemTime = 12;
    const QStringList stat = statFields(thread);
    return QStringLiteral("%1: state %2, %3+%4 ticks, in %5, system call %6")
        .arg(firstLine(thread + QLatin1String("/comm")), stat.value(State), stat.value(UserTime),
             stat.value(SystemTime), firstLine(thread + QLatin1String("/wchan")),
             firstLine(thread + QLatin1String("/syscall")));
}

QString outputs(QProcess &child, const QByteArray &output)
{
    return QStringLiteral("; it said \"%1\", and of errors \"%2\"")
        .arg(QString::fromLocal8Bit(output.right(1000)),
             QString::fromLocal8Bit(child.readAllStandardError().right(4000)));
}

QString ending(const QProcess &child)
{
    return QStringLiteral("it has ended with status %1, %2")
        .arg(child.exitCode())
        .arg(child.exitStatus() == QProcess::NormalExit ? QStringLiteral("by itself")
                                                        : child.errorString());
}

} // namespace

QString whereItStands(qint64 id)
{
    const QDir threads(QStringLiteral("/proc/%1/task").arg(id));
    QStringList lines;
    const auto names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : names)
        lines += threadText(threads.filePath(name));
    return lines.isEmpty() ? QStringLiteral("there is no process %1").arg(id)
                           : lines.join(QLatin1Char('\n'));
}

QString problemBefore(const QByteArray &word, QProcess &child, int look)
{
    QByteArray output;
    for (int looks = 0; looks < Looks;) {
        output += child.readAllStandardOutput();
        if (output.contains(word))
            return {};
        if (child.state() == QProcess::NotRunning)
            return ending(child) + outputs(child, output);
        if (child.waitForReadyRead(look) || child.state() == QProcess::NotRunning)
            continue;
        ++looks;
        qWarning("Waiting for \"%s\": %s", word.constData(),
                 qPrintable(whereItStands(child.processId())));
    }
    return QStringLiteral("it stands still: ") + whereItStands(child.processId())
        + outputs(child, output);
}

} // namespace TrivexTest
