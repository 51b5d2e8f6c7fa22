// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/tokencontents.h"

#include "providers/pkcs11/contents/keyfacts.h"
#include "providers/pkcs11/contents/keyindex.h"
#include "qca/base/bounds.h"
#include "qca/keys/gostpublickey.h"
#include "qca/keys/publickeyfields.h"
#include "qca/x509/canonicalname.h"
#include "qca/x509/extensions.h"

#include <QCryptographicHash>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace Trivex {

namespace {

QByteArray sha1(const QByteArray &data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha1);
}

/// The certificates of a token by their subjects, to find issuers. Their names are looked at when
/// the first chain is asked for: a directory of certificates without keys has none.
class IssuerIndex {
public:
    /// `certificates` has to outlive the index.
    explicit IssuerIndex(const std::vector<std::shared_ptr<TokenCertificate>> &certificates)
        : m_certificates(certificates)
    {
    }

    std::vector<TokenCertificatePtr> issuersOf(const TokenCertificatePtr &certificate)
    {
        if (m_bySubject.isEmpty()) {
            for (const auto &one : m_certificates)
                add(one);
        }
        return chainOf(certificate);
    }

private:
    void add(const TokenCertificatePtr &certificate)
    {
        const QByteArray keyId =
            subjectKeyIdIn(certificate->parts.extensions.sliceIn(certificate->der));
        Namesakes &namesakes = m_bySubject[nameOf(certificate->parts.subject, certificate->der)];
        if (!namesakes.first)
            namesakes.first = certificate;
        if (!keyId.isEmpty())
            namesakes.byKeyId.insert(keyId, certificate);
        else if (!namesakes.firstWithoutKeyId)
            namesakes.firstWithoutKeyId = certificate;
    }

    std::vector<TokenCertificatePtr> chainOf(const TokenCertificatePtr &certificate) const
    {
        std::vector<TokenCertificatePtr> chain;
        TokenCertificatePtr current = certificate;
        QSet<const TokenCertificate *> known = {certificate.get()};
        while (const TokenCertificatePtr issuer = issuerOf(*current)) {
            // A certificate that is in the chain already ends it: two that sign each other exist.
            if (known.contains(issuer.get()) || known.size() == MaxChainLength)
                break;
            known.insert(issuer.get());
            chain.push_back(issuer);
            current = issuer;
        }
        return chain;
    }

    /// Looked for once, however many chains go through it.
    TokenCertificatePtr issuerOf(const TokenCertificate &certificate) const
    {
        const auto known = m_issuers.constFind(&certificate);
        if (known != m_issuers.constEnd())
            return *known;
        const TokenCertificatePtr issuer = findIssuer(certificate);
        m_issuers.insert(&certificate, issuer);
        return issuer;
    }

    TokenCertificatePtr findIssuer(const TokenCertificate &certificate) const
    {
        const QByteArray name = nameOf(certificate.parts.issuer, certificate.der);
        if (name == nameOf(certificate.parts.subject, certificate.der))
            return nullptr;
        const auto namesakes = m_bySubject.constFind(name);
        if (namesakes == m_bySubject.constEnd())
            return nullptr;
        const QByteArray wanted =
            authorityKeyIdIn(certificate.parts.extensions.sliceIn(certificate.der));
        if (wanted.isEmpty())
            return namesakes->first;
        const TokenCertificatePtr named = namesakes->byKeyId.value(wanted);
        return named ? named : namesakes->firstWithoutKeyId;
    }

    /// Those of one name, so that nobody has to go through all of them.
    struct Namesakes {
        TokenCertificatePtr first;
        TokenCertificatePtr firstWithoutKeyId;
        QHash<QByteArray, TokenCertificatePtr> byKeyId;
    };

    /// Issuers are often written in another string type than they wrote themselves in.
    static QByteArray nameOf(const DerSpan &name, const QByteArray &der)
    {
        return canonicalName(name.sliceIn(der));
    }

