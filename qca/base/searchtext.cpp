// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/searchtext.h"

namespace Trivex {

QString foldedText(const QString &text)
{
    const QVector<uint> points = text.toLower().toUcs4();
    QString folded;
    folded.reserve(text.size());
    for (const uint point : points) {
        const uint plain = QChar::toCaseFolded(point);
        if (QChar::requiresSurrogates(plain)) {
            folded += QChar(QChar::highSurrogate(plain));
            folded += QChar(QChar::lowSurrogate(plain));
        } else {
            folded += QChar(ushort(plain));
        }
    }
    return folded;
}

QVector<TextPart> foundParts(const QString &text, const QString &pattern)
{
    // Folded letter by letter: a letter may become longer.
    QString folded;
    QVector<int> starts; // of the letter in `text` that each unit of `folded` comes from
    for (int at = 0, size = 0; at < text.size(); at += size) {
        const bool isPair = text.at(at).isHighSurrogate() && at + 1 < text.size()
            && text.at(at + 1).isLowSurrogate();
        size = isPair ? 2 : 1;
        folded += foldedText(text.mid(at, size));
        while (starts.size() < folded.size())
            starts.append(at);
    }
    starts.append(text.size());

    QVector<TextPart> parts;
    const QString needle = foldedText(pattern);
    int from = needle.isEmpty() ? -1 : folded.indexOf(needle);
    while (from >= 0) {
        // To the end of a letter that was found in part.
        int end = from + needle.size();
        while (end < folded.size() && starts.at(end) == starts.at(end - 1))
            ++end;
        parts.append({starts.at(from), starts.at(end) - starts.at(from)});
        from = folded.indexOf(needle, end);
    }
    return parts;
}

} // namespace Trivex
