// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/attributes.h"
#include "providers/pkcs11/contents/tokencontents.h"
#include "qca/keys/keymaterial.h"

namespace Trivex {

// The templates of the objects that are written (PKCS#11 2.40, 4.6 to 4.9). The key ones throw
// `Pkcs11::Error` (NotSupported) for a kind of key that can't be written.

void fillCertificate(const TokenCertificate &certificate, Pkcs11::Template *object);
void fillPublicKey(const KeyMaterial &key, const QByteArray &id, const QString &label,
                   Pkcs11::Template *object);
/// Sensitive and not extractable. The numbers of the key stay in the template only.
void fillPrivateKey(const KeyMaterial &key, const QByteArray &subject, const QByteArray &id,
                    const QString &label, Pkcs11::Template *object);

/// The last common name in a certificate's subject; empty without one.
TRIVEX_TOKENS_EXPORT QString commonNameOf(const TokenCertificate &certificate);

} // namespace Trivex
