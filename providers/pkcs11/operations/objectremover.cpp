// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/objectremover.h"

#include "providers/pkcs11/operations/objecttemplates.h"
#include "providers/pkcs11/operations/writing.h"

#include <algorithm>

namespace Trivex {

using Pkcs11::Error;
using Pkcs11::Session;
using Pkcs11::Template;

namespace {

bool exists(const Session &session, CK_OBJECT_HANDLE object)
{
    Pkcs11::AttributeReader reader({{CKA_CLASS, sizeof(CK_OBJECT_CLASS)}});
    try {
        reader.read(session, object);
        return true;
    } catch (const Error &error) {
        return error.returnValue() != CKR_OBJECT_HANDLE_INVALID;
    }
}

/// An object that is gone is what was wanted, whatever the call returned.
void destroy(const Session &session, CK_OBJECT_HANDLE object)
{
    if (object == CK_INVALID_HANDLE)
        return;
    const CK_RV result = session.module()->C_DestroyObject(session.handle(), object);
    if (result != CKR_OK && exists(session, object))
        throw Error(result, "C_DestroyObject");
}

bool isSharedKey(const TokenContents &contents, const TokenEntry &removed)
{
    return std::any_of(
        contents.entries.begin(), contents.entries.end(), [&](const TokenEntryPtr &entry) {
            return entry->key == removed.key && entry->certificate != removed.certificate;
        });
}

/// The entry after the login, which may have shown its key.
TokenEntryPtr current(const TokenConnection &connection, const TokenEntry &entry)
{
    const TokenEntryPtr found = connection.contents()->entryOf(entry.certificate->der);
    if (!found)
        throw Error(TokenError::NotFound);
    return found;
}

void putCertificateBack(Writing &writing, const TokenCertificate &certificate)
{
    const ObjectMark mark = {CKO_CERTIFICATE, {}, certificate.der};
    if (!findMarked(writing.session(), mark).empty())
        return;
    Template object;
    fillCertificate(certificate, &object);
    writing.create(object, mark, {});
}

void putPublicKeyBack(Writing &writing, const TokenKey &key)
{
    if (key.publicObject == CK_INVALID_HANDLE || exists(writing.session(), key.publicObject))
        return;
    const KeyMaterial material = KeyMaterial::fromPublicInfo(key.publicInfo);
    Template object;
    fillPublicKey(material, key.id, key.label, &object);
    writing.create(object, {CKO_PUBLIC_KEY, key.id, {}}, {});
}

void putBack(TokenConnection &connection, const TokenEntry &entry, bool withKey) noexcept
{
    const TokenConnection::Scope toItsEnd(connection, nullptr);
    try {
        Writing writing(connection);
        putCertificateBack(writing, *entry.certificate);
        if (withKey)
            putPublicKeyBack(writing, *entry.key);
        writing.keep();
        connection.read();
    } catch (const Error &error) {
        connection.noteError(error);
    }
}

void removeObjects(TokenConnection &connection, const TokenEntry &entry, bool withKey)
{
    const Session session = connection.open(Session::ReadWrite);
    // Not between the objects: what is half gone has to be put back.
    connection.checkCancelled();
    for (const CK_OBJECT_HANDLE object : entry.certificate->objects)
        destroy(session, object);
    if (withKey) {
        destroy(session, entry.key->publicObject);
        destroy(session, entry.key->privateObject);
    }
}

} // namespace

void removeEntry(TokenConnection &connection, Operation &operation, const QString &entryId)
{
    const TokenEntryPtr asked = connection.contents()->entry(entryId);
    if (!asked)
        throw Error(TokenError::NotFound);
    connection.checkWritable();
    using LoginFor = TokenConnection::LoginFor;
    connection.login(operation, asked->key ? LoginFor::PrivateKeys : LoginFor::Objects);
    const TokenEntryPtr entry = current(connection, *asked);
    const bool withKey = asked->key && entry->key && !isSharedKey(*connection.contents(), *entry);
    try {
        removeObjects(connection, *entry, withKey);
    } catch (const Error &) {
        // By the login that there still is: what hides without one would be put back twice.
        putBack(connection, *entry, withKey);
        throw;
    }
    connection.noteRemoved(*entry->certificate);
    if (withKey)
        connection.noteRemoved(*entry->key);
}

} // namespace Trivex
