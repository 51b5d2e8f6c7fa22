// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokenconnection.h"

#include "providers/pkcs11/contents/tokenlook.h"

#include <algorithm>
#include <utility>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::Error;
using Pkcs11::Session;

namespace {

CK_RV callLogin(const Session &session, CK_USER_TYPE user, Secret pin)
{
    const CK_SESSION_HANDLE handle = session.handle();
    // Without a PIN the token asks for it on its own keys.
    if (pin.isEmpty())
        return session.module()->C_Login(handle, user, nullptr, 0);
    return session.module()->C_Login(handle, user, reinterpret_cast<CK_UTF8CHAR *>(pin.data()),
                                     CK_ULONG(pin.size()));
}

bool saysNothingOfMechanisms(CK_RV result)
{
    return Pkcs11::endsSession(result) || result == CKR_DEVICE_ERROR || result == CKR_DEVICE_MEMORY
        || result == CKR_HOST_MEMORY;
}

bool isUserState(CK_STATE state)
{
    return state == CKS_RO_USER_FUNCTIONS || state == CKS_RW_USER_FUNCTIONS;
}

} // namespace

TokenConnection::TokenConnection(Pkcs11::ModulePtr module, CK_SLOT_ID slot, TokenIdentity identity,
                                 const QCA::KeyStoreInfo &store, CertificateChoice choice)
    : m_module(std::move(module))
    , m_slot(slot)
    , m_identity(std::move(identity))
    , m_store(store)
    , m_choice(choice)
    , m_contents(std::make_shared<TokenContents>())
{
}

CK_STATE TokenConnection::anchorState()
{
    if (m_anchor) {
        try {
            return m_anchor->state();
        } catch (const Error &error) {
            if (!Pkcs11::endsSession(error.returnValue()))
                throw;
            m_anchor.reset();
            if (m_reliance != Reliance::Nothing)
                throw;
        }
    }
    m_anchor.emplace(m_module, m_slot, Session::ReadOnly);
    ++m_anchors;
    ++m_handleSeries;
    return m_anchor->state();
}

bool TokenConnection::checkLogin()
{
    const bool isLoggedIn = isUserState(anchorState());
    m_tellsLogin = m_tellsLogin || isLoggedIn;
    if (m_reliance == Reliance::Login && !isLoggedIn)
        throw Error(CKR_USER_NOT_LOGGED_IN, "C_GetSessionInfo");
    return isLoggedIn;
}

Session TokenConnection::open(Session::Mode mode)
{
    checkLogin();
    return Session(m_module, m_slot, mode);
}

Session TokenConnection::openPlain(Session::Mode mode) const
{
    return Session(m_module, m_slot, mode);
}

Session TokenConnection::openToUndo(Operation &operation)
{
    const bool hadLogin = m_reliance == Reliance::Login && !m_isUndoRefused;
    const Scope toItsEnd(*this, nullptr);
    if (!checkLogin() && hadLogin) {
        try {
            login(operation, LoginFor::PrivateKeys);
        } catch (const Error &) {
            // Undoing goes on with what shows without a login, and asks nobody again.
            m_isUndoRefused = true;
        }
    }
    return Session(m_module, m_slot, Session::ReadWrite);
}

TokenFlags TokenConnection::flags() const
{
    CK_TOKEN_INFO info = {};
    check((*m_module)->C_GetTokenInfo(m_slot, &info), "C_GetTokenInfo");
    // Another token may be in the slot before the look at the slots finds it. It must not get a PIN
    // that was given for this one, and nothing of it may be shown as this one's.
    if (identityOf(info).uri != m_identity.uri)
        throw Error(CKR_DEVICE_REMOVED, "C_GetTokenInfo");
    return flagsOf(info);
}

bool TokenConnection::supports(CK_MECHANISM_TYPE mechanism, CK_FLAGS uses) const
{
    CK_MECHANISM_INFO info = {};
    const CK_RV result = (*m_module)->C_GetMechanismInfo(m_slot, mechanism, &info);
    // Whoever is told that a token can't do something looks for another one. All other codes are
    // how tokens say that they do not know the mechanism.
    if (saysNothingOfMechanisms(result))
        throw Error(result, "C_GetMechanismInfo");
    return result == CKR_OK && (info.flags & uses) == uses;
}

