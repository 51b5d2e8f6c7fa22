// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokentable.h"

#include "providers/pkcs11/contents/tokenlook.h"
#include "providers/pkcs11/life/numberedstatus.h"
#include "qca/questions/waiter.h"

#include <algorithm>

namespace Trivex {

/// A key store and the token behind it.
struct TokenTable::Record {
    TokenStore store;
    TokenStatus status;
    TokenPtr token;
};

int TokenTable::show(Record &record, TokenContentsPtr contents)
{
    TokenStatus &status = record.status;
    status.keysPresumed = contents->keysPresumed;
    status.keysHidden = contents->keysHidden;
    status.certificates = int(contents->entries.size());
    status.keyFacts = contents->keyFacts;
    record.store.contents = std::move(contents);
    return record.store.id;
}

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
    std::vector<std::shared_ptr<Record>> records;
    std::vector<NumberedStatus> forgotten;
    {
        const std::lock_guard lock(m_mutex);
        records.swap(m_records);
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
    for (const auto &one : m_records) {
        if (one->store.id == id)
            return one->store;
    }
    return std::nullopt;
}

std::optional<TokenStore> TokenTable::store(const QString &storeId) const
{
    const std::lock_guard lock(m_mutex);
    const Record *found = record(storeId);
    return found ? std::make_optional(found->store) : std::nullopt;
}

TokenPtr TokenTable::token(const QString &storeId) const
{
    const std::lock_guard lock(m_mutex);
    const Record *found = record(storeId);
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

TokenTable::Record *TokenTable::record(const QString &storeId) const
{
    for (const auto &one : m_records) {
        if (one->store.storeId == storeId)
            return one.get();
    }
    return nullptr;
}

TokenTable::Record *TokenTable::recordOf(const TokenConnection &source) const
{
    Record *found = record(source.identity().storeId);
    const bool isCurrent = found && found->token && found->token->connection() == &source;
    return isCurrent ? found : nullptr;
}

QString TokenTable::distinctName(const TokenIdentity &identity) const
{
    const QString name = identity.label.isEmpty() ? identity.model : identity.label;
    const auto isTaken = [this](const QString &candidate) {
        return std::any_of(m_records.begin(), m_records.end(),
                           [&](const auto &one) { return one->store.name == candidate; });
    };
    if (!name.isEmpty() && !isTaken(name))
        return name;
    const QString withSerial = QStringLiteral("%1 (%2)").arg(name, identity.serial);
    QString distinct = withSerial;
    for (int i = 2; isTaken(distinct); ++i)
        distinct = QStringLiteral("%1 #%2").arg(withSerial, QString::number(i));
    return distinct;
}

TokenTable::Record &TokenTable::makeRecord(const TokenIdentity &identity, CertificateChoice choice)
{
    if (Record *known = record(identity.storeId))
        return *known;
    auto made = std::make_shared<Record>();
    made->store.id = m_nextId++;
    made->store.storeId = identity.storeId;
    // The name never changes again, because stores are also found by their names.
    made->store.name = distinctName(identity);
    made->store.type =
        choice == CertificateChoice::Trusted ? QCA::KeyStore::System : QCA::KeyStore::SmartCard;
    made->store.contents = std::make_shared<TokenContents>();
    m_records.push_back(std::move(made));
    return *m_records.back();
}

TokenPtr TokenTable::attach(const Pkcs11::ModulePtr &module, CK_SLOT_ID slot,
                            const CK_TOKEN_INFO &info, CertificateChoice choice)
{
    const TokenIdentity identity = identityOf(info);
    const TokenFlags flags = flagsOf(info);
    TokenPtr token;
    NumberedStatus status;
    Worker::Milliseconds lifetime{0};
    // The anchors of a trust module are everybody's, and quick to read.
    const auto memory =
        choice == CertificateChoice::All ? TokenMemory::of(m_rows, identity, info) : nullptr;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isOpen || identity.storeId.isEmpty())
            return nullptr;
        Record &made = makeRecord(identity, choice);
        // The same token through another module.
        if (made.token)
            return nullptr;
        const TokenStore &store = made.store;
        token = made.token = std::make_shared<Token>(
            module, slot, identity, QCA::KeyStoreInfo(store.type, store.storeId, store.name),
            choice, memory, *this);
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
        Record *found = record(token->storeId());
        if (found && found->token == token) {
            found->token.reset();
            found->store.present = false;
            id = show(*found, std::make_shared<TokenContents>());
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
        const auto found = std::find_if(m_records.begin(), m_records.end(), [&](const auto &one) {
            return one->store.storeId == storeId && !one->token;
        });
        if (found == m_records.end())
            return;
        m_records.erase(found);
        TokenStatus gone;
        gone.keyStoreId = storeId;
        status = NumberedStatus(gone);
    }
    status.publish();
    Q_EMIT storesChanged();
}

void TokenTable::publish(const TokenConnection &source, const std::function<void(Record &)> &change)
{
    NumberedStatus status;
    {
        const std::lock_guard lock(m_mutex);
        Record *found = recordOf(source);
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
    publish(source, [&](Record &found) {
        id = show(found, source.contents());
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
    publish(source, [&](Record &found) {
        if (!found.status.isRead)
            id = show(found, contents);
    });
    if (id)
        Q_EMIT contentsChanged(id);
}

void TokenTable::publishReadFailure(const TokenConnection &source, const TokenError &error)
{
    int id = 0;
    publish(source, [&](Record &found) {
        found.status.loading = false;
        found.status.readError = error;
        // Nothing has shown that what is remembered is still there, and a part stands for no whole.
        if (!found.status.isRead && !found.store.contents->entries.empty())
            id = show(found, std::make_shared<TokenContents>());
    });
    if (id)
        Q_EMIT contentsChanged(id);
    m_scan.fulfil(source.identity().storeId);
}

void TokenTable::publishBusy(const TokenConnection &source, Purpose purpose)
{
    publish(source, [purpose](Record &found) {
        found.status.busy = true;
        found.status.busyWith = purpose;
    });
}

void TokenTable::publishIdle(const TokenConnection &source)
{
    publish(source, [](Record &found) { found.status.busy = false; });
}

void TokenTable::publishFlags(const TokenPtr &token, const CK_TOKEN_INFO &info)
{
    const TokenFlags flags = flagsOf(info);
    const TokenFacts facts = factsOf(info);
    NumberedStatus status;
    bool readAgain = false;
    {
        const std::lock_guard lock(m_mutex);
        Record *found = record(token->storeId());
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
