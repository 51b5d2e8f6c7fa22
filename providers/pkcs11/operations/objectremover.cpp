// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/objectremover.h"

#include "providers/pkcs11/contents/tokenreader.h"
#include "providers/pkcs11/operations/objecttemplates.h"
#include "providers/pkcs11/operations/writing.h"
#include "qca/keys/gostpublickey.h"

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

/// An object that is gone is what was wanted, whatever the call returned. One that only hides, for
/// want of a login, is not.
void destroy(TokenConnection &connection, const Session &session, CK_OBJECT_HANDLE object)
{
    if (object == CK_INVALID_HANDLE)
        return;
    const CK_RV result = session.module()->C_DestroyObject(session.handle(), object);
    if (result == CKR_OK)
        return;
    if (exists(session, object))
        throw Error(result, "C_DestroyObject");
    connection.checkLogin();
}

bool isSharedKey(const TokenContents &contents, const TokenEntry &removed)
{
    return std::any_of(
        contents.entries.begin(), contents.entries.end(), [&](const TokenEntryPtr &entry) {
            return entry->key == removed.key && entry->certificate != removed.certificate;
        });
}

/// One that the module failed to read may be the certificate of the key, or another key that it is
/// taken for.
void checkWhole(const TokenConnection &connection)
{
    if (!connection.objects().areWhole())
        throw Error(CKR_FUNCTION_FAILED, "C_GetAttributeValue");
}

/// The entry after the login, which may have shown its key; with handles that are good.
TokenEntryPtr current(TokenConnection &connection, const TokenEntry &entry)
{
    if (!connection.certificatesHold() || !connection.objects().areWhole())
        connection.read();
    const TokenEntryPtr found = connection.contents()->entryOf(entry.certificate->der);
    if (!found)
        throw Error(TokenError::NotFound);
    // Half of a pair is not removed: nobody would see the other half that stays.
    const TokenKeyPtr key = entry.key && found->key ? found->key : nullptr;
    if (key && (key->privateObject == CK_INVALID_HANDLE || !connection.keysHold()))
        throw Error(TokenError::NotLoggedIn);
    // Another key than its own would be lost.
    if (key && key->isGuessed)
        throw Error(TokenError::KeyAmbiguous);
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

bool hasPublicKey(const Session &session, const TokenKey &key)
{
    const auto candidates = findMarked(session, {CKO_PUBLIC_KEY, key.id, {}});
    return std::any_of(candidates.begin(), candidates.end(), [&](CK_OBJECT_HANDLE object) {
        const QByteArray info = publicInfoOf(session, object, key.type);
        return comparablePublicInfo(info) == comparablePublicInfo(key.publicInfo);
    });
}

/// `copy` is null where nothing was destroyed yet, or there was no public object.
void putPublicKeyBack(Writing &writing, const TokenKey &key, Template *copy)
{
    // The search does not use the handle, which may have changed with the session.
    if (copy && !hasPublicKey(writing.session(), key))
        writing.create(*copy, {CKO_PUBLIC_KEY, key.id, {}}, {});
}

/// By the login that the removal had, or a new one: what hides without would be put back twice.
template <class PutBack>
void undo(TokenConnection &connection, Operation &operation, const PutBack &putBack) noexcept
{
    try {
        Writing writing(connection, operation, connection.openToUndo(operation));
        const TokenConnection::Scope toItsEnd(connection, nullptr);
        putBack(writing);
        writing.keep();
        connection.read();
    } catch (const std::exception &) {
        // The failure of the removal itself is reported.
    }
}

void removePair(TokenConnection &connection, const Session &session, const TokenKey &key)
{
    destroy(connection, session, key.publicObject);
    destroy(connection, session, key.privateObject);
}

/// `copy` receives what the public half is put back from; it is made before anything is destroyed.
void removeObjects(TokenConnection &connection, const TokenEntry &entry, bool withKey,
                   std::unique_ptr<Template> *copy)
{
    const Session session = connection.open(Session::ReadWrite);
    // Nobody can cancel between the objects: a removal that is half done has to be undone.
    connection.checkCancelled();
    if (withKey)
        *copy = publicKeyCopy(session, *entry.key);
    for (const CK_OBJECT_HANDLE object : entry.certificate->objects)
        destroy(connection, session, object);
    if (withKey)
        removePair(connection, session, *entry.key);
}

/// The key as the token has it now: whoever has written its certificate meanwhile keeps it.
TokenKeyPtr currentKey(TokenConnection &connection, const QString &keyId)
{
    connection.read();
    TokenKeyPtr key = connection.contents()->bareKeyOfId(keyId);
    if (!key)
        throw Error(TokenError::NotFound);
    checkWhole(connection);
    if (key->privateObject == CK_INVALID_HANDLE || !connection.keysHold())
        throw Error(TokenError::NotLoggedIn);
    // Another key than the shown one would be lost.
    if (key->isGuessed)
        throw Error(TokenError::KeyAmbiguous);
    return key;
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
    if (withKey)
        checkWhole(connection);
    std::unique_ptr<Template> copy;
    try {
        removeObjects(connection, *entry, withKey, &copy);
    } catch (const std::exception &) {
        undo(connection, operation, [&](Writing &writing) {
            putCertificateBack(writing, *entry->certificate);
            if (withKey)
                putPublicKeyBack(writing, *entry->key, copy.get());
        });
        throw;
    }
    connection.noteRemoved(*entry->certificate);
    if (withKey)
        connection.noteRemoved(*entry->key);
}

void removeKey(TokenConnection &connection, Operation &operation, const QString &keyId)
{
    if (!connection.contents()->bareKeyOfId(keyId))
        throw Error(TokenError::NotFound);
    connection.checkWritable();
    connection.login(operation, TokenConnection::LoginFor::PrivateKeys);
    const TokenKeyPtr key = currentKey(connection, keyId);
    std::unique_ptr<Template> copy;
    try {
        const Session session = connection.open(Session::ReadWrite);
        // Nobody can cancel between the halves: a removal that is half done has to be undone.
        connection.checkCancelled();
        copy = publicKeyCopy(session, *key);
        removePair(connection, session, *key);
    } catch (const std::exception &) {
        undo(connection, operation,
             [&](Writing &writing) { putPublicKeyBack(writing, *key, copy.get()); });
        throw;
    }
    connection.noteRemoved(*key);
}

} // namespace Trivex
