// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/heldkey.h"

#include <utility>

namespace Trivex {

KeyMaterial HeldKey::take(const TokenKeyReference &reference)
{
    release();
    KeyMaterial publicHalf;
    if (reference.key)
        publicHalf = KeyMaterial::fromPublicInfo(reference.key->publicInfo);
    if (!publicHalf.isNull())
        m_reference = reference;
    return publicHalf;
}

void HeldKey::generate(const GenerationRequest &request, bool block, Generation::Done done)
{
    m_generation.start(request, block, std::move(done));
}

} // namespace Trivex
