// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/objectwriter.h"

#include "providers/pkcs11/core/objectsearch.h"
#include "providers/pkcs11/core/objecttemplates.h"
#include "qca/adapter/keys.h"

#include <algorithm>
#include <utility>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::Error;
using Pkcs11::Session;
using Pkcs11::Template;

namespace {

/// Objects that are written together: destroyed again unless `keep` is called.
class Writing {
public:
    explicit Writing(TokenConnection &connection)
        : m_connection(connection)
        , m_session(connection.open(Session::ReadWrite))
    {
    }

    ~Writing()
    {
        if (!m_created.empty())
            undo();
    }

    Writing(const Writing &) = delete;
    Writing &operator=(const Writing &) = delete;

    const Session &session() const { return m_session; }

    CK_OBJECT_HANDLE create(Template &object)
    {
        m_connection.checkCancelled();
        CK_OBJECT_HANDLE handle = CK_INVALID_HANDLE;
        check(m_session.module()->C_CreateObject(m_session.handle(), object.data(), object.size(),
                                                 &handle),
              "C_CreateObject");
        m_created.push_back(handle);
        return handle;
    }

    void keep() { m_created.clear(); }

private:
    void undo() noexcept
    {
        try {
            // The session that failed may be of no use any more.
            m_session = m_connection.open(Session::ReadWrite);
        } catch (const Error &) {
            // Tried with the old one all the same.
        }
        while (!m_created.empty()) {
            m_session.module()->C_DestroyObject(m_session.handle(), m_created.back());
            m_created.pop_back();
        }
    }

