// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/token.h"

#include "providers/pkcs11/core/tokenservice.h"
#include "qca/engine/tokenregistry.h"

#include <algorithm>
#include <utility>

namespace Trivex {

using Pkcs11::Error;

namespace {

TokenError describe(const Error &error, const QString &storeId, Purpose purpose)
{
    TokenError description;
    description.kind = error.kind();
    description.keyStoreId = storeId;
    description.purpose = purpose;
    description.function = QString::fromLatin1(error.function());
    description.returnValue = error.returnValue();
    return description;
}

void readQuietly(TokenConnection &connection)
{
    try {
        connection.read();
    } catch (const Error &error) {
        connection.noteError(error);
    }
}

bool changesObjects(Purpose purpose)
{
    return purpose == Purpose::Write || purpose == Purpose::Remove;
}

} // namespace

/// One operation on its way. It may be ended early, by its token's removal or by a cancellation,
/// while a module still holds its thread; and when it is dropped without having run, its token is
/// gone.
class Token::Task {
public:
    Task(std::shared_ptr<TokenConnection> connection, Operation operation, Work work, Then then)
        : connection(std::move(connection))
        , purpose(operation.purpose())
        , operation(std::move(operation))
        , work(std::move(work))
        , m_then(std::move(then))
    {
    }

    ~Task() { finish(TokenError::TokenRemoved); }
    Task(const Task &) = delete;
    Task &operator=(const Task &) = delete;

    /// The first call decides. Thread-safe.
    void finish(const TokenError &error)
    {
        Then then;
        {
            const std::lock_guard lock(m_mutex);
            then.swap(m_then);
        }
        if (!then)
            return;
        if (error.kind != TokenError::NoError)
            publishTokenError(error);
        then(error);
    }

    void finish(TokenError::Kind kind)
    {
        finish(describe(Error(kind), connection->identity().storeId, purpose));
    }

    const std::shared_ptr<TokenConnection> connection;
    const Purpose purpose;
    // Used on the token's thread alone.
    Operation operation;
    Work work;

private:
    std::mutex m_mutex;
    Then m_then;
};

Token::Token(Pkcs11::ModulePtr module, CK_SLOT_ID slot, const TokenIdentity &identity,
             const QCA::KeyStoreInfo &store, CertificateChoice choice)
    : m_storeId(identity.storeId)
    , m_connection(
          std::make_shared<TokenConnection>(std::move(module), slot, identity, store, choice))
{
}

Token::~Token() = default;

void Token::start(Worker::Milliseconds loginLifetime)
{
    m_worker.start(loginLifetime, [connection = m_connection] { connection->logout(); });
    read();
}

void Token::read()
{
    m_worker.post([connection = m_connection] {
        auto &service = TokenService::instance();
        try {
            connection->read();
            service.publishContents(*connection);
        } catch (const Error &error) {
            connection->noteError(error);
            service.publishReadFailure(*connection);
        }
    });
}

TokenError Token::run(Operation operation, Work work)
{
    struct Outcome {
        Waiter completion;
        TokenError error;
    };
    const auto outcome = std::make_shared<Outcome>();
    outcome->error.kind = TokenError::Cancelled;
    post(std::move(operation), std::move(work), [outcome](const TokenError &error) {
        outcome->error = error;
        outcome->completion.resolve();
    });
    outcome->completion.wait();
    // Unresolved when the application has ended the waiting; the work may still go on.
    return outcome->completion.isResolved() ? outcome->error : cancelledError();
}

TokenError Token::cancelledError() const
{
    TokenError error;
    error.kind = TokenError::Cancelled;
    error.keyStoreId = m_storeId;
    return error;
}

void Token::post(Operation operation, Work work, Then then)
{
    const auto task = std::make_shared<Task>(m_connection, std::move(operation), std::move(work),
                                             std::move(then));
    {
        const std::lock_guard lock(m_tasksMutex);
        const auto isOver = [](const std::weak_ptr<Task> &one) { return one.expired(); };
        m_tasks.erase(std::remove_if(m_tasks.begin(), m_tasks.end(), isOver), m_tasks.end());
        m_tasks.push_back(task);
    }
    m_worker.post([task] { perform(*task); });
}

void Token::endTasks(TokenError::Kind kind, bool evenWrites)
{
    std::vector<std::weak_ptr<Task>> tasks;
    {
        const std::lock_guard lock(m_tasksMutex);
        tasks = m_tasks;
    }
    for (const auto &weak : tasks) {
        const auto task = weak.lock();
        if (task && (evenWrites || !changesObjects(task->purpose)))
            task->finish(kind);
    }
}

void Token::perform(Task &task)
{
    TokenConnection &connection = *task.connection;
    auto &service = TokenService::instance();
    connection.clearCancel();
    service.publishBusy(connection, task.purpose);
    const TokenContentsPtr before = connection.contents();
    const TokenError error = attempt(task);
    // What was noted on the way may have been undone.
    if (error.kind != TokenError::NoError && connection.contents() != before)
        readQuietly(connection);
    if (connection.contents() != before)
        service.publishContents(connection);
    service.publishIdle(connection);
    // What the work holds goes first, so that whoever waits is its only owner afterwards.
    task.work = {};
    task.finish(error);
}

TokenError Token::attempt(Task &task)
{
    TokenConnection &connection = *task.connection;
    const QString &storeId = connection.identity().storeId;
    try {
        task.work(connection, task.operation);
        return {};
    } catch (const Error &error) {
        connection.noteError(error);
        return describe(error, storeId, task.purpose);
    } catch (const std::exception &) {
        return describe(Error(CKR_HOST_MEMORY, ""), storeId, task.purpose);
    }
}

void Token::cancel()
{
    m_connection->requestCancel();
    cancelQuestions(m_storeId);
    // A module can't be stopped in the middle of a call, but nobody has to wait for a result that
    // is not wanted. A write or removal is waited for: its outcome has to be known.
    endTasks(TokenError::Cancelled, false);
}

void Token::close()
{
    m_worker.stop();
    m_connection->requestCancel();
    cancelQuestions(m_storeId);
    endTasks(TokenError::TokenRemoved, true);
}

} // namespace Trivex
