// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"
#include "providers/pkcs11/life/modulewatch.h"
#include "providers/pkcs11/life/token.h"
#include "qca/tokens/tokenregistry.h"

#include <QObject>
#include <QVector>

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <set>

namespace Trivex {

/// What a key store of a token is at the moment; a copy.
struct TokenStore {
    int id = 0; ///< QCA's context id
    QString storeId;
    QString name;
    QCA::KeyStore::Type type = QCA::KeyStore::SmartCard;
    bool readOnly = false;
    bool present = false;
    TokenContentsPtr contents;
};

/// The tokens of the process: found by module threads, worked on by token threads, looked up by
/// everybody. One for all providers, because a login belongs to the process. Thread-safe; look-ups
/// never wait for a module.
///
/// The store of a token that has gone stays, without entries, until the service is stopped.
class TRIVEX_TOKENS_EXPORT TokenService : public QObject, public TokenBackend {
    Q_OBJECT
public:
    /// Never deleted, because a thread that a module holds may come back late.
    static TokenService &instance();

    /// May be called while started; takes effect within a second.
    void configure(const TokenSettings &settings);
    TokenSettings settings() const;

    /// Begins to look for tokens; returns at once. Nothing when started already.
    void start();
    /// Lets all tokens go. Waits for the threads of modules and tokens, which close their sessions
    /// and finalise their modules, but not longer than until `deadline`.
    void stop(Worker::Deadline deadline = std::chrono::steady_clock::now() + ProcessEnd::Patience);

    /// True when all modules have been asked for their tokens and these have been read, or when
    /// that has taken longer than `FirstScanPatience`.
    bool hasScanned() const;

    QList<int> stores() const;
    std::optional<TokenStore> store(int id) const;
    std::optional<TokenStore> store(const QString &storeId) const;
    /// The token behind a store while it is plugged in; else null.
    TokenPtr token(const QString &storeId) const;

    QCA::PrivateKey findPrivateKey(const QString &keyStoreId,
                                   const QCA::PublicKey &publicKey) override;
    void cancelOperation(const QString &keyStoreId) override;
    bool startChange(const QString &keyStoreId, const StoreChange &change,
                     StoreChangeDone done) override;

    // For module threads.
    /// Makes the token known and starts it; null when the same token is there already.
    TokenPtr attach(const Pkcs11::ModulePtr &module, CK_SLOT_ID slot, const CK_TOKEN_INFO &info,
                    CertificateChoice choice);
    void detach(const TokenPtr &token);
    void publishFlags(const TokenPtr &token, const CK_TOKEN_INFO &info);
    /// `what` has to be seen before the first scan is over.
    void expect(const QString &what);
    void fulfil(const QString &what);
    void checkPatience();

    // For token threads. Ignored when the token has been detached meanwhile.
    void publishContents(const TokenConnection &source);
    void publishReadFailure(const TokenConnection &source);
    void publishBusy(const TokenConnection &source, Purpose purpose);
    void publishIdle(const TokenConnection &source);

    static constexpr std::chrono::milliseconds FirstScanPatience{3000};

Q_SIGNALS:
    // Emitted on any thread.
    void storesChanged();
    void contentsChanged(int id);
    void scanned();

private:
    struct Record;

    TokenService();
    Record *record(const QString &storeId) const;
    Record *recordOf(const TokenConnection &source) const;
    Record &makeRecord(const TokenIdentity &identity, CertificateChoice choice);
    QString distinctName(const TokenIdentity &identity) const;
    void publish(const TokenConnection &source, const std::function<void(Record &)> &change);
    TokenKeyPtr keyIn(const QString &keyStoreId, const QByteArray &publicInfo) const;
    bool logIn(const QString &keyStoreId);
    void finishScan();
    void forgetAll();

    mutable std::mutex m_mutex;
    std::vector<std::shared_ptr<Record>> m_records;
    TokenSettings m_settings;
    std::shared_ptr<ModuleWatch> m_watch;
    std::set<QString> m_expected;
    std::chrono::steady_clock::time_point m_startTime;
    bool m_scanned = false;
    int m_nextId = 1;
};

} // namespace Trivex
