// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/session.h"
#include "providers/pkcs11/contents/tokencontents.h"

#include <functional>

namespace Trivex {

enum class CertificateChoice {
    All,
    Trusted, ///< only those marked CKA_TRUSTED: the anchors of a trust module
};

// Each is one search for each class, whatever the number of objects, and one call for each
// certificate, two for each key. They throw `Pkcs11::Error`.

/// Told of each certificate object that is left out because it can't be read.
using DamagedHandler = std::function<void(const TokenCertificate &)>;

TRIVEX_TOKENS_EXPORT std::vector<TokenCertificate>
readCertificates(const Pkcs11::Session &session, CertificateChoice choice,
                 const DamagedHandler &damaged = {});
/// Fills in the keys of `objects`.
TRIVEX_TOKENS_EXPORT void readKeys(const Pkcs11::Session &session, TokenObjects *objects);

/// One key object; `half` is the handle of it that is set.
TokenKey readKey(const Pkcs11::Session &session, CK_OBJECT_HANDLE object,
                 CK_OBJECT_HANDLE TokenKey::*half);

/// DER SubjectPublicKeyInfo of a key object; empty when it does not show its public half.
/// Throws `Pkcs11::Error`.
QByteArray publicInfoOf(const Pkcs11::Session &session, CK_OBJECT_HANDLE object, CK_KEY_TYPE type);

} // namespace Trivex
