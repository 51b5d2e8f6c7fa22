// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/operations/keypair.h"
#include "providers/pkcs11/operations/signing.h"

#include <functional>
#include <memory>

namespace Trivex {

/// Generates key pairs on a token for the object that owns it. A pair whose owner is destroyed
/// before the end is removed from the token again. For the owner's thread.
class Generation {
public:
    /// Called on the owner's thread with the new key; after a failure with an empty reference.
    using Done = std::function<void(const TokenKeyReference &)>;

    explicit Generation(TokenTable &tokens);
    ~Generation();
    Generation(const Generation &) = delete;
    Generation &operator=(const Generation &) = delete;

    /// Starts a generation. The generation target or the stored answers of this thread name the
    /// store and the label. With `block` this calls `done` before it returns, else always later.
    void start(const GenerationRequest &request, bool block, Done done);

private:
    struct Shared;
    void abandon();

    TokenTable &m_tokens;
    std::shared_ptr<Shared> m_shared;
};

} // namespace Trivex
