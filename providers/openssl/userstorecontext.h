// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/openssl/userdirectory.h"
#include "qca/base/processend.h"
#include "qca/tokens/userstore.h"

#include <QThread>

#include <mutex>

namespace Trivex {

/// The key store "USER": the certificates in `userStoreDirectory()`.
///
/// Lives in QCA's tracker thread, which must not wait: the directory is read in another, and lists
/// are look-ups in what that has announced last.
class UserStoreContext : public QCA::KeyStoreListContext, public UserStoreBackend {
    Q_OBJECT
public:
    explicit UserStoreContext(QCA::Provider *provider);
    ~UserStoreContext() override;

    QCA::Provider::Context *clone() const override { return nullptr; }

    void start() override;
    QList<int> keyStores() override;
    QCA::KeyStore::Type type(int id) const override;
    QString storeId(int id) const override;
    QString name(int id) const override;
    bool isReadOnly(int id) const override;
    QList<QCA::KeyStoreEntry::Type> entryTypes(int id) const override;
    QList<QCA::KeyStoreEntryContext *> entryList(int id) override;
    QCA::KeyStoreEntryContext *entry(int id, const QString &entryId) override;
    QCA::KeyStoreEntryContext *entryPassive(const QString &serialized) override;

    using QCA::KeyStoreListContext::writeEntry;
    QString writeEntry(int id, const QCA::Certificate &certificate) override;
    bool removeEntry(int id, const QString &entryId) override;

    void startWrite(const QCA::Certificate &certificate, UserWriteDone done) override;

private:
    /// At the end of the process, where nobody destroys this.
    static void stopAll(ProcessEnd::Deadline deadline);
    void setSnapshot(const UserSnapshot &snapshot);
    void announce(const UserSnapshot &snapshot);
    UserSnapshot snapshot() const;

    mutable std::mutex m_mutex;
    UserSnapshot m_snapshot;
    int m_announced = 0;
    QThread m_thread;
    UserDirectory *m_directory;
};

} // namespace Trivex
