// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/keyindex.h"

#include "providers/pkcs11/contents/gostkeys.h"
#include "qca/asn1/algorithmids.h"
#include "qca/keys/gostpublickey.h"
#include "qca/keys/psskeys.h"
#include "qca/keys/publickeyfields.h"

#include <algorithm>

namespace Trivex {

namespace {

struct AlgorithmType {
    const char *oid;
    CK_KEY_TYPE type;
};

constexpr AlgorithmType AlgorithmTypes[] = {
    {Oid::EcPublicKey, CKK_EC},        {Oid::RsaEncryption, CKK_RSA},
    {Oid::Ed25519, CKK_EC_EDWARDS},    {Oid::Ed448, CKK_EC_EDWARDS},
    {Oid::GostKey2001, CKK_GOSTR3410}, {Oid::GostKey256, CKK_GOSTR3410},
    {Oid::GostKey512, KeyTypeGost512}, {Oid::RsaPss, CKK_RSA},
};

/// Null for the algorithm of a key that is not used on tokens.
const AlgorithmType *algorithmOf(const QByteArray &publicInfo)
{
    PublicKeyFields fields;
    if (!findPublicKeyFields(Der::sliceOf(publicInfo), &fields))
        return nullptr;
    const QByteArray oid = fields.oid();
    for (const AlgorithmType &one : AlgorithmTypes) {
        if (oid == one.oid)
            return &one;
    }
    return nullptr;
}

/// The key as its certificate has it, where the token does not tell or has it in another encoding:
/// whether a GOST key is one of 2001, its objects need not say.
std::shared_ptr<TokenKey> withPublicHalf(const std::shared_ptr<TokenKey> &key,
                                         const QByteArray &info)
{
    if (key && isPssKey(info)) {
        // The same key may have a certificate that does not restrict it.
        if (key->publicInfo.isEmpty())
            key->publicInfo = pssKeyAsRsa(info);
        const auto restricted = std::make_shared<TokenKey>(*key);
        restricted->publicInfo = QByteArray(info.constData(), info.size());
        return restricted;
    }
    if (key && key->publicInfo != info)
        key->publicInfo = QByteArray(info.constData(), info.size());
    return key;
}

} // namespace

CK_KEY_TYPE tokenTypeOf(const QByteArray &publicInfo)
{
    const AlgorithmType *algorithm = algorithmOf(publicInfo);
    return algorithm ? algorithm->type : CKK_EC;
}

bool isTokenAlgorithm(const QByteArray &publicInfo)
{
    return algorithmOf(publicInfo) != nullptr;
}

KeyIndex::KeyIndex(const std::vector<TokenKey> &privateKeys,
                   const std::vector<TokenKey> &publicKeys, bool mayHaveUnknownKeys)
{
    for (const TokenKey &key : privateKeys)
        add(key);
    markGuesses();
    for (const TokenKey &key : publicKeys)
        addPublic(key, mayHaveUnknownKeys);
}

std::shared_ptr<TokenKey> KeyIndex::keyFor(const TokenCertificate &certificate)
{
    if (m_keys.empty())
        return nullptr;
    const QByteArray wanted = certificate.parts.publicInfo.in(certificate.der);
    const QByteArray comparable = comparablePublicInfo(wanted);
    KeyPtr found = m_byPublicInfo.value(comparable);
    if (found || m_unknown.isEmpty())
        return withPublicHalf(found, wanted);
    const CK_KEY_TYPE type = tokenTypeOf(wanted);
    found = withUnknownPublicHalf(certificate.id, type, certificate.label);
    if (!found)
        found = withUnknownPublicHalf(keyIdentifierOf(wanted), type, certificate.label);
    if (found)
        m_byPublicInfo.insert(comparable, found);
    return withPublicHalf(found, wanted);
}

void KeyIndex::add(const TokenKey &key)
{
    const auto added = std::make_shared<TokenKey>(key);
    m_keys.push_back(added);
    if (key.publicInfo.isEmpty())
        m_unknown[{key.type, key.id}].push_back(added);
    else
        m_byPublicInfo.insert(comparablePublicInfo(key.publicInfo), added);
}

void KeyIndex::addPublic(const TokenKey &key, bool mayHaveUnknownKeys)
{
    if (const auto known = privateHalfOf(key)) {
        known->publicObject = key.publicObject;
        known->publicInfo = key.publicInfo;
        m_byPublicInfo.insert(comparablePublicInfo(key.publicInfo), known);
    } else if (mayHaveUnknownKeys) {
        // Before login a public key is all that shows of a pair.
        add(key);
    }
}

/// Those that share id and label with another one.
void KeyIndex::markGuesses()
{
    for (const Keys &alike : qAsConst(m_unknown)) {
        QHash<QString, KeyPtr> known;
        for (const KeyPtr &key : alike) {
            KeyPtr &first = known[key->label];
            if (first)
                first->isGuessed = key->isGuessed = true;
            else
                first = key;
        }
    }
}

std::shared_ptr<TokenKey> KeyIndex::privateHalfOf(const TokenKey &publicHalf) const
{
    if (const auto known = m_byPublicInfo.value(comparablePublicInfo(publicHalf.publicInfo)))
        return known;
    return withUnknownPublicHalf(publicHalf.id, publicHalf.type, publicHalf.label);
}

std::shared_ptr<TokenKey> KeyIndex::withUnknownPublicHalf(const QByteArray &id, CK_KEY_TYPE type,
                                                          const QString &label) const
{
    if (id.isEmpty())
        return nullptr;
    const auto found = m_unknown.find({type, id});
    if (found == m_unknown.end())
        return nullptr;
    // Those that have got their public half meanwhile; nobody looks at them again.
    while (!found->empty() && !found->back()->publicInfo.isEmpty())
        found->pop_back();
    if (found->empty())
        return nullptr;
    const auto isOfLabel = [&label](const KeyPtr &key) {
        return key->publicInfo.isEmpty() && key->label == label;
    };
    const auto same = std::find_if(found->rbegin(), found->rend(), isOfLabel);
    if (same != found->rend())
        return *same;
    const auto isUnknown = [](const KeyPtr &key) { return key->publicInfo.isEmpty(); };
    if (std::count_if(found->begin(), found->end(), isUnknown) > 1)
        found->back()->isGuessed = true;
    return found->back();
}

} // namespace Trivex
