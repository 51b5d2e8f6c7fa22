// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/operations/generation.h"
#include "providers/pkcs11/operations/signing.h"
#include "qca/keys/keymaterial.h"

namespace Trivex {

/// The base of the contexts of keys on tokens. `SoftwareKey`, the context of a software key of the
/// same kind, holds the public half; this class adds the reference to the private half and the
/// generation of new keys. A copy refers to the same key and generates nothing.
template <class SoftwareKey> class TokenKeyContext : public SoftwareKey {
public:
    /// False when there is no key, or only its public half.
    bool isPrivate() const override { return !m_reference.storeId.isEmpty(); }
    bool canExport() const override { return !isPrivate(); }
    void convertToPublic() override { m_reference = {}; }
    QString keyStoreId() const override { return m_reference.storeId; }

protected:
    TokenKeyContext(QCA::Provider *provider, TokenTable &tokens,
                    const TokenKeyReference &reference = {})
        : SoftwareKey(provider)
        , m_tokens(tokens)
        , m_generation(tokens)
    {
        hold(reference);
    }

    TokenKeyContext(const TokenKeyContext &other)
        : SoftwareKey(other)
        , m_tokens(other.m_tokens)
        , m_reference(other.m_reference)
        , m_generation(other.m_tokens)
    {
    }

    TokenTable &tokens() const { return m_tokens; }
    /// A copy, because the context may be destroyed while the token works.
    TokenKeyReference reference() const { return m_reference; }

    /// Refers to `reference` from now on; to no key when its public half can't be read.
    void hold(const TokenKeyReference &reference)
    {
        this->m_material = {};
        if (reference.key)
            this->m_material = KeyMaterial::fromPublicInfo(reference.key->publicInfo);
        m_reference = this->m_material.isNull() ? TokenKeyReference() : reference;
    }

    /// Generates a pair on the token that the generation target or the stored answers name.
    void generate(const GenerationRequest &request, bool block)
    {
        hold({});
        m_generation.start(request, block, [this, block](const TokenKeyReference &made) {
            hold(made);
            if (!block)
                Q_EMIT this->finished();
        });
    }

private:
    TokenTable &m_tokens;
    TokenKeyReference m_reference;
    Generation m_generation;
};

} // namespace Trivex
