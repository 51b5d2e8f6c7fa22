// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/token.h"
#include "qca/tokens/tokens.h"

#include <utility>

namespace Trivex {

/// The state of a token's key store; a copy.
struct TokenStore {
    int id = 0; ///< QCA's context id
    QString storeId;
    QString name;
    QCA::KeyStore::Type type = QCA::KeyStore::SmartCard;
    bool readOnly = false;
    bool present = false;
    TokenContentsPtr contents;
};

/// Where a module has a token.
struct TokenPlace {
    CK_SLOT_ID slot = 0;
    /// What people call the slot; only where it has to tell two tokens of the same names apart.
    QString reader;
};

/// A key store and the token behind it.
struct TokenRecord {
    TokenStore store;
    TokenStatus status;
    TokenPtr token;
    QString uri; ///< of the token, see `TokenIdentity`
    const Pkcs11::Module *module = nullptr; ///< of the last token; for comparison only
    CK_SLOT_ID slot = 0; ///< of the last token

    /// Another slot had a token of the same names when this one came for the first time.
    bool isTwin() const { return store.storeId != uri; }
    /// Its entries from now on. The id of its store.
    int show(TokenContentsPtr contents);
};

/// The key stores of all tokens, each with an id and a name of its own, though tokens may have the
/// same names: cards that were copied, and cards without serial numbers. Guarded by their user.
class TokenRecords {
public:
    /// Null where there is none.
    TokenRecord *find(const QString &storeId) const;
    TokenRecord *find(int id) const;
    /// The record for a token that has come, made where there is none. Null where another module,
    /// or the same one by another name, has brought it.
    TokenRecord *place(const Pkcs11::Module &module, const TokenPlace &place,
                       const TokenIdentity &identity, CertificateChoice choice);
    /// Forgets all; their ids are not used again.
    std::vector<std::shared_ptr<TokenRecord>> takeAll() { return std::exchange(m_records, {}); }
    /// Forgets a record without a token; false where there is none.
    bool forget(const QString &storeId);

    // For loops.
    auto begin() const { return m_records.cbegin(); }
    auto end() const { return m_records.cend(); }

private:
    bool isBroughtOtherwise(const Pkcs11::Module &module, CK_SLOT_ID slot,
                            const QString &uri) const;
    TokenRecord *recordFor(CK_SLOT_ID slot, const QString &uri) const;
    TokenRecord &make(const TokenPlace &place, const TokenIdentity &identity,
                      CertificateChoice choice);
    QString distinctName(const TokenIdentity &identity, const QString &reader) const;

    std::vector<std::shared_ptr<TokenRecord>> m_records;
    int m_nextId = 1;
};

} // namespace Trivex
