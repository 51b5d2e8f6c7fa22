// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/objectwriter.h"

#include "providers/pkcs11/contents/keyindex.h"
#include "providers/pkcs11/contents/tokenreader.h"
#include "providers/pkcs11/operations/objecttemplates.h"
#include "providers/pkcs11/operations/writing.h"
#include "qca/keys/gostpublickey.h"
#include "qca/keys/publickeyfields.h"

#include <QCryptographicHash>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace Trivex {

using Pkcs11::Error;
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

/// An object that is to be written, and the objects on the token that are it already or may be.
struct ObjectPlan {
    ObjectMark mark;
    std::vector<CK_OBJECT_HANDLE> present;
};

// The searches come before anything is written, and there are as few of them as possible: a token
// compares all its objects in each search, and reads itself anew in a search after a change.

/// What the module failed to read may be what is to be written: one object is not written twice.
void checkRead(const Pkcs11::AttributeReader &reader)
{
    Pkcs11::check(reader.failure(), "C_GetAttributeValue");
}

/// Finds by the token's own comparison those that it can't tell.
void lookForUnread(const Writing &writing, const QSet<CK_OBJECT_HANDLE> &unread,
                   std::vector<ObjectPlan> *plans)
{
    if (unread.isEmpty())
        return;
    for (ObjectPlan &plan : *plans) {
        for (const CK_OBJECT_HANDLE object : findMarked(writing.session(), plan.mark)) {
            if (unread.contains(object))
                plan.present.push_back(object);
        }
    }
}

/// Makes one search for all certificates. It does not read those again that the connection knows.
std::vector<ObjectPlan> lookForCertificates(const TokenConnection &connection,
                                            const Writing &writing,
                                            const std::vector<QByteArray> &ders)
{
    std::vector<ObjectPlan> plans;
    QHash<QByteArray, size_t> places;
    for (const QByteArray &der : ders) {
        if (places.contains(der))
            continue;
        places.insert(der, plans.size());
        plans.push_back({{CKO_CERTIFICATE, {}, der}, {}});
    }
    QSet<CK_OBJECT_HANDLE> others;
    for (const TokenEntryPtr &entry : connection.contents()->entries) {
        if (connection.certificatesHold() && !places.contains(entry->certificate->der)) {
            for (const CK_OBJECT_HANDLE object : entry->certificate->objects)
                others.insert(object);
        }
    }
    Pkcs11::AttributeReader reader({{CKA_VALUE, 16384}});
    QSet<CK_OBJECT_HANDLE> unread;
    for (const CK_OBJECT_HANDLE object : findMarked(writing.session(), {CKO_CERTIFICATE, {}, {}})) {
        if (others.contains(object))
            continue;
        if (!reader.readIfThere(writing.session(), object)) {
            if (reader.failure() != CKR_OK)
                unread.insert(object);
            continue;
        }
        const auto found = places.constFind(reader.value(0));
        if (found != places.constEnd())
            plans[*found].present.push_back(object);
    }
    lookForUnread(writing, unread, &plans);
    return plans;
}

/// Makes one search for both halves of a pair.
void lookForPair(const Writing &writing, const QByteArray &id, ObjectPlan *privateHalf,
                 ObjectPlan *publicHalf)
{
    privateHalf->mark = {CKO_PRIVATE_KEY, id, {}};
    publicHalf->mark = {CKO_PUBLIC_KEY, id, {}};
    Template sameId;
    sameId.add(CKA_ID, id).addFlag(CKA_TOKEN, true);
    Pkcs11::AttributeReader reader({{CKA_CLASS, sizeof(CK_OBJECT_CLASS)}});
    for (const CK_OBJECT_HANDLE object : Pkcs11::findObjects(writing.session(), sameId)) {
        const bool isThere = reader.readIfThere(writing.session(), object);
        checkRead(reader);
        if (!isThere)
            continue;
        for (ObjectPlan *half : {privateHalf, publicHalf}) {
            if (reader.number(0, CKO_DATA) == half->mark.objectClass)
                half->present.push_back(object);
        }
    }
}