    const std::vector<std::shared_ptr<TokenCertificate>> &m_certificates;
    QHash<QByteArray, Namesakes> m_bySubject;
    mutable QHash<const TokenCertificate *, TokenCertificatePtr> m_issuers;
};

/// One certificate for each DER form: a token may hold copies under several ids.
std::vector<std::shared_ptr<TokenCertificate>>
withoutCopies(const std::vector<TokenCertificate> &all)
{
    std::vector<std::shared_ptr<TokenCertificate>> certificates;
    certificates.reserve(all.size());
    QHash<QByteArray, TokenCertificate *> known;
    known.reserve(int(all.size()));
    for (const TokenCertificate &one : all) {
        TokenCertificate *&same = known[one.der];
        if (same) {
            same->objects.insert(same->objects.end(), one.objects.begin(), one.objects.end());
            continue;
        }
        certificates.push_back(std::make_shared<TokenCertificate>(one));
        same = certificates.back().get();
    }
    return certificates;
}

/// Distinguishes bundles from certificates, so that a certificate whose key appears becomes another
/// entry, and stores, because entries are also looked up across stores.
QString entryId(const QByteArray &store, const TokenCertificate &certificate, bool hasKey)
{
    return QString::fromLatin1(store + (hasKey ? "-k-" : "-c-") + sha1(certificate.der).toHex());
}

/// The key of each certificate. Certificates of authorities come last: if a key is known by its id
/// alone and several certificates have that id, the key is a person's.
std::vector<TokenKeyPtr> keysOf(const std::vector<std::shared_ptr<TokenCertificate>> &certificates,
                                KeyIndex *index)
{
    std::vector<TokenKeyPtr> keys(certificates.size());
    for (const bool authorities : {false, true}) {
        for (size_t i = 0; i < certificates.size(); ++i) {
            if (certificates[i]->parts.isAuthority == authorities)
                keys[i] = index->keyFor(*certificates[i]);
        }
    }
    return keys;
}

/// Cards often have no public key objects: nothing tells before the login which certificates have
/// their keys there. Those of authorities hardly ever do.
bool mayHaveKey(const TokenObjects &objects, const TokenCertificate &certificate)
{
    return objects.mayHaveUnknownKeys() && objects.publicKeys.empty() && !certificate.id.isEmpty()
        && !certificate.parts.isAuthority
        && isTokenAlgorithm(certificate.parts.publicInfo.in(certificate.der));
}

/// A card holds a few certificates of its owner. A token that shows more without showing a key is a
/// directory of other people's, and a key for each would cost its readers for nothing.
constexpr size_t MostPresumed = 100;

TokenKeyPtr presumedKey(const TokenCertificate &certificate)
{
    auto key = std::make_shared<TokenKey>();
    const QByteArray info = certificate.parts.publicInfo.in(certificate.der);
    key->publicInfo = QByteArray(info.constData(), info.size());
    key->type = tokenTypeOf(key->publicInfo);
    key->id = certificate.id;
    key->label = certificate.label;
    key->isPresumed = true;
    return key;
}

} // namespace

/// Gives the certificates that may have their keys on the token presumed ones; true when any does.
static bool presumeKeys(const TokenObjects &objects,
                        const std::vector<std::shared_ptr<TokenCertificate>> &certificates,
                        std::vector<TokenKeyPtr> *keys)
{
    std::vector<size_t> presumed;
    for (size_t i = 0; i < certificates.size(); ++i) {
        if (!keys->at(i) && mayHaveKey(objects, *certificates[i]))
            presumed.push_back(i);
    }
    if (presumed.empty() || presumed.size() > MostPresumed)
        return false;
    for (const size_t i : presumed)
        keys->at(i) = presumedKey(*certificates[i]);
    return true;
}

