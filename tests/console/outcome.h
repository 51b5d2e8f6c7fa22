// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QStringList>

namespace TrivexTest {

/// What the program said, where, and how it ended.
struct Outcome {
    int code = -1;
    QByteArray said;
    QByteArray complained;

    QJsonArray json() const { return QJsonDocument::fromJson(said).array(); }
};

/// Starts the program without a display and without a terminal.
inline void start(QProcess &process, const QStringList &arguments,
                  const QString &locale = QString())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none"));
    if (!locale.isEmpty())
        environment.insert(QStringLiteral("LC_ALL"), locale);
    process.setProcessEnvironment(environment);
    // A session of its own has no terminal that a password could be asked for at.
    process.start(QStringLiteral("setsid"),
                  QStringList{QStringLiteral("-w"), QStringLiteral(TRIVEX_PROGRAM)} + arguments);
}

/// Waits for its end.
inline Outcome finish(QProcess &process)
{
    Outcome outcome;
    const bool hasEnded = process.state() == QProcess::NotRunning || process.waitForFinished(60000);
    if (!hasEnded || process.exitStatus() != QProcess::NormalExit)
        return outcome;
    outcome.code = process.exitCode();
    outcome.said = process.readAllStandardOutput();
    outcome.complained = process.readAllStandardError();
    return outcome;
}

inline Outcome run(const QStringList &arguments, const QString &locale = QString())
{
    QProcess process;
    start(process, arguments, locale);
    return finish(process);
}

} // namespace TrivexTest
