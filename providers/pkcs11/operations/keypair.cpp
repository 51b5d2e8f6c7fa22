// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/keypair.h"

#include "providers/pkcs11/contents/gostkeys.h"
#include "providers/pkcs11/contents/objectsearch.h"
#include "providers/pkcs11/contents/tokenreader.h"
#include "providers/pkcs11/operations/objecttemplates.h"
#include "qca/keys/publickeyfields.h"

#include <openssl/rand.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::Error;
using Pkcs11::Session;
using Pkcs11::Template;

namespace {

QByteArray bigEndian(int number)
{
    QByteArray bytes;
    for (auto left = quint32(number); left; left >>= 8)
        bytes.prepend(char(left & 0xff));
    return bytes;
}

/// The differences between the kinds of pair.
struct PairKind {
    CK_KEY_TYPE type;
    CK_MECHANISM_TYPE mechanism;
    void (*addPublicPart)(const GenerationRequest &, Template *);
    void (*addPrivatePart)(Template *);
};

void addRsaNumbers(const GenerationRequest &request, Template *part)
{
    part->addFlag(CKA_ENCRYPT, true)
        .addNumber(CKA_MODULUS_BITS, CK_ULONG(request.bits))
        .add(CKA_PUBLIC_EXPONENT, bigEndian(request.exponent));
}

void addDecryption(Template *part)
{
    part->addFlag(CKA_DECRYPT, true);
}

void addCurve(const GenerationRequest &request, Template *part)
{
    part->add(CKA_EC_PARAMS, request.curve);
}

void addGostParameters(const GenerationRequest &request, Template *part)
{
    part->addNumber(CKA_KEY_TYPE, request.type)
        .add(CKA_GOSTR3410_PARAMS, request.curve)
        .add(CKA_GOSTR3411_PARAMS, request.digest);
}

void addNothing(Template *) { }

template <CK_KEY_TYPE type> void addType(Template *part)
{
    part->addNumber(CKA_KEY_TYPE, type);
}

constexpr PairKind PairKinds[] = {
    {CKK_RSA, CKM_RSA_PKCS_KEY_PAIR_GEN, addRsaNumbers, addDecryption},
    {CKK_EC, CKM_EC_KEY_PAIR_GEN, addCurve, addNothing},
    {CKK_EC_EDWARDS, CKM_EC_EDWARDS_KEY_PAIR_GEN, addCurve, addNothing},
    {CKK_GOSTR3410, CKM_GOSTR3410_KEY_PAIR_GEN, addGostParameters, addType<CKK_GOSTR3410>},
    {KeyTypeGost512, MechanismGost512Generate, addGostParameters, addType<KeyTypeGost512>},
};

const PairKind &kindOf(const GenerationRequest &request)
{
    for (const PairKind &kind : PairKinds) {
        if (kind.type == request.type)
            return kind;
    }
    throw Error(TokenError::NotSupported);
}

void checkRequest(const TokenConnection &connection, const GenerationRequest &request)
{
    const bool isMeaningful = request.type == CKK_RSA ? request.bits > 0 && request.exponent > 1
                                                      : !request.curve.isEmpty();
    if (!isMeaningful || !connection.supports(kindOf(request).mechanism))
        throw Error(TokenError::NotSupported);
}

void addPublicPart(const GenerationRequest &request, Template *part)
{
    part->addFlag(CKA_TOKEN, true).addFlag(CKA_PRIVATE, false).addFlag(CKA_VERIFY, true);
    kindOf(request).addPublicPart(request, part);
}

void addPrivatePart(const GenerationRequest &request, Template *part)
{
    part->addFlag(CKA_TOKEN, true)
        .addFlag(CKA_PRIVATE, true)
        .addFlag(CKA_SENSITIVE, true)
        .addFlag(CKA_EXTRACTABLE, false)
        .addFlag(CKA_SIGN, true);
    kindOf(request).addPrivatePart(part);
}

/// Marks the pair until its own id is known, so that its halves are found if a call fails that
/// has made one of them.
QByteArray provisionalId()
{
    QByteArray id(20, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char *>(id.data()), id.size()) != 1)
        throw Error(TokenError::DeviceFailure);
    return id;
}