/// A certificate of an authority gets a key that is known by its id alone only when no other one
/// wants it; and of many presumed keys none is presumed.
static bool dependsOnOthers(const TokenObjects &objects, const TokenCertificate &certificate,
                            size_t found)
{
    const auto isUnknown = [](const TokenKey &key) { return key.publicInfo.isEmpty(); };
    const auto hasUnknown = [&](const std::vector<TokenKey> &keys) {
        return std::any_of(keys.begin(), keys.end(), isUnknown);
    };
    if (certificate.parts.isAuthority)
        return hasUnknown(objects.privateKeys) || hasUnknown(objects.publicKeys);
    return found > MostPresumed && mayHaveKey(objects, certificate);
}

TokenContentsPtr assemblePart(TokenObjects objects, size_t found, const QString &storeId)
{
    auto &all = objects.certificates;
    const auto end = std::find_if(all.begin(), all.end(), [&](const TokenCertificate &one) {
        return dependsOnOthers(objects, one, found);
    });
    all.erase(end, all.end());
    auto part = std::make_shared<TokenContents>(*assembleContents(objects, storeId));
    part->keys.clear();
    part->keyFacts.clear();
    return part;
}

TokenContentsPtr assembleContents(const TokenObjects &objects, const QString &storeId)
{
    KeyIndex keys(objects.privateKeys, objects.publicKeys, objects.mayHaveUnknownKeys());
    const auto certificates = withoutCopies(objects.certificates);
    std::vector<TokenKeyPtr> found = keysOf(certificates, &keys);
    IssuerIndex issuers(certificates);

    auto contents = std::make_shared<TokenContents>();
    contents->keysPresumed = presumeKeys(objects, certificates, &found);
    contents->entries.reserve(certificates.size());
    const QByteArray store = sha1(storeId.toUtf8()).toHex().left(12);
    for (size_t i = 0; i < certificates.size(); ++i) {
        const auto &certificate = certificates[i];
        auto entry = std::make_shared<TokenEntry>();
        entry->certificate = certificate;
        entry->key = found[i];
        if (entry->key)
            entry->issuers = issuers.issuersOf(certificate);
        entry->id = entryId(store, *certificate, entry->key != nullptr);
        contents->entries.push_back(std::move(entry));
    }
    contents->keysHidden = objects.privateKeysHidden;
    contents->certificatesAreWhole = objects.certificatesAreWhole;
    contents->keyFacts = describeKeys(keys.keys(), contents->entries, store);
    contents->keys.assign(keys.keys().begin(), keys.keys().end());
    return contents;
}

void TokenObjects::takeKeysOf(const TokenObjects &other)
{
    publicKeys = other.publicKeys;
    privateKeys = other.privateKeys;
    keysAreWhole = other.keysAreWhole;
    keysAreRemembered = true;
}

TokenEntryPtr TokenContents::entry(const QString &id) const
{
    for (const TokenEntryPtr &one : entries) {
        if (one->id == id)
            return one;
    }
    return nullptr;
}

TokenEntryPtr TokenContents::entryOf(const QByteArray &der) const
{
    for (const TokenEntryPtr &one : entries) {
        if (one->certificate->der == der)
            return one;
    }
    return nullptr;
}

TokenKeyPtr TokenContents::keyOfId(const QString &keyId) const
{
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [&](const TokenKeyPtr &key) { return key->keyId == keyId; });
    return found == keys.end() ? nullptr : *found;
}

TokenKeyPtr TokenContents::bareKeyOfId(const QString &keyId) const
{
    const bool isBare =
        std::any_of(keyFacts.begin(), keyFacts.end(), [&](const TokenKeyFacts &facts) {
            return facts.id == keyId && facts.isBare();
        });
    return isBare ? keyOfId(keyId) : nullptr;
}

TokenKeyPtr TokenContents::keyFor(const QByteArray &publicInfo) const
{
    const QByteArray id = keyIdentifierOf(publicInfo);
    const QByteArray wanted = comparablePublicInfo(publicInfo);
    for (const TokenKeyPtr &key : keys) {
        const bool isSame = key->publicInfo.isEmpty()
            ? !id.isEmpty() && key->id == id
            : comparablePublicInfo(key->publicInfo) == wanted;
        if (isSame)
            return key;
    }
    return nullptr;
}

} // namespace Trivex
