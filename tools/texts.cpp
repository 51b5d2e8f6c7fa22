// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/texts.h"

#include "qca/base/plaintext.h"
#include "qca/base/searchtext.h"

#include <QLocale>
#include <QRegularExpression>

namespace Trivex {

namespace {

/// The marks of a language, and those that it has for what is quoted within them.
struct QuotationMarks {
    QChar open;
    QChar close;
    QChar innerOpen;
    QChar innerClose;
};

const QuotationMarks Quotations[] = {
    {QChar(0xAB), QChar(0xBB), QChar(0x201E), QChar(0x201C)},
    {QChar(0x201C), QChar(0x201D), QChar(0x2018), QChar(0x2019)},
};

QString inside(const QuotationMarks &marks, QString text)
{
    return text.replace(marks.open, marks.innerOpen).replace(marks.close, marks.innerClose);
}

} // namespace

Texts::Texts(QObject *parent)
    : QObject(parent)
{
}

QString Texts::size(qint64 bytes) const
{
    // The locale's own word for bytes has one form only.
    if (bytes < 1024) {
        //% "%n bytes"
        return qtTrId("trivex-app-bytes", int(bytes));
    }
    return QLocale().formattedDataSize(bytes, 2, QLocale::DataSizeTraditionalFormat);
}

QString Texts::plainHex(const QString &text)
{
    // A separator may be missing anywhere: groups are told apart by their form.
    static const QRegularExpression group(
        QStringLiteral("\\G(-[0-9A-F]{1,2}|[0-9A-F]{2}|^[0-9A-F]$):?"));
    QStringList bytes;
    int end = 0;
    auto matches = group.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const int value = match.captured(1).toInt(nullptr, 16);
        bytes += QStringLiteral("%1").arg(value & 0xff, 2, 16, QLatin1Char('0')).toUpper();
        end = match.capturedEnd();
    }
    if (end != text.size())
        return text;
    return bytes.join(QLatin1Char(':'));
}

QString Texts::plain(const QString &text) const
{
    return plainText(text);
}

QString Texts::put(const QString &message, const QStringList &values)
{
    QString result;
    const QuotationMarks *around = nullptr;
    for (int i = 0; i < message.size(); ++i) {
        const QChar c = message.at(i);
        const int place = c == QLatin1Char('%') ? message.mid(i + 1, 1).toInt() : 0;
        if (place > 0 && place <= values.size()) {
            result += around ? inside(*around, values.at(place - 1)) : values.at(place - 1);
            ++i;
            continue;
        }
        for (const QuotationMarks &marks : Quotations) {
            if (c == marks.open)
                around = &marks;
            else if (c == marks.close)
                around = nullptr;
        }
        result += c;
    }
    return result;
}

QString Texts::marked(const QString &text, const QString &pattern, const QString &color) const
{
    QString result;
    int from = 0;
    const QVector<TextPart> parts = foundParts(text, pattern);
    for (const TextPart &part : parts) {
        // Added as a whole: a sum has the text allocated anew, to its exact size, each time.
        const QString piece = text.mid(from, part.start - from).toHtmlEscaped()
            + QStringLiteral("<b><u><font color=\"") + color + QStringLiteral("\">")
            + text.mid(part.start, part.size).toHtmlEscaped() + QStringLiteral("</font></u></b>");
        result += piece;
        from = part.start + part.size;
    }
    return result + text.mid(from).toHtmlEscaped();
}

} // namespace Trivex
