// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tour/toolbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <cstdio>

namespace Trivex {
namespace {

constexpr int ProgramLimit = 60000;

void print(const QString &line)
{
    std::fputs((line + u'\n').toUtf8().constData(), stdout);
    std::fflush(stdout);
}

} // namespace

Toolbox::Toolbox(const QString &directory, QObject *parent)
    : QObject(parent)
    , m_directory(directory)
{
}

QString Toolbox::pin() const
{
    return qEnvironmentVariable("TRIVEX_TOUR_PIN");
}

QString Toolbox::token() const
{
    return qEnvironmentVariable("TRIVEX_TOUR_TOKEN");
}

void Toolbox::step(bool ok, const QString &name, const QString &saw)
{
    ++m_steps;
    if (!ok)
        ++m_failures;
    const QString word = ok ? QStringLiteral("ok     ") : QStringLiteral("FAILED ");
    print(word + QStringLiteral("%1 ").arg(m_steps, 2) + name + QStringLiteral(": ") + saw);
}

void Toolbox::heading(const QString &text)
{
    print(QStringLiteral("-- ") + text);
}

QVariantMap Toolbox::run(const QString &program, const QStringList &arguments) const
{
    QProcess process;
    process.setWorkingDirectory(m_directory);
    process.start(program, arguments);
    const bool ended = process.waitForFinished(ProgramLimit);
    return {{QStringLiteral("code"), ended ? process.exitCode() : -1},
            {QStringLiteral("output"), QString::fromUtf8(process.readAllStandardOutput())},
            {QStringLiteral("error"), QString::fromUtf8(process.readAllStandardError())}};
}

QVariant Toolbox::value(QAbstractItemModel *model, int row, const QString &role) const
{
    return model->index(row, 0).data(model->roleNames().key(role.toUtf8(), -1));
}

QVariantMap Toolbox::pkcs11(const QStringList &arguments) const
{
    const QStringList common{QStringLiteral("--module"),
                             qEnvironmentVariable("TRIVEX_TOUR_SOFTHSM"),
                             QStringLiteral("--token-label"),
                             token(),
                             QStringLiteral("--login"),
                             QStringLiteral("--pin"),
                             pin()};
    return run(QStringLiteral("pkcs11-tool"), common + arguments);
}

bool Toolbox::exists(const QString &file) const
{
    return QFileInfo::exists(file);
}

qint64 Toolbox::size(const QString &file) const
{
    return QFileInfo(file).size();
}

QStringList Toolbox::files(const QString &directory, const QString &filter) const
{
    return QDir(directory).entryList({filter}, QDir::Files, QDir::Name);
}

bool Toolbox::writeText(const QString &file, const QString &text) const
{
    QFile target(file);
    const QByteArray bytes = text.toUtf8();
    return target.open(QIODevice::WriteOnly) && target.write(bytes) == bytes.size();
}

bool Toolbox::flipBit(const QString &file) const
{
    QFile target(file);
    char byte = 0;
    if (!target.open(QIODevice::ReadWrite) || !target.seek(target.size() / 2)
        || !target.getChar(&byte))
        return false;
    return target.seek(target.size() / 2) && target.putChar(static_cast<char>(byte ^ 1));
}

bool Toolbox::removeModule() const
{
    return QFile::remove(qEnvironmentVariable("TRIVEX_TOUR_MODULE"));
}

bool Toolbox::restoreModule() const
{
    return QFile::copy(qEnvironmentVariable("TRIVEX_TOUR_SOFTHSM"),
                       qEnvironmentVariable("TRIVEX_TOUR_MODULE"));
}

} // namespace Trivex
