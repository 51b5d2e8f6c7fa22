// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace Trivex {

/// A private key that signs the way X.509 structures need it. Our own key contexts have it beside
/// their QCA base; `dynamic_cast` from `QCA::PKeyBase` finds it across plugins, because its type
/// information lives in the platform library only.
class TRIVEX_QCA_EXPORT RequestSigner {
public:
    virtual ~RequestSigner();

    /// Signs `message` after digesting it with `digestName` (libcrypto's name, such as "SHA256";
    /// empty for keys that digest by themselves, as Ed25519 does). RSA: PKCS#1 v1.5 (RFC 8017,
    /// 8.2); elliptic curves: DER ECDSA-Sig-Value (RFC 3279, 2.2.3); GOST: the octets of RFC 9215.
    /// False, with `*signature` untouched, when the key is public or the signing failed. May block
    /// for as long as a token or a question for its PIN takes.
    virtual bool signMessage(const QByteArray &message, const QByteArray &digestName,
                             QByteArray *signature) = 0;

protected:
    RequestSigner() = default;
    RequestSigner(const RequestSigner &) = default;
    RequestSigner &operator=(const RequestSigner &) = default;
};

} // namespace Trivex
