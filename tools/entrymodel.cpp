// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/entrymodel.h"

#include "qca/adapter/entries.h"
#include "qca/base/entryrows.h"
#include "qca/base/plaintext.h"
#include "qca/base/savedrequest.h"
#include "qca/base/searchtext.h"
#include "qca/keys/keys.h"
#include "tools/rowentry.h"
#include "tools/rows.h"
#include "tools/rowwords.h"
#include "tools/texts.h"
#include "tools/validity.h"

#include <QElapsedTimer>
#include <QMetaProperty>

#include <utility>

namespace Trivex {

namespace {

constexpr int SystemStore = 0;
constexpr qint64 PortionMs = 3;

quint8 keyKind(const QCA::KeyStoreEntry &entry)
{
    if (entryType(entry) != QCA::KeyStoreEntry::TypeKeyBundle)
        return EntryModel::NoKey;
    return keyType(entryKeyBundle(entry).privateKey()) == RsaKey ? EntryModel::RsaKind
                                                                 : EntryModel::OtherKind;
}

} // namespace

EntryModel::EntryModel(QObject *parent)
    : QIdentityProxyModel(parent)
{
    m_idle.setInterval(0);
    connect(&m_idle, &QTimer::timeout, this, &EntryModel::readAhead);
    m_announce.setSingleShot(true);
    m_announce.setInterval(0);
    connect(&m_announce, &QTimer::timeout, this, &EntryModel::countsChanged);
    connect(&m_monitor, &TokenMonitor::changed, this, &EntryModel::noteToken);
    const QVector<TokenStatus> tokens = TokenMonitor::tokens();
    for (const TokenStatus &token : tokens)
        noteToken(token.keyStoreId);
}

EntryModel::~EntryModel() = default;

void EntryModel::setSourceModel(QAbstractItemModel *source)
{
    if (sourceModel() == source)
        return;
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    if (source) {
        // Before the base class passes the changes on, so that whoever hears of them finds the
        // kept rows in step.
        connect(source, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { insert(first, last); });
        connect(source, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { remove(first, last); });
        connect(source, &QAbstractItemModel::modelReset, this, &EntryModel::reset);
        connect(source, &QAbstractItemModel::dataChanged, this, &EntryModel::forgetIdentities);
    }
    QIdentityProxyModel::setSourceModel(source);
    reset();
}

QHash<int, QByteArray> EntryModel::roleNames() const
{
    QHash<int, QByteArray> names = QIdentityProxyModel::roleNames();
    names.insert(StoreIdRole, QByteArrayLiteral("storeId"));
    names.insert(StoreNameRole, QByteArrayLiteral("storeName"));
    names.insert(ValidityRole, QByteArrayLiteral("validity"));
    names.insert(UntilRole, QByteArrayLiteral("until"));
    names.insert(InitialRole, QByteArrayLiteral("initial"));
    names.insert(HaystackRole, QByteArrayLiteral("haystack"));
    names.insert(HasKeyRole, QByteArrayLiteral("hasKey"));
    names.insert(KeyKindRole, QByteArrayLiteral("keyKind"));
    names.insert(IdentityRole, QByteArrayLiteral("identity"));
    names.insert(KeyPresumedRole, QByteArrayLiteral("keyPresumed"));
    return names;
}

QVariant EntryModel::data(const QModelIndex &index, int role) const
{
    if (role < StoreIdRole || role > KeyPresumedRole) {
        const QVariant value = QIdentityProxyModel::data(index, role);
        const bool isName = role == m_source.name || role == m_source.issuer;
        return isName && value.isValid() ? plainText(value.toString()) : value;
    }
    if (index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const Row &kept = row(index.row());
    switch (role) {
    case StoreIdRole:
        return kept.storeId;
    case StoreNameRole:
        return kept.storeName;
    case ValidityRole:
        return Validity::stateAt(kept.from, kept.until, QDateTime::currentDateTimeUtc());
    case UntilRole:
        return kept.until;
    case InitialRole:
        return initialOf(sourceModel()->index(index.row(), 0).data(m_source.name).toString());
    case HaystackRole:
        noteSearch();
        return QString::fromUtf8(kept.words + '\n' + kept.text.words + '\n' + kept.text.bytes);
    case KeyKindRole:
        return kept.keyKind;
    case IdentityRole:
        return identityAt(index.row());
    case KeyPresumedRole:
        return kept.hasKey && m_presumed.contains(kept.storeId);
    default:
        return kept.hasKey;
    }
}

const EntryModel::Row &EntryModel::row(int sourceRow) const
{
    Row &kept = m_rows[sourceRow];
    if (!kept.read)
        read(sourceRow, kept);
    return kept;
}

void EntryModel::read(int sourceRow, Row &row) const
{
    row.read = true;
    if (const QCA::KeyStoreEntry *entry = entryAt(sourceRow))
        readEntry(sourceRow, *entry, row);
    if (const EntryRows *rows = entryRowsOf(sourceModel())) {
        rows->lookAtCertificate(sourceRow, [&](const QObject &certificate) {
            readCertificate(sourceRow, certificate, row);
        });
        return;
    }
    const QVariant object = sourceModel()->index(sourceRow, 0).data(m_source.certificate);
    if (const auto *certificate = object.value<QObject *>())
        readCertificate(sourceRow, *certificate, row);
}

void EntryModel::readEntry(int sourceRow, const QCA::KeyStoreEntry &entry, Row &row) const
{
    const QVariant type = sourceModel()->index(sourceRow, 0).data(m_source.type);
    const bool isSystem = type.toInt() == SystemStore;
    row.storeId = entryStoreId(entry);
    row.storeName = shownStoreName(entry, isSystem);
    row.keyKind = keyKind(entry);
    row.hasKey = row.keyKind != NoKey;
    noteCounts(row, 1);
}

void EntryModel::readCertificate(int sourceRow, const QObject &certificate, Row &row) const
{
    const QVariant name = sourceModel()->index(sourceRow, 0).data(m_source.name);
    row.from = certificate.property("notValidBefore").toDateTime();
    row.until = certificate.property("notValidAfter").toDateTime();
    QString words = searchTextOf(certificate) + QLatin1Char('\n') + foldedText(row.storeName);
    // Mostly it is the common name.
    const QString shown = foldedText(name.toString());
    if (!words.contains(shown))
        words += QLatin1Char('\n') + shown;
    row.words = words.toUtf8();
    // It was made with room for three bytes a letter.
    row.words.squeeze();
}

const QCA::KeyStoreEntry *EntryModel::entryAt(int sourceRow) const
{
    return Trivex::entryAt(*sourceModel(), sourceRow, m_source.entry);
}

void EntryModel::readAhead()
{
    QElapsedTimer clock;
    clock.start();
    while (m_next < m_rows.size() && clock.elapsed() < PortionMs)
        row(m_next++);
    if (m_next >= m_rows.size())
        describeAhead(clock);
    if (m_next >= m_rows.size() && !isDescribing())
        m_idle.stop();
    noteDescribing();
}

void EntryModel::describeAhead(const QElapsedTimer &clock)
{
    int first = -1;
    int last = -1;
    while (isDescribing() && clock.elapsed() < PortionMs) {
        const int at = m_nextText++;
        if (m_rows.at(at).described)
            continue;
        describeRow(at);
        first = first < 0 ? at : first;
        last = at;
    }
    if (first >= 0)
        Q_EMIT dataChanged(index(first, 0), index(last, 0), {HaystackRole});
}

void EntryModel::describeRow(int sourceRow)
{
    Row &kept = m_rows[sourceRow];
    kept.described = true;
    const RowEncoding encoding =
        rowEncoding(*sourceModel(), sourceRow, m_source.entry, m_source.certificate);
    if (!encoding.der.isEmpty())
        kept.text = m_texts.of(encoding.kind, encoding.der);
}

void EntryModel::noteDescribing()
{
    if (m_told == isDescribing())
        return;
    m_told = isDescribing();
    Q_EMIT describingChanged();
}

void EntryModel::noteSearch() const
{
    if (m_searched)
        return;
    m_searched = true;
    m_idle.start();
}

bool EntryModel::isFound(int sourceRow, const SearchNeedle &needle) const
{
    const Row &kept = row(sourceRow);
    return needle.isIn(kept.words) || needle.isIn(kept.text);
}

void EntryModel::startAhead(int first)
{
    forgetIdentities();
    m_next = qMin(m_next, first);
    m_nextText = qMin(m_nextText, first);
    if (m_next < m_rows.size())
        m_idle.start();
}

void EntryModel::insert(int first, int last)
{
    // By itself the vector would make room for twice as many.
    const int rows = m_rows.size() + last - first + 1;
    if (rows > m_rows.capacity())
        m_rows.reserve(rows + rows / 8);
    m_rows.insert(first, last - first + 1, Row());
    startAhead(first);
}

void EntryModel::remove(int first, int last)
{
    for (int i = first; i <= last; ++i) {
        if (m_rows.at(i).read)
            noteCounts(m_rows.at(i), -1);
    }
    m_rows.remove(first, last - first + 1);
    startAhead(first);
}

void EntryModel::reset()
{
    m_source = {};
    if (const QAbstractItemModel *source = sourceModel()) {
        const auto role = [source](const char *name) {
            return roleNamed(*source, QLatin1String(name));
        };
        m_source = {role("name"), role("keyStoreEntry"), role("certificate"), role("issuer"),
                    role("type")};
    }
    m_rows.fill(Row(), sourceModel() ? sourceModel()->rowCount() : 0);
    m_counts.clear();
    m_next = 0;
    m_nextText = 0;
    forgetIdentities();
    m_idle.start();
    m_announce.start();
}

void EntryModel::noteCounts(const Row &row, int delta) const
{
    if (row.storeId.isEmpty())
        return;
    m_counts[row.storeId] += delta;
    m_announce.start();
}

void EntryModel::noteToken(const QString &storeId)
{
    const TokenStatus status = TokenMonitor::token(storeId);
    const bool presumed = status.present && status.keysPresumed;
    if (presumed == m_presumed.contains(storeId))
        return;
    if (presumed)
        m_presumed.insert(storeId);
    else
        m_presumed.remove(storeId);
    // Those that nobody has read yet have shown nothing either. The rows of a store stand together,
    // and are told of at once: whoever hears of it looks through all that it lists.
    int first = -1;
    int last = -1;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (!m_rows.at(i).hasKey || m_rows.at(i).storeId != storeId)
            continue;
        first = first < 0 ? i : first;
        last = i;
    }
    if (first >= 0)
        Q_EMIT dataChanged(index(first, 0), index(last, 0), {KeyPresumedRole});
}

int EntryModel::countInStore(const QString &storeId) const
{
    return m_counts.value(storeId);
}

QString EntryModel::storeNameAt(int sourceRow) const
{
    return row(sourceRow).storeName;
}

QString EntryModel::identityAt(int sourceRow) const
{
    if (const QCA::KeyStoreEntry *entry = entryAt(sourceRow))
        return entryStoreId(*entry) + QLatin1Char('\n') + entryId(*entry);
    const QModelIndex index = sourceModel()->index(sourceRow, 0);
    const auto *request =
        qobject_cast<SavedRequest *>(index.data(m_source.certificate).value<QObject *>());
    return request ? request->requestFile() : QString();
}

int EntryModel::lookForIdentity(const QString &identity) const
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (identityAt(i) == identity)
            return i;
    }
    return -1;
}

