// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/signing.h"

#include "providers/pkcs11/calls/attributes.h"
#include "providers/pkcs11/contents/gostkeys.h"
#include "qca/asn1/derwriter.h"
#include "qca/base/secret.h"
#include "qca/keys/keymaterial.h"
#include "qca/keys/nativeoperations.h"
#include "qca/keys/psskeys.h"

#include <algorithm>
#include <map>
#include <optional>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::Error;
using Pkcs11::Session;

namespace {

/// Room for the signature or the plain text of an RSA key of 16,384 bits.
constexpr CK_ULONG ResultRoom = 2048;

struct SignatureMechanism {
    CK_KEY_TYPE keyType;
    CK_MECHANISM_TYPE mechanism;
};

constexpr SignatureMechanism Mechanisms[] = {
    {CKK_RSA, CKM_RSA_PKCS},
    {CKK_EC, CKM_ECDSA},
    {CKK_EC_EDWARDS, CKM_EDDSA},
    {CKK_GOSTR3410, CKM_GOSTR3410},
    {KeyTypeGost512, MechanismGost512Sign},
};

struct PssMechanism {
    Digest digest;
    CK_MECHANISM_TYPE mechanism;
    CK_ULONG mask;
};

constexpr PssMechanism PssMechanisms[] = {
    {Sha1Digest, CKM_SHA_1, CKG_MGF1_SHA1},
    {Sha256Digest, CKM_SHA256, CKG_MGF1_SHA256},
    {Sha384Digest, CKM_SHA384, CKG_MGF1_SHA384},
    {Sha512Digest, CKM_SHA512, CKG_MGF1_SHA512},
};

/// Throws for what is none of them: such a scheme is not made.
const PssMechanism &pssMechanism(const Digest *digest)
{
    for (const PssMechanism &one : PssMechanisms) {
        if (digest && *digest == one.digest)
            return one;
    }
    throw Error(TokenError::WrongKeyKind);
}

/// Throws where `block` is no digest of the one kind that the key signs, such as one that is to be
/// signed by PKCS#1 v1.5.
CK_RSA_PKCS_PSS_PARAMS pssParameters(const TokenKey &key, int bits, const QByteArray &block)
{
    const PssScheme scheme = pssSchemeOf(key.publicInfo, rsaDigestFor(bits));
    const PssMechanism &made = pssMechanism(scheme.digest);
    if (block.size() != made.digest.size)
        throw Error(TokenError::WrongKeyKind);
    return {made.mechanism, pssMechanism(scheme.maskDigest).mask, CK_ULONG(scheme.saltSize)};
}

/// What a key of that kind is used by; nothing for a kind that is not used.
std::optional<CK_MECHANISM_TYPE> mechanismOf(const TokenKey &key)
{
    if (isPssKey(key.publicInfo))
        return CKM_RSA_PKCS_PSS;
    for (const SignatureMechanism &one : Mechanisms) {
        if (one.keyType == key.type)
            return one.mechanism;
    }
    return std::nullopt;
}

/// Throws for a token that can't, before anybody is asked for its PIN.
CK_MECHANISM mechanismFor(const TokenConnection &connection, const TokenKey &key, CK_FLAGS use)
{
    const auto mechanism = mechanismOf(key);
    if (!mechanism || connection.lacks(*mechanism, use))
        throw Error(TokenError::NotSupported);
    return {*mechanism, nullptr, 0};
}

/// The key's object, which shows itself after the login only.
CK_OBJECT_HANDLE privateObject(TokenConnection &connection, const TokenKey &wanted)
{
    const TokenKeyPtr found = connection.contents()->keyFor(wanted.publicInfo);
    if (!found || found->privateObject == CK_INVALID_HANDLE)
        throw Error(wanted.isPresumed ? TokenError::NoKey : TokenError::NotFound);
    // The login may have shown that several keys have this id.
    if (found->isGuessed && connection.contents()->bareKeyOfId(found->keyId))
        throw Error(TokenError::KeyAmbiguous);
    return found->privateObject;
}

bool asksAtEachUse(const Session &session, CK_OBJECT_HANDLE key)
{
    Pkcs11::AttributeReader reader({{CKA_ALWAYS_AUTHENTICATE, sizeof(CK_BBOOL)}});
    reader.read(session, key);
    return reader.flag(0, false);
}

/// The two calls of an operation with a private key, and how they are called in a report.
struct Calls {
    CK_C_SignInit CK_FUNCTION_LIST::*initialize;
    const char *initializeName;
    CK_C_Sign CK_FUNCTION_LIST::*finish;
    const char *finishName;
};

constexpr Calls SignCalls = {&CK_FUNCTION_LIST::C_SignInit, "C_SignInit", &CK_FUNCTION_LIST::C_Sign,
                             "C_Sign"};
constexpr Calls DecryptCalls = {&CK_FUNCTION_LIST::C_DecryptInit, "C_DecryptInit",
                                &CK_FUNCTION_LIST::C_Decrypt, "C_Decrypt"};

/// The result is no memory of QCA's: the module may return when QCA has ended long ago.
Secret useKey(TokenConnection &connection, Operation &operation, const TokenKey &key,
              const Calls &calls, CK_MECHANISM mechanism, QByteArray input)
{
    connection.login(operation, TokenConnection::LoginFor::PrivateKeys);
    // A session of its own: one that fails half way is left with an operation that never ends.
    const Session session = connection.open(Session::ReadOnly);
    const auto initialize = [&](CK_OBJECT_HANDLE object) {
        return ((*session.module().operator->()).*calls.initialize)(session.handle(), &mechanism,
                                                                    object);
    };
    CK_OBJECT_HANDLE object = privateObject(connection, key);
    connection.checkCancelled();
    CK_RV result = initialize(object);
    if (result == CKR_KEY_HANDLE_INVALID || result == CKR_OBJECT_HANDLE_INVALID) {
        // Another program has rewritten it.
        connection.readKeysAgain();
        object = privateObject(connection, key);
        result = initialize(object);
    }
    check(result, calls.initializeName);
    if (asksAtEachUse(session, object))
        connection.loginForUse(session, operation);
    connection.checkCancelled();
    Secret output{int(ResultRoom)};
    CK_ULONG size = ResultRoom;
    check(((*session.module().operator->()).*calls.finish)(
              session.handle(), reinterpret_cast<CK_BYTE *>(input.data()), CK_ULONG(input.size()),
              reinterpret_cast<CK_BYTE *>(output.data()), &size),
          calls.finishName);
    // The module can't have written more than it had room for, whatever it says.
    if (size > ResultRoom)
        throw Error(CKR_GENERAL_ERROR, calls.finishName);
    output.truncate(int(size));
    return output;
}

/// A signature whose length can't be is none: RFC 8017, 8.2.1, PKCS#11 2.40 current mechanisms,
/// 2.3.1 (r and s side by side, each as long as the order), RFC 8032, 5.1.6, and RFC 9215, 2.
void checkSignature(const TokenKey &key, int bits, const QByteArray &signature)
{
    const int length = (bits + 7) / 8;
    const GostMechanisms *gost = gostMechanisms(key.publicInfo);
    const bool isGood = key.type == CKK_RSA ? signature.size() == length
        : key.type == CKK_EC         ? signature.size() % 2 == 0 && signature.size() <= 2 * length
        : key.type == CKK_EC_EDWARDS ? signature.size() == 2 * length
                                     : !gost || signature.size() == gost->signatureSize;
    if (!isGood || signature.isEmpty())
        throw Error(CKR_GENERAL_ERROR, "C_Sign");
}

QByteArray digestBy(TokenConnection &connection, CK_MECHANISM_TYPE type, QByteArray message,
                    int digestSize)
{
    CK_MECHANISM mechanism = {type, nullptr, 0};
    const Session session = connection.open(Session::ReadOnly);
    check(session.module()->C_DigestInit(session.handle(), &mechanism), "C_DigestInit");
    QByteArray digest(digestSize, '\0');
    auto size = CK_ULONG(digest.size());
    check(session.module()->C_Digest(session.handle(), reinterpret_cast<CK_BYTE *>(message.data()),
                                     CK_ULONG(message.size()),
                                     reinterpret_cast<CK_BYTE *>(digest.data()), &size),
          "C_Digest");
    if (size != CK_ULONG(digestSize))
        throw Error(CKR_GENERAL_ERROR, "C_Digest");
    return digest;
}

/// Whether the token gets a digest to sign, which is its own where none `isGiven`, and not the
/// message. Of both ways the one that it tells of. Throws for a token that has neither.
bool signsDigest(const TokenConnection &connection, const GostMechanisms &mechanisms, bool isGiven,
                 bool hasMessage)
{
    using Ability = TokenConnection::Ability;
    Ability digest = Ability::Lacking;
    if (isGiven || hasMessage)
        digest = connection.ability(mechanisms.sign, CKF_SIGN);
    if (!isGiven && digest != Ability::Lacking)
        digest = std::min(digest, connection.ability(mechanisms.digest, CKF_DIGEST));
    if (digest == Ability::Known)
        return true;
    const Ability message =
        hasMessage ? connection.ability(mechanisms.signMessage, CKF_SIGN) : Ability::Lacking;
    if (std::max(digest, message) == Ability::Lacking)
        throw Error(TokenError::NotSupported);
    return digest >= message;
}

/// Signs `message`, whose digest is `digest` unless nobody here could compute it: then the token
/// digests, in a step of its own or in that of the signature.
QByteArray signGost(TokenConnection &connection, Operation &operation, const TokenKey &key,
                    const GostMechanisms &mechanisms, const std::optional<QByteArray> &message,
                    QByteArray digest)
{
    const bool givesDigest =
        signsDigest(connection, mechanisms, !digest.isEmpty(), message.has_value());
    if (givesDigest && digest.isEmpty())
        digest = digestBy(connection, mechanisms.digest, *message, mechanisms.signatureSize / 2);
    connection.checkCancelled();
    QByteArray parameters = Der::writeOid(mechanisms.digestParameters);
    CK_MECHANISM mechanism = {mechanisms.sign, nullptr, 0};
    if (!givesDigest)
        mechanism = {mechanisms.signMessage, parameters.data(), CK_ULONG(parameters.size())};
    const QByteArray signature =
        useKey(connection, operation, key, SignCalls, mechanism, givesDigest ? digest : *message)
            .toByteArray();
    checkSignature(key, 0, signature);
    return signature;
}

bool perform(TokenTable &tokens, Purpose purpose, const TokenKeyReference &reference,
             Token::Work work)
{
    const TokenError error = tokens.run(Operation(purpose, reference.storeId), std::move(work));
    return error.kind == TokenError::NoError;
}

} // namespace

