// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/checkdigits.h"

#include <QVector>

namespace Trivex {

namespace {

using Digits = QVector<int>;

int weighted(const Digits &digits, std::initializer_list<int> weights)
{
    int sum = 0;
    int i = 0;
    for (const int weight : weights)
        sum += weight * digits.at(i++);
    return sum;
}

bool goodInn10(const Digits &d)
{
    return weighted(d, {2, 4, 10, 3, 5, 9, 4, 6, 8}) % 11 % 10 == d.at(9);
}

bool goodInn12(const Digits &d)
{
    return weighted(d, {7, 2, 4, 10, 3, 5, 9, 4, 6, 8}) % 11 % 10 == d.at(10)
        && weighted(d, {3, 7, 2, 4, 10, 3, 5, 9, 4, 6, 8}) % 11 % 10 == d.at(11);
}

/// The number of all digits but the last, modulo `modulus`, its last digit.
bool goodRemainder(const Digits &d, qint64 modulus)
{
    qint64 number = 0;
    for (int i = 0; i + 1 < d.size(); ++i)
        number = number * 10 + d.at(i);
    return number % modulus % 10 == d.last();
}

bool goodSnils(const Digits &d)
{
    const int control = weighted(d, {9, 8, 7, 6, 5, 4, 3, 2, 1}) % 101 % 100;
    // Numbers up to 001-001-998 were given out without a control number.
    const int number = d.at(0) * 100000000 + d.at(1) * 10000000 + d.at(2) * 1000000
        + d.at(3) * 100000 + d.at(4) * 10000 + d.at(5) * 1000 + d.at(6) * 100 + d.at(7) * 10
        + d.at(8);
    return number <= 1001998 || control == d.at(9) * 10 + d.at(10);
}

bool goodLength(int kind, int length)
{
    switch (kind) {
    case CheckDigits::Inn:
        return length == 10 || length == 12;
    case CheckDigits::Innle:
        return length == 10;
    case CheckDigits::Ogrn:
        return length == 13;
    case CheckDigits::Ogrnip:
        return length == 15;
    default:
        return length == 11;
    }
}

bool goodDigits(int kind, const Digits &digits)
{
    switch (kind) {
    case CheckDigits::Inn:
    case CheckDigits::Innle:
        return digits.size() == 10 ? goodInn10(digits) : goodInn12(digits);
    case CheckDigits::Ogrn:
        return goodRemainder(digits, 11);
    case CheckDigits::Ogrnip:
        return goodRemainder(digits, 13);
    default:
        return goodSnils(digits);
    }
}

} // namespace

CheckDigits::CheckDigits(QObject *parent)
    : QObject(parent)
{
}

int CheckDigits::check(int kind, const QString &text)
{
    Digits digits;
    for (const QChar c : text) {
        if (c.isSpace() || c == QLatin1Char('-'))
            continue;
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return NotDigits;
        digits += c.unicode() - '0';
    }
    if (digits.isEmpty())
        return Empty;
    // In certificates a legal entity's ten digits stand in the twelve-digit INN after two zeros.
    if (kind == Inn && digits.size() == 12 && digits.at(0) == 0 && digits.at(1) == 0)
        digits.remove(0, 2);
    if (!goodLength(kind, digits.size()))
        return WrongLength;
    return goodDigits(kind, digits) ? Good : WrongDigits;
}

QString CheckDigits::explain(int kind, const QString &text)
{
    switch (check(kind, text)) {
    case WrongLength:
        //% "The number of digits is not right for this identifier."
        return qtTrId("trivex-app-digits-length");
    case WrongDigits:
        //% "The check digits do not match: there may be a typing mistake."
        return qtTrId("trivex-app-digits-wrong");
    case NotDigits:
        //% "Only digits are expected here."
        return qtTrId("trivex-app-digits-only");
    default:
        return {};
    }
}

} // namespace Trivex
