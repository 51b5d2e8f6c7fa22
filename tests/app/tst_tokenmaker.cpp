// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenmaker.h"

#include <QtTest>

#include <atomic>
#include <thread>

using Trivex::TokenMaker;
using Trivex::TokenMakers;

/// Whether software tokens can be made, as it is told while modules come and go in threads.
class TestTokenMaker : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void offerWhileItIsMade();
};

/// However an offer and the making of the object fall together, the object knows of the offer.
void TestTokenMaker::offerWhileItIsMade()
{
    constexpr int Rounds = 10000;
    const QString name = QStringLiteral("module");
    std::atomic_int round{0};
    std::atomic_int offered{0};
    std::thread module([&] {
        for (int i = 1; i <= Rounds; ++i) {
            while (round < i)
                std::this_thread::yield();
            for (volatile int wait = 0; wait < i % 400; wait = wait + 1) { }
            TokenMakers::instance().offer(name,
                                          [](Trivex::TokenMaking, Trivex::TokenMakingDone) {});
            offered = i;
        }
    });
    int missed = 0;
    for (int i = 1; i <= Rounds; ++i) {
        round = i;
        const TokenMaker maker;
        while (offered < i)
            std::this_thread::yield();
        QCoreApplication::processEvents();
        missed += maker.isAvailable() ? 0 : 1;
        TokenMakers::instance().withdraw(name);
    }
    module.join();
    QCOMPARE(missed, 0);
}

QTEST_GUILESS_MAIN(TestTokenMaker)
#include "tst_tokenmaker.moc"
