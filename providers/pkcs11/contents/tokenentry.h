// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/certificateparts.h"
#include "qca/tokens/tokenfacts.h"

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
    QString keyId; ///< `TokenKeyFacts::id`, given when all are put together
    int uses = 0; ///< `TokenKeyFacts::Use`, of its private half
    TokenKeyFacts::Origin origin = TokenKeyFacts::OriginUnknown;
    TokenKeyFacts::Leave leave = TokenKeyFacts::LeaveUnknown;
    /// Which private half belongs to its public half, the token does not tell for certain.
    bool isGuessed = false;
    /// Nothing of it was seen: its certificate may have a key, which only a login can show.
    bool isPresumed = false;
};
using TokenKeyPtr = std::shared_ptr<const TokenKey>;

/// An entry of a key store: a certificate, with its private key when `key` is set.
struct TokenEntry {
    QString id;
    TokenCertificatePtr certificate;
    TokenKeyPtr key;
    /// The issuers, as far as the token has them; without the certificate itself.
    std::vector<TokenCertificatePtr> issuers;
};
using TokenEntryPtr = std::shared_ptr<const TokenEntry>;

} // namespace Trivex