/// The ids and handles by which a pair that is being made can be found.
struct NewPair {
    std::vector<QByteArray> ids;
    std::vector<CK_OBJECT_HANDLE> objects;
    int handleSeries = 0; ///< of `objects`
};

/// Removes both halves. It uses the login that the pair was made with, or a new one: without a
/// login a token does not show the private half.
void removeObjects(TokenConnection &connection, Operation &operation, const NewPair &pair) noexcept
{
    try {
        const Session session = connection.openToUndo(operation);
        const auto destroy = [&](CK_OBJECT_HANDLE object) {
            session.module()->C_DestroyObject(session.handle(), object);
        };
        // The handles may name other objects by now.
        const bool areGood = pair.handleSeries == connection.handleSeries();
        for (const CK_OBJECT_HANDLE object :
             areGood ? pair.objects : std::vector<CK_OBJECT_HANDLE>())
            destroy(object);
        for (const QByteArray &id : pair.ids) {
            Template sameId;
            sameId.add(CKA_ID, id);
            for (const CK_OBJECT_HANDLE object : Pkcs11::findObjects(session, sameId))
                destroy(object);
        }
    } catch (const std::exception &) {
        // The token is gone, or there is no memory. It may keep a key without a certificate, which
        // shows nowhere.
    }
}

bool setId(const Session &session, CK_OBJECT_HANDLE object, const QByteArray &id)
{
    Template change;
    change.add(CKA_ID, id);
    return session.module()->C_SetAttributeValue(session.handle(), object, change.data(), 1)
        == CKR_OK;
}

/// Changes the id of both halves or of neither, because they find each other by their id.
void setIds(const Session &session, CK_OBJECT_HANDLE publicObject, CK_OBJECT_HANDLE privateObject,
            const QByteArray &id, const QByteArray &previous)
{
    const auto setPrivate = [&] { return setId(session, privateObject, id); };
    if (setId(session, publicObject, id) && !setPrivate() && !setPrivate())
        setId(session, publicObject, previous);
}

/// Whether an object that the module names as half of the new pair is one. An object that was there
/// before, or that has another class, is somebody else's, and nothing may be done to it.
bool isNewHalf(const TokenConnection &connection, const Session &session, CK_OBJECT_HANDLE object,
               CK_OBJECT_CLASS objectClass)
{
    const auto isIt = [object](const TokenKeyPtr &key) {
        return key->publicObject == object || key->privateObject == object;
    };
    const auto &keys = connection.contents()->keys;
    Pkcs11::AttributeReader reader({{CKA_CLASS, sizeof(CK_OBJECT_CLASS)}});
    return object != CK_INVALID_HANDLE && std::none_of(keys.begin(), keys.end(), isIt)
        && reader.readIfThere(session, object) && reader.number(0, CKO_DATA) == objectClass;
}

