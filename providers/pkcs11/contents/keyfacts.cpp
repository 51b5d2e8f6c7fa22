// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/keyfacts.h"

#include "providers/pkcs11/contents/gostkeys.h"
#include "qca/keys/gostpublickey.h"

#include <QCryptographicHash>
#include <QHash>

namespace Trivex {

namespace {

struct KindOfType {
    CK_KEY_TYPE type;
    int keyType;
};

/// Used for keys whose public half the token does not show.
constexpr KindOfType Kinds[] = {
    {CKK_RSA, RsaKey},
    {CKK_DSA, DsaKey},
    {CKK_DH, DhKey},
    {CKK_EC, EllipticCurveKey},
    {CKK_GOSTR3410, Gost2012Key256},
    {KeyTypeGost512, Gost2012Key512},
};

int kindOf(CK_KEY_TYPE type)
{
    for (const KindOfType &one : Kinds) {
        if (one.type == type)
            return one.keyType;
    }
    return OtherKey;
}

/// The certificates of keys. A token may hold a pair twice: of both it is the certificate.
class Owners {
public:
    explicit Owners(const std::vector<TokenEntryPtr> &entries)
    {
        for (const TokenEntryPtr &entry : entries) {
            if (!entry->key || entry->key->isPresumed)
                continue;
            noteFirst(m_byKey[entry->key.get()], entry->id);
            if (!entry->key->publicInfo.isEmpty())
                noteFirst(m_byPublicInfo[comparablePublicInfo(entry->key->publicInfo)], entry->id);
        }
    }

    QString entryOf(const TokenKey &key) const
    {
        const QString own = m_byKey.value(&key);
        return own.isEmpty() && !key.publicInfo.isEmpty()
            ? m_byPublicInfo.value(comparablePublicInfo(key.publicInfo))
            : own;
    }

private:
    static void noteFirst(QString &known, const QString &entryId)
    {
        if (known.isEmpty())
            known = entryId;
    }

    QHash<const TokenKey *, QString> m_byKey;
    QHash<QByteArray, QString> m_byPublicInfo;
};

/// Where the public half is not known, all that can be said of a key on every token without its
/// handle.
QByteArray fingerprintOf(const TokenKey &key)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    if (!key.publicInfo.isEmpty()) {
        hash.addData(comparablePublicInfo(key.publicInfo));
    } else {
        hash.addData(QByteArray::number(qulonglong(key.type)) + ' ' + key.id.toHex() + ' '
                     + key.label.toUtf8());
    }
    return hash.result().toHex();
}

/// How many share what can be said of them, of those whose public half is not known.
QHash<QByteArray, int> countUnknown(const std::vector<std::shared_ptr<TokenKey>> &keys)
{
    QHash<QByteArray, int> counts;
    for (const auto &key : keys) {
        if (key->publicInfo.isEmpty())
            ++counts[fingerprintOf(*key)];
    }
    return counts;
}

void describe(const TokenKey &key, TokenKeyFacts *facts)
{
    const KeyMaterial material = KeyMaterial::fromPublicInfo(key.publicInfo);
    facts->keyType = material.isNull() ? kindOf(key.type) : material.keyType();
    facts->bits = material.bits();
    facts->label = key.label;
    facts->tokenId = key.id;
    facts->origin = key.origin;
}

} // namespace

QVector<TokenKeyFacts> describeKeys(const std::vector<std::shared_ptr<TokenKey>> &keys,
                                    const std::vector<TokenEntryPtr> &entries,
                                    const QByteArray &store)
{
    const Owners owners(entries);
    QHash<QByteArray, int> alike;
    const QHash<QByteArray, int> unknown = countUnknown(keys);
    QVector<TokenKeyFacts> all;
    all.reserve(int(keys.size()));
    for (const auto &key : keys) {
        const QByteArray fingerprint = fingerprintOf(*key);
        QByteArray id = store + "-b-" + fingerprint;
        if (const int before = alike[fingerprint]++)
            id += '-' + QByteArray::number(before);
        // Such keys have nothing but their places to tell them by, which are others when one goes
        // or comes: then none of the old ids names a key any more. Where as many stay, it may name
        // another one.
        if (const int count = unknown.value(fingerprint); count > 1 && key->publicInfo.isEmpty())
            id += '/' + QByteArray::number(count);
        key->keyId = QString::fromLatin1(id);
        TokenKeyFacts facts;
        facts.id = key->keyId;
        facts.entryId = owners.entryOf(*key);
        facts.label = key->label;
        facts.publicInfo = key->publicInfo;
        facts.uses = key->uses;
        facts.leave = key->leave;
        facts.usesKnown = key->privateObject != CK_INVALID_HANDLE;
        if (facts.isBare())
            describe(*key, &facts);
        all.append(facts);
    }
    return all;
}

} // namespace Trivex
