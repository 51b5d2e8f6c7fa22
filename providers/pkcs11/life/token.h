// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokenconnection.h"
#include "providers/pkcs11/life/worker.h"
#include "qca/tokens/tokens.h"

namespace Trivex {

/// Hears on the thread of a token what happens there. It has to live as long as the process does,
/// because a module may hold such a thread for as long as it likes.
class TokenListener {
public:
    virtual void publishContents(const TokenConnection &source) = 0;
    virtual void publishReadFailure(const TokenConnection &source) = 0;
    virtual void publishBusy(const TokenConnection &source, Purpose purpose) = 0;
    virtual void publishIdle(const TokenConnection &source) = 0;

protected:
    ~TokenListener() = default;
};

/// Why an operation fails without a call that failed.
TokenError failure(TokenError::Kind kind, const QString &storeId, Purpose purpose);

/// A token that is plugged in, with the thread on which all its work is done. Thread-safe.
///
/// The connection belongs to that thread. Whoever waits for an operation may go away first, so an
/// operation holds what it needs by itself and puts its results where both sides own them.
class Token {
public:
    /// The work of an operation, on the token's thread; throws `Pkcs11::Error` and leaves nothing
    /// half done then, for it may be called once more.
    using Work = std::function<void(TokenConnection &, Operation &)>;
    /// What follows it, on the token's thread, or on the caller's when the token has been closed.
    using Then = std::function<void(const TokenError &)>;

    Token(Pkcs11::ModulePtr module, CK_SLOT_ID slot, const TokenIdentity &identity,
          const QCA::KeyStoreInfo &store, CertificateChoice choice, TokenListener &listener);
    ~Token();

    const QString &storeId() const { return m_storeId; }
    /// Tells this token from others in what its thread publishes.
    const TokenConnection *connection() const { return m_connection.get(); }

    /// Starts the thread and the first reading. A login that has not been used for `loginLifetime`
    /// ends (0: never).
    void start(Worker::Milliseconds loginLifetime);
    /// Reads the token anew.
    void read();
    /// Runs `work` and does not wait; failures are published.
    void post(Operation operation, Work work, Then then);
    /// Asks the operations that run or wait for their turn to end. What waits never runs, and
    /// whoever waits for a signature or a key is let go at once. What comes later is not concerned.
    void cancel();
    /// Takes no more work: what waits fails, the open question is withdrawn. Does not wait.
    void close();

private:
    class Task;
    static void perform(Task &task, TokenListener &listener);
    static TokenError attempt(Task &task);
    static void work(Task &task);
    std::vector<std::shared_ptr<Task>> openTasks() const;

    const QString m_storeId;
    TokenListener &m_listener;
    /// Shared with the thread, which may outlive this object.
    std::shared_ptr<TokenConnection> m_connection;
    mutable std::mutex m_tasksMutex;
    std::vector<std::weak_ptr<Task>> m_tasks;
    Worker m_worker;
};

using TokenPtr = std::shared_ptr<Token>;

} // namespace Trivex
