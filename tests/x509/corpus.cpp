// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/corpus.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace Corpus {

void prepareEnvironment()
{
    static const QTemporaryDir home;
    const QByteArray path = QFile::encodeName(home.path());
    for (const char *name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(name, path);
    qputenv("QCA_PLUGIN_PATH", TRIVEX_TEST_PLUGINS);
}

QString path(const QString &file)
{
    return QStringLiteral(TRIVEX_CORPUS_DIR "/") + file;
}

QByteArray read(const QString &file)
{
    QFile device(path(file));
    if (!device.open(QIODevice::ReadOnly))
        qFatal("Missing: %s", qUtf8Printable(device.fileName()));
    return device.readAll();
}

QList<Certificate> certificates()
{
    QList<Certificate> list;
    const QStringList lines =
        QString::fromUtf8(read(QStringLiteral("certificates.txt"))).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QStringList words = line.split(QLatin1Char(' '));
        if (words.size() == 3)
            list += {words.at(0), words.at(1), words.at(2).toInt()};
    }
    return list;
}

bool hasGost()
{
    const bool has = QFile::exists(path(QStringLiteral("gost-2001.der")));
    if (!has)
        qInfo("SKIP the files with GOST keys: the openssl engine gost (libengine-gost-openssl) is "
              "not installed");
    return has;
}

QStringList files()
{
    QStringList list;
    const QDir root(path(QString()));
    QDirIterator iterator(root.path(), QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext())
        list += root.relativeFilePath(iterator.next());
    list.sort();
    return list;
}

QByteArray openssl(const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(QStringLiteral("openssl"), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0)
        return {};
    return process.readAllStandardOutput();
}

QCA::Certificate certificate(const QString &file)
{
    const QByteArray data = read(file);
    if (data.startsWith("-----"))
        return QCA::Certificate::fromPEM(QString::fromLatin1(data));
    return QCA::Certificate::fromDER(data);
}

} // namespace Corpus
