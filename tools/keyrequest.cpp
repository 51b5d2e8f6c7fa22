// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/keyrequest.h"

#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/requestmaking.h"
#include "qca/base/encodedobject.h"
#include "qca/base/providers.h"
#include "qca/base/requestfiles.h"
#include "qca/base/requestsave.h"
#include "qca/base/savedrequest.h"
#include "qca/base/securedtext.h"
#include "qca/keys/keys.h"
#include "qca/questions/cancellationscope.h"
#include "qca/tokens/tokens.h"
#include "tools/requestprofiles.h"
#include "tools/requesttexts.h"
#include "tools/rowentry.h"
#include "tools/subjectattributes.h"
#include "tools/typedvalues.h"

#include <QPointer>

#include <algorithm>

namespace Trivex {

namespace {

constexpr int PublicExponent = 65537;

struct Kind {
    KeyRequest::KeyKind kind;
    int bits; ///< 0 for a curve
    const char *curve; ///< as `KeyGenerator::createEC` names it
};

constexpr Kind Kinds[] = {
    {KeyRequest::Rsa2048, 2048, nullptr},     {KeyRequest::Rsa3072, 3072, nullptr},
    {KeyRequest::Rsa4096, 4096, nullptr},     {KeyRequest::P256, 0, "ec-secp256r1"},
    {KeyRequest::P384, 0, "ec-secp384r1"},    {KeyRequest::P521, 0, "ec-secp521r1"},
    {KeyRequest::Ed25519, 0, "ed25519"},      {KeyRequest::Gost256, 0, "gost2012-256"},
    {KeyRequest::Gost512, 0, "gost2012-512"},
};

struct ErrorText {
    KeyRequest::Error error;
    const char *id;
};

constexpr ErrorText ErrorTexts[] = {
    //% "The private key was not found. Insert its token and try again."
    {KeyRequest::NoKey, QT_TRID_NOOP("trivex-app-request-error-key")},
    //% "No key was made. Check the token and try again."
    {KeyRequest::KeyNotMade, QT_TRID_NOOP("trivex-app-request-error-make")},
    //% "The request was not signed. The key is kept: try again."
    {KeyRequest::NotSigned, QT_TRID_NOOP("trivex-app-request-error-sign")},
    //% "The request could not be saved. Check the request folder and try again."
    {KeyRequest::NotSaved, QT_TRID_NOOP("trivex-app-request-error-save")},
};

/// The token's key for a saved request, as that was listed. Its file is not read: it may have
/// become anything meanwhile, and this is the GUI thread.
QCA::PrivateKey tokenKeyOf(QObject *request)
{
    const auto *encoded =
        qobject_cast<SavedRequest *>(request) ? qobject_cast<EncodedObject *>(request) : nullptr;
    const QCA::PublicKey wanted =
        encoded ? requestPublicKey(requestFromDer(encoded->encoding())) : QCA::PublicKey();
    if (wanted.isNull())
        return {};
    for (const TokenStatus &token : TokenMonitor::tokens()) {
        const QCA::PrivateKey key = findTokenKey(token.keyStoreId, wanted);
        if (!key.isNull())
            return key;
    }
    return {};
}

} // namespace

KeyRequest::KeyRequest(QObject *parent)
    : QObject(parent)
    , m_names(RequestValues::Names, this)
    , m_alternativeNames(RequestValues::AlternativeNames, this)
{
    m_answers.registerSet();
    m_generator.setBlockingEnabled(false);
    connect(&m_generator, &KeyGenerator::finished, this, &KeyRequest::goOn);
    for (const RequestValues *values : {&m_names, &m_alternativeNames})
        connect(values, &RequestValues::edited, this, &KeyRequest::contentsChanged);
}

KeyRequest::~KeyRequest() = default;

QString KeyRequest::message() const
{
    if (m_error == WrongContents)
        return requestProblemText(m_finding.type, {}, m_finding.problem);
    for (const ErrorText &text : ErrorTexts) {
        if (text.error == m_error)
            return qtTrId(text.id);
    }
    return {};
}

void KeyRequest::setKeyUsages(const QStringList &usages)
{
    if (usages == m_keyUsages)
        return;
    m_keyUsages = usages;
    Q_EMIT contentsChanged();
}

void KeyRequest::setPurposes(const QStringList &purposes)
{
    if (purposes == m_purposes)
        return;
    m_purposes = purposes;
    Q_EMIT contentsChanged();
}

bool KeyRequest::hasKey() const
{
    return isPrivateKey(m_key);
}

RequestContents KeyRequest::contents() const
{
    return {m_names.values(), m_alternativeNames.values(), m_keyUsages, m_purposes};
}

void KeyRequest::setContents(const RequestContents &contents)
{
    m_prefilled.clear();
    m_prefilledOthers.clear();
    m_names.setValues(contents.names);
    m_alternativeNames.setValues(contents.alternativeNames);
    setKeyUsages(contents.keyUsages);
    setPurposes(contents.purposes);
}

QStringList KeyRequest::nameTypes()
{
    return subjectAttributeTypes();
}

void KeyRequest::addName(const QString &type, const QString &value)
{
    m_names.setValues(m_names.values() + QList<RequestValue>{{type, value}});
}

void KeyRequest::addAlternativeName(const QString &type, const QString &value)
{
    m_alternativeNames.setValues(m_alternativeNames.values() + QList<RequestValue>{{type, value}});
}

void KeyRequest::clear()
{
    setContents({});
}

QString KeyRequest::problemOfName(const QString &type, const QString &value)
{
    return requestProblemText(type, value, RequestContents::problemOfName({type, value}));
}

QString KeyRequest::problemOfAlternativeName(const QString &type, const QString &value)
{
    return requestProblemText(type, value,
                              RequestContents::problemOfAlternativeName({type, value}));
}

QStringList KeyRequest::knownKeyUsages()
{
    return RequestContents::knownKeyUsages();
}

QStringList KeyRequest::knownPurposes()
{
    return RequestContents::knownPurposes();
}

QString KeyRequest::title(const QString &name)
{
    return requestTitle(name);
}

QString KeyRequest::folder()
{
    return requestDirectory();
}

bool KeyRequest::loadProfile(const QString &name)
{
    auto contents = RequestProfiles().load(name);
    if (!contents)
        return false;
    const QList<RequestValue> names = without(m_names.values(), m_prefilled);
    const QList<RequestValue> others = without(m_alternativeNames.values(), m_prefilledOthers);
    const QList<RequestValue> prefilled = without(contents->names, names);
    const QList<RequestValue> prefilledOthers = without(contents->alternativeNames, others);
    contents->names = filled(contents->names, names);
    contents->alternativeNames = filled(contents->alternativeNames, others);
    setContents(*contents);
    // What was typed, too, stays when the next profile comes.
    m_prefilled = prefilled;
    m_prefilledOthers = prefilledOthers;
    return true;
}

int KeyRequest::saveProfile(const QString &name, bool mayReplace) const
{
    return RequestProfiles().save(name, contents(), mayReplace);
}

bool KeyRequest::begin()
{
    if (m_isRunning)
        return false;
    m_isRunning = true;
    m_task = std::make_shared<Cancellation>();
    Q_EMIT runningChanged();
    return true;
}

bool KeyRequest::check()
{
    m_finding = contents().check();
    if (m_finding.problem == RequestContents::NoProblem)
        return true;
    end(WrongContents);
    return false;
}

void KeyRequest::makeKey(const QString &storeId, int kind, const QString &label)
{
    if (!begin() || !check())
        return;
    m_isKeyAlone = false;
    generate(storeId, kind, label);
}

void KeyRequest::prepareKey(const QString &storeId, int kind, const QString &label,
                            const QString &pin)
{
    if (!begin())
        return;
    m_isKeyAlone = true;
    if (!pin.isEmpty()) {
        m_answers.setKeyStoreId(storeId);
        m_answers.setObjectId(label);
        m_answers.setPassword(securedText(pin.toUtf8()));
    }
    generate(storeId, kind, label);
}

void KeyRequest::takeKey(const QString &storeId, const QString &keyId)
{
    if (!begin())
        return;
    m_key = tokenKeyOfId(storeId, keyId);
    end(isPrivateKey(m_key) ? NoError : NoKey);
}

void KeyRequest::generate(const QString &storeId, int kind, const QString &label)
{
    m_key = QCA::PrivateKey();
    const auto *const chosen = std::find_if(std::begin(Kinds), std::end(Kinds),
                                            [kind](const Kind &one) { return one.kind == kind; });
    if (storeId.isEmpty() || chosen == std::end(Kinds)) {
        m_answers.clear();
        end(KeyNotMade);
        return;
    }
    m_generator.setTarget(storeId, label);
    const CancellationScope scope(m_task);
    if (chosen->curve)
        m_generator.createEC(QString::fromLatin1(chosen->curve), pkcs11ProviderName());
    else
        m_generator.createRSA(chosen->bits, PublicExponent, pkcs11ProviderName());
}

void KeyRequest::goOn()
{
    m_answers.clear();
    m_key = m_generator.key();
    if (!isPrivateKey(m_key))
        end(KeyNotMade);
    else if (m_isKeyAlone)
        end(NoError);
    else
        sign();
}

void KeyRequest::useEntry(QObject *keyStoreEntry)
{
    const QCA::KeyStoreEntry *entry = wrappedEntry(keyStoreEntry);
    useKey(entry ? entryKeyBundle(*entry).privateKey() : QCA::PrivateKey());
}

void KeyRequest::useKeyOfRequest(QObject *request)
{
    const QPointer<KeyRequest> self(this);
    const QCA::PrivateKey key = tokenKeyOf(request);
    if (self)
        useKey(key);
}

void KeyRequest::signAgain()
{
    useKey(m_key);
}

void KeyRequest::useKey(const QCA::PrivateKey &key)
{
    if (!begin() || !check())
        return;
    m_key = key;
    if (isPrivateKey(key))
        sign();
    else
        end(NoKey);
}

void KeyRequest::sign()
{
    const QPointer<KeyRequest> self(this);
    QCA::CertificateRequest made;
    {
        const CancellationScope scope(m_task);
        made = madeRequest(contents().options(), m_key);
    }
    if (!self)
        return;
    if (made.isNull())
        end(NotSigned);
    else
        save(made);
}

void KeyRequest::save(const QCA::CertificateRequest &request)
{
    RequestSave saving;
    saving.request = request;
    saving.commonName = contents().title();
    if (!saving.write()) {
        end(NotSaved);
        return;
    }
    m_path = saving.path;
    m_pem = request.toPEM();
    end(NoError);
}

void KeyRequest::end(Error error)
{
    m_isRunning = false;
    m_error = error;
    const QPointer<KeyRequest> self(this);
    Q_EMIT runningChanged();
    if (self)
        Q_EMIT finished();
}

void KeyRequest::cancel()
{
    if (m_isRunning)
        cancelTokenTask(m_task);
}

} // namespace Trivex
