// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/searchtext.h"

#include <array>
#include <atomic>
#include <memory>

namespace Trivex {

namespace {

constexpr int PageSize = 256;
constexpr int PageCount = 0x10000 / PageSize;

QString foldedByLetter(const QString &text)
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

/// The folded letters of one page of the basic plane; 0 for a letter that becomes several, and for
/// halves of pairs. Made when it is first needed, by whichever thread, and kept for good: to fold
/// a long list letter by letter takes ten times as long.
const ushort *foldedPage(int number)
{
    static std::array<std::atomic<const ushort *>, PageCount> pages{};
    std::atomic<const ushort *> &place = pages[size_t(number)];
    if (const ushort *made = place.load(std::memory_order_acquire))
        return made;
    auto page = std::make_unique<ushort[]>(PageSize);
    for (int i = 0; i < PageSize; ++i) {
        const QChar letter(ushort(number * PageSize + i));
        const QString folded = letter.isSurrogate() ? QString() : foldedByLetter(QString(letter));
        page[size_t(i)] = folded.size() == 1 ? folded.at(0).unicode() : ushort(0);
    }
    const ushort *other = nullptr;
    if (place.compare_exchange_strong(other, page.get(), std::memory_order_acq_rel))
        return page.release();
    return other;
}

} // namespace

QString foldedText(const QString &text)
{
    QString folded;
    appendFolded(&folded, text);
    return folded;
}

void appendFolded(QString *folded, const QString &text)
{
    const int start = folded->size();
    folded->resize(start + text.size());
    QChar *to = folded->data() + start;
    for (const QChar letter : text) {
        const ushort plain = foldedPage(letter.row())[letter.cell()];
        if (plain == 0) {
            folded->truncate(start);
            *folded += foldedByLetter(text);
            return;
        }
        *to++ = QChar(plain);
    }
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