bool signOnToken(TokenTable &tokens, const TokenKeyReference &reference, int bits,
                 const QByteArray &block, QByteArray *signature)
{
    const auto result = std::make_shared<QByteArray>();
    const auto work = [result, block, bits, key = reference.key](TokenConnection &connection,
                                                                 Operation &operation) {
        CK_MECHANISM mechanism = mechanismFor(connection, *key, CKF_SIGN);
        CK_RSA_PKCS_PSS_PARAMS pss = {};
        if (mechanism.mechanism == CKM_RSA_PKCS_PSS) {
            pss = pssParameters(*key, bits, block);
            mechanism.pParameter = &pss;
            mechanism.ulParameterLen = sizeof pss;
        }
        *result = useKey(connection, operation, *key, SignCalls, mechanism, block).toByteArray();
        checkSignature(*key, bits, *result);
        if (key->type == CKK_EC)
            *result = derSignature(*result);
    };
    if (!perform(tokens, Purpose::Sign, reference, work) || result->isEmpty())
        return false;
    *signature = *result;
    return true;
}

bool signMessageOnToken(TokenTable &tokens, const TokenKeyReference &reference,
                        const std::optional<QByteArray> &message, const QByteArray &digest,
                        QByteArray *signature)
{
    const GostMechanisms *mechanisms =
        reference.key ? gostMechanisms(reference.key->publicInfo) : nullptr;
    if (!mechanisms)
        return false;
    const auto result = std::make_shared<QByteArray>();
    const auto work = [=, key = reference.key](TokenConnection &connection, Operation &operation) {
        *result = signGost(connection, operation, *key, *mechanisms, message, digest);
    };
    if (!perform(tokens, Purpose::Sign, reference, work))
        return false;
    *signature = *result;
    return true;
}

