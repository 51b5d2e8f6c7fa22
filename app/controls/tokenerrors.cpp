// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/controls/tokenerrors.h"

#include <QCoreApplication>
#include <QSysInfo>
#include <QtCrypto>

namespace Trivex {

namespace {

QString purposeName(Purpose purpose)
{
    static const char *const names[] = {"sign", "decrypt", "write", "remove", "generate"};
    return QLatin1String(names[int(purpose)]);
}

QString deviceCause(unsigned long value)
{
    switch (value) {
    case 0x21: // CKR_DATA_LEN_RANGE
    case 0x20: // CKR_DATA_INVALID
        //% "The token did not accept the data."
        return qtTrId("trivex-app-cause-data");
    case 0x31: // CKR_DEVICE_MEMORY
        //% "There is no room left on the token."
        return qtTrId("trivex-app-cause-full");
    case 0x62: // CKR_KEY_SIZE_RANGE
        //% "The token does not know this kind or size of key."
        return qtTrId("trivex-app-cause-unsupported");
    default:
        //% "The token or its reader reported a fault."
        return qtTrId("trivex-app-cause-device");
    }
}

QString deviceAdvice(unsigned long value)
{
    switch (value) {
    case 0x21: // CKR_DATA_LEN_RANGE
    case 0x20: // CKR_DATA_INVALID
        //% "Choose another key: this one can't be used for what was asked of it."
        return qtTrId("trivex-app-advice-data");
    case 0x31: // CKR_DEVICE_MEMORY
        //% "Remove certificates that are no longer needed, or use another token."
        return qtTrId("trivex-app-advice-full");
    case 0x62: // CKR_KEY_SIZE_RANGE
        //% "Choose another algorithm or another token."
        return qtTrId("trivex-app-advice-unsupported");
    default:
        //% "Take the token out, insert it again and retry. If it stays so, copy the report."
        return qtTrId("trivex-app-advice-device");
    }
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

int TokenErrors::kind() const
{
    return m_error.kind;
}

QString TokenErrors::storeId() const
{
    return m_error.keyStoreId;
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
    switch (error.kind) {
    case TokenError::NoError:
        return {};
    case TokenError::WrongPin:
        //% "The PIN is not right."
        return qtTrId("trivex-app-cause-wrong-pin");
    case TokenError::PinLocked:
        //% "The token has locked its PIN after too many wrong tries."
        return qtTrId("trivex-app-cause-locked");
    case TokenError::PinMissing:
        //% "No PIN was given."
        return qtTrId("trivex-app-cause-no-pin");
    case TokenError::TokenRemoved:
        //% "The token was removed."
        return qtTrId("trivex-app-cause-removed");
    case TokenError::TokenFull:
        return deviceCause(0x31);
    case TokenError::ReadOnly:
        //% "The token is write-protected."
        return qtTrId("trivex-app-cause-read-only");
    case TokenError::NotSupported:
        return deviceCause(0x62);
    case TokenError::NotFound:
        //% "The key or certificate is no longer on the token."
        return qtTrId("trivex-app-cause-not-found");
    case TokenError::Cancelled:
        //% "The operation was stopped."
        return qtTrId("trivex-app-cause-cancelled");
    case TokenError::DeviceFailure:
        return deviceCause(error.returnValue);
    }
    return {};
}

QString TokenErrors::adviceOf(const TokenError &error)
{
    switch (error.kind) {
    case TokenError::NoError:
        return {};
    case TokenError::WrongPin:
    case TokenError::PinMissing:
        //% "Start again and type the PIN of this token. Nothing is tried again by itself."
        return qtTrId("trivex-app-advice-pin");
    case TokenError::PinLocked:
        //% "Have the PIN unlocked by whoever gave out the token, with its administrator PIN."
        return qtTrId("trivex-app-advice-locked");
    case TokenError::TokenRemoved:
        //% "Insert the token and start again. Nothing half-done was left on it."
        return qtTrId("trivex-app-advice-removed");
    case TokenError::TokenFull:
        return deviceAdvice(0x31);
    case TokenError::ReadOnly:
        //% "Choose another token, or have the protection removed."
        return qtTrId("trivex-app-advice-read-only");
    case TokenError::NotSupported:
        return deviceAdvice(0x62);
    case TokenError::NotFound:
        //% "Check that the right token is inserted."
        return qtTrId("trivex-app-advice-not-found");
    case TokenError::Cancelled:
        //% "Nothing was changed. Start again when you like."
        return qtTrId("trivex-app-advice-cancelled");
    case TokenError::DeviceFailure:
        return deviceAdvice(error.returnValue);
    }
    return {};
}

QString TokenErrors::returnValueName(unsigned long value)
{
    static const struct {
        unsigned long value;
        const char *name;
    } names[] = {
        {0x0, "CKR_OK"},
        {0x1, "CKR_CANCEL"},
        {0x2, "CKR_HOST_MEMORY"},
        {0x3, "CKR_SLOT_ID_INVALID"},
        {0x5, "CKR_GENERAL_ERROR"},
        {0x6, "CKR_FUNCTION_FAILED"},
        {0x7, "CKR_ARGUMENTS_BAD"},
        {0x20, "CKR_DATA_INVALID"},
        {0x21, "CKR_DATA_LEN_RANGE"},
        {0x30, "CKR_DEVICE_ERROR"},
        {0x31, "CKR_DEVICE_MEMORY"},
        {0x32, "CKR_DEVICE_REMOVED"},
        {0x50, "CKR_FUNCTION_CANCELED"},
        {0x54, "CKR_FUNCTION_NOT_SUPPORTED"},
        {0x60, "CKR_KEY_HANDLE_INVALID"},
        {0x62, "CKR_KEY_SIZE_RANGE"},
        {0x70, "CKR_MECHANISM_INVALID"},
        {0x71, "CKR_MECHANISM_PARAM_INVALID"},
        {0x82, "CKR_OBJECT_HANDLE_INVALID"},
        {0xA0, "CKR_PIN_INCORRECT"},
        {0xA2, "CKR_PIN_LEN_RANGE"},
        {0xA3, "CKR_PIN_EXPIRED"},
        {0xA4, "CKR_PIN_LOCKED"},
        {0xB3, "CKR_SESSION_HANDLE_INVALID"},
        {0xB5, "CKR_SESSION_READ_ONLY"},
        {0xE0, "CKR_TOKEN_NOT_PRESENT"},
        {0xE1, "CKR_TOKEN_NOT_RECOGNIZED"},
        {0xE2, "CKR_TOKEN_WRITE_PROTECTED"},
        {0x101, "CKR_USER_NOT_LOGGED_IN"},
    };
    for (const auto &entry : names) {
        if (entry.value == value)
            return QLatin1String(entry.name);
    }
    return QStringLiteral("0x%1").arg(value, 8, 16, QLatin1Char('0'));
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
        QStringLiteral("result: ") + returnValueName(m_error.returnValue),
        QStringLiteral("token: %1, %2").arg(token.manufacturer.trimmed(), token.model.trimmed()),
        QStringLiteral("system: %1, Qt %2, QCA %3")
            .arg(QSysInfo::prettyProductName(), QLatin1String(qVersion()),
                 QLatin1String(qcaVersionStr())),
    };
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace Trivex
