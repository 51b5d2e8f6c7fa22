// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/words.h"

#include "qca/asn1/nativecoding.h"
#include "qca/asn1/strings.h"
#include "qca/base/plaintext.h"

#include <QLocale>

namespace Trivex {

namespace {

constexpr int LongestNumber = 64;

// Set before any other thread runs.
bool s_forPrograms = false;

QString ofBytes(int count)
{
    //% "%n bytes in all"
    return qtTrId("trivex-app-bytes-in-all", count);
}

struct FreeText {
    void operator()(char *text) const noexcept { OPENSSL_free(text); }
};

} // namespace

QString bytesText(Der::Slice bytes, int most)
{
    const Der::Slice shown{bytes.data, qMin(bytes.size, most)};
    const QString text = QString::fromLatin1(shown.view().toHex(':').toUpper());
    return bytes.size <= most
        ? text
        : text + QStringLiteral("… (") + ofBytes(bytes.size) + QLatin1Char(')');
}

QString decimalText(Der::Slice integer)
{
    if (integer.size > LongestNumber + 2)
        return {};
    using IntegerHandle = Handle<ASN1_INTEGER, ASN1_INTEGER_free>;
    const auto number = decodeNative<IntegerHandle>(integer, d2i_ASN1_INTEGER);
    const BigNumHandle value(number ? ASN1_INTEGER_to_BN(number.get(), nullptr) : nullptr);
    const std::unique_ptr<char, FreeText> text(value ? BN_bn2dec(value.get()) : nullptr);
    ERR_clear_error();
    return QString::fromLatin1(text.get());
}

QString numberText(Der::Slice content)
{
    const int number = Der::smallInteger(content);
    return number >= 0 ? QString::number(number) : bytesText(content);
}

QString withWholeYear(QString format)
{
    const QString whole = QStringLiteral("yyyy");
    return format.contains(whole) ? format : format.replace(QLatin1String("yy"), whole);
}

void writeTimesForPrograms()
{
    s_forPrograms = true;
}

QString dateText(const QDateTime &time)
{
    if (s_forPrograms)
        return time.toUTC().date().toString(Qt::ISODate);
    const QLocale locale;
    return time.isValid() ? locale.toString(time.toLocalTime().date(),
                                            withWholeYear(locale.dateFormat(QLocale::ShortFormat)))
                          : QString();
}

QString timeText(const QDateTime &time)
{
    if (s_forPrograms)
        return time.toUTC().toString(Qt::ISODate);
    const QLocale locale;
    return time.isValid() ? locale.toString(
               time.toLocalTime(), withWholeYear(locale.dateTimeFormat(QLocale::ShortFormat)))
                          : QString();
}

QString timeText(const Der::Element &time)
{
    const QString text = timeText(decodeTime(time));
    return text.isEmpty() ? damagedText(time.whole) : text;
}

QString lineText(const QString &text)
{
    if (text.size() <= MaxShownCharacters)
        return plainText(text);
    return plainText(text.left(MaxShownCharacters)) + QStringLiteral("…");
}

QString damagedText(Der::Slice bytes)
{
    //% "Damaged: %1"
    return qtTrId("trivex-app-damaged-bytes").arg(bytes.isEmpty() ? ofBytes(0) : bytesText(bytes));
}

QString yesText(bool yes)
{
    //% "yes"
    return yes ? qtTrId("trivex-app-yes")
               //% "no"
               : qtTrId("trivex-app-no");
}

QString labeledText(const QString &label, const QString &value)
{
    return label + QStringLiteral(": ") + value;
}

void Lines::add(const QString &line)
{
    if (isFull())
        return skip();
    m_lines += lineText(line);
    m_size += m_lines.last().size();
}

QString Lines::text() const
{
    if (m_skipped == 0)
        return m_lines.join(QLatin1Char('\n'));
    //% "and %n more"
    const QString more = qtTrId("trivex-app-and-more", m_skipped);
    return (m_lines + QStringList(QStringLiteral("… ") + more)).join(QLatin1Char('\n'));
}

} // namespace Trivex
