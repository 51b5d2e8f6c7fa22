// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/token.h"

#include "qca/tokens/tokenregistry.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace Trivex {

using Pkcs11::Error;

namespace {

TokenError describe(const Error &error, const QString &storeId, Purpose purpose)
{
    TokenError description = failure(error.kind(), storeId, purpose);
    description.function = QString::fromLatin1(error.function());
    description.returnValue = error.returnValue();
    if (error.returnValue() != CKR_OK)
        description.returnName = Pkcs11::returnValueName(error.returnValue());
    return description;
}

void readQuietly(TokenConnection &connection)
{
    try {
        connection.read();
    } catch (const Error &error) {
        connection.noteError(error);
    } catch (const std::exception &) {
        // Out of memory: what is known of the token stays.
    }
}

/// The caller has to know whether it was done.
bool changesToken(Purpose purpose)
{
    return purpose == Purpose::Write || purpose == Purpose::Remove || purpose == Purpose::SetPin
        || purpose == Purpose::Initialise;
}

/// What is remembered of the token may no longer be so.
bool mayChange(Purpose purpose)
{
    return changesToken(purpose) || purpose == Purpose::Generate;
}

} // namespace

TokenError failure(TokenError::Kind kind, const QString &storeId, Purpose purpose)
{
    TokenError result;
    result.kind = kind;
    result.keyStoreId = storeId;
    result.purpose = purpose;
    return result;
}

/// One operation on its way. It may be ended early, by its token's removal or by a cancellation,
/// while a module still holds its thread; and when it is dropped without having run, its token is
/// gone.
class Token::Task {
public:
    Task(std::shared_ptr<TokenConnection> connection, std::shared_ptr<TokenMemory> memory,
         Operation operation, Work work, Then then)
        : connection(std::move(connection))
        , memory(std::move(memory))
        , purpose(operation.purpose())
        , isUnattended(operation.isUnattended())
        , isQuiet(operation.isAttended() || (isUnattended && purpose == Purpose::Look))
        , isAttended(operation.isAttended())
        , cancellation(operation.cancellation())
        , operation(std::move(operation))
        , work(std::move(work))
        , m_then(std::move(then))
    {
    }

    ~Task() { finish(TokenError::TokenRemoved); }
    Task(const Task &) = delete;
    Task &operator=(const Task &) = delete;

    /// True for one caller alone, who may do the work or drop it. Thread-safe.
    bool claim() { return !m_claimed.exchange(true); }

    /// Asks for the end. What waits for its turn never runs, and ends at once; of what runs already
    /// the outcome is waited for if it has to be known. Thread-safe.
    void cancel(TokenError::Kind kind, bool mustWait)
    {
        cancellation->request();
        const bool neverRuns = claim();
        if (neverRuns)
            work = {};
        if (neverRuns || !mustWait)
            finish(kind);
    }

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
        if (error.kind != TokenError::NoError && !isQuiet)
            publishTokenError(error);
        then(error);
    }

    void finish(TokenError::Kind kind)
    {
        finish(failure(kind, connection->identity().storeId, purpose));
    }

    const std::shared_ptr<TokenConnection> connection;
    const std::shared_ptr<TokenMemory> memory;
    const Purpose purpose;
    const bool isUnattended;
    /// Nobody misses what a look would have found; who attends tells of a failure.
    const bool isQuiet;
    const bool isAttended;
    const CancellationPtr cancellation;
    // Used by who has claimed the task.
    Operation operation;
    Work work;

private:
    std::atomic<bool> m_claimed = false;
    std::mutex m_mutex;
    Then m_then;
};

Token::Token(Pkcs11::ModulePtr module, CK_SLOT_ID slot, const TokenIdentity &identity,
             const QCA::KeyStoreInfo &store, CertificateChoice choice,
             std::shared_ptr<TokenMemory> memory, TokenListener &listener)
    : m_storeId(identity.storeId)
    , m_uri(identity.uri)
    , m_listener(listener)
    , m_connection(
          std::make_shared<TokenConnection>(std::move(module), slot, identity, store, choice))
    , m_memory(std::move(memory))
{
}

Token::~Token() = default;

void Token::start(Worker::Milliseconds loginLifetime)
{
    m_worker.start(
        loginLifetime, [connection = m_connection] { connection->logout(); },
        [connection = m_connection] { connection->end(); });
    if (m_memory) {
        m_worker.post([connection = m_connection, memory = m_memory, &listener = m_listener] {
            try {
                if (const TokenContentsPtr remembered = memory->recall())
                    listener.publishEarly(*connection, remembered);
            } catch (const std::exception &) {
                // Out of memory: the reading shows what there is.
            }
        });
    }
    read();
}

