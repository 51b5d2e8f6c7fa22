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

// These functions make one search a class of objects, then one call a certificate and two calls a
// key. They run on the token's thread and throw `Pkcs11::Error`.

/// Called for each certificate object that is left out because it can't be read.
using DamagedHandler = std::function<void(const TokenCertificate &)>;

/// Called behind each certificate with all that were read so far, in their order, and the number of
/// objects that the search has found. What it throws ends the reading.
using ProgressHandler = std::function<void(const std::vector<TokenCertificate> &, size_t found)>;

/// The certificates that the session shows. `isWhole` becomes false where some are left out because
/// the module failed to read them.
TRIVEX_TOKENS_EXPORT std::vector<TokenCertificate>
readCertificates(const Pkcs11::Session &session, CertificateChoice choice,
                 const DamagedHandler &damaged = {}, bool *isWhole = nullptr,
                 const ProgressHandler &progress = {});
/// Sets the keys of `objects` to those that the session shows.
TRIVEX_TOKENS_EXPORT void readKeys(const Pkcs11::Session &session, TokenObjects *objects);

/// One key object. `half` is the member that receives its handle.
TokenKey readKey(const Pkcs11::Session &session, CK_OBJECT_HANDLE object,
                 CK_OBJECT_HANDLE TokenKey::*half);

/// DER SubjectPublicKeyInfo of a key object of that CKA_KEY_TYPE; empty when the object does not
/// show its public half; throws where the module fails to tell it.
QByteArray publicInfoOf(const Pkcs11::Session &session, CK_OBJECT_HANDLE object, CK_KEY_TYPE type);

} // namespace Trivex
