// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/rememberedtokens.h"

#include "qca/base/privatedirectory.h"

#include <QDir>
#include <QStandardPaths>

#include <atomic>
#include <mutex>
#include <utility>

namespace Trivex {

namespace {

std::atomic_bool isOn{false};

/// Never deleted: a token's thread may ask when the process ends.
struct StoredSetting {
    static StoredSetting &instance()
    {
        static auto *stored = new StoredSetting;
        return *stored;
    }

    std::mutex mutex;
    RememberedSetting setting;
};

} // namespace

void setTokensRemembered(bool on)
{
    isOn = on;
}

bool tokensAreRemembered()
{
    return isOn;
}

void setRememberedSetting(RememberedSetting setting)
{
    StoredSetting &stored = StoredSetting::instance();
    const std::lock_guard lock(stored.mutex);
    stored.setting = std::move(setting);
}

bool tokensAreStillRemembered()
{
    if (!isOn)
        return false;
    RememberedSetting setting;
    {
        StoredSetting &stored = StoredSetting::instance();
        const std::lock_guard lock(stored.mutex);
        setting = stored.setting;
    }
    return !setting || setting();
}

QString rememberedTokensDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
        + QStringLiteral("/trivex/tokens");
}

void removeRememberedTokens(const QString &directory)
{
    if (!isOwnDirectory(directory))
        return;
    // The second is what an `AtomicFile` leaves behind when its process is killed.
    const QStringList kept = {QStringLiteral("*.rows"), QStringLiteral(".trivex-*.part")};
    const QFileInfoList files =
        QDir(directory).entryInfoList(kept, QDir::Files | QDir::System | QDir::Hidden);
    for (const QFileInfo &file : files)
        QFile::remove(file.filePath());
    QDir().rmdir(directory);
}

} // namespace Trivex