bool decryptOnToken(TokenTable &tokens, const TokenKeyReference &reference, const QByteArray &data,
                    QCA::SecureArray *plain)
{
    const auto result = std::make_shared<Secret>();
    const auto work = [result, data, key = reference.key](TokenConnection &connection,
                                                          Operation &operation) {
        const CK_MECHANISM mechanism = mechanismFor(connection, *key, CKF_DECRYPT);
        *result = useKey(connection, operation, *key, DecryptCalls, mechanism, data);
    };
    if (!perform(tokens, Purpose::Decrypt, reference, work))
        return false;
    *plain = result->toSecureArray();
    return true;
}

QSet<QString> unfitToSign(const TokenConnection &connection)
{
    // The token is asked once, however many keys it has.
    std::map<CK_MECHANISM_TYPE, bool> known;
    const auto lacks = [&](CK_MECHANISM_TYPE mechanism) {
        const auto [at, isNew] = known.try_emplace(mechanism, false);
        if (isNew)
            at->second = connection.lacks(mechanism, CKF_SIGN);
        return at->second;
    };
    QSet<QString> unfit;
    for (const TokenEntryPtr &entry : connection.contents()->entries) {
        if (!entry->key)
            continue;
        const GostMechanisms *gost = gostMechanisms(entry->key->publicInfo);
        const auto mechanism = mechanismOf(*entry->key);
        const bool isUnfit =
            gost ? lacks(gost->sign) && lacks(gost->signMessage) : !mechanism || lacks(*mechanism);
        if (isUnfit)
            unfit.insert(entry->id);
    }
    return unfit;
}

} // namespace Trivex
