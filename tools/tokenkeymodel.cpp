// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenkeymodel.h"

#include "qca/base/plaintext.h"
#include "qca/base/savedrequest.h"
#include "qca/base/searchtext.h"
#include "qca/describe/keytexts.h"
#include "qca/keys/gostpublickey.h"
#include "qca/keys/keytypes.h"
#include "tools/certifiablekey.h"
#include "tools/followed.h"
#include "tools/rows.h"
#include "tools/validity.h"

#include <algorithm>

namespace Trivex {

namespace {

constexpr int SettleMs = 50;

QString identityOf(const QString &storeId, const QString &id)
{
    return storeId + QLatin1Char('\n') + id;
}

struct KindName {
    int keyType;
    const char *name;
};

constexpr KindName KindNames[] = {
    {RsaKey, "RSA"},
    {DsaKey, "DSA"},
    {DhKey, "DH"},
    {Gost2001Key, "GOST R 34.10-2001"},
    {Gost2012Key256, "GOST R 34.10-2012"},
    {Gost2012Key512, "GOST R 34.10-2012"},
};

/// Of a key whose public half the token does not show.
QString kindName(int keyType)
{
    for (const KindName &one : KindNames) {
        if (one.keyType == keyType)
            return QString::fromLatin1(one.name);
    }
    if (keyType == EllipticCurveKey)
        return qtTrId("trivex-app-ability-curves");
    //% "Another kind"
    return qtTrId("trivex-app-key-other-kind");
}

struct UseText {
    TokenKeyFacts::Use use;
    const char *id;
};

constexpr UseText UseTexts[] = {
    //% "sign"
    {TokenKeyFacts::Signs, QT_TRID_NOOP("trivex-app-key-signs")},
    //% "decrypt"
    {TokenKeyFacts::Decrypts, QT_TRID_NOOP("trivex-app-key-decrypts")},
    //% "agree on keys"
    {TokenKeyFacts::Derives, QT_TRID_NOOP("trivex-app-key-derives")},
    //% "unwrap keys"
    {TokenKeyFacts::Unwraps, QT_TRID_NOOP("trivex-app-key-unwraps")},
};

QString nameOf(const TokenKeyFacts &key)
{
    const QString label = plainText(key.label).trimmed();
    //% "Key without a name"
    return label.isEmpty() ? qtTrId("trivex-app-key-unnamed") : label;
}

QString hexOf(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(':').toUpper());
}

} // namespace

TokenKeyModel::TokenKeyModel(QObject *parent)
    : QAbstractListModel(parent)
{
    m_later.setSingleShot(true);
    m_later.setInterval(SettleMs);
    connect(&m_later, &QTimer::timeout, this, &TokenKeyModel::readRequests);
    connect(&m_monitor, &TokenMonitor::changed, this, &TokenKeyModel::noteToken);
    const QVector<TokenStatus> tokens = TokenMonitor::tokens();
    for (const TokenStatus &token : tokens)
        noteToken(token.keyStoreId);
}

TokenKeyModel::~TokenKeyModel() = default;

QAbstractItemModel *TokenKeyModel::requests() const
{
    return m_requests;
}

void TokenKeyModel::setRequests(QAbstractItemModel *requests)
{
    if (!followNext(&m_requests, requests, this))
        return;
    if (requests)
        followRows(requests, this, [this] { m_later.start(); });
    readRequests();
    Q_EMIT requestsChanged();
}

void TokenKeyModel::readRequests()
{
    m_waiting.clear();
    const int count = m_requests ? m_requests->rowCount() : 0;
    const int role = m_requests ? roleNamed(*m_requests, QStringLiteral("certificate")) : -1;
    // Nobody asks for them as long as there are no keys.
    for (int i = 0; i < count && !m_rows.isEmpty(); ++i) {
        auto *object = m_requests->index(i, 0).data(role).value<QObject *>();
        const auto *saved = qobject_cast<SavedRequest *>(object);
        const QByteArray info = saved ? saved->requestKeyInfo() : QByteArray();
        if (!info.isEmpty()) {
            const QString name = plainText(object->property("commonName").toString());
            m_waiting.insert(comparablePublicInfo(info),
                             {name.isEmpty() ? object->property("fileName").toString() : name,
                              saved->requestFile()});
        }
    }
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0), index(m_rows.size() - 1), {RequestRole, RequestIdentityRole});
}

