// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/report.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace Trivex {

namespace {

void write(FILE *stream, const QByteArray &text)
{
    fwrite(text.constData(), 1, size_t(text.size()), stream);
    fflush(stream);
}

} // namespace

void say(const QString &line)
{
    write(stdout, line.toUtf8() + '\n');
}

void sayJson(const QJsonValue &value)
{
    write(stdout,
          value.isArray() ? QJsonDocument(value.toArray()).toJson()
                          : QJsonDocument(value.toObject()).toJson());
}

void complain(const QString &text)
{
    write(stderr, "trivex: " + text.toUtf8() + '\n');
}

} // namespace Trivex
