// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/certificateparts.h"

#include <QString>

#include <p11-kit/pkcs11.h>

#include <memory>
#include <vector>

namespace Trivex {

/// A certificate on a token. The bytes as they are; decoding is left to whoever shows it.
struct TokenCertificate {
    QByteArray der;
    QByteArray id; ///< CKA_ID
    QString label;
    CertificateParts parts;
    /// More than one when the token holds the same certificate twice.
    std::vector<CK_OBJECT_HANDLE> objects;
};
using TokenCertificatePtr = std::shared_ptr<const TokenCertificate>;

/// A key pair on a token, as far as it can be seen: private objects hide before login.
struct TokenKey {
    CK_KEY_TYPE type = CKK_RSA;
    QByteArray id; ///< CKA_ID
    QString label;
    QByteArray publicInfo; ///< DER SubjectPublicKeyInfo; empty while it is not known
    CK_OBJECT_HANDLE publicObject = CK_INVALID_HANDLE;
    CK_OBJECT_HANDLE privateObject = CK_INVALID_HANDLE;
    /// Nothing of it was seen: its certificate may have a key, which only a login can show.
    bool isPresumed = false;
};
using TokenKeyPtr = std::shared_ptr<const TokenKey>;

/// What a key store shows: a certificate, with its private key when `key` is set.
struct TokenEntry {
    QString id;
    TokenCertificatePtr certificate;
    TokenKeyPtr key;
    /// The issuers, as far as the token has them; without the certificate itself.
    std::vector<TokenCertificatePtr> issuers;
};
using TokenEntryPtr = std::shared_ptr<const TokenEntry>;

/// All that was read from a token; never changes once it is shared.
struct TokenContents {
    std::vector<TokenEntryPtr> entries;
    /// Every usable key, with or without a certificate.
    std::vector<TokenKeyPtr> keys;
    /// A login may show more of them.
    bool keysHidden = false;
    /// Some entries have keys that are presumed only.
    bool keysPresumed = false;

    TokenEntryPtr entry(const QString &id) const;
    /// The entry of the certificate with these bytes.
    TokenEntryPtr entryOf(const QByteArray &der) const;
    TokenKeyPtr keyFor(const QByteArray &publicInfo) const;
};
using TokenContentsPtr = std::shared_ptr<const TokenContents>;

/// What the searches on a token brought.
struct TokenObjects {
    std::vector<TokenCertificate> certificates;
    std::vector<TokenKey> publicKeys;
    std::vector<TokenKey> privateKeys;
    /// Private keys may be there without being shown.
    bool privateKeysHidden = false;
    /// The keys are those that an earlier login has shown, and stand for the hidden ones.
    bool keysAreRemembered = false;

    void takeKeysOf(const TokenObjects &other);
    bool mayHaveUnknownKeys() const { return privateKeysHidden && !keysAreRemembered; }
};

/// Puts certificates, keys and issuers together. Pure; `storeId` goes into the entry ids.
TRIVEX_TOKENS_EXPORT TokenContentsPtr assembleContents(const TokenObjects &objects,
                                                       const QString &storeId);

/// The type that the objects of the key with this DER SubjectPublicKeyInfo have on tokens; CKK_EC
/// for an algorithm that has none of its own.
CK_KEY_TYPE tokenTypeOf(const QByteArray &publicInfo);

} // namespace Trivex