int EntryModel::rowOfIdentity(const QString &identity) const
{
    if (!std::exchange(m_wasAsked, true))
        return lookForIdentity(identity);
    if (m_rowsByIdentity.isEmpty()) {
        m_rowsByIdentity.reserve(m_rows.size());
        // From the back: of two of one identity the first counts.
        for (int i = m_rows.size() - 1; i >= 0; --i)
            m_rowsByIdentity.insert(identityAt(i), i);
    }
    return m_rowsByIdentity.value(identity, -1);
}

void EntryModel::forgetIdentities()
{
    m_wasAsked = false;
    m_rowsByIdentity.clear();
}

QVariant EntryModel::certificateOf(const QString &identity) const
{
    const int row = rowOfIdentity(identity);
    return row < 0 ? QVariant() : data(index(row, 0), m_source.certificate);
}

int EntryModel::rowOfCertificate(QObject *certificate) const
{
    if (!certificate)
        return -1;
    if (const EntryRows *rows = entryRowsOf(sourceModel()))
        return rows->rowOf(certificate);
    for (int i = 0; i < m_rows.size(); ++i) {
        if (sourceModel()->index(i, 0).data(m_source.certificate).value<QObject *>() == certificate)
            return i;
    }
    return -1;
}

} // namespace Trivex