TokenKeyPtr generate(TokenConnection &connection, const GenerationRequest &request,
                     const QString &label, NewPair *pair)
{
    const QByteArray id = pair->ids.front();
    const Session session = connection.open(Session::ReadWrite);
    Template publicPart;
    addPublicPart(request, &publicPart);
    addNames(id, label, &publicPart);
    Template privatePart;
    addPrivatePart(request, &privatePart);
    addNames(id, label, &privatePart);
    CK_MECHANISM mechanism = {kindOf(request).mechanism, nullptr, 0};
    CK_OBJECT_HANDLE publicObject = CK_INVALID_HANDLE;
    CK_OBJECT_HANDLE privateObject = CK_INVALID_HANDLE;
    connection.checkCancelled();
    check(session.module()->C_GenerateKeyPair(session.handle(), &mechanism, publicPart.data(),
                                              publicPart.size(), privatePart.data(),
                                              privatePart.size(), &publicObject, &privateObject),
          "C_GenerateKeyPair");
    if (!isNewHalf(connection, session, publicObject, CKO_PUBLIC_KEY)
        || !isNewHalf(connection, session, privateObject, CKO_PRIVATE_KEY)) {
        connection.checkLogin();
        throw Error(CKR_GENERAL_ERROR, "C_GenerateKeyPair");
    }
    pair->objects = {publicObject, privateObject};
    pair->handleSeries = connection.handleSeries();
    connection.checkCancelled();
    const QByteArray publicInfo = publicInfoOf(session, publicObject, request.type);
    if (publicInfo.isEmpty())
        throw Error(TokenError::DeviceFailure);
    pair->ids.push_back(keyIdentifierOf(publicInfo));
    setIds(session, publicObject, privateObject, pair->ids.back(), id);
    connection.noteWritten(session, publicObject, privateObject);
    const TokenKeyPtr made = connection.contents()->keyFor(publicInfo);
    if (!made || made->privateObject == CK_INVALID_HANDLE)
        throw Error(TokenError::NotFound);
    return made;
}

TokenKeyPtr generateOrUndo(TokenConnection &connection, Operation &operation,
                           const GenerationRequest &request)
{
    NewPair pair = {{provisionalId()}, {}};
    try {
        return generate(connection, request, operation.objectId(), &pair);
    } catch (const std::exception &) {
        removeObjects(connection, operation, pair);
        throw;
    }
}

/// The exponent that every token takes.
constexpr int CommonExponent = 65537;

/// The request for a token that refuses the first form; none if there is no other form.
std::optional<GenerationRequest> otherForm(const GenerationRequest &request)
{
    GenerationRequest other = request;
    if (request.type == CKK_RSA && request.exponent != CommonExponent)
        other.exponent = CommonExponent;
    else if (!request.otherCurve.isEmpty())
        other.curve = std::exchange(other.otherCurve, QByteArray());
    else
        return std::nullopt;
    return other;
}

/// Failures that another form can't help against.
constexpr TokenError::Kind NoMatterOfForm[] = {
    TokenError::WrongPin,     TokenError::PinLocked,  TokenError::PinMissing,
    TokenError::PinNotSet,    TokenError::PinExpired, TokenError::NotLoggedIn,
    TokenError::TokenRemoved, TokenError::Cancelled,
};

/// Tokens say in many ways that they make no keys with an unusual exponent (TPM 2.0 and NSS refuse
/// 3) or don't know a curve by its OID, so every other failure may mean it. A session that has
/// ended took the login with it.
bool mayRefuseForm(const Error &error)
{
    return !Pkcs11::endsSession(error.returnValue())
        && std::find(std::begin(NoMatterOfForm), std::end(NoMatterOfForm), error.kind())
        == std::end(NoMatterOfForm);
}

} // namespace

TokenKeyPtr generateKeyPair(TokenConnection &connection, Operation &operation,
                            const GenerationRequest &request)
{
    checkRequest(connection, request);
    connection.checkWritable();
    connection.login(operation);
    const std::optional<GenerationRequest> other = otherForm(request);
    try {
        return generateOrUndo(connection, operation, request);
    } catch (const Error &error) {
        if (!other || !mayRefuseForm(error))
            throw;
    }
    connection.checkCancelled();
    return generateOrUndo(connection, operation, *other);
}

void removeKeyPair(TokenConnection &connection, Operation &operation, const QByteArray &publicInfo)
{
    NewPair pair = {{keyIdentifierOf(publicInfo)}, {}};
    const TokenKeyPtr key = connection.contents()->keyFor(publicInfo);
    if (key && connection.keysHold()) {
        pair.objects = {key->publicObject, key->privateObject};
        pair.handleSeries = connection.handleSeries();
    }
    removeObjects(connection, operation, pair);
    connection.readKeysAgain();
}

} // namespace Trivex
