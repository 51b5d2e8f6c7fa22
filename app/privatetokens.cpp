// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/privatetokens.h"

#include "qca/base/privatedirectory.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>

namespace Trivex {

namespace {

constexpr const char *Variable = "SOFTHSM2_CONF";
constexpr QFile::Permissions OwnerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

/// Whether a folder of SoftHSM's tokens has one, as far as this user may look into it.
bool hasTokens(const QString &folder)
{
    return !folder.isEmpty()
        && !QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Readable).isEmpty();
}

/// What a configuration of SoftHSM names as its folder; empty where nobody may read it.
QString tokenFolderOf(const QString &file)
{
    QFile configuration(file);
    if (!configuration.open(QIODevice::ReadOnly))
        return {};
    const auto lines = configuration.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const int equals = line.indexOf('=');
        if (equals > 0 && line.left(equals).trimmed() == "directories.tokendir")
            return QFile::decodeName(line.mid(equals + 1).trimmed());
    }
    return {};
}

bool isSoftHsmKnown()
{
    const QDir modules(QStringLiteral(TRIVEX_P11_MODULE_CONFIGS));
    const bool isConfigured =
        !modules.entryList({QStringLiteral("*softhsm*.module")}, QDir::Files).isEmpty();
    return isConfigured || qgetenv("TRIVEX_PKCS11_MODULES").contains("softhsm");
}

/// The folder with its configuration; what is there stays. False where it can't be made.
bool prepare(const QString &folder)
{
    const QString file = folder + QStringLiteral("/softhsm2.conf");
    const QString tokens = folder + QStringLiteral("/tokens");
    if (!makePrivateDirectory(tokens) || !QFile::setPermissions(folder, OwnerOnly))
        return false;
    if (QFile::exists(file))
        return true;
    QSaveFile configuration(file);
    // Flushed first: `commit` does not look at what went wrong with the bytes in its buffer.
    return configuration.open(QIODevice::WriteOnly)
        && configuration.write("directories.tokendir = " + QFile::encodeName(tokens)
                               + "\nobjectstore.backend = file\nlog.level = ERROR\n")
        > 0
        && configuration.flush() && configuration.commit();
}

} // namespace

QStringList systemSoftHsmFiles()
{
    return {QStringLiteral("/etc/softhsm/softhsm2.conf"), QStringLiteral("/etc/softhsm2.conf")};
}

void usePrivateTokens(const QStringList &systemFiles)
{
    const QString ownFile = QDir::homePath() + QStringLiteral("/.config/softhsm2/softhsm2.conf");
    if (qEnvironmentVariableIsSet(Variable) || QFile::exists(ownFile))
        return;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/trivex/softhsm");
    const bool isElsewhere =
        std::any_of(systemFiles.cbegin(), systemFiles.cend(),
                    [](const QString &file) { return hasTokens(tokenFolderOf(file)); });
    if (!hasTokens(folder + QStringLiteral("/tokens")) && (isElsewhere || !isSoftHsmKnown()))
        return;
    // In its configuration these would end the path.
    if (folder.contains(QLatin1Char('#')) || folder.contains(QLatin1Char('\n')))
        return;
    if (prepare(folder))
        qputenv(Variable, QFile::encodeName(folder + QStringLiteral("/softhsm2.conf")));
}

} // namespace Trivex
