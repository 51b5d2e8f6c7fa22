// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/extraction.h"

#include "providers/pkcs11/calls/attributes.h"
#include "qca/asn1/handles.h"
#include "qca/keys/gostpublickey.h"
#include "qca/keys/keymaterial.h"

#include <openssl/err.h>
#include <openssl/rand.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::Error;
using Pkcs11::Session;
using Pkcs11::Template;

namespace {

constexpr int WrappingKeyBytes = 32;
constexpr int BlockBytes = 16;
/// More than the PrivateKeyInfo of an RSA key of 16,384 bits.
constexpr CK_ULONG MostWrappedBytes = 64 * 1024;

using CipherContextHandle = Handle<EVP_CIPHER_CTX, EVP_CIPHER_CTX_free>;

/// How a token may wrap, and what undoes it.
struct Wrapping {
    CK_MECHANISM_TYPE mechanism;
    const EVP_CIPHER *(*cipher)();
    int vectorBytes;
};

/// A number of PKCS#11 3.0, which is newer than our header.
constexpr CK_MECHANISM_TYPE MechanismWrapKwp = 0x210B;

/// RFC 5649 comes first, because it detects changes on the way. PKCS#11 3.0 gives it a number of
/// its own; under the old number some tokens have it, and others another padding.
constexpr Wrapping Wrappings[] = {
    {MechanismWrapKwp, EVP_aes_256_wrap_pad, 0},
    {CKM_AES_KEY_WRAP_PAD, EVP_aes_256_wrap_pad, 0},
    {CKM_AES_CBC_PAD, EVP_aes_256_cbc, BlockBytes},
};

/// An object of a session, gone with this object.
class SessionObject {
public:
    SessionObject(const Session &session, Template &object)
        : m_session(session)
    {
        check(session.module()->C_CreateObject(session.handle(), object.data(), object.size(),
                                               &m_handle),
              "C_CreateObject");
    }
    ~SessionObject() { m_session.module()->C_DestroyObject(m_session.handle(), m_handle); }
    SessionObject(const SessionObject &) = delete;
    SessionObject &operator=(const SessionObject &) = delete;

