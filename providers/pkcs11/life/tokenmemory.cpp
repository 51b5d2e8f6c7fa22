// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokenmemory.h"

#include "providers/pkcs11/cache/rowmark.h"
#include "providers/pkcs11/contents/objectsearch.h"

#include <algorithm>
#include <set>
#include <utility>

namespace Trivex {

namespace {

using Handles = std::set<CK_OBJECT_HANDLE>;

/// Of the objects that show themselves the ones that say that they should not: a login of another
/// part of this process may show them, on a token that does not tell of logins.
Handles privateObjects(const Pkcs11::Session &session)
{
    Pkcs11::Template wanted;
    wanted.addFlag(CKA_TOKEN, true).addFlag(CKA_PRIVATE, true);
    const auto found = Pkcs11::findObjects(session, wanted);
    return {found.begin(), found.end()};
}

template <class Object, class IsHidden>
bool removeHidden(std::vector<Object> &objects, const IsHidden &isHidden)
{
    const auto end = std::remove_if(objects.begin(), objects.end(), isHidden);
    const bool anyRemoved = end != objects.end();
    objects.erase(end, objects.end());
    return anyRemoved;
}

TokenObjects publicOf(TokenObjects objects, const Handles &hidden)
{
    const auto hides = [&](CK_OBJECT_HANDLE object) { return hidden.count(object) > 0; };
    removeHidden(objects.certificates, [&](const TokenCertificate &one) {
        return std::any_of(one.objects.begin(), one.objects.end(), hides);
    });
    removeHidden(objects.publicKeys, [&](const TokenKey &key) { return hides(key.publicObject); });
    const bool hidesKeys = removeHidden(
        objects.privateKeys, [&](const TokenKey &key) { return hides(key.privateObject); });
    // As a token that hides them: rows with a key are then the same rows.
    objects.privateKeysHidden = objects.privateKeysHidden || hidesKeys;
    return objects;
}

} // namespace

TokenMemory::TokenMemory(TokenCache &cache, RowKey key)
    : m_cache(cache)
    , m_key(std::move(key))
{
}

std::shared_ptr<TokenMemory> TokenMemory::of(TokenCache &cache, const TokenIdentity &identity,
                                             const CK_TOKEN_INFO &info)
{
    const QString &serial = identity.serial;
    const bool hasSerial = std::any_of(serial.begin(), serial.end(), [](QChar one) {
        return !one.isSpace() && one != QLatin1Char('0');
    });
    if (!hasSerial)
        return nullptr;
    return std::make_shared<TokenMemory>(cache, RowKey{identity.storeId, rowMark(info)});
}

TokenContentsPtr TokenMemory::recall()
{
    const auto objects = m_cache.read(m_key);
    m_hasRecalled = objects && !objects->certificates.empty();
    if (!m_hasRecalled)
        return nullptr;
    return assembleContents(*objects, m_key.storeId);
}

void TokenMemory::note(const TokenConnection &connection)
{
    if (!m_cache.isOn() || connection.hasSeenLogin())
        return;
    try {
        const Handles hidden = privateObjects(connection.openPlain(Pkcs11::Session::ReadOnly));
        m_cache.write(m_key, publicOf(connection.objects(), hidden));
    } catch (const std::exception &) {
        // Of the token, or of memory. What was kept before is no worse than it was: the next
        // reading decides.
    }
}

void TokenMemory::forget()
{
    m_cache.forget(m_key.storeId);
}

} // namespace Trivex
