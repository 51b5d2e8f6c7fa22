// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenerrors.h"

#include <QCoreApplication>
#include <QSysInfo>
#include <QtCrypto>

#include <algorithm>
#include <iterator>

namespace Trivex {

namespace {

QString purposeName(Purpose purpose)
{
    static const char *const names[] = {"sign", "decrypt", "write",   "remove",    "generate",
                                        "look", "export",  "set PIN", "initialise"};
    return QLatin1String(names[int(purpose)]);
}

struct Texts {
    TokenError::Kind kind;
    const char *cause;
    const char *advice;
};

constexpr Texts AllTexts[] = {
    //% "The PIN is not right."
    {TokenError::WrongPin, QT_TRID_NOOP("trivex-app-cause-wrong-pin"),
     //% "Start again and type the PIN of this token."
     QT_TRID_NOOP("trivex-app-advice-pin")},
    //% "The token has locked its PIN after too many wrong tries."
    {TokenError::PinLocked, QT_TRID_NOOP("trivex-app-cause-locked"),
     //% "Ask whoever gave out the token to unlock the PIN with the administrator PIN."
     QT_TRID_NOOP("trivex-app-advice-locked")},
    //% "No PIN was given."
    {TokenError::PinMissing, QT_TRID_NOOP("trivex-app-cause-no-pin"), "trivex-app-advice-pin"},
    //% "The token was removed."
    {TokenError::TokenRemoved, QT_TRID_NOOP("trivex-app-cause-removed"),
     //% "Insert the token and start again. Nothing half-done was left on it."
     QT_TRID_NOOP("trivex-app-advice-removed")},
    //% "There is no room left on the token."
    {TokenError::TokenFull, QT_TRID_NOOP("trivex-app-cause-full"),
     //% "Remove certificates that are no longer needed, or use another token."
     QT_TRID_NOOP("trivex-app-advice-full")},
    //% "The token is write-protected."
    {TokenError::ReadOnly, QT_TRID_NOOP("trivex-app-cause-read-only"),
     //% "Choose another token, or have the protection removed."
     QT_TRID_NOOP("trivex-app-advice-read-only")},
    //% "The token does not know this kind or size of key."
    {TokenError::NotSupported, QT_TRID_NOOP("trivex-app-cause-unsupported"),
     //% "Choose another algorithm or another token."
     QT_TRID_NOOP("trivex-app-advice-unsupported")},
    //% "The key or certificate is no longer on the token."
    {TokenError::NotFound, QT_TRID_NOOP("trivex-app-cause-not-found"),
     //% "Check that the right token is inserted."
     QT_TRID_NOOP("trivex-app-advice-not-found")},
    //% "The operation was stopped."
    {TokenError::Cancelled, QT_TRID_NOOP("trivex-app-cause-cancelled"),
     //% "Nothing was changed. Start again when you like."
     QT_TRID_NOOP("trivex-app-advice-cancelled")},
    //% "The token has no PIN for its user yet."
    {TokenError::PinNotSet, QT_TRID_NOOP("trivex-app-cause-pin-not-set"),
     //% "Set the user PIN with the program that came with the token, then start again."
     QT_TRID_NOOP("trivex-app-advice-pin-not-set")},
    //% "The PIN of the token has to be changed first."
    {TokenError::PinExpired, QT_TRID_NOOP("trivex-app-cause-pin-expired"),
     //% "Change the PIN with the program that came with the token, then start again."
     QT_TRID_NOOP("trivex-app-advice-pin-expired")},
    //% "The token wants a login, but does not let anybody log in."
    {TokenError::NotLoggedIn, QT_TRID_NOOP("trivex-app-cause-not-logged-in"),
     //% "Take the token out and insert it again. If it stays so, have it set up anew."
     QT_TRID_NOOP("trivex-app-advice-not-logged-in")},
    //% "Another program is using the token."
    {TokenError::TokenInUse, QT_TRID_NOOP("trivex-app-cause-in-use"),
     //% "Close the other programs that work with this token, then start again."
     QT_TRID_NOOP("trivex-app-advice-in-use")},
    //% "The token did not accept the data."
    {TokenError::DataRefused, QT_TRID_NOOP("trivex-app-cause-data"),
     //% "Choose another key: this one can't be used for what was asked of it."
     QT_TRID_NOOP("trivex-app-advice-data")},
    //% "The token holds no private key for this certificate."
    {TokenError::NoKey, QT_TRID_NOOP("trivex-app-cause-no-private-key"),
     //% "Choose another certificate, or the token on which its key was made."
     QT_TRID_NOOP("trivex-app-advice-no-private-key")},
    //% "Several keys have the same name and id: which one is meant can't be told."
    {TokenError::KeyAmbiguous, QT_TRID_NOOP("trivex-app-cause-key-ambiguous"),
     //% "Give them other names with the program of the token's maker, then start again."
     QT_TRID_NOOP("trivex-app-advice-key-names")},
    //% "This key can't make this kind of signature."
    {TokenError::WrongKeyKind, QT_TRID_NOOP("trivex-app-cause-wrong-key-kind"),
     //% "Choose an RSA key."
     QT_TRID_NOOP("trivex-app-advice-wrong-key-kind")},
    //% "The private key never leaves the token."
    {TokenError::KeyStays, QT_TRID_NOOP("trivex-app-cause-key-stays"),
     //% "Nothing was written. Use the token itself, or make a new key where it is needed."
     QT_TRID_NOOP("trivex-app-advice-key-stays")},
    //% "The token does not accept the new PIN."
    {TokenError::NewPinRefused, QT_TRID_NOOP("trivex-app-cause-new-pin"),
     //% "Choose another one: of another length, or of digits alone."
     QT_TRID_NOOP("trivex-app-advice-new-pin")},
    //% "Only one try is left: a wrong PIN locks the token."
    {TokenError::LastTry, QT_TRID_NOOP("trivex-app-cause-last-try"),
     //% "Make sure of the PIN, agree to the last try, then type it again."
     QT_TRID_NOOP("trivex-app-advice-last-try")},
    //% "The token or its reader reported a fault."
    {TokenError::DeviceFailure, QT_TRID_NOOP("trivex-app-cause-device"),
     //% "Take the token out, insert it again and retry. If it stays so, copy the report."
     QT_TRID_NOOP("trivex-app-advice-device")},
};

struct PurposeTexts {
    Purpose purpose;
    Texts texts;
};

/// What is said otherwise where the failed operation makes it something else, or the next step.
constexpr PurposeTexts TextsByPurpose[] = {
    {Purpose::Sign,
     //% "The token can't make this signature with this key."
     {TokenError::NotSupported, QT_TRID_NOOP("trivex-app-cause-cannot-sign"),
      //% "Choose a key of another kind, or one on another token."
      QT_TRID_NOOP("trivex-app-advice-cannot-sign")}},
    {Purpose::Decrypt,
     //% "The token can't decrypt with this key."
     {TokenError::NotSupported, QT_TRID_NOOP("trivex-app-cause-cannot-decrypt"),
      //% "Ask for the document once more, encrypted for another certificate of yours."
      QT_TRID_NOOP("trivex-app-advice-cannot-decrypt")}},
    {Purpose::Write,
     //% "The token takes no keys or certificates of this kind or size."
     {TokenError::NotSupported, QT_TRID_NOOP("trivex-app-cause-cannot-write"),
      //% "Nothing was written. Choose another token."
      QT_TRID_NOOP("trivex-app-advice-cannot-write")}},
    {Purpose::Remove,
     //% "The token does not offer this."
     {TokenError::NotSupported, QT_TRID_NOOP("trivex-app-cause-not-offered"),
      //% "Use the program that came with the token."
      QT_TRID_NOOP("trivex-app-advice-not-offered")}},
    {Purpose::Look,
     {TokenError::NotSupported, "trivex-app-cause-not-offered", "trivex-app-advice-not-offered"}},
    {Purpose::Export,
     //% "The token does not hand over keys of this kind."
     {TokenError::NotSupported, QT_TRID_NOOP("trivex-app-cause-cannot-export"),
      "trivex-app-advice-key-stays"}},
    {Purpose::SetPin,
     {TokenError::NotSupported, "trivex-app-cause-not-offered", "trivex-app-advice-not-offered"}},
    {Purpose::Initialise,
     {TokenError::NotSupported, "trivex-app-cause-not-offered", "trivex-app-advice-not-offered"}},
    {Purpose::Write,
     {TokenError::DataRefused, "trivex-app-cause-data", "trivex-app-advice-cannot-write"}},
    {Purpose::Generate,
     {TokenError::DataRefused, "trivex-app-cause-data", "trivex-app-advice-unsupported"}},
    {Purpose::Remove,
     {TokenError::KeyAmbiguous, "trivex-app-cause-key-ambiguous",
      //% "Nothing was removed. Give them other names with the program of the token's maker."
      QT_TRID_NOOP("trivex-app-advice-key-ambiguous")}},
};

/// Null where nothing failed.
const Texts *textsOf(const TokenError &error)
{
    for (const PurposeTexts &one : TextsByPurpose) {
        if (one.purpose == error.purpose && one.texts.kind == error.kind)
            return &one.texts;
    }
    const auto *found = std::find_if(std::begin(AllTexts), std::end(AllTexts),
                                     [&error](const Texts &one) { return one.kind == error.kind; });
    return found == std::end(AllTexts) ? nullptr : found;
}

} // namespace

TokenErrors::TokenErrors(QObject *parent)
    : QObject(parent)
{
    connect(&m_monitor, &TokenMonitor::failed, this, &TokenErrors::take);
}

void TokenErrors::take(const Trivex::TokenError &error)
{
    m_error = error;
    m_when = QDateTime::currentDateTimeUtc();
    Q_EMIT changed();
    if (error.kind == TokenError::Cancelled || error.kind == TokenError::PinMissing)
        Q_EMIT left();
    else
        Q_EMIT failed();
}

void TokenErrors::clear()
{
    m_error = TokenError();
    Q_EMIT changed();
}

QString TokenErrors::cause() const
{
    return causeOf(m_error);
}

QString TokenErrors::advice() const
{
    return adviceOf(m_error);
}

QString TokenErrors::causeOf(const TokenError &error)
{
    const Texts *texts = textsOf(error);
    return texts ? qtTrId(texts->cause) : QString();
}

QString TokenErrors::adviceOf(const TokenError &error)
{
    const Texts *texts = textsOf(error);
    return texts ? qtTrId(texts->advice) : QString();
}

QString TokenErrors::report() const
{
    if (m_error.kind == TokenError::NoError)
        return {};
    const TokenStatus token = TokenMonitor::token(m_error.keyStoreId);
    const QStringList lines = {
        QStringLiteral("Trivex ") + QCoreApplication::applicationVersion(),
        m_when.toString(Qt::ISODate),
        QStringLiteral("operation: ") + purposeName(m_error.purpose),
        QStringLiteral("call: ") + m_error.function,
        QStringLiteral("result: %1 (0x%2)").arg(m_error.returnName).arg(m_error.returnValue, 0, 16),
        QStringLiteral("token: %1, %2").arg(token.manufacturer.trimmed(), token.model.trimmed()),
        QStringLiteral("system: %1, Qt %2, QCA %3")
            .arg(QSysInfo::prettyProductName(), QLatin1String(qVersion()),
                 QLatin1String(qcaVersionStr())),
    };
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace Trivex
