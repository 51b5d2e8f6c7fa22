// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/rowfacts.h"

#include "certificates/keystoreentry.h"
#include "qca/adapter/entries.h"
#include "qca/base/searchtext.h"
#include "qca/keys/keys.h"

#include <QLocale>

namespace Trivex {

namespace {

/// Categories, numbered as the types of key stores and beyond.
enum Category : int {
    SystemCategory = 0,
    UserCategory = 1,
    KeyCategory = 3,
    RequestCategory = 5,
    ImportedCategory = 6,
    RootCategory = 7,
};

/// True when `collator` orders as `QString::localeAwareCompare()` does, which keeps to the locale
/// that was the default at its first use.
bool ordersAsLocale(const QCollator &collator)
{
    const QStringList probes = {QStringLiteral("a"),  QStringLiteral("B"), QStringLiteral("z"),
                                QStringLiteral("ä"),  QStringLiteral("ё"), QStringLiteral("я"),
                                QStringLiteral("ch"), QStringLiteral("h"), QStringLiteral("і"),
                                QStringLiteral("y"),  QStringLiteral("-"), QStringLiteral("1")};
    for (const QString &left : probes) {
        for (const QString &right : probes) {
            const int wanted = QString::localeAwareCompare(left, right);
            const int found = collator.compare(left, right);
            if ((wanted < 0) != (found < 0) || (wanted > 0) != (found > 0))
                return false;
        }
    }
    return true;
}

/// The collator whose sort keys give the order of `QString::localeAwareCompare()`; null if they
/// don't. A locale without rules of its own compares code units, which is as fast.
const QCollator *sortCollator()
{
    static const QCollator collator;
    static const bool usable =
        collator.locale().language() != QLocale::C && ordersAsLocale(collator);
    return usable ? &collator : nullptr;
}

} // namespace

bool RowFacts::isIn(int category, int row)
{
    CachedRow &facts = m_cache.at(row);
    if (!facts.has(CachedRow::TypeKnown)) {
        facts.type = m_source->data(index(row), TypeRole).toInt();
        facts.set(CachedRow::TypeKnown);
    }
    if (facts.type == SystemCategory || facts.type == RequestCategory)
        return facts.type == category;
    return isInEntryCategory(category, row, facts);
}

bool RowFacts::isInEntryCategory(int category, int row, CachedRow &facts)
{
    switch (category) {
    case UserCategory:
    case KeyCategory:
        readEntry(row, facts);
        return facts.has(category == UserCategory ? CachedRow::UserStore : CachedRow::KeyBundle);
    case ImportedCategory:
        readOrigin(row, facts);
        return facts.has(CachedRow::HasEntry) && !facts.has(CachedRow::Root)
            && !facts.has(CachedRow::PrivateKey);
    case RootCategory:
        readOrigin(row, facts);
        return facts.has(CachedRow::Root) && !facts.has(CachedRow::PrivateKey);
    default:
        return false;
    }
}

const KeyStoreEntry *RowFacts::entry(int row) const
{
    auto *object = m_source->data(index(row), KeyStoreEntryRole).value<QObject *>();
    return qobject_cast<const KeyStoreEntry *>(object);
}

void RowFacts::readEntry(int row, CachedRow &facts)
{
    if (facts.has(CachedRow::EntryKnown))
        return;
    facts.set(CachedRow::EntryKnown);
    const KeyStoreEntry *wrapper = entry(row);
    if (!wrapper)
        return;
    facts.set(CachedRow::HasEntry);
    facts.set(CachedRow::UserStore, entryStoreName(*wrapper->data()) == QLatin1String("USER"));
    facts.set(CachedRow::KeyBundle,
              entryType(*wrapper->data()) == QCA::KeyStoreEntry::TypeKeyBundle);
}

void RowFacts::readOrigin(int row, CachedRow &facts)
{
    if (facts.has(CachedRow::OriginKnown))
        return;
    readEntry(row, facts);
    facts.set(CachedRow::OriginKnown);
    const KeyStoreEntry *wrapper = facts.has(CachedRow::HasEntry) ? entry(row) : nullptr;
    if (!wrapper)
        return;
    const bool isPrivate = isPrivateKey(entryKeyBundle(*wrapper->data()).privateKey());
    const Certificate *certificate = wrapper->certificate();
    facts.set(CachedRow::PrivateKey, isPrivate);
    facts.set(CachedRow::Root, !isPrivate && certificate && certificate->isRoot());
}

const CachedRow::Texts &RowFacts::name(int row)
{
    CachedRow::Texts &texts = m_cache.at(row).keptTexts();
    if (texts.sortKey || !texts.name.isNull())
        return texts;
    QString name = m_source->data(index(row), NameRole).toString().toLower();
    if (name.isEmpty())
        name = qtTrId("plugin-la-unnamed");
    if (const QCollator *collator = sortCollator())
        texts.sortKey = collator->sortKey(name);
    else
        texts.name = name;
    return texts;
}

int RowFacts::compare(int row, int other)
{
    const CachedRow::Texts &first = name(row); // apart from the row, which may move
    const CachedRow::Texts &second = name(other);
    if (first.sortKey && second.sortKey)
        return first.sortKey->compare(*second.sortKey);
    return QString::localeAwareCompare(first.name, second.name);
}

void RowFacts::setSearched(const QVector<int> &roles)
{
    if (roles == m_searched)
        return;
    m_searched = roles;
    for (CachedRow &row : m_cache.rows()) {
        row.set(CachedRow::HaystackKnown, false);
        if (row.texts)
            row.texts->haystack.clear();
    }
}

bool RowFacts::contains(int row, const QString &needle)
{
    CachedRow &facts = m_cache.at(row);
    QString &haystack = facts.keptTexts().haystack;
    if (!facts.has(CachedRow::HaystackKnown)) {
        facts.set(CachedRow::HaystackKnown);
        QString text;
        for (const int role : qAsConst(m_searched)) {
            if (!text.isEmpty())
                text += RowCache::Separator;
            text += foldedText(m_source->data(index(row), role).toString());
        }
        haystack = text;
    }
    return haystack.contains(needle);
}

} // namespace Trivex
