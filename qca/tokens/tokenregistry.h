// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/keyextraction.h"
#include "qca/tokens/storechange.h"
#include "qca/tokens/tokenadministration.h"
#include "qca/tokens/tokens.h"

namespace Trivex {

/// The services of a token provider for the adapter. The provider registers it while QCA has the
/// provider loaded.
/// Called on any thread, never under a lock; so a call may still run, or begin, when the backend
/// has just been taken back, and it has to exist until the end of the process.
class TRIVEX_QCA_EXPORT TokenBackend {
public:
    virtual ~TokenBackend();

    /// The private key in store `keyStoreId` that belongs to `publicKey`, whether it has a
    /// certificate or not; null when there is none. May ask for a PIN where the token hides its
    /// keys before login.
    virtual QCA::PrivateKey findPrivateKey(const QString &keyStoreId,
                                           const QCA::PublicKey &publicKey) = 0;

    /// The private key of that id, see `tokenKeyOfId`.
    virtual QCA::PrivateKey keyOfId(const QString &keyStoreId, const QString &keyId) = 0;

    /// See `TokenMonitor::takeLook`; `publishTokenLook` follows.
    virtual void takeLook(const QString &keyStoreId) = 0;

    /// Asks the operations on `keyStoreId` to end: the running one as soon as its module lets it,
    /// those that wait for their turn at once.
    virtual void cancelOperation(const QString &keyStoreId) = 0;

    /// Starts the change and returns; `done` follows, perhaps before that. False when the store is
    /// none of its own: nothing happens then. The answers stored for the store are taken at once.
    virtual bool startChange(const QString &keyStoreId, const StoreChange &change,
                             StoreChangeDone done) = 0;

    /// See `startTokenAdministration`. Null when the store is none of its own.
    virtual CancellationPtr startAdministration(const QString &keyStoreId, TokenAdministration task,
                                                TokenAdministrationDone done) = 0;

    /// See `startKeyExtraction`. Null when the store is none of its own.
    virtual CancellationPtr startExtraction(const QString &keyStoreId, const QByteArray &publicInfo,
                                            ExtractionDone done) = 0;

    /// See `cancelTokenTask`, which has requested the end already.
    virtual void cancelTask(const CancellationPtr &task) = 0;

    /// See `forgetTokens`. Does not wait.
    virtual void forgetTokens() = 0;

    /// See `TokenMonitor::silentModules`; `publishModuleAnswer` follows.
    virtual QStringList silentModules() const = 0;
};

TRIVEX_QCA_EXPORT void setTokenBackend(TokenBackend *backend);

/// As `TokenBackend::startChange`; false, too, when no token provider is loaded.
TRIVEX_QCA_EXPORT bool startStoreChange(const QString &keyStoreId, const StoreChange &change,
                                        StoreChangeDone done);

/// The number for the next status to publish. To be taken under the lock under which the status is
/// copied: the publishing happens outside of it, where threads may overtake each other.
TRIVEX_QCA_EXPORT quint64 nextStatusNumber();

/// Publishes what changed of a token; thread-safe. A status with `present` false and an empty name
/// forgets the token. Ignored when a status of the same token with a higher number has come before.
TRIVEX_QCA_EXPORT void publishTokenStatus(const TokenStatus &status, quint64 number);

/// Publishes what was found on a token that is there; thread-safe. It is forgotten with the token.
TRIVEX_QCA_EXPORT void publishTokenLook(const QString &keyStoreId, const TokenLook &look);

/// Publishes that a module has listed its tokens for the first time, or is gone; thread-safe.
TRIVEX_QCA_EXPORT void publishModuleAnswer();

/// Publishes the outcome of an operation that failed, for people to read; thread-safe.
TRIVEX_QCA_EXPORT void publishTokenError(const TokenError &error);

} // namespace Trivex