void Token::read()
{
    m_worker.post([connection = m_connection, memory = m_memory, &listener = m_listener] {
        const auto fail = [&](const Error &error) {
            connection->noteFailure(error);
            listener.publishReadFailure(
                *connection, describe(error, connection->identity().storeId, Purpose::Look));
        };
        try {
            // Remembered rows stay until it is known which of them are still there.
            TokenConnection::PartHandler showPart;
            if (!memory || !memory->hasRecalled()) {
                showPart = [&](const TokenContentsPtr &part) {
                    listener.publishEarly(*connection, part);
                };
            }
            connection->read(showPart);
            connection->noteSuccess();
            listener.publishContents(*connection);
            if (memory)
                memory->note(*connection);
        } catch (const Error &error) {
            fail(error);
        } catch (const std::exception &) {
            // Out of memory: what was not caught on this thread would end the program.
            fail(Error(CKR_HOST_MEMORY, ""));
        }
    });
}

void Token::post(Operation operation, Work work, Then then)
{
    const auto task = std::make_shared<Task>(m_connection, m_memory, std::move(operation),
                                             std::move(work), std::move(then));
    {
        const std::lock_guard lock(m_tasksMutex);
        const auto isOver = [](const std::weak_ptr<Task> &one) { return one.expired(); };
        m_tasks.erase(std::remove_if(m_tasks.begin(), m_tasks.end(), isOver), m_tasks.end());
        m_tasks.push_back(task);
    }
    m_worker.post([task, &listener = m_listener] { perform(*task, listener); });
}

std::vector<std::shared_ptr<Token::Task>> Token::openTasks() const
{
    std::vector<std::shared_ptr<Task>> open;
    const std::lock_guard lock(m_tasksMutex);
    for (const auto &weak : m_tasks) {
        if (auto task = weak.lock())
            open.push_back(std::move(task));
    }
    return open;
}

void Token::perform(Task &task, TokenListener &listener)
{
    TokenConnection &connection = *task.connection;
    if (!task.claim())
        return;
    const TokenConnection::Scope scope(connection, task.cancellation);
    listener.publishBusy(connection, task.purpose);
    const TokenContentsPtr before = connection.contents();
    const TokenError error = attempt(task);
    // The failed operation may have undone changes that it had noted.
    const bool isRemade = connection.remaking().isOver();
    const bool mayDiffer = connection.contents() != before || connection.isUnlisted();
    if (error.kind != TokenError::NoError && mayDiffer && !isRemade)
        readQuietly(connection);
    if (connection.contents() != before)
        listener.publishContents(connection);
    listener.publishIdle(connection);
    // The work releases what it holds first, so that the waiting caller is its only owner.
    task.work = {};
    task.finish(error);
}

void Token::work(Task &task)
{
    TokenConnection &connection = *task.connection;
    try {
        task.work(connection, task.operation);
    } catch (const Error &error) {
        // A typed PIN is sent only once.
        if (task.isAttended || !connection.learnsLoginFrom(error))
            throw;
        task.work(connection, task.operation);
    }
}

TokenError Token::attempt(Task &task)
{
    TokenConnection &connection = *task.connection;
    const QString &storeId = connection.identity().storeId;
    try {
        connection.checkCancelled();
        // Without the memory for it nothing is changed either.
        if (task.memory && mayChange(task.purpose))
            task.memory->forget();
        work(task);
        connection.noteSuccess();
        return {};
    } catch (const Error &error) {
        connection.noteFailure(error);
        return describe(error, storeId, task.purpose);
    } catch (const std::exception &) {
        // Out of memory, perhaps while a change was undone or noted.
        if (mayChange(task.purpose))
            connection.noteUnlisted();
        return describe(Error(CKR_HOST_MEMORY, ""), storeId, task.purpose);
    }
}

void Token::cancel()
{
    // A module can't be stopped in the middle of a call, but nobody has to wait for a result that
    // is not wanted. A change of the token is waited for: its outcome has to be known.
    for (const auto &task : openTasks()) {
        if (!task->isUnattended)
            task->cancel(TokenError::Cancelled, changesToken(task->purpose));
    }
}

void Token::cancel(const CancellationPtr &task)
{
    for (const auto &open : openTasks()) {
        if (open->cancellation == task)
            open->cancel(TokenError::Cancelled, changesToken(open->purpose));
    }
}

void Token::close()
{
    m_worker.stop();
    for (const auto &task : openTasks())
        task->cancel(TokenError::TokenRemoved, false);
}

} // namespace Trivex
