// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/providers.h"
#include "qca/questions/eventhandler.h"
#include "tests/support/testtoken.h"

#include <QEventLoop>
#include <QTimer>

#include <memory>

/// Answers every PIN question, as a person would, at once.
class Person : public QObject {
public:
    Person()
    {
        connect(&m_handler, &QCA::EventHandler::eventReady, this, [this](int id) {
            m_handler.submitPassword(id, QCA::SecureArray(TrivexTest::TestToken::pin()));
        });
        m_handler.start();
    }

private:
    Trivex::EventHandler m_handler;
};

/// The one token store of the process, through QCA.
class Store : public QObject {
public:
    explicit Store(int expectedEntries)
    {
        QCA::KeyStoreManager::start(Trivex::pkcs11ProviderName());
        m_manager.sync();
        connect(&m_manager, &QCA::KeyStoreManager::keyStoreAvailable, this, &Store::open);
        for (const QString &id : m_manager.keyStores())
            open(id);
        waitFor([&] { return m_store && m_store->entryList().size() >= expectedEntries; });
    }

    QCA::KeyStore *operator->() const { return m_store.get(); }
    bool isOpen() const { return m_store != nullptr; }

    /// Runs `start` and waits for `signal` of the store.
    template <typename Signal> void run(Signal signal, const std::function<void()> &start)
    {
        QEventLoop loop;
        const auto connection = connect(m_store.get(), signal, &loop, &QEventLoop::quit);
        start();
        loop.exec();
        disconnect(connection);
    }

private:
    static constexpr int Patience = 120000; // ms

    void open(const QString &id)
    {
        if (m_store)
            return;
        auto store = std::make_unique<QCA::KeyStore>(id, &m_manager);
        if (store->type() != QCA::KeyStore::SmartCard)
            return;
        m_store = std::move(store);
        connect(m_store.get(), &QCA::KeyStore::updated, &m_loop, &QEventLoop::quit);
        m_store->startAsynchronousMode();
        m_loop.quit();
    }

    void waitFor(const std::function<bool()> &condition)
    {
        QTimer::singleShot(Patience, &m_loop, [this] { m_loop.exit(1); });
        while (!condition()) {
            if (m_loop.exec() == 1)
                break;
        }
    }

    QEventLoop m_loop;
    QCA::KeyStoreManager m_manager;
    std::unique_ptr<QCA::KeyStore> m_store;
};
