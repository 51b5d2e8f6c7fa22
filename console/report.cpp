// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/report.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <cstdio>

namespace Trivex {

namespace {

// What is lost once stays lost: the answer has a hole, whatever follows.
int s_saidError = 0;

/// 0, or the number of the error.
int write(FILE *stream, const QByteArray &text)
{
    errno = 0;
    const bool isWritten =
        fwrite(text.constData(), 1, size_t(text.size()), stream) == size_t(text.size())
        && fflush(stream) == 0;
    return isWritten ? 0 : errno != 0 ? errno : EIO;
}

void writeAnswer(const QByteArray &text)
{
    const int error = write(stdout, text);
    if (s_saidError == 0)
        s_saidError = error;
}

} // namespace

void say(const QString &line)
{
    writeAnswer(line.toUtf8() + '\n');
}

void sayJson(const QJsonValue &value)
{
    writeAnswer(value.isArray() ? QJsonDocument(value.toArray()).toJson()
                                : QJsonDocument(value.toObject()).toJson());
}

void complain(const QString &text)
{
    write(stderr, "trivex: " + text.toUtf8() + '\n');
}

int lostAnswer()
{
    // Others write to the stream too, and leave it to the end of the process to be written out.
    errno = 0;
    const bool isOut = fflush(stdout) == 0 && ferror(stdout) == 0;
    if (s_saidError == 0 && !isOut)
        s_saidError = errno != 0 ? errno : EIO;
    return s_saidError;
}

} // namespace Trivex