TokenConnection::Ability TokenConnection::ability(CK_MECHANISM_TYPE mechanism, CK_FLAGS use) const
{
    CK_MECHANISM_INFO info = {};
    const CK_RV result = (*m_module)->C_GetMechanismInfo(m_slot, mechanism, &info);
    if (Pkcs11::endsSession(result))
        throw Error(result, "C_GetMechanismInfo");
    if (result == CKR_OK)
        return isFor(info, use) ? Ability::Known : Ability::Lacking;
    return result == CKR_MECHANISM_INVALID ? Ability::Lacking : Ability::Untold;
}

void TokenConnection::login(Operation &operation, LoginFor purpose)
{
    checkCancelled();
    m_reliance = Reliance::Nothing;
    m_isUndoRefused = false;
    bool isLoggedIn = checkLogin();
    bool isRead = keysHold();
    const bool hides = purpose == LoginFor::PrivateKeys && m_objects.privateKeysHidden;
    if (isLoggedIn) {
        // If the reading after the login failed, the keys are read now.
        isRead = isRead && !m_objects.privateKeysHidden;
    } else if (hides || wantsLogin()) {
        authenticate(*m_anchor, CKU_USER, operation, QCA::KeyStoreEntry());
        isLoggedIn = isUserState(m_anchor->state());
        // Some modules never tell of a login.
        if (!isLoggedIn && m_tellsLogin)
            throw Error(CKR_USER_NOT_LOGGED_IN, "C_GetSessionInfo");
        // Private keys show themselves only now.
        isRead = false;
    }
    m_reliance = isLoggedIn ? Reliance::Login : Reliance::Anchor;
    if (!isRead)
        readKeysAgain();
    // Only a login has shown the keys, so it is needed from now on, whatever the token says.
    m_hiddenLogin = m_hiddenLogin || (hides && isLoggedIn && !m_objects.privateKeys.empty());
}

void TokenConnection::loginForUse(const Session &session, Operation &operation,
                                  const QCA::KeyStoreEntry &entry)
{
    authenticate(session, CKU_CONTEXT_SPECIFIC, operation, entry);
}

void TokenConnection::authenticate(const Session &session, CK_USER_TYPE user, Operation &operation,
                                   const QCA::KeyStoreEntry &entry)
{
    bool wasWrong = false;
    while (!tryLogin(session, user, operation, entry, wasWrong))
        wasWrong = true; // each round has a PIN that was typed for it
    m_hasLoggedIn = true;
    if (user == CKU_USER)
        ++m_handleSeries;
}

bool TokenConnection::tryLogin(const Session &session, CK_USER_TYPE user, Operation &operation,
                               const QCA::KeyStoreEntry &entry, bool wasWrong)
{
    // The flags are read just before each attempt: another program may have used up tries.
    const TokenFlags current = flags();
    checkCancelled();
    if (current.pinState == PinState::Locked)
        throw Error(CKR_PIN_LOCKED, "C_GetTokenInfo");
    // A token without a PIN asks nobody. A stored PIN is tried: the login tells for certain.
    const bool isUnset = current.pinState == PinState::NotSet && !m_hasLoggedIn;
    if (isUnset && user == CKU_USER && !operation.hasStoredPin())
        throw Error(CKR_USER_PIN_NOT_INITIALIZED, "C_GetTokenInfo");
    Operation::Pin answer;
    if (!current.hasPinPad) {
        QuestionInfo question;
        question.keyStoreId = m_identity.storeId;
        question.tokenName = m_store.name();
        question.pinState = std::max(current.pinState, PinState::Normal);
        question.wasWrong = wasWrong;
        answer = operation.pin(question, m_store, entry);
        checkCancelled();
        if (answer.value.isEmpty())
            throw Error(TokenError::PinMissing);
        // The tries may have run out while somebody was typing.
        if (!answer.typed && flags().pinState >= PinState::FinalTry)
            throw Error(TokenError::PinMissing);
    }
    checkCancelled();
    const CK_RV result = callLogin(session, user, std::move(answer.value));
    if (result == CKR_PIN_INCORRECT && answer.asksAgain)
        return false;
    if (result != CKR_USER_ALREADY_LOGGED_IN)
        check(result, "C_Login");
    return true;
}

bool TokenConnection::learnsLoginFrom(const Error &error)
{
    if (error.returnValue() != CKR_USER_NOT_LOGGED_IN || wantsLogin())
        return false;
    m_hiddenLogin = true;
    return true;
}

