// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certifiablekey.h"

#include "qca/keys/publickeyfields.h"

#include <algorithm>

namespace Trivex {

namespace {

/// Algorithms whose keys never sign, whatever the token says before a login.
constexpr const char *NotSigning[] = {
    "1.2.840.113549.1.1.7", // RSA-OAEP
    "1.2.840.113549.1.3.1", // DH of PKCS#3
    "1.2.840.10046.2.1", // DH of X9.42
    "1.3.101.110", // X25519
    "1.3.101.111", // X448
};

bool signs(const QByteArray &publicInfo)
{
    PublicKeyFields fields;
    if (!findPublicKeyFields(Der::sliceOf(publicInfo), &fields))
        return true;
    const QByteArray oid = fields.oid();
    return std::none_of(std::begin(NotSigning), std::end(NotSigning),
                        [&oid](const char *one) { return oid == one; });
}

} // namespace

bool canBeCertified(const TokenKeyFacts &key)
{
    return !key.publicInfo.isEmpty() && (!key.usesKnown || key.uses & TokenKeyFacts::Signs)
        && signs(key.publicInfo);
}

} // namespace Trivex
