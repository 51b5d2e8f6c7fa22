// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/texts.h"

#include "qca/base/plaintext.h"
#include "qca/base/searchtext.h"

#include <QLocale>
#include <QRegularExpression>

namespace Trivex {

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

QString Texts::marked(const QString &text, const QString &pattern, const QString &color) const
{
    QString result;
    int from = 0;
    const QVector<TextPart> parts = foundParts(text, pattern);
    for (const TextPart &part : parts) {
        result += text.mid(from, part.start - from).toHtmlEscaped()
            + QStringLiteral("<b><u><font color=\"") + color + QStringLiteral("\">")
            + text.mid(part.start, part.size).toHtmlEscaped() + QStringLiteral("</font></u></b>");
        from = part.start + part.size;
    }
    return result + text.mid(from).toHtmlEscaped();
}

} // namespace Trivex
