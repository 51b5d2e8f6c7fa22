// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/attributes.h"
#include "providers/pkcs11/calls/error.h"
#include "qca/keys/keymaterial.h"

namespace Trivex {

// The numbers of TC26 for keys of 512 bits and for the digest of 2012, which the standard's own
// tables do not have: all modules of that field use these.
constexpr CK_ULONG Tc26Base = 0xD4321000;
constexpr CK_KEY_TYPE KeyTypeGost512 = Tc26Base | 0x003;
constexpr CK_MECHANISM_TYPE MechanismGost512Generate = Tc26Base | 0x005;
constexpr CK_MECHANISM_TYPE MechanismGost512Sign = Tc26Base | 0x006;

/// How GOST keys of one kind are used (PKCS#11 2.40, 2.41; TC26).
struct GostMechanisms {
    int keyType; ///< a value of `Trivex::KeyType`
    CK_KEY_TYPE tokenType;
    CK_MECHANISM_TYPE sign; ///< takes the digest
    CK_MECHANISM_TYPE digest;
    CK_MECHANISM_TYPE signMessage; ///< digests by itself
    const char *digestName; ///< as `digestOf` has it
    const char *digestParameters; ///< dotted OID
    int signatureSize;
};

/// Null for a key that is not of GOST; `publicInfo` is DER SubjectPublicKeyInfo.
const GostMechanisms *gostMechanisms(const QByteArray &publicInfo);

/// DER SubjectPublicKeyInfo of a key object on a token; empty for a private one, and where curve
/// and point do not make a key. Without CKA_GOSTR3411_PARAMS the key counts as one of 2012.
/// Throws `Pkcs11::Error`.
QByteArray gostPublicInfoOf(const Pkcs11::Session &session, CK_OBJECT_HANDLE object);

/// What is wanted of the token for a new key by the name of its kind or of its curve: the key's
/// type and the two parameter sets as DER. See `TokenEcContext::createPrivate` for the names.
struct GostParameters {
    CK_KEY_TYPE tokenType;
    QByteArray curve;
    QByteArray digest;
};
/// Of the key whose DER SubjectPublicKeyInfo is given; empty sets when it is none of GOST.
GostParameters gostParameters(const QByteArray &publicInfo);
/// Of a name; empty sets for a name that is none.
GostParameters gostParametersByName(const QString &name);

/// Adds what the object of a public or private key holds beside its names and flags. They throw
/// `Pkcs11::Error` (NotSupported) for a key whose encoding is not understood.
void addGostPublicKey(const KeyMaterial &key, Pkcs11::Template *object);
void addGostPrivateKey(const KeyMaterial &key, Pkcs11::Template *object);

} // namespace Trivex
