// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>
#include <QtTest>

namespace TrivexTest {

/// From now on the token provider lists certificates that the machine trusts.
inline void listTrustedCertificates()
{
    const QString provider = QStringLiteral("qca-norvel-pkcs11");
    QVariantMap config = QCA::getProviderConfig(provider);
    config.insert(QStringLiteral("allow_load_rootca"), true);
    QCA::setProviderConfig(provider, config);
}

/// Calls `look` with the id and the entries of each store of the system, of that provider or, where
/// it is empty, of all. `ms`: after so long nobody waits for a list that has not come.
template <typename Look> void lookAtSystemStores(const QString &provider, int ms, Look look)
{
    if (provider.isEmpty())
        QCA::KeyStoreManager::start();
    else
        QCA::KeyStoreManager::start(provider);
    QCA::KeyStoreManager manager;
    manager.waitForBusyFinished();
    QTest::qWait(ms); // nothing tells that no other list comes
    manager.sync();
    const QStringList ids = manager.keyStores();
    for (const QString &id : ids) {
        const QCA::KeyStore store(id, &manager);
        if (store.type() == QCA::KeyStore::System)
            look(id, store.entryList());
    }
}

} // namespace TrivexTest
