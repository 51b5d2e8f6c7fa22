// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/userstore.h"

#include <QStandardPaths>

#include <mutex>
#include <utility>

namespace Trivex {

namespace {

/// Never deleted, because QCA's threads may end late.
struct Keeper {
    std::mutex mutex;
    UserStoreBackend *backend = nullptr;

    static Keeper &instance()
    {
        static auto *keeper = new Keeper;
        return *keeper;
    }
};

} // namespace

UserStoreBackend::~UserStoreBackend() = default;

QString userStoreId()
{
    return QStringLiteral("USER");
}

QString userStoreDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QLatin1String("/trivex/certificates");
}

void setUserStore(UserStoreBackend *backend)
{
    Keeper &keeper = Keeper::instance();
    const std::lock_guard lock(keeper.mutex);
    keeper.backend = backend;
}

void unsetUserStore(UserStoreBackend *backend)
{
    Keeper &keeper = Keeper::instance();
    const std::lock_guard lock(keeper.mutex);
    if (keeper.backend == backend)
        keeper.backend = nullptr;
}

bool startUserWrite(const QCA::Certificate &certificate, UserWriteDone done)
{
    Keeper &keeper = Keeper::instance();
    // Held while the write is posted, which waits for nothing: so the backend can't go meanwhile.
    const std::lock_guard lock(keeper.mutex);
    if (!keeper.backend || certificate.isNull())
        return false;
    keeper.backend->startWrite(certificate, std::move(done));
    return true;
}

} // namespace Trivex