/// Gives the certificate the names that go with its key, and writes it unless it is there.
/// True when it was written.
bool writeUnlessPresent(TokenConnection &connection, Writing &writing, const ObjectPlan &plan,
                        TokenCertificate &certificate, const QString &label)
{
    if (!plan.present.empty())
        return false;
    const QByteArray publicInfo = publicInfoIn(certificate);
    const TokenKeyPtr key = connection.contents()->keyFor(publicInfo);
    certificate.id = key && !key->id.isEmpty() ? key->id : keyIdentifierOf(publicInfo);
    certificate.label = key && !key->label.isEmpty() ? key->label : label;
    if (certificate.label.isEmpty())
        certificate.label = commonNameOf(certificate);
    Template object;
    fillCertificate(certificate, &object);
    // Another program that writes the same one meanwhile hardly gives it the same id.
    const ObjectMark mark = {plan.mark.objectClass, certificate.id, plan.mark.value};
    certificate.objects = {writing.create(object, mark, {})};
    return true;
}

/// Lists what was written, whatever has ended the writing.
class WrittenList {
public:
    explicit WrittenList(TokenConnection &connection)
        : m_connection(connection)
    {
    }

    ~WrittenList()
    {
        try {
            m_connection.noteWritten(m_certificates);
        } catch (const std::exception &) {
            // Out of memory.
            m_connection.noteUnlisted();
        }
    }

    WrittenList(const WrittenList &) = delete;
    WrittenList &operator=(const WrittenList &) = delete;

    void add(const TokenCertificate &certificate) { m_certificates.push_back(certificate); }

private:
    TokenConnection &m_connection;
    std::vector<TokenCertificate> m_certificates;
};

/// Some may have been written by another program since the token was read. That they are there is
/// certain, so that a failed reading is no failure of the writing.
void makeListed(TokenConnection &connection, const QVector<QByteArray> &ders)
{
    QSet<QByteArray> listed;
    for (const TokenEntryPtr &entry : connection.contents()->entries)
        listed.insert(entry->certificate->der);
    const auto isMissing = [&](const QByteArray &der) { return !listed.contains(der); };
    if (std::none_of(ders.begin(), ders.end(), isMissing))
        return;
    try {
        connection.read();
    } catch (const Error &error) {
        connection.noteError(error);
        connection.noteUnlisted();
    }
}

QString listedId(TokenConnection &connection, const QByteArray &der)
{
    // Another program may have written it since the token was read.
    if (!connection.contents()->entryOf(der))
        connection.read();
    const TokenEntryPtr entry = connection.contents()->entryOf(der);
    if (!entry)
        throw Error(TokenError::NotFound);
    return entry->id;
}

/// Whether an object under the id of a key belongs to that key.
enum class Kinship { Own, Foreign, Unknown };

/// Private keys of elliptic curves do not show their public half: they are unknown.
Kinship kinshipOf(const Writing &writing, CK_OBJECT_HANDLE object, const KeyMaterial &key)
{
    const CK_KEY_TYPE type = tokenTypeOf(key.publicInfo());
    Pkcs11::AttributeReader reader({{CKA_KEY_TYPE, sizeof(CK_KEY_TYPE)}});
    reader.read(writing.session(), object);
    if (reader.number(0, type) != type)
        return Kinship::Foreign;
    const QByteArray found = publicInfoOf(writing.session(), object, type);
    if (found.isEmpty())
        return Kinship::Unknown;
    const bool isOwn = comparablePublicInfo(found) == comparablePublicInfo(key.publicInfo());
    return isOwn ? Kinship::Own : Kinship::Foreign;
}

/// Writes one half of a pair unless one of the objects is it already.
CK_OBJECT_HANDLE writeHalf(Writing &writing, const ObjectPlan &plan, const KeyMaterial &key,
                           Template &object)
{
    for (const CK_OBJECT_HANDLE candidate : plan.present) {
        if (kinshipOf(writing, candidate, key) != Kinship::Foreign)
            return candidate;
    }
    return writing.create(object, plan.mark, plan.present);
}

/// What is to be written of a bundle, and what of it the token has.
struct BundlePlan {
    BundlePlan(TokenConnection &connection, const Writing &writing, const BundleToWrite &bundle)
    {
        const QByteArray info = bundle.key.publicInfo();
        TokenKeyPtr known = connection.contents()->keyFor(info);
        if (!known && !connection.objects().keysAreWhole) {
            connection.read();
            known = connection.contents()->keyFor(info);
            if (!known && !connection.objects().keysAreWhole)
                throw Error(CKR_FUNCTION_FAILED, "C_GetAttributeValue");
        }
        id = known && !known->id.isEmpty() ? known->id : keyIdentifierOf(info);
        lookForPair(writing, id, &privateHalf, &publicHalf);
        if (isTaken(writing, bundle.key)) {
            id = QCryptographicHash::hash(info, QCryptographicHash::Sha1);
            privateHalf = publicHalf = {};
            lookForPair(writing, id, &privateHalf, &publicHalf);
        }
        connection.checkLogin();
        chain = lookForCertificates(connection, writing, bundle.chain);
    }

