// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/tokenstorelist.h"

#include "providers/pkcs11/contexts/tokenentrycontext.h"
#include "providers/pkcs11/operations/storechanges.h"
#include "qca/base/secondupdate.h"
#include "qca/base/storethread.h"
#include "qca/questions/waiter.h"

#include <algorithm>
#include <limits>

namespace Trivex {

namespace {

constexpr int FirstStep = 500;

} // namespace

TokenStoreList::TokenStoreList(QCA::Provider *provider, TokenService &service, TokenTable &tokens,
                               FirstScan &scan)
    : QCA::KeyStoreListContext(provider)
    , m_service(service)
    , m_tokens(tokens)
    , m_scan(scan)
{
    connect(&tokens, &TokenTable::storesChanged, this, &TokenStoreList::announceStores,
            Qt::QueuedConnection);
    connect(&tokens, &TokenTable::contentsChanged, this, &TokenStoreList::announceContents,
            Qt::QueuedConnection);
    connect(&scan, &FirstScan::over, this, &TokenStoreList::announceScan, Qt::QueuedConnection);
}

TokenStoreList::~TokenStoreList()
{
    m_service.stop();
}

QCA::Provider::Context *TokenStoreList::clone() const
{
    return nullptr;
}

void TokenStoreList::start()
{
    // Here, because contexts may be made in other threads.
    StoreThread::note();
    m_trusted = std::make_unique<TrustedStores>();
    connect(m_trusted.get(), &TrustedStores::changed, this, &TokenStoreList::announceTrusted);
    m_service.start();
    if (m_scan.isOver())
        QMetaObject::invokeMethod(this, &TokenStoreList::announceScan, Qt::QueuedConnection);
    m_watch = std::make_unique<ScanWatch>(m_scan);
    if (!m_scan.isOver())
        m_watch->start();
}

bool TokenStoreList::updateTrusted(int id)
{
    const auto store = m_tokens.store(id);
    return store && m_trusted && store->type == QCA::KeyStore::System
        && m_trusted->update(id, store->contents);
}

// QCA's question for the stores has to be answered quickly, so this is not done there.
void TokenStoreList::updateAllTrusted()
{
    const QList<int> ids = m_tokens.stores();
    for (const int id : ids)
        updateTrusted(id);
}

TokenContentsPtr TokenStoreList::contentsOf(const TokenStore &store) const
{
    const bool isTrusted = m_trusted && store.type == QCA::KeyStore::System;
    return isTrusted ? m_trusted->shown(store.id) : store.contents;
}

void TokenStoreList::announceStores()
{
    updateAllTrusted();
    Q_EMIT updated();
}

void TokenStoreList::announceTrusted(int id)
{
    // It may come with its first entries.
    Q_EMIT updated();
    Q_EMIT storeUpdated(id);
}

void TokenStoreList::announceScan()
{
    if (std::exchange(m_isBusy, false)) {
        updateAllTrusted();
        Q_EMIT updated();
        Q_EMIT busyEnd();
    }
}

void TokenStoreList::announceContents(int id)
{
    if (updateTrusted(id))
        Q_EMIT updated();
    Q_EMIT storeUpdated(id);
}

QList<int> TokenStoreList::keyStores()
{
    QList<int> listed;
    const QList<int> ids = m_tokens.stores();
    for (const int id : ids) {
        if (type(id) != QCA::KeyStore::System || !m_trusted || m_trusted->isListed(id))
            listed.append(id);
    }
    return listed;
}

QCA::KeyStore::Type TokenStoreList::type(int id) const
{
    const auto store = m_tokens.store(id);
    return store ? store->type : QCA::KeyStore::Type(-1);
}

QString TokenStoreList::storeId(int id) const
{
    const auto store = m_tokens.store(id);
    return store ? store->storeId : QString();
}

QString TokenStoreList::name(int id) const
{
    const auto store = m_tokens.store(id);
    return store ? store->name : QString();
}

bool TokenStoreList::isReadOnly(int id) const
{
    const auto store = m_tokens.store(id);
    return !store || store->readOnly;
}

QList<QCA::KeyStoreEntry::Type> TokenStoreList::entryTypes(int id) const
{
    if (!m_tokens.store(id))
        return {};
    return {QCA::KeyStoreEntry::TypeKeyBundle, QCA::KeyStoreEntry::TypeCertificate};
}

QList<QCA::KeyStoreEntryContext *> TokenStoreList::entryList(int id)
{
    QList<QCA::KeyStoreEntryContext *> list;
    const auto store = m_tokens.store(id);
    if (!store)
        return list;
    const TokenContentsPtr contents = contentsOf(*store);
    noteListed(id, contents);
    const auto &entries = contents->entries;
    int &shown = m_shown[id];
    shown = std::max(shown, FirstStep);
    const int count = std::min(int(entries.size()), shown);
    list.reserve(count);
    for (int i = 0; i < count; ++i)
        list.append(new TokenEntryContext(provider(), m_tokens, entries[size_t(i)], store->storeId,
                                          store->name, store->contents));
    if (count < int(entries.size()))
        QMetaObject::invokeMethod(
            this, [this, id] { showAll(id); }, Qt::QueuedConnection);
    return list;
}

void TokenStoreList::noteListed(int id, const TokenContentsPtr &contents)
{
    const TokenContentsPtr before = m_listed.value(id);
    m_listed.insert(id, contents);
    if (before && before != contents && !before->entries.empty())
        announceAgain(this, id);
}

// Each step hands over the entries of those before it anew, so many steps would make a large store
// quadratic.
void TokenStoreList::showAll(int id)
{
    m_shown[id] = std::numeric_limits<int>::max();
    Q_EMIT storeUpdated(id);
}

QCA::KeyStoreEntryContext *TokenStoreList::entry(int id, const QString &entryId)
{
    const auto store = m_tokens.store(id);
    const TokenEntryPtr found = store ? store->contents->entry(entryId) : nullptr;
    return found ? new TokenEntryContext(provider(), m_tokens, found, store->storeId, store->name,
                                         store->contents)
                 : nullptr;
}

QCA::KeyStoreEntryContext *TokenStoreList::entryPassive(const QString &serialized)
{
    return TokenEntryContext::restore(provider(), m_tokens, serialized);
}

StoreChangeResult TokenStoreList::perform(int id, const StoreChange &change)
{
    const auto result = std::make_shared<StoreChangeResult>();
    const auto waiter = std::make_shared<Waiter>();
    const bool isKnown = startChange(m_tokens, storeId(id), change,
                                     [result, waiter](const StoreChangeResult &outcome) {
                                         *result = outcome;
                                         waiter->resolve();
                                     });
    if (!isKnown)
        return {};
    waiter->wait();
    return waiter->isResolved() ? *result : StoreChangeResult();
}

QString TokenStoreList::writeEntry(int id, const QCA::Certificate &certificate)
{
    StoreChange change;
    change.kind = StoreChange::WriteCertificate;
    change.certificate = certificate;
    return perform(id, change).entryId;
}

QString TokenStoreList::writeEntry(int id, const QCA::KeyBundle &bundle)
{
    StoreChange change;
    change.kind = StoreChange::WriteBundle;
    change.bundle = bundle;
    return perform(id, change).entryId;
}

bool TokenStoreList::removeEntry(int id, const QString &entryId)
{
    StoreChange change;
    change.kind = StoreChange::RemoveEntry;
    change.entryId = entryId;
    return perform(id, change).succeeded;
}

} // namespace Trivex
