// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/recentcertificates.h"

#include "certificates/keystoreentry.h"

#include <algorithm>

RecentCertificates::RecentCertificates() = default;
RecentCertificates::~RecentCertificates() = default;

std::deque<RecentCertificates::One>::iterator
RecentCertificates::find(const QCA::KeyStoreEntry &entry)
{
    return std::find_if(m_all.begin(), m_all.end(), [&entry](const One &one) {
        return one.entry.context() == entry.context();
    });
}

std::shared_ptr<Certificate> RecentCertificates::of(const QCA::KeyStoreEntry &entry)
{
    const auto known = find(entry);
    if (known != m_all.end())
        return known->certificate;
    std::shared_ptr<Certificate> made = KeyStoreEntry::makeCertificate(entry);
    if (m_all.size() >= Most)
        m_all.pop_front();
    m_all.push_back({entry, made});
    return made;
}

void RecentCertificates::forget(const QCA::KeyStoreEntry &entry)
{
    const auto known = find(entry);
    if (known != m_all.end())
        m_all.erase(known);
}

void RecentCertificates::clear()
{
    m_all.clear();
}
