// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenadmin.h"

#include "qca/base/securedtext.h"
#include "tools/tokenerrors.h"

#include <QPointer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Trivex {

namespace {

constexpr int LongestName = 32; // bytes, PKCS#11 2.40, 3.2

Secret secretOf(const QString &typed)
{
    return Secret(securedText(typed.toUtf8()));
}

struct Ending {
    TokenError::Kind kind;
    TokenAdmin::Error error;
    /// Null where the sentences of every operation say it.
    const char *message;
};

constexpr Ending Endings[] = {
    //% "The PIN is not right. Type it again."
    {TokenError::WrongPin, TokenAdmin::WrongPin, QT_TRID_NOOP("trivex-app-admin-wrong-pin")},
    {TokenError::NewPinRefused, TokenAdmin::NewPinRefused, nullptr},
    {TokenError::PinLocked, TokenAdmin::Locked, nullptr},
    {TokenError::LastTry, TokenAdmin::LastTry, nullptr},
    {TokenError::PinMissing, TokenAdmin::PinMissing, nullptr},
    //% "There is no PIN yet that could be changed. Set it with the administrator PIN."
    {TokenError::PinNotSet, TokenAdmin::NoPinYet, QT_TRID_NOOP("trivex-app-admin-no-pin-yet")},
    //% "The token was removed. Insert it and start again."
    {TokenError::TokenRemoved, TokenAdmin::TokenGone, QT_TRID_NOOP("trivex-app-admin-gone")},
    {TokenError::TokenInUse, TokenAdmin::InUse, nullptr},
    {TokenError::ReadOnly, TokenAdmin::ReadOnly, nullptr},
    //% "The token lets no program do this. Use the program that came with it."
    {TokenError::NotSupported, TokenAdmin::NotSupported,
     QT_TRID_NOOP("trivex-app-admin-not-supported")},
    {TokenError::Cancelled, TokenAdmin::Stopped, nullptr},
};

const Ending *endingOf(TokenError::Kind kind)
{
    const auto *found = std::find_if(std::begin(Endings), std::end(Endings),
                                     [kind](const Ending &one) { return one.kind == kind; });
    return found == std::end(Endings) ? nullptr : found;
}

} // namespace

TokenAdmin::Error TokenAdmin::errorOf(TokenError::Kind kind)
{
    if (kind == TokenError::NoError)
        return TokenAdmin::NoError;
    const Ending *ending = endingOf(kind);
    return ending ? ending->error : TokenAdmin::Failed;
}

QString TokenAdmin::messageOf(const TokenError &error, bool byOfficer)
{
    if (error.kind == TokenError::NoError)
        return {};
    if (byOfficer && error.kind == TokenError::WrongPin) {
        //% "The administrator PIN is not right. Type it again."
        return qtTrId("trivex-app-admin-wrong-officer-pin");
    }
    if (byOfficer && error.kind == TokenError::PinLocked) {
        //% "The administrator PIN is locked. Ask whoever gave out the token."
        return qtTrId("trivex-app-admin-officer-locked");
    }
    const Ending *ending = endingOf(error.kind);
    if (ending && ending->message)
        return qtTrId(ending->message);
    if (!ending) {
        //% "The token or its reader reported a fault (%1). Insert the token again and retry."
        return qtTrId("trivex-app-admin-failed").arg(error.returnName);
    }
    return TokenErrors::causeOf(error) + QLatin1Char(' ') + TokenErrors::adviceOf(error);
}

TokenAdmin::TokenAdmin(QObject *parent)
    : QObject(parent)
{
    connect(&m_monitor, &TokenMonitor::changed, this, &TokenAdmin::refresh);
}

TokenAdmin::~TokenAdmin()
{
    m_arrival->close();
}

QString TokenAdmin::storeId() const
{
    return m_storeId;
}

void TokenAdmin::setStoreId(const QString &storeId)
{
    if (m_storeId == storeId)
        return;
    m_storeId = storeId;
    refresh(storeId);
    Q_EMIT storeIdChanged();
}

void TokenAdmin::refresh(const QString &storeId)
{
    if (storeId != m_storeId)
        return;
    m_status = TokenMonitor::token(storeId);
    Q_EMIT changed();
}

bool TokenAdmin::isRunning() const
{
    return m_isRunning;
}

int TokenAdmin::error() const
{
    return errorOf(m_result.error.kind);
}

QString TokenAdmin::message() const
{
    if (m_result.isEmptied && m_result.error.kind != TokenError::NoError) {
        //% "The token is empty now, but has no PIN yet. Set it with the administrator PIN."
        return qtTrId("trivex-app-admin-half");
    }
    return messageOf(m_result.error, m_kind != TokenAdministration::ChangePin);
}

bool TokenAdmin::isEmptied() const
{
    return m_result.isEmptied;
}

QString TokenAdmin::name() const
{
    return m_status.name;
}

QString TokenAdmin::label() const
{
    return m_status.facts.label;
}

bool TokenAdmin::isPresent() const
{
    return m_status.present;
}

bool TokenAdmin::isReadOnly() const
{
    return m_status.readOnly;
}

bool TokenAdmin::hasPinPad() const
{
    return m_status.hasPinPad;
}

