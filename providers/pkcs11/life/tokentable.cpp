// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokentable.h"

#include "providers/pkcs11/contents/tokenlook.h"
#include "providers/pkcs11/life/numberedstatus.h"
#include "qca/questions/waiter.h"

#include <algorithm>

namespace Trivex {

TokenTable::TokenTable(FirstScan &scan)
    : m_scan(scan)
{
}

TokenTable::~TokenTable() = default;

void TokenTable::open()
{
    const std::lock_guard lock(m_mutex);
    m_isOpen = true;
}

void TokenTable::setLoginLifetime(Worker::Milliseconds lifetime)
{
    const std::lock_guard lock(m_mutex);
    m_loginLifetime = lifetime;
}

void TokenTable::close()
{
    const std::lock_guard lock(m_mutex);
    m_isOpen = false;
}

void TokenTable::clear()
{
    std::vector<std::shared_ptr<TokenRecord>> records;
    std::vector<NumberedStatus> forgotten;
    {
        const std::lock_guard lock(m_mutex);
        records = m_records.takeAll();
        for (const auto &one : records) {
            TokenStatus gone;
            gone.keyStoreId = one->store.storeId;
            forgotten.emplace_back(gone);
        }
    }
    for (const NumberedStatus &one : forgotten)
        one.publish();
}

QList<int> TokenTable::stores() const
{
    const std::lock_guard lock(m_mutex);
    QList<int> ids;
    for (const auto &one : m_records)
        ids.append(one->store.id);
    return ids;
}

std::optional<TokenStore> TokenTable::store(int id) const
{
    const std::lock_guard lock(m_mutex);
    const TokenRecord *found = m_records.find(id);
    return found ? std::make_optional(found->store) : std::nullopt;
}

std::optional<TokenStore> TokenTable::store(const QString &storeId) const
{
    const std::lock_guard lock(m_mutex);
    const TokenRecord *found = m_records.find(storeId);
    return found ? std::make_optional(found->store) : std::nullopt;
}

TokenPtr TokenTable::token(const QString &storeId) const
{
    const std::lock_guard lock(m_mutex);
    const TokenRecord *found = m_records.find(storeId);
    return found ? found->token : nullptr;
}

TokenError TokenTable::run(Operation operation, Token::Work work) const
{
    struct Outcome {
        Waiter completion;
        TokenError error;
    };
    const auto outcome = std::make_shared<Outcome>();
    const CancellationPtr cancellation = operation.cancellation();
    const TokenError abandoned =
        failure(TokenError::Cancelled, operation.keyStoreId(), operation.purpose());
    post(std::move(operation), std::move(work), [outcome](const TokenError &error) {
        outcome->error = error;
        outcome->completion.resolve();
    });
    outcome->completion.wait();
    if (outcome->completion.isResolved())
        return outcome->error;
    // The application has ended the waiting, and nobody will hear of the outcome.
    cancellation->request();
    return abandoned;
}

void TokenTable::post(Operation operation, Token::Work work, Token::Then then) const
{
    if (const TokenPtr live = token(operation.keyStoreId())) {
        live->post(std::move(operation), std::move(work), std::move(then));
        return;
    }
    const TokenError gone =
        failure(TokenError::TokenRemoved, operation.keyStoreId(), operation.purpose());
    if (!operation.isUnattended() && !operation.isAttended())
        publishTokenError(gone);
    then(gone);
}

void TokenTable::cancel(const QString &storeId) const
{
    if (const TokenPtr live = token(storeId))
        live->cancel();
}

void TokenTable::cancel(const CancellationPtr &task) const
{
    std::vector<TokenPtr> all;
    {
        const std::lock_guard lock(m_mutex);
        for (const auto &one : m_records)
            all.push_back(one->token);
    }
    for (const TokenPtr &one : all) {
        if (one)
            one->cancel(task);
    }
}

TokenRecord *TokenTable::recordOf(const TokenConnection &source) const
{
    TokenRecord *found = m_records.find(source.identity().storeId);
    const bool isCurrent = found && found->token && found->token->connection() == &source;
    return isCurrent ? found : nullptr;
}

std::shared_ptr<TokenMemory> TokenTable::memoryOf(const TokenRecord &record,
                                                  const TokenIdentity &identity,
                                                  const CK_TOKEN_INFO &info)
{
    // The anchors of a trust module are everybody's, and quick to read.
    const bool isKept = record.store.type != QCA::KeyStore::System && !record.isTwin();
    return isKept ? TokenMemory::of(m_rows, identity, info) : nullptr;
}

TokenPtr TokenTable::attach(const Pkcs11::ModulePtr &module, const TokenPlace &place,
                            const CK_TOKEN_INFO &info, CertificateChoice choice)
{
    TokenIdentity identity = identityOf(info);
    const TokenFlags flags = flagsOf(info);
    TokenPtr token;
    NumberedStatus status;
    Worker::Milliseconds lifetime{0};
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isOpen || identity.uri.isEmpty())
            return nullptr;
        TokenRecord *placed = m_records.place(*module, place, identity, choice);
        if (!placed)
            return nullptr;
        TokenRecord &made = *placed;
        const TokenStore &store = made.store;
        identity.storeId = store.storeId;
        token = made.token = std::make_shared<Token>(
            module, place.slot, identity, QCA::KeyStoreInfo(store.type, store.storeId, store.name),
            choice, memoryOf(made, identity, info), *this);
        made.store.present = true;
        made.store.readOnly = flags.readOnly || choice == CertificateChoice::Trusted;
        made.status = {};
        made.status.keyStoreId = store.storeId;
        made.status.name = store.name;
        made.status.manufacturer = identity.manufacturer;
        made.status.model = identity.model;
        made.status.serial = identity.serial;
        made.status.present = true;
        made.status.loading = true;
        made.status.readOnly = made.store.readOnly;
        made.status.isTrust = choice == CertificateChoice::Trusted;
        applyFlags(flags, &made.status);
        made.status.facts = factsOf(info);
        status = NumberedStatus(made.status);
        lifetime = m_loginLifetime;
    }
    // What is remembered may be the other one's.
    if (identity.storeId != identity.uri)
        m_rows.shun(identity.uri);
    m_scan.expect(identity.storeId, FirstScan::Token);
    status.publish();
    Q_EMIT storesChanged();
    token->start(lifetime);
    return token;
}

