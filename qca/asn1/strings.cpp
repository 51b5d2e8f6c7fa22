// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/strings.h"

#include <QTextCodec>

namespace Trivex {

namespace {

constexpr char32_t Replacement = 0xFFFD;
constexpr int LargestOffset = 12; // hours
constexpr int LastYear = 9999;

QString decodeOctets(Der::Slice content)
{
    static QTextCodec *const utf8 = QTextCodec::codecForMib(106);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text = utf8->toUnicode(content.data, content.size, &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return QString::fromLatin1(content.data, content.size);
    return text;
}

// Qt would remove a byte order mark, which is an ordinary character here.
QString decodeUtf8(Der::Slice content)
{
    QString text = QString::fromUtf8(content.data, content.size);
    if (content.view().startsWith("\xEF\xBB\xBF"))
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

QString decodeBmp(Der::Slice content)
{
    QString text(content.size / 2, Qt::Uninitialized);
    for (int i = 0; i + 1 < content.size; i += 2)
        text[i / 2] = QChar(ushort(content.at(i) << 8 | content.at(i + 1)));
    return text;
}

QString decodeUniversal(Der::Slice content)
{
    QString text;
    text.reserve(content.size / 4);
    for (int i = 0; i + 3 < content.size; i += 4) {
        char32_t code = char32_t(content.at(i)) << 24 | char32_t(content.at(i + 1)) << 16
            | char32_t(content.at(i + 2)) << 8 | content.at(i + 3);
        if (code > QChar::LastValidCodePoint || QChar::isSurrogate(code))
            code = Replacement;
        text += QString::fromUcs4(&code, 1);
    }
    return text;
}

// Reads `count` decimal digits and moves behind them; -1 for other characters.
int readNumber(Der::Slice content, int *position, int count)
{
    int value = 0;
    if (*position + count > content.size)
        return -1;
    for (int i = 0; i < count; ++i) {
        const int digit = content.at((*position)++) - '0';
        if (digit < 0 || digit > 9)
            return -1;
        value = value * 10 + digit;
    }
    return value;
}

bool hasDigit(Der::Slice content, int position)
{
    return position < content.size && content.at(position) >= '0' && content.at(position) <= '9';
}

// Skips the fraction of a second, if there is one; false for a fraction without digits.
bool skipFraction(Der::Slice content, int *position)
{
    if (*position >= content.size || content.at(*position) != '.')
        return true;
    ++*position;
    const bool hasDigits = hasDigit(content, *position);
    while (hasDigit(content, *position))
        ++*position;
    return hasDigits;
}

// The seconds by which the zone is ahead of UTC; false for anything else. A time without a zone is
// local to an unknown place.
bool readOffset(Der::Slice content, int position, int *offset)
{
    *offset = 0;
    if (position == content.size)
        return false;
    const char sign = content.data[position++];
    if (sign == 'Z')
        return position == content.size;
    const int hours = readNumber(content, &position, 2);
    const int minutes = readNumber(content, &position, 2);
    if ((sign != '+' && sign != '-') || hours < 0 || hours > LargestOffset || minutes < 0
        || minutes > 59 || position != content.size)
        return false;
    *offset = (hours * 60 + minutes) * (sign == '+' ? 60 : -60);
    return true;
}

// The hour, the minute, and the second with its fraction, which may be left out.
bool readTime(Der::Slice content, bool mayHaveFraction, int *position, QTime *time)
{
    const int hour = readNumber(content, position, 2);
    const int minute = readNumber(content, position, 2);
    const bool hasSecond = hasDigit(content, *position);
    const int second = hasSecond ? readNumber(content, position, 2) : 0;
    *time = QTime(hour, minute, second);
    return time->isValid() && (!mayHaveFraction || !hasSecond || skipFraction(content, position));
}

// The tag of a string's type and its octets, in one piece or several; the element's own tag when
// the pieces can't be joined.
int typeOf(const Der::Element &element, QByteArray *octets)
{
    const bool isWhole = element.tag > 0 && Der::joinString(element, octets);
    return isWhole ? element.tag & ~Der::ConstructedBit : element.tag;
}

int fullYear(int year, bool twoDigits)
{
    if (!twoDigits || year < 0)
        return year;
    return year < 50 ? 2000 + year : 1900 + year;
}

} // namespace

bool isString(int tag)
{
    switch (tag) {
    case Der::Utf8String:
    case Der::NumericString:
    case Der::PrintableString:
    case Der::T61String:
    case Der::Ia5String:
    case Der::VisibleString:
    case Der::UniversalString:
    case Der::BmpString:
        return true;
    default:
        return false;
    }
}

QString decodeString(const Der::Element &element)
{
    QByteArray joined;
    const int tag = typeOf(element, &joined);
    const Der::Slice content = Der::sliceOf(joined);
    switch (tag) {
    case Der::Utf8String:
        return decodeUtf8(content);
    case Der::BmpString:
        return decodeBmp(content);
    case Der::UniversalString:
        return decodeUniversal(content);
    default:
        if (isString(tag))
            return decodeOctets(content);
        return QLatin1Char('#') + QString::fromLatin1(element.whole.bytes().toHex().toUpper());
    }
}

QDateTime decodeTime(const Der::Element &element)
{
    QByteArray joined;
    const int tag = typeOf(element, &joined);
    const Der::Slice content = Der::sliceOf(joined);
    const bool twoDigits = tag == Der::UtcTime;
    if (!twoDigits && tag != Der::GeneralizedTime)
        return {};
    int position = 0;
    const int year = fullYear(readNumber(content, &position, twoDigits ? 2 : 4), twoDigits);
    const int month = readNumber(content, &position, 2);
    const int day = readNumber(content, &position, 2);
    QTime time;
    int offset = 0;
    // Qt has dates before the year 1, but a negative year here means that there was no number.
    const QDate date = year < 0 ? QDate() : QDate(year, month, day);
    if (!date.isValid() || !readTime(content, !twoDigits, &position, &time)
        || !readOffset(content, position, &offset))
        return {};
    // In UTC the year may no longer have four digits.
    const QDateTime utc = QDateTime(date, time, Qt::UTC).addSecs(-offset);
    return utc.date().year() >= 1 && utc.date().year() <= LastYear ? utc : QDateTime();
}

} // namespace Trivex