bool TokenAdmin::isPinSet() const
{
    return m_status.pinState != PinState::NotSet;
}

bool TokenAdmin::isPinEmpty() const
{
    return m_status.pinMayBeEmpty && m_status.facts.hasUserPin && !m_status.facts.needsLogin;
}

bool TokenAdmin::isOfficerPinEmpty() const
{
    return m_status.pinMayBeEmpty && m_status.officerPinState == PinState::NotSet;
}

bool TokenAdmin::isLocked() const
{
    return m_status.pinState == PinState::Locked;
}

bool TokenAdmin::isLastTry() const
{
    return m_status.pinState == PinState::FinalTry;
}

bool TokenAdmin::isOfficerLocked() const
{
    return m_status.officerPinState == PinState::Locked;
}

bool TokenAdmin::isOfficerLastTry() const
{
    return m_status.officerPinState == PinState::FinalTry;
}

QString TokenAdmin::officerText() const
{
    switch (m_status.officerPinState) {
    case PinState::Locked:
        return qtTrId("trivex-app-admin-officer-locked");
    case PinState::FinalTry:
        //% "This is the last try: a wrong administrator PIN locks it for good."
        return qtTrId("trivex-app-admin-officer-final");
    case PinState::CountLow:
        //% "A wrong administrator PIN was given before. After several wrong ones it is locked."
        return qtTrId("trivex-app-admin-officer-low");
    default:
        return {};
    }
}

QString TokenAdmin::lengthText() const
{
    if (m_status.longestPin > 0) {
        //% "Length of the PIN: %1 to %2 characters."
        return qtTrId("trivex-app-admin-length")
            .arg(QString::number(m_status.shortestPin), QString::number(m_status.longestPin));
    }
    if (m_status.shortestPin > 0) {
        //% "Length of the PIN: at least %1."
        return qtTrId("trivex-app-admin-shortest").arg(m_status.shortestPin);
    }
    return {};
}

QString TokenAdmin::lossText() const
{
    if (!m_status.isRead) {
        //% "What is on it could not be read yet."
        return qtTrId("trivex-app-admin-loss-unknown");
    }
    //% "Certificates on it: %1. Keys on it: %2."
    const QString counts =
        qtTrId("trivex-app-admin-loss")
            .arg(QString::number(m_status.certificates), QString::number(m_status.keyFacts.size()));
    if (!m_status.keysHidden)
        return counts;
    //% "There may be more keys, which show only after a login."
    return counts + QLatin1Char(' ') + qtTrId("trivex-app-admin-loss-hidden");
}

bool TokenAdmin::fits(const QString &pin) const
{
    const int length = pin.toUtf8().size();
    return length > 0 && length >= m_status.shortestPin
        && (m_status.longestPin == 0 || length <= m_status.longestPin);
}

bool TokenAdmin::isName(const QString &name)
{
    return !name.isEmpty() && name.toUtf8().size() <= LongestName && name == name.trimmed();
}

void TokenAdmin::changePin(const QString &pin, const QString &newPin, bool mayBeLastTry)
{
    start(TokenAdministration::ChangePin, pin, newPin, mayBeLastTry);
}

void TokenAdmin::changeOfficerPin(const QString &pin, const QString &newPin, bool mayBeLastTry)
{
    start(TokenAdministration::ChangeOfficerPin, pin, newPin, mayBeLastTry);
}

void TokenAdmin::setPin(const QString &officerPin, const QString &newPin, bool mayBeLastTry)
{
    start(TokenAdministration::SetPin, officerPin, newPin, mayBeLastTry);
}

void TokenAdmin::initialise(const QString &name, const QString &officerPin, const QString &newPin,
                            bool mayBeLastTry)
{
    start(TokenAdministration::Initialise, officerPin, newPin, mayBeLastTry, name);
}

void TokenAdmin::start(TokenAdministration::Kind kind, const QString &pin, const QString &newPin,
                       bool mayBeLastTry, const QString &name)
{
    if (m_isRunning)
        return;
    m_kind = kind;
    m_isRunning = true;
    Q_EMIT runningChanged();
    TokenAdministration task;
    task.kind = kind;
    task.name = name;
    task.mayBeLastTry = mayBeLastTry;
    // What is typed at the reader is none of ours.
    if (!m_status.hasPinPad) {
        task.pin = secretOf(pin);
        task.newPin = secretOf(newPin);
    }
    const auto arrival = m_arrival;
    const auto arrive = [this, arrival](const TokenAdministrationResult &result) {
        arrival->post([this, result] { end(result); });
    };
    m_task = startTokenAdministration(m_storeId, std::move(task), arrive);
    if (m_task)
        return;
    TokenAdministrationResult gone;
    gone.error.kind = TokenError::TokenRemoved;
    arrive(gone);
}

void TokenAdmin::end(const TokenAdministrationResult &result)
{
    m_result = result;
    m_isRunning = false;
    const QPointer<TokenAdmin> self(this);
    Q_EMIT runningChanged();
    if (self)
        Q_EMIT finished();
}

void TokenAdmin::cancel()
{
    if (m_isRunning)
        cancelTokenTask(m_task);
}

} // namespace Trivex
