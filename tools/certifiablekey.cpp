// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certifiablekey.h"

#include "qca/asn1/algorithmids.h"
#include "qca/keys/publickeyfields.h"

#include <algorithm>

namespace Trivex {

namespace {

/// Algorithms whose keys never sign, whatever the token says before a login.
constexpr const char *NotSigning[] = {
    Oid::RsaOaep, Oid::DhKeyAgreement, Oid::DhPublicNumber, Oid::X25519, Oid::X448,
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
