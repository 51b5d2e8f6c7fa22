// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/attributes.h"
#include "providers/pkcs11/calls/error.h"
#include "qca/keys/keymaterial.h"

namespace Trivex {

// The numbers of TC26 for keys of 512 bits and for the digest of 2012. PKCS#11 has none, and all
// modules with GOST keys use these.
constexpr CK_ULONG Tc26Base = 0xD4321000;
constexpr CK_KEY_TYPE KeyTypeGost512 = Tc26Base | 0x003;
constexpr CK_MECHANISM_TYPE MechanismGost512Generate = Tc26Base | 0x005;
constexpr CK_MECHANISM_TYPE MechanismGost512Sign = Tc26Base | 0x006;

/// The mechanisms and sizes of one kind of GOST keys (PKCS#11 2.40, 2.41; TC26).
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

/// The mechanisms for the key with this DER SubjectPublicKeyInfo; null when it is not of GOST.
const GostMechanisms *gostMechanisms(const QByteArray &publicInfo);

/// DER SubjectPublicKeyInfo of a public key object. Empty for a private key, and when curve and
/// point do not fit together. A key without CKA_GOSTR3411_PARAMS counts as one of 2012.
/// Throws `Pkcs11::Error`.
QByteArray gostPublicInfoOf(const Pkcs11::Session &session, CK_OBJECT_HANDLE object);

/// The attributes of a GOST key object that name its kind and its parameter sets.
struct GostParameters {
    CK_KEY_TYPE tokenType; ///< CKA_KEY_TYPE
    QByteArray curve; ///< CKA_GOSTR3410_PARAMS, DER; empty when the key is not of GOST
    QByteArray digest; ///< CKA_GOSTR3411_PARAMS, DER
};
/// The parameters of the key with this DER SubjectPublicKeyInfo.
GostParameters gostParameters(const QByteArray &publicInfo);
/// The parameters of a new key, by the name of its kind or of its curve. See
/// `TokenEcContext::createPrivate` for the names.
GostParameters gostParametersByName(const QString &name);

/// Add the numbers and parameters of a key to the template of its object. They throw
/// `Pkcs11::Error` (NotSupported) for a key that they can't read.
void addGostPublicKey(const KeyMaterial &key, Pkcs11::Template *object);
void addGostPrivateKey(const KeyMaterial &key, Pkcs11::Template *object);

} // namespace Trivex
