// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/provider/fakestores.h"

#include <memory>

namespace TrivexTest {

/// Shows `FakeStores` to QCA. Lives on QCA's key store thread.
class FakeKeyStoreList : public QCA::KeyStoreListContext {
    Q_OBJECT
public:
    FakeKeyStoreList(QCA::Provider *provider, const std::shared_ptr<FakeStores> &stores);

    Context *clone() const override;
    void start() override;
    QList<int> keyStores() override;
    QCA::KeyStore::Type type(int id) const override;
    QString storeId(int id) const override;
    QString name(int id) const override;
    QList<QCA::KeyStoreEntry::Type> entryTypes(int id) const override;
    QList<QCA::KeyStoreEntryContext *> entryList(int id) override;
    QString writeEntry(int id, const QCA::KeyBundle &bundle) override;
    QString writeEntry(int id, const QCA::Certificate &certificate) override;
    bool removeEntry(int id, const QString &entryId) override;

private:
    /// Does what every write and removal does first; false refuses it.
    bool begin(const FakeCall &call, int id);

    std::shared_ptr<FakeStores> m_stores;
};

} // namespace TrivexTest
