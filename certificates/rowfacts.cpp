// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/rowfacts.h"

#include "certificates/keystoreentry.h"
#include "qca/adapter/entries.h"
#include "qca/base/searchtext.h"
#include "qca/keys/keys.h"

#include <QLocale>
#include <QVarLengthArray>

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

const KeyStoreEntry *RowFacts::wrapper(int row) const
{
    auto *object = m_source->data(index(row), KeyStoreEntryRole).value<QObject *>();
    return qobject_cast<const KeyStoreEntry *>(object);
}

const QCA::KeyStoreEntry *RowFacts::entry(int row) const
{
    if (const EntryRows *rows = entryRowsOf(m_source))
        return rows->entryOf(row);
    const KeyStoreEntry *object = wrapper(row);
    return object ? object->data() : nullptr;
}

RowOrigin RowFacts::originOf(int row) const
{
    if (const EntryRows *rows = entryRowsOf(m_source))
        return rows->originOf(row);
    RowOrigin origin;
    if (const KeyStoreEntry *object = wrapper(row)) {
        const Certificate *certificate = object->certificate();
        origin.hasPrivateKey = isPrivateKey(entryKeyBundle(*object->data()).privateKey());
        origin.isRoot = !origin.hasPrivateKey && certificate && certificate->isRoot();
    }
    return origin;
}

void RowFacts::readEntry(int row, CachedRow &facts)
{
    if (facts.has(CachedRow::EntryKnown))
        return;
    facts.set(CachedRow::EntryKnown);
    const QCA::KeyStoreEntry *known = entry(row);
    if (!known)
        return;
    facts.set(CachedRow::HasEntry);
    facts.set(CachedRow::UserStore, entryStoreName(*known) == QLatin1String("USER"));
    facts.set(CachedRow::KeyBundle, entryType(*known) == QCA::KeyStoreEntry::TypeKeyBundle);
}

void RowFacts::readOrigin(int row, CachedRow &facts)
{
    if (facts.has(CachedRow::OriginKnown))
        return;
    readEntry(row, facts);
    facts.set(CachedRow::OriginKnown);
    if (!facts.has(CachedRow::HasEntry))
        return;
    const RowOrigin origin = originOf(row);
    facts.set(CachedRow::PrivateKey, origin.hasPrivateKey);
    facts.set(CachedRow::Root, origin.isRoot);
}

const CachedRow::Texts &RowFacts::name(int row)
{
    CachedRow::Texts &texts = m_cache.at(row).keptTexts();
    if (texts.name.index() != 0)
        return texts;
    QString name = m_source->data(index(row), NameRole).toString().toLower();
    if (name.isEmpty())
        name = qtTrId("plugin-la-unnamed");
    if (const QCollator *collator = sortCollator())
        texts.name.emplace<QCollatorSortKey>(collator->sortKey(name));
    else
        texts.name = name;
    return texts;
}

int RowFacts::compare(int row, int other)
{
    const CachedRow::Texts &first = name(row); // apart from the row, which may move
    const CachedRow::Texts &second = name(other);
    const auto *key = std::get_if<QCollatorSortKey>(&first.name);
    const auto *otherKey = std::get_if<QCollatorSortKey>(&second.name);
    if (key && otherKey)
        return key->compare(*otherKey);
    return QString::localeAwareCompare(std::get<QString>(first.name),
                                       std::get<QString>(second.name));
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

QString RowFacts::readTexts(int row) const
{
    const QModelIndex place = index(row);
    QVarLengthArray<QString, 8> texts;
    int size = 0;
    for (const int role : qAsConst(m_searched)) {
        texts.append(m_source->data(place, role).toString());
        size += texts.last().size() + 1;
    }
    QString all;
    all.reserve(size); // letters that become several are rare
    for (const QString &text : texts) {
        if (!all.isEmpty())
            all += RowCache::Separator;
        appendFolded(&all, text);
    }
    return all;
}

bool RowFacts::contains(int row, const QString &needle)
{
    CachedRow &facts = m_cache.at(row);
    QString &haystack = facts.keptTexts().haystack;
    if (!facts.has(CachedRow::HaystackKnown)) {
        facts.set(CachedRow::HaystackKnown);
        haystack = readTexts(row);
    }
    return haystack.contains(needle);
}

} // namespace Trivex
