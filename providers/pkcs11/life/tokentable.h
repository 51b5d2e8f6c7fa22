// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/firstscan.h"
#include "providers/pkcs11/life/token.h"
#include "qca/tokens/tokens.h"

#include <QObject>

#include <functional>
#include <mutex>
#include <optional>

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

/// The tokens of the process and their key stores: filled by the threads of modules and tokens,
/// looked up by everybody. Thread-safe; look-ups never wait for a module.
///
/// The store of a token that has gone stays, without entries, until the table is cleared; that of a
/// token that was made anew under another name is forgotten.
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
    TokenPtr attach(const Pkcs11::ModulePtr &module, CK_SLOT_ID slot, const CK_TOKEN_INFO &info,
                    CertificateChoice choice);
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
    struct Record;

    Record *record(const QString &storeId) const;
    Record *recordOf(const TokenConnection &source) const;
    Record &makeRecord(const TokenIdentity &identity, CertificateChoice choice);
    QString distinctName(const TokenIdentity &identity) const;
    TokenPtr token(const QString &storeId) const;
    /// The id of its store.
    static int show(Record &record, TokenContentsPtr contents);
    void publish(const TokenConnection &source, const std::function<void(Record &)> &change);

    FirstScan &m_scan;
    TokenCache m_rows;
    mutable std::mutex m_mutex;
    std::vector<std::shared_ptr<Record>> m_records;
    Worker::Milliseconds m_loginLifetime{0};
    bool m_isOpen = false;
    int m_nextId = 1;
};

} // namespace Trivex
