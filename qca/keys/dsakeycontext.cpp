// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/dsakeycontext.h"

#include "qca/keys/bignumbers.h"

#include <openssl/core_names.h>

namespace Trivex {

DsaKeyContext::DsaKeyContext(QCA::Provider *provider, KeyMaterial material)
    : DsaKeyBase(provider, std::move(material))
{
}

DsaKeyContext::DsaKeyContext(const DsaKeyContext &other) = default;

DsaKeyContext::~DsaKeyContext() = default;

QCA::Provider::Context *DsaKeyContext::clone() const
{
    return new DsaKeyContext(*this);
}

int DsaKeyContext::partBits() const
{
    if (m_operation.format() == QCA::DERSequence)
        return 0;
    // Whole octets; two's complement may add one, and orders are a multiple of 32 bits.
    return keyNumber(m_material.native(), OSSL_PKEY_PARAM_FFC_Q).toArray().size() * 8 / 32 * 32;
}

} // namespace Trivex
