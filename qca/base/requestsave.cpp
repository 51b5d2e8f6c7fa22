// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/requestsave.h"

#include "qca/base/atomicfile.h"
#include "qca/base/requestfiles.h"

#include <QFileInfo>

namespace Trivex {

namespace {

/// Each time another process was quicker, so several at once get on.
constexpr int SaveAttempts = 100;

bool isTaken(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool isSameFile(const QString &a, const QString &b)
{
    return !a.isEmpty() && !b.isEmpty()
        && QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

} // namespace

void RequestSave::findName()
{
    // The old file is as good as gone, so its name is free.
    const QString first = requestDirectory() + requestFileName(commonName);
    path = freePath(first, [this](const QString &candidate) {
        return isTaken(candidate) && !isSameFile(candidate, oldPath);
    });
    fileName = QFileInfo(path).fileName();
}

bool RequestSave::write()
{
    const QByteArray content = request.toPEM().toUtf8();
    if (content.isEmpty())
        return false;
    auto result = WriteResult::Exists;
    // Another process may take the name in between.
    for (int i = 0; i < SaveAttempts && result == WriteResult::Exists; ++i) {
        findName();
        result = writeAtomically(path, content, isSameFile(path, oldPath));
    }
    if (result != WriteResult::Written)
        return false;
    if (!oldPath.isEmpty() && !isSameFile(path, oldPath))
        removeFile(oldPath);
    return true;
}

} // namespace Trivex
