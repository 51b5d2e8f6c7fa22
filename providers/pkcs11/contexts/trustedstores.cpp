// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/trustedstores.h"

#include "qca/x509/systemlist.h"

#include <chrono>
#include <memory>

namespace Trivex {

namespace {

using namespace std::chrono_literals;

constexpr auto Patience = 250ms;

/// The DER forms of the certificates in QCA's own list of the system.
QSet<QByteArray> systemCertificates()
{
    QSet<QByteArray> certificates;
    const QList<QCA::KeyStoreEntry> entries = systemList();
    for (const QCA::KeyStoreEntry &entry : entries) {
        if (entry.type() == QCA::KeyStoreEntry::TypeCertificate)
            certificates.insert(entry.certificate().toDER());
    }
    return certificates;
}

TokenContentsPtr without(const TokenContentsPtr &all, const QSet<QByteArray> &known)
{
    auto left = std::make_shared<TokenContents>();
    for (const TokenEntryPtr &entry : all->entries) {
        if (!known.contains(entry->certificate->der))
            left->entries.push_back(entry);
    }
    return left;
}

bool isSame(const TokenContentsPtr &a, const TokenContentsPtr &b)
{
    return a == b || (a && b && a->entries == b->entries);
}

} // namespace

TrustedStores::TrustedStores(QObject *parent)
    : QObject(parent)
{
    connect(&m_manager, &QCA::KeyStoreManager::keyStoreAvailable, this,
            &TrustedStores::compareAgain);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &TrustedStores::compareAgain);
    m_patience.start(Patience);
}

bool TrustedStores::update(int id, const TokenContentsPtr &contents)
{
    Store &store = m_stores[id];
    if (store.all == contents)
        return false;
    store.all = contents;
    return compare(&store);
}

bool TrustedStores::isListed(int id) const
{
    return m_stores.value(id).wasListed;
}

TokenContentsPtr TrustedStores::shown(int id) const
{
    const TokenContentsPtr contents = m_stores.value(id).shown;
    return contents ? contents : std::make_shared<TokenContents>();
}

bool TrustedStores::showsSystemList()
{
    static const QString id = QStringLiteral("qca-default-systemstore");
    m_manager.sync();
    return m_manager.keyStores().contains(id);
}

bool TrustedStores::compare(Store *store)
{
    TokenContentsPtr shown;
    if (store->all->entries.empty())
        shown = store->all;
    else if (showsSystemList())
        shown = without(store->all, systemCertificates());
    else if (!m_patience.isActive())
        shown = store->all;
    else
        return false;
    if (isSame(shown, store->shown))
        return false;
    store->shown = shown;
    store->wasListed = store->wasListed || !shown->entries.empty();
    return true;
}

void TrustedStores::compareAgain()
{
    const QList<int> ids = m_stores.keys();
    for (const int id : ids) {
        if (compare(&m_stores[id]))
            Q_EMIT changed(id);
    }
}

} // namespace Trivex
