// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/filenames.h"

#include "qca/base/plaintext.h"

#include <QTextBoundaryFinder>

namespace Trivex {

namespace {

/// The longest suffix that is kept when a name is cut; a longer tail is text with a dot in it.
constexpr int MaxSuffixBytes = 16;

QString withoutUnsafe(const QString &name)
{
    QString safe = plainText(name, QLatin1Char('_'));
    safe.replace(QLatin1Char('/'), QLatin1Char('_')).replace(QLatin1Char('\\'), QLatin1Char('_'));
    if (safe.startsWith(QLatin1Char('.')))
        safe[0] = QLatin1Char('_');
    return safe;
}

/// The longest part of `text` that has at most `bytes` bytes and ends between two characters.
QString cut(const QString &text, int bytes)
{
    if (text.toUtf8().size() <= bytes)
        return text;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int end = 0;
    int used = 0;
    for (int next = finder.toNextBoundary(); next > 0; next = finder.toNextBoundary()) {
        used += text.mid(end, next - end).toUtf8().size();
        if (used > bytes)
            break;
        end = next;
    }
    return text.left(end);
}

} // namespace

QString safeFileName(const QString &name)
{
    if (name.toUtf8().size() <= MaxFileNameBytes)
        return withoutUnsafe(name);
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    const QString suffix = dot > 0 ? name.mid(dot) : QString();
    if (suffix.isEmpty() || suffix.toUtf8().size() > MaxSuffixBytes)
        return safeFileName(name, QString());
    return safeFileName(name.left(dot), suffix);
}

QString safeFileName(const QString &base, const QString &suffix)
{
    const int room = MaxFileNameBytes - suffix.toUtf8().size();
    return withoutUnsafe(cut(base, qMax(0, room)) + suffix);
}

QString safeFileName(const QString &base, const QString &suffix, const QString &standIn)
{
    return safeFileName(base.trimmed().isEmpty() ? standIn : base, suffix);
}

} // namespace Trivex
