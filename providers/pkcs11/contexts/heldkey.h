// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/operations/generation.h"
#include "providers/pkcs11/operations/signing.h"
#include "qca/keys/keymaterial.h"

namespace Trivex {

/// What the contexts of keys on tokens have in common: which key it is, and the generation that
/// makes it. A copy holds the same key and generates nothing.
class HeldKey {
public:
    explicit HeldKey(TokenTable &tokens)
        : m_tokens(tokens)
        , m_generation(tokens)
    {
    }
    HeldKey(const HeldKey &other)
        : m_tokens(other.m_tokens)
        , m_reference(other.m_reference)
        , m_generation(other.m_tokens)
    {
    }
    HeldKey &operator=(const HeldKey &) = delete;

    /// False when there is no key, or only its public half.
    bool isPrivate() const { return !m_reference.storeId.isEmpty(); }
    TokenTable &tokens() const { return m_tokens; }
    QString storeId() const { return m_reference.storeId; }
    /// By value: the context may go while the token works.
    TokenKeyReference reference() const { return m_reference; }
    void release() { m_reference = {}; }

    /// Holds `reference` unless its public half is not understood. That half; null without one.
    KeyMaterial take(const TokenKeyReference &reference);
    /// See `Generation::start`.
    void generate(const GenerationRequest &request, bool block, Generation::Done done);

private:
    TokenTable &m_tokens;
    TokenKeyReference m_reference;
    Generation m_generation;
};

} // namespace Trivex
