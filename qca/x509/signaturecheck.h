// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/x509/certificatefields.h"

namespace Trivex {

class KeyMaterial;

enum class SignatureState {
    Good,
    Bad,
    Unknown, ///< nothing here can handle the key or the algorithm, or everybody can sign for the
             ///< key
};

/// Whether the certificate with `fields` is signed by the key in `publicInfo` (DER
/// SubjectPublicKeyInfo). Works on the octets, so libcrypto need not be able to read the rest of
/// the certificate.
SignatureState checkSignature(const CertificateFields &fields, Der::Slice publicInfo);

/// The same with a key that has been decoded, which takes longer than the check.
SignatureState checkSignature(const CertificateFields &fields, const KeyMaterial &key);

} // namespace Trivex
