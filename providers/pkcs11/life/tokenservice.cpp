// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokenservice.h"

#include <QCoreApplication>

#include <algorithm>

namespace Trivex {

namespace {

/// What of the patience at the end is left for answered questions, when a module uses up the rest.
constexpr std::chrono::milliseconds SettleShare{300};

/// A status as it was under the lock, with its place among all of them.
struct NumberedStatus {
    TokenStatus status;
    quint64 number = 0;

    NumberedStatus() = default;
    explicit NumberedStatus(const TokenStatus &current)
        : status(current)
        , number(nextStatusNumber())
    {
    }
    void publish() const { publishTokenStatus(status, number); }
};

} // namespace

/// A key store and the token behind it.
struct TokenService::Record {
    TokenStore store;
    TokenStatus status;
    TokenPtr token;
    bool isRead = false;
};

TokenService &TokenService::instance()
{
    static auto *service = new TokenService;
    return *service;
}

TokenService::TokenService() = default;

void TokenService::configure(const TokenSettings &settings)
{
    std::shared_ptr<ModuleWatch> watch;
    {
        const std::lock_guard lock(m_mutex);
        m_settings = settings;
        watch = m_watch;
    }
    if (watch)
        watch->configure(settings);
}

TokenSettings TokenService::settings() const
{
    const std::lock_guard lock(m_mutex);
    return m_settings;
}

void TokenService::start()
{
    std::shared_ptr<ModuleWatch> watch;
    ProcessEnd::add([](ProcessEnd::Deadline deadline) { instance().stop(deadline); });
    {
        const std::lock_guard lock(m_mutex);
        // The end of the process has stopped it already, on another thread.
        if (m_watch || ProcessEnd::hasBegun())
            return;
        m_scanned = false;
        m_expected.clear();
        m_startTime = std::chrono::steady_clock::now();
        watch = m_watch = std::make_shared<ModuleWatch>(m_settings);
    }
    setTokenBackend(this);
    // This thread is QCA's own.
    if (QCoreApplication *application = QCoreApplication::instance())
        QMetaObject::invokeMethod(application, &ProcessEnd::watchThisThread, Qt::QueuedConnection);
    watch->start();
}

void TokenService::stop(Worker::Deadline deadline)
{
    // Their threads are those of the parent, and a lock may be held by one of them for ever.
    if (ProcessEnd::isForkedChild())
        return;
    std::shared_ptr<ModuleWatch> watch;
    {
        const std::lock_guard lock(m_mutex);
        watch.swap(m_watch);
    }
    if (watch) {
        setTokenBackend(nullptr);
        watch->stop();
    }
    // Also where another thread stops it at the moment.
    Worker::joinAll(deadline - SettleShare);
    if (!watch)
        return;
    watch.reset();
    forgetAll();
    settleQuestionsUntil(deadline);
}

void TokenService::forgetAll()
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

bool TokenService::hasScanned() const
{
    const std::lock_guard lock(m_mutex);
    return m_scanned;
}

QList<int> TokenService::stores() const
{
    const std::lock_guard lock(m_mutex);
    QList<int> ids;
    for (const auto &one : m_records)
        ids.append(one->store.id);
    return ids;
}

std::optional<TokenStore> TokenService::store(int id) const
{
    const std::lock_guard lock(m_mutex);
    for (const auto &one : m_records) {
        if (one->store.id == id)
            return one->store;
    }
    return std::nullopt;
}

std::optional<TokenStore> TokenService::store(const QString &storeId) const
{
    const std::lock_guard lock(m_mutex);
    const Record *found = record(storeId);
    return found ? std::make_optional(found->store) : std::nullopt;
}

TokenPtr TokenService::token(const QString &storeId) const
{
    const std::lock_guard lock(m_mutex);
    const Record *found = record(storeId);
    return found ? found->token : nullptr;
}

void TokenService::cancelOperation(const QString &keyStoreId)
{
    if (const TokenPtr found = token(keyStoreId))
        found->cancel();
}

TokenService::Record *TokenService::record(const QString &storeId) const
{
    for (const auto &one : m_records) {
        if (one->store.storeId == storeId)
            return one.get();
    }
    return nullptr;
}

TokenService::Record *TokenService::recordOf(const TokenConnection &source) const
{
    Record *found = record(source.identity().storeId);
    const bool isCurrent = found && found->token && found->token->connection() == &source;
    return isCurrent ? found : nullptr;
}

QString TokenService::distinctName(const TokenIdentity &identity) const
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
        distinct = QStringLiteral("%1 #%2").arg(withSerial).arg(i);
    return distinct;
}

TokenService::Record &TokenService::makeRecord(const TokenIdentity &identity,
                                               CertificateChoice choice)
{
    if (Record *known = record(identity.storeId))
        return *known;
    auto made = std::make_shared<Record>();
    made->store.id = m_nextId++;
    made->store.storeId = identity.storeId;
    // Never changed again: stores are also found by their names.
    made->store.name = distinctName(identity);
    made->store.type =
        choice == CertificateChoice::Trusted ? QCA::KeyStore::System : QCA::KeyStore::SmartCard;
    made->store.contents = std::make_shared<TokenContents>();
    m_records.push_back(std::move(made));
    return *m_records.back();
}

