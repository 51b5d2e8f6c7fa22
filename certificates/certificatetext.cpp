// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatetext.h"

#include <QtGlobal>
#include <QtMath>

#include <array>

namespace Trivex {

namespace {

/// "%1" stands for the word "with". A null pointer stands for a separate text.
constexpr std::array<const char *, 16> SignatureTemplates = {
    nullptr,
    "SHA1, %1 EMSA1",
    "SHA1, %1 EMSA3",
    "MD5, %1 EMSA3",
    "MD2, %1 EMSA3",
    "RIPEMD160, %1 EMSA3",
    nullptr,
    "SHA224, %1 EMSA3",
    "SHA256, %1 EMSA3",
    "SHA384, %1 EMSA3",
    "SHA512, %1 EMSA3",
    "ECDSA, %1 SHA256",
    "ECDSA, %1 SHA384",
    "GOST R 34.11-94, %1 GOST R 34.10-2001",
    "GOST R 34.10-2012, %1 GOST R 34.11-2012 (256 bit)",
    "GOST R 34.10-2012, %1 GOST R 34.11-2012 (512 bit)",
};

constexpr int RawSignature = 6;

/// Two hex digits, or the sign and the magnitude: `QString::arg()` would write a negative number
/// as its two's complement in 64 bits. Digit by digit, because a number may have a million of them.
void appendSignedHex(char byte, QString *text)
{
    constexpr char Digits[] = "0123456789ABCDEF";
    const int value = static_cast<signed char>(byte);
    const int magnitude = qAbs(value);
    if (value < 0)
        *text += QLatin1Char('-');
    if (value >= 0 || magnitude >= 16)
        *text += QLatin1Char(Digits[magnitude / 16]);
    *text += QLatin1Char(Digits[magnitude % 16]);
}

} // namespace

QString hexText(const QByteArray &bytes, QChar separator)
{
    const int plainLength = 3 * bytes.size() - 1;
    QString text;
    text.reserve(4 * bytes.size());
    for (const char byte : bytes) {
        appendSignedHex(byte, &text);
        if (text.size() != plainLength)
            text += separator;
    }
    if (bytes.size() == 1 && text.startsWith(QLatin1Char('0')))
        text.remove(0, 1);
    return text;
}

QString signatureText(int number)
{
    if (number == RawSignature)
        return qtTrId("trivex-p-la-without_dest");
    if (number <= 0 || number >= int(SignatureTemplates.size()))
        return qtTrId("trivex-p-la-unknown_signing_alg");
    return QString::fromLatin1(SignatureTemplates[size_t(number)]).arg(qtTrId("trivex-p-la-with"));
}

} // namespace Trivex
