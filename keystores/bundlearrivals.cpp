// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/bundlearrivals.h"

#include "qca/adapter/entries.h"

#include <QPointer>

using Trivex::TokenMonitor;

BundleArrivals::BundleArrivals(QObject *parent)
    : QObject(parent)
{
    connect(&m_tokens, &TokenMonitor::changed, this, &BundleArrivals::tokenChanged);
}

void BundleArrivals::note(const QCA::KeyStoreEntry &entry)
{
    const QString storeId = Trivex::entryStoreId(entry);
    const Trivex::TokenStatus token = TokenMonitor::token(storeId);
    // The stores of other providers have no status.
    const bool isToken = !token.keyStoreId.isEmpty();
    if (isToken && !token.isRead)
        m_unread[storeId].insert(Trivex::entryId(entry), entry);
    else if (!isToken || Trivex::isEntryAvailable(entry))
        Q_EMIT arrived(entry);
}

// A row that was there before the reading and is there after it does not come a second time.
void BundleArrivals::tokenChanged(const QString &keyStoreId)
{
    if (!m_unread.contains(keyStoreId) || !TokenMonitor::token(keyStoreId).isRead)
        return;
    const QPointer<BundleArrivals> self(this);
    const auto entries = m_unread.take(keyStoreId);
    for (const QCA::KeyStoreEntry &entry : entries) {
        if (self && Trivex::isEntryAvailable(entry))
            Q_EMIT arrived(entry);
    }
}
