// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/attributes.h"
#include "providers/pkcs11/contents/tokencontents.h"
#include "qca/keys/keymaterial.h"

#include <memory>

namespace Trivex {

// These functions fill the templates of new objects (PKCS#11 2.40, 4.6 to 4.9). Those for keys
// throw `Pkcs11::Error` (NotSupported) for a kind of key that tokens don't store. An empty label is
// left out.

/// Adds the id and the label by which the objects of one key pair and its certificate are found.
void addNames(const QByteArray &id, const QString &label, Pkcs11::Template *object);

void fillCertificate(const TokenCertificate &certificate, Pkcs11::Template *object);
/// `id` becomes the CKA_ID.
void fillPublicKey(const KeyMaterial &key, const QByteArray &id, const QString &label,
                   Pkcs11::Template *object);
/// The object is sensitive and not extractable. The key's secret numbers are in the template only,
/// which wipes them. `subject` is a DER Name; empty: left out.
void fillPrivateKey(const KeyMaterial &key, const QByteArray &subject, const QByteArray &id,
                    const QString &label, Pkcs11::Template *object);

/// The public half of `key`, which the token has, to be written anew should it be destroyed: by its
/// numbers, or, of a kind that has no template here, by the attributes that the object shows. Null
/// where there is no public object. Throws as above where neither can be done.
std::unique_ptr<Pkcs11::Template> publicKeyCopy(const Pkcs11::Session &session,
                                                const TokenKey &key);

/// The last common name in a certificate's subject; empty when there is none.
TRIVEX_TOKENS_EXPORT QString commonNameOf(const TokenCertificate &certificate);

} // namespace Trivex