TokenKeyModel::WaitingRequest TokenKeyModel::requestFor(const Row &row) const
{
    return row.key.publicInfo.isEmpty() ? WaitingRequest()
                                        : m_waiting.value(comparablePublicInfo(row.key.publicInfo));
}

void TokenKeyModel::noteToken(const QString &storeId)
{
    const TokenStatus status = TokenMonitor::token(storeId);
    noteCertificates(status);
    QVector<Row> wanted;
    for (const TokenKeyFacts &key : status.keyFacts) {
        if (status.present && key.isBare())
            wanted.append({storeId, plainText(status.name), key, 0});
    }
    const int before = m_rows.size();
    takeUp(storeId, wanted);
    if (m_rows.size() == before)
        return;
    if (before == 0)
        m_later.start();
    Q_EMIT countChanged();
}

void TokenKeyModel::noteCertificates(const TokenStatus &status)
{
    for (const TokenKeyFacts &key : status.keyFacts) {
        const QString identity = identityOf(status.keyStoreId, key.id);
        if (key.isBare()) {
            m_entryOfKey.remove(identity);
        } else {
            const QString entry = identityOf(status.keyStoreId, key.entryId);
            m_entryOfKey.insert(identity, entry);
            m_keyOfEntry.insert(entry, identity);
        }
    }
}

void TokenKeyModel::removeMissing(const QString &storeId, const QVector<Row> &wanted)
{
    QSet<QString> ids;
    for (const Row &row : wanted)
        ids.insert(row.key.id);
    const auto isMissing = [&](int row) {
        return m_rows.at(row).storeId == storeId && !ids.contains(m_rows.at(row).key.id);
    };
    for (int last = m_rows.size() - 1; last >= 0; --last) {
        if (!isMissing(last))
            continue;
        int first = last;
        while (first > 0 && isMissing(first - 1))
            --first;
        beginRemoveRows({}, first, last);
        for (int i = first; i <= last; ++i)
            m_rowsBySerial.remove(m_rows.at(i).serial);
        m_rows.remove(first, last - first + 1);
        number(first);
        endRemoveRows();
        last = first;
    }
}

/// The order of those that stay is theirs; what is new comes behind them.
void TokenKeyModel::takeUp(const QString &storeId, const QVector<Row> &wanted)
{
    removeMissing(storeId, wanted);
    QHash<QString, int> known;
    int end = m_rows.size();
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).storeId == storeId) {
            known.insert(m_rows.at(i).key.id, i);
            end = i + 1;
        }
    }
    QVector<Row> added;
    for (const Row &row : wanted) {
        const int at = known.value(row.key.id, -1);
        if (at < 0) {
            added.append({row.storeId, row.storeName, row.key, m_nextSerial++});
        } else if (!(m_rows.at(at).key == row.key)) {
            m_rows[at].key = row.key;
            Q_EMIT dataChanged(index(at), index(at));
        }
    }
    if (added.isEmpty())
        return;
    beginInsertRows({}, end, end + added.size() - 1);
    m_rows = m_rows.mid(0, end) + added + m_rows.mid(end);
    number(end);
    endInsertRows();
}

void TokenKeyModel::number(int from)
{
    for (int i = from; i < m_rows.size(); ++i)
        m_rowsBySerial.insert(m_rows.at(i).serial, i);
}

int TokenKeyModel::rowOfSerial(int serial) const
{
    return m_rowsBySerial.value(serial, -1);
}

int TokenKeyModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QHash<int, QByteArray> TokenKeyModel::roleNames() const
{
    return {
        {NameRole, QByteArrayLiteral("name")},
        {KindRole, QByteArrayLiteral("issuer")},
        {IsKeyRole, QByteArrayLiteral("isKey")},
        {KeyIdRole, QByteArrayLiteral("keyId")},
        {TokenIdRole, QByteArrayLiteral("tokenId")},
        {UsesRole, QByteArrayLiteral("uses")},
        {OriginRole, QByteArrayLiteral("origin")},
        {CanRequestRole, QByteArrayLiteral("canRequest")},
        {RequestRole, QByteArrayLiteral("request")},
        {RequestIdentityRole, QByteArrayLiteral("requestIdentity")},
        {EntryModel::StoreIdRole, QByteArrayLiteral("storeId")},
        {EntryModel::StoreNameRole, QByteArrayLiteral("storeName")},
        {EntryModel::ValidityRole, QByteArrayLiteral("validity")},
        {EntryModel::InitialRole, QByteArrayLiteral("initial")},
        {EntryModel::HaystackRole, QByteArrayLiteral("haystack")},
        {EntryModel::HasKeyRole, QByteArrayLiteral("hasKey")},
        {EntryModel::KeyKindRole, QByteArrayLiteral("keyKind")},
        {EntryModel::IdentityRole, QByteArrayLiteral("identity")},
        {EntryModel::KeyPresumedRole, QByteArrayLiteral("keyPresumed")},
    };
}

