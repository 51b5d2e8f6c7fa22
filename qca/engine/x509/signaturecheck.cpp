// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/x509/signaturecheck.h"

#include "qca/engine/keys/keymaterial.h"

#include <openssl/err.h>

namespace Trivex {

SignatureState checkSignature(X509 *certificate, const QByteArray &publicInfo)
{
    // Also loads what GOST keys need.
    const KeyMaterial key = KeyMaterial::fromPublicInfo(publicInfo);
    if (!certificate || !key.native())
        return SignatureState::Unknown;
    const int result = X509_verify(certificate, key.native());
    ERR_clear_error();
    return result == 1 ? SignatureState::Good : SignatureState::Bad;
}

} // namespace Trivex
