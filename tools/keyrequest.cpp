// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/keyrequest.h"

#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/requestmaking.h"
#include "qca/base/providers.h"
#include "qca/base/regularfile.h"
#include "qca/base/requestsave.h"
#include "qca/base/savedrequest.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "tools/requestprofiles.h"
#include "tools/rowentry.h"
#include "tools/subjectattributes.h"

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

struct ProblemText {
    RequestContents::Problem problem;
    const char *id;
};

constexpr ProblemText ProblemTexts[] = {
    //% "The request has no name. Enter a name."
    {RequestContents::NoName, QT_TRID_NOOP("trivex-app-request-problem-name")},
    //% "This field is not known. Use one of the listed fields, or a number such as 1.2.3."
    {RequestContents::UnknownType, QT_TRID_NOOP("trivex-app-request-problem-type")},
    //% "This value has a wrong form. Correct it."
    {RequestContents::WrongValue, QT_TRID_NOOP("trivex-app-request-problem-value")},
    //% "This value is too long. Shorten it."
    {RequestContents::TooLong, QT_TRID_NOOP("trivex-app-request-problem-long")},
    //% "There are more names than a certificate can have. Remove some."
    {RequestContents::TooMany, QT_TRID_NOOP("trivex-app-request-problem-many")},
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

QString textOf(RequestContents::Problem problem)
{
    for (const ProblemText &text : ProblemTexts) {
        if (text.problem == problem)
            return qtTrId(text.id);
    }
    return {};
}

/// The token's key for a saved request.
QCA::PrivateKey tokenKeyOf(const QString &path)
{
    const auto text = readRegularFile(path);
    const QCA::PublicKey wanted = text ? requestPublicKey(requestFromPem(*text)) : QCA::PublicKey();
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
{
    m_generator.setBlockingEnabled(false);
    connect(&m_generator, &KeyGenerator::finished, this, [this] {
        m_key = m_generator.key();
        if (isPrivateKey(m_key))
            sign();
        else
            end(KeyNotMade);
    });
}

KeyRequest::~KeyRequest() = default;

QString KeyRequest::message() const
{
    if (m_error == WrongContents)
        return textOf(m_finding.problem);
    for (const ErrorText &text : ErrorTexts) {
        if (text.error == m_error)
            return qtTrId(text.id);
    }
    return {};
}

void KeyRequest::setKeyUsages(const QStringList &usages)
{
    if (usages == m_contents.keyUsages)
        return;
    m_contents.keyUsages = usages;
    Q_EMIT contentsChanged();
}

void KeyRequest::setPurposes(const QStringList &purposes)
{
    if (purposes == m_contents.purposes)
        return;
    m_contents.purposes = purposes;
    Q_EMIT contentsChanged();
}

void KeyRequest::setContents(const RequestContents &contents)
{
    m_contents = contents;
    Q_EMIT contentsChanged();
}

QStringList KeyRequest::nameTypes()
{
    return subjectAttributeTypes();
}

void KeyRequest::addName(const QString &type, const QString &value)
{
    m_contents.names.append({type, value});
    Q_EMIT contentsChanged();
}

void KeyRequest::addAlternativeName(const QString &type, const QString &value)
{
    m_contents.alternativeNames.append({type, value});
    Q_EMIT contentsChanged();
}

void KeyRequest::clear()
{
    setContents({});
}

QString KeyRequest::problemOfName(const QString &type, const QString &value)
{
    return textOf(RequestContents::problemOfName({type, value}));
}

QString KeyRequest::problemOfAlternativeName(const QString &type, const QString &value)
{
    return textOf(RequestContents::problemOfAlternativeName({type, value}));
}

bool KeyRequest::loadProfile(const QString &name)
{
    const auto contents = RequestProfiles().load(name);
    if (contents)
        setContents(*contents);
    return contents.has_value();
}

bool KeyRequest::saveProfile(const QString &name) const
{
    return RequestProfiles().save(name, m_contents);
}

bool KeyRequest::begin()
{
    if (m_isRunning)
        return false;
    m_isRunning = true;
    m_finding = m_contents.check();
    Q_EMIT runningChanged();
    if (m_finding.problem == RequestContents::NoProblem)
        return true;
    end(WrongContents);
    return false;
}

void KeyRequest::makeKey(const QString &storeId, int kind, const QString &label)
{
    if (!begin())
        return;
    m_storeId = storeId;
    m_key = QCA::PrivateKey();
    const auto *const chosen = std::find_if(std::begin(Kinds), std::end(Kinds),
                                            [kind](const Kind &one) { return one.kind == kind; });
    if (storeId.isEmpty() || chosen == std::end(Kinds)) {
        end(KeyNotMade);
        return;
    }
    m_generator.setTarget(storeId, label);
    if (chosen->curve)
        m_generator.createEC(QString::fromLatin1(chosen->curve), pkcs11ProviderName());
    else
        m_generator.createRSA(chosen->bits, PublicExponent, pkcs11ProviderName());
}

void KeyRequest::useEntry(QObject *keyStoreEntry)
{
    const QCA::KeyStoreEntry *entry = wrappedEntry(keyStoreEntry);
    useKey(entry ? entryKeyBundle(*entry).privateKey() : QCA::PrivateKey());
}

void KeyRequest::useKeyOfRequest(QObject *request)
{
    const auto *saved = qobject_cast<SavedRequest *>(request);
    const QPointer<KeyRequest> self(this);
    const QCA::PrivateKey key = saved ? tokenKeyOf(saved->requestFile()) : QCA::PrivateKey();
    if (self)
        useKey(key);
}

void KeyRequest::signAgain()
{
    useKey(m_key);
}

void KeyRequest::useKey(const QCA::PrivateKey &key)
{
    if (!begin())
        return;
    m_key = key;
    m_storeId = keyStoreIdOf(key);
    if (isPrivateKey(key))
        sign();
    else
        end(NoKey);
}

void KeyRequest::sign()
{
    const QPointer<KeyRequest> self(this);
    const QCA::CertificateRequest made = madeRequest(m_contents.options(), m_key);
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
    saving.commonName = m_contents.title();
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
    if (m_isRunning && !m_storeId.isEmpty())
        TokenMonitor::cancel(m_storeId);
}

} // namespace Trivex
