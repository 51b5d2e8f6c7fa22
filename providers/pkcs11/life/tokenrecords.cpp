// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokenrecords.h"

#include <algorithm>

namespace Trivex {

int TokenRecord::show(TokenContentsPtr contents)
{
    status.keysPresumed = contents->keysPresumed;
    status.keysHidden = contents->keysHidden;
    status.certificates = int(contents->entries.size());
    status.isWhole = contents->certificatesAreWhole;
    status.keyFacts = contents->keyFacts;
    store.contents = std::move(contents);
    return store.id;
}

TokenRecord *TokenRecords::find(const QString &storeId) const
{
    for (const auto &one : m_records) {
        if (one->store.storeId == storeId)
            return one.get();
    }
    return nullptr;
}

TokenRecord *TokenRecords::find(int id) const
{
    for (const auto &one : m_records) {
        if (one->store.id == id)
            return one.get();
    }
    return nullptr;
}

bool TokenRecords::forget(const QString &storeId)
{
    const auto found = std::find_if(m_records.begin(), m_records.end(), [&](const auto &one) {
        return one->store.storeId == storeId && !one->token;
    });
    if (found == m_records.end())
        return false;
    m_records.erase(found);
    return true;
}

TokenRecord *TokenRecords::place(const Pkcs11::Module &module, const TokenPlace &place,
                                 const TokenIdentity &identity, CertificateChoice choice)
{
    if (isBroughtOtherwise(module, place.slot, identity.uri))
        return nullptr;
    TokenRecord *known = recordFor(place.slot, identity.uri);
    TokenRecord &record = known ? *known : make(place, identity, choice);
    record.module = &module;
    record.slot = place.slot;
    return &record;
}

/// Only one module can tell two tokens of the same names from one that is seen twice: it has them
/// in two slots.
bool TokenRecords::isBroughtOtherwise(const Pkcs11::Module &module, CK_SLOT_ID slot,
                                      const QString &uri) const
{
    return std::any_of(m_records.begin(), m_records.end(), [&](const auto &one) {
        return one->uri == uri && one->token && (one->module != &module || one->slot == slot);
    });
}

/// Whoever comes back to a slot gets the store again that the slot had before.
TokenRecord *TokenRecords::recordFor(CK_SLOT_ID slot, const QString &uri) const
{
    TokenRecord *usual = find(uri);
    const bool isFree = usual && !usual->token;
    if (isFree && usual->slot == slot)
        return usual;
    TokenRecord *own = find(storeIdInSlot(uri, slot));
    return own || !isFree ? own : usual;
}

TokenRecord &TokenRecords::make(const TokenPlace &place, const TokenIdentity &identity,
                                CertificateChoice choice)
{
    auto made = std::make_shared<TokenRecord>();
    made->uri = identity.uri;
    made->store.id = m_nextId++;
    made->store.storeId =
        find(identity.uri) ? storeIdInSlot(identity.uri, place.slot) : identity.uri;
    // The name never changes again, because stores are also found by their names.
    made->store.name = distinctName(identity, place.reader);
    made->store.type =
        choice == CertificateChoice::Trusted ? QCA::KeyStore::System : QCA::KeyStore::SmartCard;
    made->store.contents = std::make_shared<TokenContents>();
    m_records.push_back(std::move(made));
    return *m_records.back();
}

QString TokenRecords::distinctName(const TokenIdentity &identity, const QString &reader) const
{
    const QString name = identity.label.isEmpty() ? identity.model : identity.label;
    const auto isTaken = [this](const QString &candidate) {
        return std::any_of(m_records.begin(), m_records.end(),
                           [&](const auto &one) { return one->store.name == candidate; });
    };
    if (!name.isEmpty() && !isTaken(name))
        return name;
    const QString detail = reader.isEmpty() ? identity.serial : reader;
    const QString detailed = detail.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, detail);
    QString distinct = detailed;
    for (int i = 2; isTaken(distinct); ++i)
        distinct = QStringLiteral("%1 #%2").arg(detailed, QString::number(i));
    return distinct;
}

} // namespace Trivex
