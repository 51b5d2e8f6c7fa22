// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/firstscan.h"
#include "providers/pkcs11/life/tokenrecords.h"
#include "qca/tokens/tokens.h"

#include <QObject>

#include <functional>
#include <mutex>
#include <optional>

namespace Trivex {

/// The tokens of the process and their key stores: filled by the threads of modules and tokens,
/// looked up by everybody. Thread-safe; look-ups never wait for a module.
///
/// The store of a token that has gone stays, without entries, until the table is cleared; that of a
/// token that was made anew under another name is forgotten. Of two tokens of the same names in two
/// slots of a module each has a store of its own.
class TokenTable : public QObject, public TokenListener {
    Q_OBJECT
public:
    /// The table and `scan` must live until the process ends, because a thread that a module blocks
    /// may come back late.
    explicit TokenTable(FirstScan &scan);
    ~TokenTable() override;

    /// Accepts tokens from now on.
    void open();
    /// A login that was not used for `lifetime` ends (0: never). Counts for tokens that come later.
    void setLoginLifetime(Worker::Milliseconds lifetime);
    /// Accepts no more tokens.
    void close();
    /// Forgets all stores.
    void clear();
    /// What is remembered of tokens that were read before.
    TokenCache &rows() { return m_rows; }

    QList<int> stores() const;
    std::optional<TokenStore> store(int id) const;
    std::optional<TokenStore> store(const QString &storeId) const;

    /// Runs `work` on the token that `operation` names, and waits for its end. A failure is
    /// published; so is a missing token.
    TokenError run(Operation operation, Token::Work work) const;
    /// The same without waiting. `then` is called on the token's thread, or before this returns
    /// when the token is missing. For an unattended operation a missing token is not published.
    void post(Operation operation, Token::Work work, Token::Then then) const;
    /// See `Token::cancel`.
    void cancel(const QString &storeId) const;
    void cancel(const CancellationPtr &task) const;

    // Called on the threads of modules.
    /// Adds the token and starts it. Null when the table is closed, when the token has no names to
    /// tell it by, and when another module has brought the same token.
    TokenPtr attach(const Pkcs11::ModulePtr &module, const TokenPlace &place,
                    const CK_TOKEN_INFO &info, CertificateChoice choice);
    /// Closes the token; its store stays, without entries.
    void detach(const TokenPtr &token);
    /// Forgets the store of a token that is detached and can't come back.
    void forget(const QString &storeId);
    /// Publishes the state of the PIN and whether the token can be written.
    void publishFlags(const TokenPtr &token, const CK_TOKEN_INFO &info);

    // Ignored when the token has been detached meanwhile.
    void publishContents(const TokenConnection &source) override;
    void publishEarly(const TokenConnection &source, const TokenContentsPtr &contents) override;
    void publishReadFailure(const TokenConnection &source, const TokenError &error) override;
    void publishBusy(const TokenConnection &source, Purpose purpose) override;
    void publishIdle(const TokenConnection &source) override;

Q_SIGNALS:
    // Emitted on any thread.
    void storesChanged();
    void contentsChanged(int id);

private:
    TokenRecord *recordOf(const TokenConnection &source) const;
    /// Keeps nothing of tokens that can't be told apart at the next start.
    std::shared_ptr<TokenMemory> memoryOf(const TokenRecord &record, const TokenIdentity &identity,
                                          const CK_TOKEN_INFO &info);
    TokenPtr token(const QString &storeId) const;
    void publish(const TokenConnection &source, const std::function<void(TokenRecord &)> &change);

    FirstScan &m_scan;
    TokenCache m_rows;
    mutable std::mutex m_mutex;
    TokenRecords m_records;
    Worker::Milliseconds m_loginLifetime{0};
    bool m_isOpen = false;
};

} // namespace Trivex