TokenPtr TokenService::attach(const Pkcs11::ModulePtr &module, CK_SLOT_ID slot,
                              const CK_TOKEN_INFO &info, CertificateChoice choice)
{
    const TokenIdentity identity = identityOf(info);
    const TokenFlags flags = flagsOf(info);
    TokenPtr token;
    NumberedStatus status;
    int lifetime = 0;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_watch || identity.storeId.isEmpty())
            return nullptr;
        Record &made = makeRecord(identity, choice);
        // The same token through another module.
        if (made.token)
            return nullptr;
        const TokenStore &store = made.store;
        token = made.token = std::make_shared<Token>(
            module, slot, identity, QCA::KeyStoreInfo(store.type, store.storeId, store.name),
            choice);
        made.store.present = true;
        made.store.readOnly = flags.readOnly || choice == CertificateChoice::Trusted;
        made.isRead = false;
        made.status = {store.storeId, store.name, identity.manufacturer, identity.model,
                       identity.serial};
        made.status.present = true;
        made.status.loading = true;
        made.status.readOnly = made.store.readOnly;
        made.status.hasPinPad = flags.hasPinPad;
        made.status.pinState = flags.pinState;
        status = NumberedStatus(made.status);
        lifetime = m_settings.loginLifetime;
    }
    expect(identity.storeId);
    status.publish();
    Q_EMIT storesChanged();
    token->start(std::chrono::minutes(lifetime));
    return token;
}

void TokenService::detach(const TokenPtr &token)
{
    int id = 0;
    NumberedStatus status;
    {
        const std::lock_guard lock(m_mutex);
        Record *found = record(token->storeId());
        if (found && found->token == token) {
            found->token.reset();
            found->store.present = false;
            found->store.contents = std::make_shared<TokenContents>();
            TokenStatus &current = found->status;
            current.present = current.busy = current.loading = false;
            status = NumberedStatus(current);
            id = found->store.id;
        }
    }
    // First, so that whoever hears of an operation that ended with the token finds it gone.
    if (id)
        status.publish();
    token->close();
    if (id) {
        Q_EMIT contentsChanged(id);
        fulfil(token->storeId());
    }
}

void TokenService::publish(const TokenConnection &source,
                           const std::function<void(Record &)> &change)
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

void TokenService::publishContents(const TokenConnection &source)
{
    int id = 0;
    publish(source, [&](Record &found) {
        found.store.contents = source.contents();
        found.status.loading = false;
        found.status.keysPresumed = found.store.contents->keysPresumed;
        found.isRead = true;
        id = found.store.id;
    });
    if (id)
        Q_EMIT contentsChanged(id);
    fulfil(source.identity().storeId);
}

void TokenService::publishReadFailure(const TokenConnection &source)
{
    publish(source, [](Record &found) { found.status.loading = false; });
    fulfil(source.identity().storeId);
}

void TokenService::publishBusy(const TokenConnection &source, Purpose purpose)
{
    publish(source, [purpose](Record &found) {
        found.status.busy = true;
        found.status.busyWith = purpose;
    });
}

void TokenService::publishIdle(const TokenConnection &source)
{
    publish(source, [](Record &found) { found.status.busy = false; });
}

void TokenService::publishFlags(const TokenPtr &token, const CK_TOKEN_INFO &info)
{
    const TokenFlags flags = flagsOf(info);
    NumberedStatus status;
    bool readAgain = false;
    {
        const std::lock_guard lock(m_mutex);
        Record *found = record(token->storeId());
        if (!found || found->token != token)
            return;
        TokenStatus &current = found->status;
        // A first reading that failed is tried again with each look.
        readAgain = !found->isRead && !current.loading;
        // A trust module's store stays read-only, whatever its token says.
        const bool readOnly = flags.readOnly || found->store.type == QCA::KeyStore::System;
        const bool isSame = current.pinState == flags.pinState && current.readOnly == readOnly
            && current.hasPinPad == flags.hasPinPad && !readAgain;
        if (isSame)
            return;
        current.pinState = flags.pinState;
        current.hasPinPad = flags.hasPinPad;
        current.readOnly = found->store.readOnly = readOnly;
        current.loading = readAgain;
        status = NumberedStatus(current);
    }
    status.publish();
    if (readAgain)
        token->read();
}

void TokenService::expect(const QString &what)
{
    const std::lock_guard lock(m_mutex);
    if (!m_scanned)
        m_expected.insert(what);
}

void TokenService::fulfil(const QString &what)
{
    {
        const std::lock_guard lock(m_mutex);
        m_expected.erase(what);
        if (m_scanned || !m_expected.empty())
            return;
    }
    finishScan();
}

void TokenService::checkPatience()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_scanned || std::chrono::steady_clock::now() - m_startTime < FirstScanPatience)
            return;
    }
    finishScan();
}

void TokenService::finishScan()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_scanned)
            return;
        m_scanned = true;
    }
    Q_EMIT scanned();
}

} // namespace Trivex
