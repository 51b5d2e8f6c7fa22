// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/listfile.h"

#include "qca/asn1/pem.h"
#include "qca/base/atomicfile.h"
#include "qca/base/regularfile.h"
#include "qca/chains/listreader.h"

namespace Trivex {

namespace {

/// Whether that list is all there is. What can't be read here may be somebody's key all the same.
bool holdsOnly(const QByteArray &bytes, const QByteArray &der)
{
    if (bytes.startsWith(der))
        return bytes.mid(der.size()).trimmed().isEmpty();
    int broken = 0;
    const QList<PemBlock> blocks = readPem(bytes, &broken);
    return broken == 0 && blocks.size() == 1 && blocks.first().data == der;
}

} // namespace

ListFile ListFile::read(const QString &path)
{
    ListFile file;
    const auto bytes = readRegularFile(path);
    if (!bytes)
        return file;
    file.lists = readLists(*bytes);
    file.holdsMore = !file.lists.isEmpty() && !holdsOnly(*bytes, file.lists.first());
    return file;
}

ListFile::Removal ListFile::remove(const QString &path, const QByteArray &der)
{
    const ListFile now = read(path);
    if (now.holdsMore || now.lists != QVector<QByteArray>{der})
        return Removal::Changed;
    return removeFile(path) ? Removal::Done : Removal::Failed;
}

} // namespace Trivex
