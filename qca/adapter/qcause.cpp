// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/qcause.h"

#include "qca/adapter/providerplugins.h"
#include "qca/adapter/stores.h"
#include "qca/base/places.h"
#include "qca/base/processend.h"

#include <QCoreApplication>
#include <QPointer>
#include <QVector>
#include <QtCrypto>

#include <algorithm>
#include <mutex>

namespace Trivex {

namespace {

constexpr int SecureMemoryKiB = 64;

/// Never deleted: an application object may end after it.
struct QcaUse {
    std::mutex mutex;
    bool isUsed = false;
    /// How often QCA was kept from ending with an application object.
    int kept = 0;
    QVector<QPointer<QObject>> users;

    static QcaUse &instance()
    {
        static auto *use = new QcaUse;
        return *use;
    }

    bool hasUsers()
    {
        users.erase(std::remove_if(users.begin(), users.end(),
                                   [](const QPointer<QObject> &user) { return user.isNull(); }),
                    users.end());
        return !users.isEmpty();
    }
};

/// When the application object goes, before QCA's own routine.
void letGoOfQca()
{
    if (ProcessEnd::isForkedChild())
        return;
    QcaUse &use = QcaUse::instance();
    const bool isFree = deleteClosedStores();
    const std::lock_guard lock(use.mutex);
    use.isUsed = false;
    if (isFree && !use.hasUsers()) {
        QCA::deinit();
        return;
    }
    // QCA's own routine, which is next, takes one for whoever was the first to start it.
    QCA::init();
    ++use.kept;
}

/// Releases QCA for the users of an earlier application object.
void giveBack(QcaUse *use)
{
    if (use->hasUsers())
        return;
    for (; use->kept > 0; --use->kept)
        QCA::deinit();
}

} // namespace

void useQca()
{
    ProcessEnd::watchThisThread();
    QcaUse &use = QcaUse::instance();
    const std::lock_guard lock(use.mutex);
    if (use.isUsed)
        return;
    use.isUsed = true;
    giveBack(&use);
    QCA::init(QCA::Practical, SecureMemoryKiB);
    qAddPostRoutine(&letGoOfQca);
    registerProviders(providerDirectories());
}

void keepQcaFor(QObject *user)
{
    QcaUse &use = QcaUse::instance();
    const std::lock_guard lock(use.mutex);
    use.users.append(user);
}

} // namespace Trivex
