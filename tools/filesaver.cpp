// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/filesaver.h"

#include "qca/base/atomicfile.h"
#include "tools/files.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

namespace Trivex {

namespace {

/// The bytes of the first PEM block; empty where there is none.
QByteArray firstBlock(const QByteArray &pem)
{
    const QByteArray dashes("-----");
    const int label = pem.indexOf(QByteArrayLiteral("-----BEGIN "));
    const int begin = label < 0 ? -1 : pem.indexOf(dashes, label + 11);
    const int end = begin < 0 ? -1 : pem.indexOf(QByteArrayLiteral("-----END "), begin);
    if (end < 0)
        return {};
    return QByteArray::fromBase64(pem.mid(begin + dashes.size(), end - begin - dashes.size()));
}

} // namespace

FileSaver::FileSaver(QObject *parent)
    : QObject(parent)
    , m_readers(FileReaders::Everybody)
{
}

FileSaver::~FileSaver() = default;

QString FileSaver::problem() const
{
    return m_problem;
}

void FileSaver::setProblem(const QString &problem)
{
    if (problem == m_problem)
        return;
    m_problem = problem;
    Q_EMIT problemChanged();
}

QString FileSaver::stagingFolder()
{
    m_staging = std::make_shared<QTemporaryDir>();
    m_readers = FileReaders::Everybody;
    // Its path is then empty, which stands for the folder that the program was started in.
    if (!m_staging->isValid()) {
        m_staging.reset();
        return {};
    }
    QDir(m_staging->path()).mkdir(QStringLiteral("forms"));
    return m_staging->path();
}

QString FileSaver::privateStagingFolder()
{
    const QString folder = stagingFolder();
    m_readers = FileReaders::Owner;
    return folder;
}

QString FileSaver::stagedPath(const QString &name)
{
    const QString folder = stagingFolder();
    if (folder.isEmpty()) {
        //% "The folder for temporary files (%1) can't be used. Free some space there or choose
        //% another one (TMPDIR), then start the program again."
        setProblem(qtTrId("trivex-app-write-no-temporary").arg(QDir::tempPath()));
    }
    return folder.isEmpty() ? QString() : folder + QLatin1Char('/') + name;
}

QString FileSaver::whyNot(const QString &path) const
{
    const QFileInfo info(path);
    const Files files;
    if (info.isDir()) {
        //% "There is a folder of this name. Choose another name."
        return qtTrId("trivex-app-write-is-folder");
    }
    const QString folder = info.absolutePath();
    // Tried, because permissions alone do not tell: disks are write-protected, or full.
    QTemporaryFile probe(folder + QStringLiteral("/.trivex-XXXXXX.part"));
    return probe.open() ? QString() : files.whyNotWritten(folder);
}

bool FileSaver::stageCopy(const QString &path)
{
    const QString copy = stagedPath(QFileInfo(path).fileName());
    return !copy.isEmpty() && QFile::copy(path, copy);
}

QString FileSaver::stagedFile(const QString &folder, Format format)
{
    switch (format) {
    case Chain:
        return folder + QStringLiteral("/forms/chain.pem");
    case Collection:
        return folder + QStringLiteral("/forms/chain.p7b");
    default:
        return folder + QStringLiteral("/export.pem");
    }
}

QByteArray FileSaver::staged(Format format) const
{
    if (!m_staging)
        return {};
    QString path = stagedFile(m_staging->path(), format);
    if (format == AsIs || format == Der) {
        const QFileInfoList found = QDir(m_staging->path()).entryInfoList(QDir::Files);
        path = found.isEmpty() ? QString() : found.first().filePath();
    }
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray contents = file.readAll();
    return format == Der ? firstBlock(contents) : contents;
}

int FileSaver::place(const QString &path, bool mayReplace, int format)
{
    const QByteArray contents = staged(Format(format));
    const Files files;
    const QString folder = QFileInfo(path).absolutePath();
    if (contents.isEmpty() || QFileInfo(path).isDir()) {
        const QString reason = whyNot(path);
        setProblem(reason.isEmpty() ? files.whyNotWritten(folder) : reason);
        return Failed;
    }
    switch (writeAtomically(path, contents, mayReplace, m_readers)) {
    case WriteResult::Written:
        setProblem({});
        m_staging.reset();
        return Saved;
    case WriteResult::Exists:
        setProblem({});
        return Exists;
    default:
        setProblem(files.whyNotWritten(folder));
        return Failed;
    }
}

} // namespace Trivex
