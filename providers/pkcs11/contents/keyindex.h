// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/tokenentry.h"

#include <QHash>

namespace Trivex {

/// The type that the objects of the key with this DER SubjectPublicKeyInfo have on tokens; CKK_EC
/// for an algorithm that has none of its own.
CK_KEY_TYPE tokenTypeOf(const QByteArray &publicInfo);
/// Whether keys of that algorithm are used on tokens.
bool isTokenAlgorithm(const QByteArray &publicInfo);

/// The key pairs of a token, found by public half or by id.
///
/// A private half that does not show its public half is paired by id, and among several of one id
/// by label. Where that does not tell them apart either, the pairs are guessed, and the keys say
/// so.
class KeyIndex {
public:
    /// Public halves are keys of their own where there may be private ones that are not known.
    KeyIndex(const std::vector<TokenKey> &privateKeys, const std::vector<TokenKey> &publicKeys,
             bool mayHaveUnknownKeys);

    /// The key of a certificate: by its public half; where that is not known, by id alone. A key
    /// that was found by its id is from then on the one of that certificate, and of those that
    /// share its public half.
    std::shared_ptr<TokenKey> keyFor(const TokenCertificate &certificate);

    const std::vector<std::shared_ptr<TokenKey>> &keys() const { return m_keys; }

private:
    using KeyPtr = std::shared_ptr<TokenKey>;
    using Keys = std::vector<KeyPtr>;

    void add(const TokenKey &key);
    void addPublic(const TokenKey &key, bool mayHaveUnknownKeys);
    void markGuesses();
    KeyPtr privateHalfOf(const TokenKey &publicHalf) const;
    KeyPtr withUnknownPublicHalf(const QByteArray &id, CK_KEY_TYPE type,
                                 const QString &label) const;

    Keys m_keys;
    /// By kind and id, the last one first: keys that came without their public half.
    mutable QHash<QPair<CK_KEY_TYPE, QByteArray>, Keys> m_unknown;
    QHash<QByteArray, KeyPtr> m_byPublicInfo;
};

} // namespace Trivex
