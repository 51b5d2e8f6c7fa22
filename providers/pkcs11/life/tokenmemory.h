// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/cache/tokencache.h"
#include "providers/pkcs11/life/tokenconnection.h"

namespace Trivex {

/// What is remembered of one token from one start to the next, to show its rows before it has been
/// read. The connection never gets to know of it: operations work with what the token itself has
/// shown, and its handles. For the token's thread.
class TokenMemory {
public:
    /// `cache` must live until the process ends. The mark of `key` is that of the token when it
    /// came: what changes afterwards makes the rows count as another state's.
    TokenMemory(TokenCache &cache, RowKey key);

    /// The memory of a token with that information. Null for one without a serial number, or with
    /// zeros for it: two such tokens would show the rows of each other.
    TRIVEX_TOKENS_EXPORT static std::shared_ptr<TokenMemory>
    of(TokenCache &cache, const TokenIdentity &identity, const CK_TOKEN_INFO &info);

    /// The rows of an earlier reading; null when there are none.
    TokenContentsPtr recall();
    /// Whether the last call of `recall` has brought rows.
    bool hasRecalled() const { return m_hasRecalled; }
    /// Keeps what the last reading has found, unless somebody has been logged in meanwhile: what
    /// only a login shows is not written to a disk.
    void note(const TokenConnection &connection);
    /// Before the token is changed.
    void forget();

private:
    TokenCache &m_cache;
    const RowKey m_key;
    bool m_hasRecalled = false;
};

} // namespace Trivex