QVariant TokenKeyModel::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case NameRole:
        return nameOf(row.key);
    case KindRole:
        return kindText(row.key);
    case IsKeyRole:
        return true;
    case KeyIdRole:
        return row.key.id;
    case TokenIdRole:
        return hexOf(row.key.tokenId);
    case UsesRole:
        return usesText(row.key);
    case OriginRole:
        return originText(row.key);
    case CanRequestRole:
        return canBeCertified(row.key);
    case RequestRole:
        return requestFor(row).name;
    case RequestIdentityRole:
        return requestFor(row).identity;
    default:
        return entryData(row, role);
    }
}

QVariant TokenKeyModel::entryData(const Row &row, int role) const
{
    switch (role) {
    case EntryModel::StoreIdRole:
        return row.storeId;
    case EntryModel::StoreNameRole:
        return row.storeName;
    case EntryModel::ValidityRole:
        return Validity::Unknown;
    case EntryModel::InitialRole:
        return QString();
    case EntryModel::HaystackRole:
        return foldedText(nameOf(row.key) + QLatin1Char('\n') + kindText(row.key)
                          + QLatin1Char('\n') + hexOf(row.key.tokenId) + QLatin1Char('\n')
                          + QString::fromLatin1(row.key.tokenId.toHex()) + QLatin1Char('\n')
                          + requestFor(row).name);
    case EntryModel::HasKeyRole:
        return true;
    case EntryModel::KeyKindRole:
        // A signature of a document needs a certificate.
        return EntryModel::NoKey;
    case EntryModel::IdentityRole:
        return identityOf(row.storeId, row.key.id);
    case EntryModel::KeyPresumedRole:
        return false;
    default:
        return {};
    }
}

QString TokenKeyModel::identityAt(int row) const
{
    return identityOf(m_rows.at(row).storeId, m_rows.at(row).key.id);
}

int TokenKeyModel::rowOfIdentity(const QString &identity) const
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (identityAt(i) == identity)
            return i;
    }
    return -1;
}

QString TokenKeyModel::heirOf(const QString &identity) const
{
    const QString entry = m_entryOfKey.value(identity);
    if (!entry.isEmpty())
        return entry;
    const QString key = m_keyOfEntry.value(identity);
    return rowOfIdentity(key) < 0 ? QString() : key;
}

int TokenKeyModel::countInStore(const QString &storeId) const
{
    return int(std::count_if(m_rows.cbegin(), m_rows.cend(),
                             [&](const Row &row) { return row.storeId == storeId; }));
}

QString TokenKeyModel::kindText(const TokenKeyFacts &key)
{
    const QString kind = publicKeyText(key.publicInfo);
    return kind.isEmpty() ? kindName(key.keyType) : kind;
}

QString TokenKeyModel::usesText(const TokenKeyFacts &key)
{
    QStringList uses;
    for (const UseText &one : UseTexts) {
        if (key.uses & one.use)
            uses << qtTrId(one.id);
    }
    if (!key.usesKnown)
        return {};
    //% "nothing"
    return uses.isEmpty() ? qtTrId("trivex-app-key-uses-nothing") : uses.join(QStringLiteral(", "));
}

QString TokenKeyModel::originText(const TokenKeyFacts &key)
{
    switch (key.origin) {
    case TokenKeyFacts::MadeHere:
        //% "made on this token"
        return qtTrId("trivex-app-key-made-here");
    case TokenKeyFacts::BroughtHere:
        //% "made elsewhere and written to the token"
        return qtTrId("trivex-app-key-brought");
    case TokenKeyFacts::OriginUnknown:
        break;
    }
    return {};
}

} // namespace Trivex
