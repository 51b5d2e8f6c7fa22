// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/generation.h"

#include "qca/questions/mailbox.h"

#include <mutex>
#include <utility>

namespace Trivex {

/// Shared by the owner and the token's thread.
struct Generation::Shared {
    std::mutex mutex;
    /// The owner is gone, or has been told the result.
    bool isOver = false;
    TokenKeyReference made;
    /// Where the owner hears of the end.
    std::unique_ptr<Mailbox, Mailbox::DeleteLater> mailbox;

    /// False for the second caller.
    bool end(TokenKeyReference *result);

    void work(TokenConnection &connection, Operation &operation, const GenerationRequest &request);
    void post(std::function<void()> function);
};

void Generation::Shared::work(TokenConnection &connection, Operation &operation,
                              const GenerationRequest &request)
{
    const TokenKeyPtr key = generateKeyPair(connection, operation, request);
    {
        const std::lock_guard lock(mutex);
        if (!isOver) {
            made = {connection.identity().storeId, key};
            return;
        }
    }
    removeKeyPair(connection, operation, key->publicInfo);
    throw Pkcs11::Error(TokenError::Cancelled);
}

bool Generation::Shared::end(TokenKeyReference *result)
{
    const std::lock_guard lock(mutex);
    *result = std::exchange(made, {});
    mailbox.reset();
    return !std::exchange(isOver, true);
}

void Generation::Shared::post(std::function<void()> function)
{
    const std::lock_guard lock(mutex);
    if (mailbox)
        mailbox->post(std::move(function));
}

Generation::Generation(TokenTable &tokens)
    : m_tokens(tokens)
{
}

Generation::~Generation()
{
    abandon();
}

void Generation::abandon()
{
    const auto shared = std::move(m_shared);
    TokenKeyReference left;
    // A pair that the owner has not received is removed again.
    if (!shared || !shared->end(&left) || !left.key)
        return;
    m_tokens.post(
        Operation::unattended(Purpose::Remove, left.storeId),
        [left](TokenConnection &connection, Operation &operation) {
            removeKeyPair(connection, operation, left.key->publicInfo);
        },
        [](const TokenError &) {});
}

void Generation::start(const GenerationRequest &request, bool block, Done done)
{
    abandon();
    const auto shared = m_shared = std::make_shared<Shared>();
    Operation operation(Purpose::Generate);
    auto work = [shared, request](TokenConnection &connection, Operation &running) {
        shared->work(connection, running, request);
    };
    // On the owner's thread. Not when the owner is gone, which may happen while it waits.
    auto deliver = [shared, done = std::move(done)] {
        TokenKeyReference made;
        if (shared->end(&made))
            done(made);
    };
    if (block) {
        m_tokens.run(std::move(operation), std::move(work));
        deliver();
        return;
    }
    shared->mailbox.reset(new Mailbox);
    m_tokens.post(
        std::move(operation), std::move(work),
        [shared, deliver = std::move(deliver)](const TokenError &) { shared->post(deliver); });
}

} // namespace Trivex