    CK_OBJECT_HANDLE handle() const { return m_handle; }

private:
    const Session &m_session;
    CK_OBJECT_HANDLE m_handle = CK_INVALID_HANDLE;
};

Secret randomBytes(int count)
{
    Secret bytes(count);
    if (RAND_priv_bytes(reinterpret_cast<unsigned char *>(bytes.data()), count) != 1)
        throw Error(TokenError::DeviceFailure);
    return bytes;
}

void fillWrappingKey(const Secret &value, Template *object)
{
    object->addNumber(CKA_CLASS, CKO_SECRET_KEY)
        .addNumber(CKA_KEY_TYPE, CKK_AES)
        .addFlag(CKA_TOKEN, false)
        .addFlag(CKA_PRIVATE, true)
        .addFlag(CKA_WRAP, true)
        .add(CKA_VALUE, value.constData(), size_t(value.size()));
}

QByteArray wrapped(const Session &session, CK_MECHANISM mechanism, CK_OBJECT_HANDLE wrappingKey,
                   CK_OBJECT_HANDLE key)
{
    CK_ULONG size = 0;
    check(
        session.module()->C_WrapKey(session.handle(), &mechanism, wrappingKey, key, nullptr, &size),
        "C_WrapKey");
    if (size == 0 || size > MostWrappedBytes)
        throw Error(CKR_GENERAL_ERROR, "C_WrapKey");
    // Some say for sure only when they do it.
    size += BlockBytes;
    QByteArray bytes(int(size), '\0');
    check(session.module()->C_WrapKey(session.handle(), &mechanism, wrappingKey, key,
                                      reinterpret_cast<CK_BYTE *>(bytes.data()), &size),
          "C_WrapKey");
    if (size > CK_ULONG(bytes.size()))
        throw Error(CKR_GENERAL_ERROR, "C_WrapKey");
    bytes.truncate(int(size));
    return bytes;
}

/// Empty when the bytes were not wrapped by that key.
Secret unwrapped(const Wrapping &wrapping, const Secret &key, const Secret &vector,
                 const QByteArray &bytes)
{
    const CipherContextHandle context(EVP_CIPHER_CTX_new());
    Secret plain(bytes.size() + BlockBytes);
    const auto part = [](const Secret &secret) {
        return reinterpret_cast<const unsigned char *>(secret.constData());
    };
    auto *room = reinterpret_cast<unsigned char *>(plain.data());
    int length = 0;
    int rest = 0;
    if (context)
        EVP_CIPHER_CTX_set_flags(context.get(), EVP_CIPHER_CTX_FLAG_WRAP_ALLOW);
    const bool isDone = context
        && EVP_DecryptInit_ex(context.get(), wrapping.cipher(), nullptr, part(key),
                              vector.isEmpty() ? nullptr : part(vector))
            == 1
        && EVP_DecryptUpdate(context.get(), room, &length,
                             reinterpret_cast<const unsigned char *>(bytes.constData()),
                             bytes.size())
            == 1
        && EVP_DecryptFinal_ex(context.get(), room + length, &rest) == 1;
    ERR_clear_error();
    plain.truncate(isDone ? length + rest : 0);
    return plain;
}

bool belongsTo(const Secret &privateInfo, const QByteArray &publicInfo)
{
    const KeyMaterial key = KeyMaterial::fromPrivateInfo(privateInfo);
    // If libcrypto does not know the algorithm, it can't tell the public half.
    return !key.isNull()
        && (key.publicInfo().isEmpty()
            || comparablePublicInfo(key.publicInfo()) == comparablePublicInfo(publicInfo));
}

Secret copyBy(const Wrapping &wrapping, TokenConnection &connection, CK_OBJECT_HANDLE key)
{
    const Session session = connection.open(Session::ReadOnly);
    const Secret value = randomBytes(WrappingKeyBytes);
    Secret vector;
    if (wrapping.vectorBytes > 0)
        vector = randomBytes(wrapping.vectorBytes);
    Template object;
    fillWrappingKey(value, &object);
    const SessionObject wrappingKey(session, object);
    connection.checkCancelled();
    const CK_MECHANISM mechanism = {wrapping.mechanism, vector.data(), CK_ULONG(vector.size())};
    return unwrapped(wrapping, value, vector,
                     wrapped(session, mechanism, wrappingKey.handle(), key));
}

bool isOneOf(CK_RV result, std::initializer_list<CK_RV> all)
{
    return std::find(all.begin(), all.end(), result) != all.end();
}

/// These say that the key does not leave in that way, or by no call at all.
bool refusesTheWay(CK_RV result)
{
    return isOneOf(result,
                   {CKR_MECHANISM_INVALID, CKR_MECHANISM_PARAM_INVALID, CKR_FUNCTION_NOT_SUPPORTED,
                    CKR_KEY_NOT_WRAPPABLE, CKR_KEY_SIZE_RANGE, CKR_KEY_FUNCTION_NOT_PERMITTED,
                    CKR_WRAPPING_KEY_TYPE_INCONSISTENT, CKR_WRAPPING_KEY_SIZE_RANGE});
}

/// These say that the key, or every key of the token, stays where it is.
bool meansStays(TokenConnection &connection, const Error &error)
{
    // There is no operation that the PIN of a key which wants it at each use could be given to.
    if (error.returnValue() == CKR_USER_NOT_LOGGED_IN)
        return qstrcmp(error.function(), "C_WrapKey") == 0 && connection.checkLogin();
    return error.returnValue() == CKR_KEY_UNEXTRACTABLE || refusesTheWay(error.returnValue());
}

/// By the first of the ways that the token has and gives the key by.
Secret copyOf(TokenConnection &connection, CK_OBJECT_HANDLE key, const QByteArray &publicInfo)
{
    Error problem(TokenError::KeyStays);
    for (const Wrapping &wrapping : Wrappings) {
        if (!connection.supports(wrapping.mechanism, CKF_WRAP))
            continue;
        try {
            const Secret copy = copyBy(wrapping, connection, key);
            if (!copy.isEmpty() && belongsTo(copy, publicInfo))
                return copy;
            problem = Error(CKR_GENERAL_ERROR, "C_WrapKey");
        } catch (const Error &error) {
            if (!refusesTheWay(error.returnValue()))
                throw;
            problem = error;
        }
    }
    throw Error(problem);
}

Secret extract(TokenConnection &connection, Operation &operation, const QByteArray &publicInfo)
{
    connection.login(operation, TokenConnection::LoginFor::PrivateKeys);
    const TokenKeyPtr key = connection.contents()->keyFor(publicInfo);
    if (!key || key->privateObject == CK_INVALID_HANDLE)
        throw Error(key && key->isPresumed ? TokenError::NoKey : TokenError::NotFound);
    if (key->leave == TokenKeyFacts::Stays)
        throw Error(TokenError::KeyStays);
    try {
        return copyOf(connection, key->privateObject, publicInfo);
    } catch (const Error &error) {
        if (meansStays(connection, error))
            throw Error(error.returnValue(), error.function(), TokenError::KeyStays);
        throw;
    }
}

} // namespace

CancellationPtr startExtraction(TokenTable &tokens, const QString &keyStoreId,
                                const QByteArray &publicInfo, ExtractionDone done)
{
    if (!tokens.store(keyStoreId))
        return {};
    Operation operation(Purpose::Export, keyStoreId);
    const CancellationPtr cancellation = operation.cancellation();
    const auto copy = std::make_shared<Secret>();
    tokens.post(
        std::move(operation),
        [copy, publicInfo](TokenConnection &connection, Operation &running) {
            *copy = extract(connection, running, publicInfo);
        },
        [copy, done = std::move(done)](const TokenError &error) {
            done({error.kind == TokenError::NoError ? std::move(*copy) : Secret(), error});
        });
    return cancellation;
}

} // namespace Trivex
