// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/places.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace Trivex {

namespace {

/// The directory of the file that this code was loaded from, with links resolved; empty if unknown.
QString libraryDirectory()
{
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void *>(&libraryDirectory), &info) == 0 || !info.dli_fname)
        return {};
    const QFileInfo library(QFile::decodeName(info.dli_fname));
    return QFileInfo(library.canonicalFilePath()).absolutePath();
}

} // namespace

QString catalogueDirectory(const QString &file)
{
    const QDir configured(QStringLiteral(TRIVEX_TRANSLATIONS_DIR));
    if (configured.exists(file))
        return configured.absolutePath();
    const QDir own(libraryDirectory());
    for (const char *way : {TRIVEX_CATALOGUES_FROM_LIBRARY, "../translations"}) {
        const QDir directory(own.absoluteFilePath(QString::fromUtf8(way)));
        if (directory.exists(file))
            return directory.canonicalPath();
    }
    return configured.absolutePath();
}

QStringList providerDirectories()
{
    const QString library = libraryDirectory();
    QStringList directories;
    for (const char *way : {TRIVEX_PROVIDERS_FROM_LIBRARY, "../qca/crypto"}) {
        if (!library.isEmpty())
            directories += QDir::cleanPath(QDir(library).absoluteFilePath(QString::fromUtf8(way)));
    }
    return directories;
}

} // namespace Trivex
