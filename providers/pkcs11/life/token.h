// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokenmemory.h"
#include "providers/pkcs11/life/worker.h"
#include "qca/tokens/tokens.h"

namespace Trivex {

/// Receives what happens on the thread of a token; called on that thread. It must live until the
/// process ends, because a module may block such a thread for any time.
class TokenListener {
public:
    /// The token has been read, or its contents have changed.
    virtual void publishContents(const TokenConnection &source) = 0;
    /// Rows to show until the token has been read: those of an earlier start, or the first ones of
    /// the reading that goes on.
    virtual void publishEarly(const TokenConnection &source, const TokenContentsPtr &contents) = 0;
    virtual void publishReadFailure(const TokenConnection &source, const TokenError &error) = 0;
    /// An operation with that purpose has begun; `publishIdle` follows its end.
    virtual void publishBusy(const TokenConnection &source, Purpose purpose) = 0;
    virtual void publishIdle(const TokenConnection &source) = 0;

protected:
    ~TokenListener() = default;
};

/// The error of an operation that failed without a failed PKCS#11 call.
TokenError failure(TokenError::Kind kind, const QString &storeId, Purpose purpose);

/// A token that is plugged in, with the thread that does all its work. Thread-safe.
///
/// The connection belongs to that thread. The caller of an operation may go away first, so an
/// operation owns what it needs and puts its results where both sides own them.
class Token {
public:
    /// The work of an operation; runs on the token's thread. On failure it throws `Pkcs11::Error`
    /// and leaves nothing half done, because it may be called once more.
    using Work = std::function<void(TokenConnection &, Operation &)>;
    /// Called after the work, on the token's thread; on the caller's thread when the token is
    /// closed.
    using Then = std::function<void(const TokenError &)>;

    /// `memory` may be null: nothing is remembered of it then.
    Token(Pkcs11::ModulePtr module, CK_SLOT_ID slot, const TokenIdentity &identity,
          const QCA::KeyStoreInfo &store, CertificateChoice choice,
          std::shared_ptr<TokenMemory> memory, TokenListener &listener);
    ~Token();

    const QString &storeId() const { return m_storeId; }
    /// See `TokenIdentity`. Two tokens may have the same.
    const QString &uri() const { return m_uri; }
    /// Not all of it could be listed, so that it is to be read again. Thread-safe.
    bool isUnlisted() const { return m_connection->isUnlisted(); }
    /// See `Remaking`. Thread-safe.
    Remaking &remaking() { return m_connection->remaking(); }
    /// Identifies this token in what its thread publishes. For comparison only: the object belongs
    /// to the token's thread.
    const TokenConnection *connection() const { return m_connection.get(); }

    /// Starts the thread, shows what is remembered, and reads the token for the first time. A login
    /// that was not used for `loginLifetime` ends (0: never).
    void start(Worker::Milliseconds loginLifetime);
    /// Reads the token again; does not wait.
    void read();
    /// Runs `work` and does not wait. A failure is published.
    void post(Operation operation, Work work, Then then);
    /// Asks the running operation and the queued ones to end. The queued ones never run, and a
    /// caller that waits for a signature or a key returns at once. Later operations are not
    /// affected.
    void cancel();
    /// The same for the operations that have this cancellation.
    void cancel(const CancellationPtr &task);
    /// Accepts no more work: queued operations fail, and the open question is withdrawn. Does not
    /// wait.
    void close();

private:
    class Task;
    static void perform(Task &task, TokenListener &listener);
    static TokenError attempt(Task &task);
    static void work(Task &task);
    std::vector<std::shared_ptr<Task>> openTasks() const;

    const QString m_storeId;
    const QString m_uri;
    TokenListener &m_listener;
    /// Shared with the thread, which may outlive this object.
    std::shared_ptr<TokenConnection> m_connection;
    std::shared_ptr<TokenMemory> m_memory;
    mutable std::mutex m_tasksMutex;
    std::vector<std::weak_ptr<Task>> m_tasks;
    Worker m_worker;
};

using TokenPtr = std::shared_ptr<Token>;

} // namespace Trivex
