// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/operations/keypair.h"
#include "providers/pkcs11/operations/signing.h"

#include <functional>
#include <memory>

namespace Trivex {

/// Generates key pairs on a token for the object that owns it. The pair that is abandoned, because
/// its owner goes first, is removed from the token again.
class Generation {
public:
    /// Called on the owner's thread; with an empty reference after a failure.
    using Done = std::function<void(const TokenKeyReference &)>;

    explicit Generation(TokenTable &tokens);
    ~Generation();
    Generation(const Generation &) = delete;
    Generation &operator=(const Generation &) = delete;

    /// The store and the label are those of the target or of the stored answers in force on this
    /// thread. With `block`, `done` is called before it returns, otherwise never before.
    void start(const GenerationRequest &request, bool block, Done done);

private:
    struct Shared;
    void abandon();

    TokenTable &m_tokens;
    std::shared_ptr<Shared> m_shared;
};

} // namespace Trivex
