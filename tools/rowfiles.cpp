// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowfiles.h"

#include "qca/asn1/pem.h"
#include "qca/base/filenames.h"
#include "tools/files.h"
#include "tools/rowentry.h"
#include "tools/rows.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QUrl>

namespace Trivex {

namespace {

/// A path below `folder` that no other file has.
QString freePath(const QString &folder, const QString &name)
{
    const QFileInfo info(safeFileName(name));
    QString path = folder + QLatin1Char('/') + info.fileName();
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    for (int number = 2; QFileInfo::exists(path); ++number) {
        path = folder + QLatin1Char('/') + info.completeBaseName()
            + QStringLiteral(" (%1)").arg(number) + suffix;
    }
    return path;
}

bool writeNew(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly)
        && file.write(contents) == contents.size() && file.flush();
}

} // namespace

RowFiles::RowFiles(QObject *parent)
    : QObject(parent)
{
}

RowFiles::~RowFiles() = default;

QStringList RowFiles::refuse(const QString &why)
{
    Q_EMIT refused(why);
    return {};
}

QStringList RowFiles::write(EntryModel *entries, const QStringList &identities)
{
    if (!entries || identities.isEmpty())
        return {};
    if (identities.size() > MostRows) {
        //% "No more than %1 rows can be dragged at once. Select fewer, or export them."
        return refuse(qtTrId("trivex-app-drag-too-many").arg(MostRows));
    }
    auto folder = std::make_unique<QTemporaryDir>();
    if (!folder->isValid())
        return refuse(qtTrId("trivex-app-write-no-temporary").arg(QDir::tempPath()));
    const QSet<QString> wanted(identities.cbegin(), identities.cend());
    const int entryRole = roleNamed(*entries, QStringLiteral("keyStoreEntry"));
    const int objectRole = roleNamed(*entries, QStringLiteral("certificate"));
    QStringList urls;
    for (int row = 0; row < entries->rowCount(); ++row) {
        if (!wanted.contains(entries->identityAt(row)))
            continue;
        const auto *object = entries->index(row, 0).data(objectRole).value<QObject *>();
        const RowEncoding encoding = rowEncoding(*entries, row, entryRole, objectRole);
        if (encoding.der.isEmpty() || !object)
            continue;
        const bool isRequest = encoding.kind == ShownKind::Request;
        const QString path = freePath(folder->path(), object->property("fileName").toString());
        if (!writeNew(path,
                      writePem(isRequest ? "CERTIFICATE REQUEST" : "CERTIFICATE", encoding.der)))
            return refuse(Files().whyNotWritten(folder->path()));
        urls += QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    }
    if (!urls.isEmpty())
        m_folders.push_back(std::move(folder));
    return urls;
}

} // namespace Trivex
