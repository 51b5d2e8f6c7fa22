// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/tokenentry.h"

namespace Trivex {

/// All that was read from a token; never changes once it is shared.
struct TokenContents {
    std::vector<TokenEntryPtr> entries;
    /// Every usable key, with or without a certificate.
    std::vector<TokenKeyPtr> keys;
    /// The same for those who show them.
    QVector<TokenKeyFacts> keyFacts;
    /// A login may show more of them.
    bool keysHidden = false;
    /// Some entries have keys that are presumed only.
    bool keysPresumed = false;
    /// See `TokenObjects`.
    bool certificatesAreWhole = true;

    TokenEntryPtr entry(const QString &id) const;
    /// The entry of the certificate with these bytes.
    TokenEntryPtr entryOf(const QByteArray &der) const;
    TokenKeyPtr keyFor(const QByteArray &publicInfo) const;
    TokenKeyPtr keyOfId(const QString &keyId) const;
    /// Null for a key with a certificate, too.
    TokenKeyPtr bareKeyOfId(const QString &keyId) const;
};
using TokenContentsPtr = std::shared_ptr<const TokenContents>;

/// The results of the searches on a token.
struct TokenObjects {
    std::vector<TokenCertificate> certificates;
    std::vector<TokenKey> publicKeys;
    std::vector<TokenKey> privateKeys;
    /// Private keys may be there without being shown.
    bool privateKeysHidden = false;
    /// The keys are those that an earlier login has shown, and stand for the hidden ones.
    bool keysAreRemembered = false;
    /// False when objects were left out because the module failed to read them. What is not listed
    /// then may be there all the same: nothing is removed or written for want of it.
    bool certificatesAreWhole = true;
    bool keysAreWhole = true;

    void takeKeysOf(const TokenObjects &other);
    bool areWhole() const { return certificatesAreWhole && keysAreWhole; }
    bool mayHaveUnknownKeys() const { return privateKeysHidden && !keysAreRemembered; }
};

/// Puts certificates, keys and issuers together. Pure; `storeId` goes into the entry ids.
TRIVEX_TOKENS_EXPORT TokenContentsPtr assembleContents(const TokenObjects &objects,
                                                       const QString &storeId);

/// The same of a token whose keys are read and whose certificates are not: `objects` has the first
/// of them, of `found` objects. Its entries are the first ones of those that the whole reading will
/// bring, with the same ids and keys; it ends before a certificate whose key depends on what is not
/// read yet. Nothing is told of keys, which may have their certificates among the rest.
TRIVEX_TOKENS_EXPORT TokenContentsPtr assemblePart(TokenObjects objects, size_t found,
                                                   const QString &storeId);

} // namespace Trivex
