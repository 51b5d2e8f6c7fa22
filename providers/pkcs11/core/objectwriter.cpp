// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/objectwriter.h"

#include "providers/pkcs11/core/objecttemplates.h"
#include "providers/pkcs11/core/tokenreader.h"
#include "providers/pkcs11/core/writing.h"
#include "qca/adapter/keys.h"

namespace Trivex {

using Pkcs11::Error;
using Pkcs11::Session;
using Pkcs11::Template;

namespace {

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

/// Gives the certificate the names that go with its key, and writes it unless it is there.
/// True when it was written.
bool put(TokenConnection &connection, Writing &writing, TokenCertificate &certificate,
         const QString &label)
{
    const ObjectMark mark = {CKO_CERTIFICATE, {}, certificate.der};
    if (!findMarked(writing.session(), mark).empty())
        return false;
    const QByteArray publicInfo = publicInfoIn(certificate);
    const TokenKeyPtr key = connection.contents()->keyFor(publicInfo);
    certificate.id = key && !key->id.isEmpty() ? key->id : idForPublicKey(publicInfo);
    certificate.label = key && !key->label.isEmpty() ? key->label : label;
    if (certificate.label.isEmpty())
        certificate.label = commonNameOf(certificate);
    Template object;
    fillCertificate(certificate, &object);
    certificate.objects = {writing.create(object, mark, {})};
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

/// Writes one half of a pair unless one of these objects is it already.
void putHalf(Writing &writing, const ObjectMark &mark, const KeyMaterial &key, Template &object)
{
    const CK_KEY_TYPE type = key.keyType() == RsaKey ? CKK_RSA : CKK_EC;
    const auto present = findMarked(writing.session(), mark);
    for (const CK_OBJECT_HANDLE candidate : present) {
        const QByteArray found = publicInfoOf(writing.session(), candidate, type);
        // A private key of an elliptic curve does not show its public half.
        if (found.isEmpty() || found == key.publicInfo())
            return;
    }
    writing.create(object, mark, present);
}

void putKeys(TokenConnection &connection, Writing &writing, const Bundle &bundle,
             const TokenCertificate &own, const QString &label)
{
    const KeyMaterial &key = bundle.key;
    const TokenKeyPtr known = connection.contents()->keyFor(key.publicInfo());
    const QByteArray id =
        known && !known->id.isEmpty() ? known->id : idForPublicKey(key.publicInfo());
    Template privateHalf;
    fillPrivateKey(key, own.parts.subject.in(own.der), id, label, &privateHalf);
    putHalf(writing, {CKO_PRIVATE_KEY, id, {}}, key, privateHalf);
    Template publicHalf;
    fillPublicKey(key, id, label, &publicHalf);
    putHalf(writing, {CKO_PUBLIC_KEY, id, {}}, key, publicHalf);
}

void checkBundle(const Bundle &bundle)
{
    if (bundle.chain.empty() || !bundle.key.isPrivate()
        || publicInfoIn(parsed(bundle.chain.front())) != bundle.key.publicInfo())
        throw Error(TokenError::NotSupported);
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
    const TokenCertificate own = parsed(bundle.chain.front());
    connection.login(operation);
    Writing writing(connection);
    const QString label = bundle.name.isEmpty() ? commonNameOf(own) : bundle.name;
    putKeys(connection, writing, bundle, own, label);
    for (const QByteArray &der : bundle.chain) {
        TokenCertificate certificate = parsed(der);
        if (put(connection, writing, certificate, der == own.der ? label : QString()))
            connection.noteWritten(certificate);
    }
    connection.readKeysAgain();
    const QString id = listedId(connection, own.der);
    writing.keep();
    return id;
}

} // namespace Trivex
