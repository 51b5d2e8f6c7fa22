// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QVector>
#include <QtCrypto>

#include <condition_variable>
#include <mutex>

namespace TrivexTest {

/// An entry of a fake store. `bundle` may be null although the type says bundle.
struct FakeEntry {
    QCA::KeyStoreEntry::Type type = QCA::KeyStoreEntry::TypeCertificate;
    QString id;
    QString name;
    QCA::Certificate certificate;
    QCA::KeyBundle bundle;
};

struct FakeStore {
    QString id;
    QString name;
    QCA::KeyStore::Type type = QCA::KeyStore::SmartCard;
    QList<FakeEntry> entries;
    int contextId = 0; ///< given by `FakeStores`
};

/// One call into the provider.
struct FakeCall {
    QString function; ///< "writeBundle", "writeCertificate", "removeEntry", "createRSA", "createEC"
    QString storeId;
    QString argument; ///< entry id, "curve block" or "bits exponent block"
    QCA::Certificate certificate;
    QCA::KeyBundle bundle;
};

/// The script of a provider: its stores, what its calls return, and what was called. Thread-safe;
/// the signals are emitted on the caller's thread.
class FakeStores : public QObject {
    Q_OBJECT
public:
    void addStore(const FakeStore &store);
    void removeStore(const QString &id);
    void setEntries(const QString &id, const QList<FakeEntry> &entries);
    /// Removes every store and call and restores the results.
    void reset();

    QList<FakeStore> stores() const;
    FakeStore store(int contextId) const;

    /// What writes return ("" is a failure) and removals.
    void setResults(const QString &writtenId, bool removed);
    QString writeResult() const;
    bool removeResult() const;
    /// Writes and removals ask a plain QCA password question first and fail without an answer.
    void setAsking(bool asking);
    bool isAsking() const;
    /// Writes and removals wait until `unblock()`.
    void block();
    void unblock();
    void waitWhileBlocked() const;

    void note(const FakeCall &call);
    QVector<FakeCall> calls() const;
    void forgetCalls();

    /// How often QCA asked an entry for that: "id", "name", "certificate" or "keyBundle".
    int reads(const QString &what) const;
    void noteRead(const QString &what);
    void forgetReads();

    /// Questions of `setAsking` that nobody has answered yet.
    int openQuestions() const;
    void countQuestion(int change);

Q_SIGNALS:
    void storesChanged();
    void entriesChanged(int contextId);
    /// A test emits these to look busy or done.
    void busyStart();
    void busyEnd();

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_unblocked;
    QList<FakeStore> m_stores;
    QVector<FakeCall> m_calls;
    QHash<QString, int> m_reads;
    int m_openQuestions = 0;
    QString m_written = QStringLiteral("written");
    bool m_removed = true;
    bool m_asking = false;
    bool m_blocked = false;
    int m_nextContext = 1;
};

} // namespace TrivexTest