    TokenConnection &m_connection;
    Session m_session;
    std::vector<CK_OBJECT_HANDLE> m_created;
};

TokenCertificate parsed(const QByteArray &der)
{
    TokenCertificate certificate;
    certificate.der = der;
    certificate.parts = certificateParts(der);
    if (!certificate.parts.isValid())
        throw Error(TokenError::NotSupported);
    return certificate;
}

QByteArray publicInfoIn(const TokenCertificate &certificate)
{
    const QByteArray view = certificate.parts.publicInfo.in(certificate.der);
    return QByteArray(view.constData(), view.size());
}

std::vector<CK_OBJECT_HANDLE> copiesOf(const Session &session, const QByteArray &der)
{
    Template wanted;
    wanted.addNumber(CKA_CLASS, CKO_CERTIFICATE).addFlag(CKA_TOKEN, true).add(CKA_VALUE, der);
    return Pkcs11::findObjects(session, wanted);
}

/// Gives the certificate the names that go with its key, and writes it unless it is there.
/// True when it was written.
bool put(TokenConnection &connection, Writing &writing, TokenCertificate &certificate,
         const QString &label)
{
    certificate.objects = copiesOf(writing.session(), certificate.der);
    if (!certificate.objects.empty())
        return false;
    const QByteArray publicInfo = publicInfoIn(certificate);
    const TokenKeyPtr key = connection.contents()->keyFor(publicInfo);
    certificate.id = key && !key->id.isEmpty() ? key->id : idForPublicKey(publicInfo);
    certificate.label = key && !key->label.isEmpty() ? key->label : label;
    if (certificate.label.isEmpty())
        certificate.label = commonNameOf(certificate);
    Template object;
    fillCertificate(certificate, &object);
    certificate.objects = {writing.create(object)};
    return true;
}

QString listedId(TokenConnection &connection, const QByteArray &der)
{
    // Written by another program since the token was read.
    if (!connection.contents()->entryOf(der))
        connection.read();
    const TokenEntryPtr entry = connection.contents()->entryOf(der);
    if (!entry)
        throw Error(TokenError::NotFound);
    return entry->id;
}

bool hasHalf(const Session &session, CK_OBJECT_CLASS half, const QByteArray &publicInfo,
             const QByteArray &id, CK_KEY_TYPE type)
{
    Template wanted;
    wanted.addNumber(CKA_CLASS, half).addFlag(CKA_TOKEN, true).add(CKA_ID, id);
    for (const CK_OBJECT_HANDLE object : Pkcs11::findObjects(session, wanted)) {
        const QByteArray found = publicInfoOf(session, object, type);
        if (found.isEmpty() || found == publicInfo)
            return true;
    }
    return false;
}

void putKeys(TokenConnection &connection, Writing &writing, const Bundle &bundle,
             const TokenCertificate &own, const QString &label)
{
    const QByteArray &publicInfo = bundle.key.publicInfo();
    const TokenKeyPtr known = connection.contents()->keyFor(publicInfo);
    const QByteArray id = known && !known->id.isEmpty() ? known->id : idForPublicKey(publicInfo);
    const CK_KEY_TYPE type = bundle.key.keyType() == RsaKey ? CKK_RSA : CKK_EC;
    if (!hasHalf(writing.session(), CKO_PRIVATE_KEY, publicInfo, id, type)) {
        Template object;
        fillPrivateKey(bundle.key, own.parts.subject.in(own.der), id, label, &object);
        writing.create(object);
    }
    if (!hasHalf(writing.session(), CKO_PUBLIC_KEY, publicInfo, id, type)) {
        Template object;
        fillPublicKey(bundle.key, id, label, &object);
        writing.create(object);
    }
}

void checkBundle(const Bundle &bundle)
{
    if (bundle.chain.empty() || !bundle.key.isPrivate()
        || publicInfoIn(parsed(bundle.chain.front())) != bundle.key.publicInfo())
        throw Error(TokenError::NotSupported);
}

void destroy(const Session &session, CK_OBJECT_HANDLE object)
{
    if (object == CK_INVALID_HANDLE)
        return;
    const CK_RV result = session.module()->C_DestroyObject(session.handle(), object);
    // Gone already is what was wanted.
    if (result != CKR_OBJECT_HANDLE_INVALID)
        check(result, "C_DestroyObject");
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

void putBack(TokenConnection &connection, const TokenCertificate &certificate) noexcept
{
    try {
        Writing writing(connection);
        if (copiesOf(writing.session(), certificate.der).empty()) {
            Template object;
            fillCertificate(certificate, &object);
            writing.create(object);
            writing.keep();
        }
        connection.read();
    } catch (const Error &error) {
        connection.noteError(error);
    }
}

void removeObjects(TokenConnection &connection, const TokenEntry &entry, bool withKey)
{
    const Session session = connection.open(Session::ReadWrite);
    for (const CK_OBJECT_HANDLE object : entry.certificate->objects)
        destroy(session, object);
    if (!withKey)
        return;
    destroy(session, entry.key->privateObject);
    destroy(session, entry.key->publicObject);
}

} // namespace

QString writeCertificate(TokenConnection &connection, Operation &operation, const QByteArray &der)
{
    TokenCertificate certificate = parsed(der);
    connection.login(operation);
    Writing writing(connection);
    if (put(connection, writing, certificate, QString()))
        connection.noteWritten(certificate);
    const QString id = listedId(connection, der);
    writing.keep();
    return id;
}

QString writeBundle(TokenConnection &connection, Operation &operation, const Bundle &bundle)
{
    checkBundle(bundle);
    TokenCertificate own = parsed(bundle.chain.front());
    connection.login(operation);
    Writing writing(connection);
    const QString label = bundle.name.isEmpty() ? commonNameOf(own) : bundle.name;
    putKeys(connection, writing, bundle, own, label);
    std::vector<TokenCertificate> written;
    for (const QByteArray &der : bundle.chain) {
        TokenCertificate certificate = parsed(der);
        const bool isOwn = der == own.der;
        if (put(connection, writing, certificate, isOwn ? label : QString()))
            written.push_back(certificate);
    }
    for (const TokenCertificate &certificate : written)
        connection.noteWritten(certificate);
    connection.readKeysAgain();
    const QString id = listedId(connection, own.der);
    writing.keep();
    return id;
}

void removeEntry(TokenConnection &connection, Operation &operation, const QString &entryId)
{
    const TokenEntryPtr asked = connection.contents()->entry(entryId);
    if (!asked)
        throw Error(TokenError::NotFound);
    connection.login(operation);
    const TokenEntryPtr entry = current(connection, *asked);
    const bool withKey = asked->key && entry->key && !isSharedKey(*connection.contents(), *entry);
    try {
        removeObjects(connection, *entry, withKey);
    } catch (const Error &error) {
        connection.noteError(error);
        putBack(connection, *entry->certificate);
        throw;
    }
    connection.noteRemoved(entry->certificate->der);
    if (withKey)
        connection.readKeysAgain();
}

} // namespace Trivex
