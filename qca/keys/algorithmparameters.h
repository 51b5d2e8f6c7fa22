// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

#include <openssl/pkcs12.h>
#include <openssl/x509.h>

namespace Trivex {

using Pbes2 = Handle<PBE2PARAM, PBE2PARAM_free>;
using Pbkdf2 = Handle<PBKDF2PARAM, PBKDF2PARAM_free>;
using Scrypt = Handle<SCRYPT_PARAMS, SCRYPT_PARAMS_free>;
using Pbe = Handle<PBEPARAM, PBEPARAM_free>;

/// libcrypto's number of an algorithm.
inline int kindOf(const X509_ALGOR *algorithm)
{
    const ASN1_OBJECT *object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    return OBJ_obj2nid(object);
}

/// The parameters of `algorithm` as the type that `item` describes; null if they are of another
/// type.
template <class Parameters>
Parameters parametersOf(const X509_ALGOR *algorithm, const ASN1_ITEM *item)
{
    int type = V_ASN1_UNDEF;
    const void *value = nullptr;
    X509_ALGOR_get0(nullptr, &type, &value, algorithm);
    if (type != V_ASN1_SEQUENCE)
        return nullptr;
    const auto *sequence = static_cast<const ASN1_STRING *>(value);
    return Parameters(static_cast<typename Parameters::pointer>(ASN1_item_unpack(sequence, item)));
}

} // namespace Trivex