    /// Whether another pair has the id and its private half cannot be told from ours. Under one id
    /// the two pairs would be mistaken for each other.
    bool isTaken(const Writing &writing, const KeyMaterial &key) const
    {
        const auto has = [&](const ObjectPlan &half, Kinship kinship) {
            return std::any_of(half.present.begin(), half.present.end(),
                               [&](CK_OBJECT_HANDLE object) {
                                   return kinshipOf(writing, object, key) == kinship;
                               });
        };
        return has(privateHalf, Kinship::Unknown) && has(publicHalf, Kinship::Foreign)
            && !has(publicHalf, Kinship::Own);
    }

    QByteArray id;
    ObjectPlan privateHalf;
    ObjectPlan publicHalf;
    std::vector<ObjectPlan> chain;
};

void writeKeys(TokenConnection &connection, Writing &writing, const BundlePlan &plan,
               const KeyMaterial &key, const QString &label)
{
    const TokenCertificate own = parsed(plan.chain.front().mark.value);
    Template privateHalf;
    fillPrivateKey(key, own.parts.subject.in(own.der), plan.id, label, &privateHalf);
    const auto privateObject = writeHalf(writing, plan.privateHalf, key, privateHalf);
    Template publicHalf;
    fillPublicKey(key, plan.id, label, &publicHalf);
    const auto publicObject = writeHalf(writing, plan.publicHalf, key, publicHalf);
    connection.noteWritten(writing.session(), publicObject, privateObject);
}

void writeChain(TokenConnection &connection, Writing &writing, const BundlePlan &plan,
                const QString &label)
{
    std::vector<TokenCertificate> written;
    for (const ObjectPlan &one : plan.chain) {
        TokenCertificate certificate = parsed(one.mark.value);
        const bool isOwn = &one == &plan.chain.front();
        if (writeUnlessPresent(connection, writing, one, certificate, isOwn ? label : QString()))
            written.push_back(certificate);
    }
    connection.noteWritten(written);
}

void checkBundle(const BundleToWrite &bundle)
{
    if (bundle.chain.empty() || !bundle.key.isPrivate()
        || comparablePublicInfo(publicInfoIn(parsed(bundle.chain.front())))
            != comparablePublicInfo(bundle.key.publicInfo()))
        throw Error(TokenError::NotSupported);
}

} // namespace

QString writeCertificate(TokenConnection &connection, Operation &operation, const QByteArray &der)
{
    TokenCertificate certificate = parsed(der);
    connection.checkWritable();
    connection.login(operation);
    Writing writing(connection, operation);
    const auto plans = lookForCertificates(connection, writing, {der});
    if (writeUnlessPresent(connection, writing, plans.front(), certificate, QString()))
        connection.noteWritten({certificate});
    const QString id = listedId(connection, der);
    writing.keep();
    return id;
}

void writeCertificates(TokenConnection &connection, Operation &operation,
                       const QVector<QByteArray> &ders, std::atomic<int> *count)
{
    *count = 0;
    connection.checkWritable();
    connection.login(operation);
    Writing writing(connection, operation);
    const auto plans = lookForCertificates(connection, writing, {ders.begin(), ders.end()});
    {
        WrittenList written(connection);
        for (const ObjectPlan &one : plans) {
            TokenCertificate certificate = parsed(one.mark.value);
            if (writeUnlessPresent(connection, writing, one, certificate, QString()))
                written.add(certificate);
            writing.keep();
            ++*count;
        }
    }
    *count = ders.size();
    makeListed(connection, ders);
}

QString writeBundle(TokenConnection &connection, Operation &operation, const BundleToWrite &bundle)
{
    checkBundle(bundle);
    const TokenCertificate own = parsed(bundle.chain.front());
    connection.checkWritable();
    connection.login(operation);
    Writing writing(connection, operation);
    const QString label = bundle.name.isEmpty() ? commonNameOf(own) : bundle.name;
    const BundlePlan plan(connection, writing, bundle);
    writeKeys(connection, writing, plan, bundle.key, label);
    writeChain(connection, writing, plan, label);
    const QString id = listedId(connection, own.der);
    const TokenEntryPtr entry = connection.contents()->entry(id);
    if (!entry->key || entry->key->privateObject == CK_INVALID_HANDLE)
        throw Error(TokenError::NotFound);
    writing.keep();
    return id;
}

} // namespace Trivex
