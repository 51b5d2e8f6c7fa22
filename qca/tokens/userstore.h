// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

#include <functional>

namespace Trivex {

/// Id and name of the store of the user's own certificate files.
TRIVEX_QCA_EXPORT QString userStoreId();

/// The directory of its files: "trivex/certificates" below the user's data directory
/// (`QStandardPaths::GenericDataLocation`, which XDG_DATA_HOME sets).
TRIVEX_QCA_EXPORT QString userStoreDirectory();

/// Called once, on any thread, with the id of what was written; empty when it could not be.
using UserWriteDone = std::function<void(const QString &entryId)>;

/// The keeper of that store. Writes to it go past QCA, as those to tokens do: a second key store
/// object of one store would take the first one's news away.
class TRIVEX_QCA_EXPORT UserStoreBackend {
public:
    virtual ~UserStoreBackend();

    /// Starts the write and returns. Any thread.
    virtual void startWrite(const QCA::Certificate &certificate, UserWriteDone done) = 0;
};

/// The one that was set last keeps the store. Any thread.
TRIVEX_QCA_EXPORT void setUserStore(UserStoreBackend *backend);
/// Takes it back, unless another was set since; no call runs any more when this returns.
TRIVEX_QCA_EXPORT void unsetUserStore(UserStoreBackend *backend);

/// As `UserStoreBackend::startWrite`; false when nobody keeps the store.
TRIVEX_QCA_EXPORT bool startUserWrite(const QCA::Certificate &certificate, UserWriteDone done);

} // namespace Trivex