void TokenTable::detach(const TokenPtr &token)
{
    int id = 0;
    NumberedStatus status;
    {
        const std::lock_guard lock(m_mutex);
        TokenRecord *found = m_records.find(token->storeId());
        if (found && found->token == token) {
            found->token.reset();
            found->store.present = false;
            id = found->show(std::make_shared<TokenContents>());
            TokenStatus &current = found->status;
            current.present = current.busy = current.loading = current.isRead = false;
            status = NumberedStatus(current);
        }
    }
    // First, so that whoever hears of an operation that ended with the token finds it gone.
    if (id)
        status.publish();
    token->close();
    if (id) {
        Q_EMIT contentsChanged(id);
        m_scan.fulfil(token->storeId());
    }
}

void TokenTable::forget(const QString &storeId)
{
    NumberedStatus status;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_records.forget(storeId))
            return;
        TokenStatus gone;
        gone.keyStoreId = storeId;
        status = NumberedStatus(gone);
    }
    status.publish();
    Q_EMIT storesChanged();
}

void TokenTable::publish(const TokenConnection &source,
                         const std::function<void(TokenRecord &)> &change)
{
    NumberedStatus status;
    {
        const std::lock_guard lock(m_mutex);
        TokenRecord *found = recordOf(source);
        if (!found)
            return;
        change(*found);
        status = NumberedStatus(found->status);
    }
    status.publish();
}

void TokenTable::publishContents(const TokenConnection &source)
{
    int id = 0;
    publish(source, [&](TokenRecord &found) {
        id = found.show(source.contents());
        found.status.loading = false;
        found.status.isRead = true;
        found.status.readError = {};
    });
    if (id)
        Q_EMIT contentsChanged(id);
    m_scan.fulfil(source.identity().storeId);
}

void TokenTable::publishEarly(const TokenConnection &source, const TokenContentsPtr &contents)
{
    int id = 0;
    publish(source, [&](TokenRecord &found) {
        if (!found.status.isRead)
            id = found.show(contents);
    });
    if (id)
        Q_EMIT contentsChanged(id);
}

void TokenTable::publishReadFailure(const TokenConnection &source, const TokenError &error)
{
    int id = 0;
    publish(source, [&](TokenRecord &found) {
        found.status.loading = false;
        found.status.readError = error;
        // Nothing has shown that what is remembered is still there, and a part stands for no whole.
        if (!found.status.isRead && !found.store.contents->entries.empty())
            id = found.show(std::make_shared<TokenContents>());
    });
    if (id)
        Q_EMIT contentsChanged(id);
    m_scan.fulfil(source.identity().storeId);
}

void TokenTable::publishBusy(const TokenConnection &source, Purpose purpose)
{
    publish(source, [purpose](TokenRecord &found) {
        found.status.busy = true;
        found.status.busyWith = purpose;
    });
}

void TokenTable::publishIdle(const TokenConnection &source)
{
    publish(source, [](TokenRecord &found) { found.status.busy = false; });
}

void TokenTable::publishFlags(const TokenPtr &token, const CK_TOKEN_INFO &info)
{
    const TokenFlags flags = flagsOf(info);
    const TokenFacts facts = factsOf(info);
    NumberedStatus status;
    bool readAgain = false;
    {
        const std::lock_guard lock(m_mutex);
        TokenRecord *found = m_records.find(token->storeId());
        if (!found || found->token != token)
            return;
        TokenStatus &current = found->status;
        // A reading that has to be made up for is tried again with each look.
        readAgain = (!current.isRead || token->isUnlisted()) && !current.loading;
        // A trust module's store stays read-only, whatever its token says.
        const bool readOnly = flags.readOnly || found->store.type == QCA::KeyStore::System;
        const bool isNew = applyFlags(flags, &current);
        if (!isNew && current.readOnly == readOnly && current.facts == facts && !readAgain)
            return;
        current.facts = facts;
        current.readOnly = found->store.readOnly = readOnly;
        current.loading = readAgain;
        status = NumberedStatus(current);
    }
    status.publish();
    if (readAgain)
        token->read();
}

} // namespace Trivex