void TokenConnection::checkWritable() const
{
    if (m_choice == CertificateChoice::Trusted || flags().readOnly)
        throw Error(CKR_TOKEN_WRITE_PROTECTED, "C_GetTokenInfo");
}

void TokenConnection::logout()
{
    if (m_anchor)
        (*m_module)->C_Logout(m_anchor->handle());
}

void TokenConnection::end() noexcept
{
    m_anchor.reset();
    m_module.reset();
}

void TokenConnection::noteWritten(const Session &session, CK_OBJECT_HANDLE publicKey,
                                  CK_OBJECT_HANDLE privateKey)
{
    const auto put = [&](std::vector<TokenKey> &keys, CK_OBJECT_HANDLE object,
                         CK_OBJECT_HANDLE TokenKey::*half) {
        const TokenKey key = readKey(session, object, half);
        const auto known = std::find_if(keys.begin(), keys.end(),
                                        [&](const TokenKey &one) { return one.*half == object; });
        if (known != keys.end())
            *known = key;
        else
            keys.push_back(key);
    };
    put(m_objects.publicKeys, publicKey, &TokenKey::publicObject);
    put(m_objects.privateKeys, privateKey, &TokenKey::privateObject);
    assemble();
}

void TokenConnection::noteWritten(const std::vector<TokenCertificate> &certificates)
{
    if (certificates.empty())
        return;
    auto &all = m_objects.certificates;
    all.insert(all.end(), certificates.begin(), certificates.end());
    assemble();
}

void TokenConnection::noteRemoved(const TokenCertificate &certificate)
{
    auto &all = m_objects.certificates;
    const auto isGone = [&](const TokenCertificate &one) { return one.der == certificate.der; };
    all.erase(std::remove_if(all.begin(), all.end(), isGone), all.end());
    assemble();
}

void TokenConnection::noteRemoved(const TokenKey &key)
{
    const auto removeFrom = [&key](std::vector<TokenKey> &keys, CK_OBJECT_HANDLE TokenKey::*half) {
        const auto isGone = [&](const TokenKey &one) { return one.*half == key.*half; };
        keys.erase(std::remove_if(keys.begin(), keys.end(), isGone), keys.end());
    };
    removeFrom(m_objects.publicKeys, &TokenKey::publicObject);
    removeFrom(m_objects.privateKeys, &TokenKey::privateObject);
    assemble();
}

void TokenConnection::assemble()
{
    m_contents = assembleContents(m_objects, m_identity.storeId);
    // What an operation has noted or read of the keys is not all, where the first reading failed.
    if (m_certificatesRead == 0)
        noteUnlisted();
}

bool TokenConnection::deviceAnswers() const noexcept
{
    if (!m_anchor)
        return false;
    CK_BYTE anything[8];
    const CK_RV result =
        (*m_module)->C_GenerateRandom(m_anchor->handle(), anything, sizeof anything);
    return result == CKR_OK;
}

void TokenConnection::noteError(const Error &error) noexcept
{
    if (Pkcs11::endsSession(error.returnValue()))
        m_anchor.reset();
}

TokenConnection::Scope::Scope(TokenConnection &connection, CancellationPtr cancellation)
    : m_connection(connection)
    , m_previous(std::exchange(connection.m_cancellation, std::move(cancellation)))
    , m_previousReliance(std::exchange(connection.m_reliance, Reliance::Nothing))
{
}

TokenConnection::Scope::~Scope()
{
    m_connection.m_cancellation = std::move(m_previous);
    m_connection.m_reliance = m_previousReliance;
}

void TokenConnection::noteSuccess() noexcept
{
    m_module->health().noteOperation(CKR_OK);
    // The operation may have written or removed some of these keys.
    if (m_shown)
        m_shown->takeKeysOf(m_objects);
}

void TokenConnection::noteFailure(const Error &error) noexcept
{
    // A key size that a module does not like is a device error to some: three of them in a row are
    // no reason to start it anew, which would cost every login.
    if (Pkcs11::ModuleHealth::isFault(error.returnValue()) && !deviceAnswers())
        m_module->health().noteOperation(error.returnValue());
    noteError(error);
    m_reliance = Reliance::Nothing;
}

void TokenConnection::checkCancelled() const
{
    if (m_cancellation && m_cancellation->isRequested())
        throw Error(TokenError::Cancelled);
}

} // namespace Trivex
