// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenmaker.h"

#include <QSignalSpy>
#include <QtCrypto>
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
    void toldAtItsEnd();
    void nobodyMakesOne();

private:
    QCA::Initializer m_initializer;
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

/// A token has its name once it is there; until then, and after a failure, the one before.
void TestTokenMaker::toldAtItsEnd()
{
    const QString module = QStringLiteral("module");
    Trivex::TokenMakingDone done;
    QStringList asked;
    TokenMakers::instance().offer(module,
                                  [&](Trivex::TokenMaking making, Trivex::TokenMakingDone then) {
                                      asked += making.name;
                                      done = std::move(then);
                                  });
    // Also after a check that failed: the offer refers to what is here.
    const auto withdraw = qScopeGuard([&] { TokenMakers::instance().withdraw(module); });
    TokenMaker maker;
    QSignalSpy finished(&maker, &TokenMaker::finished);
    maker.make(QStringLiteral("first"), QStringLiteral("1234"));
    QVERIFY(maker.isRunning());
    QVERIFY(maker.name().isEmpty());
    // One at a time.
    maker.make(QStringLiteral("meanwhile"), QStringLiteral("1234"));
    QCOMPARE(asked, QStringList(QStringLiteral("first")));
    done({});
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(!maker.isRunning());
    QCOMPARE(maker.name(), QStringLiteral("first"));
    QVERIFY(maker.message().isEmpty());
    maker.make(QStringLiteral("second"), QStringLiteral("1234"));
    Trivex::TokenError failure;
    failure.kind = Trivex::TokenError::DeviceFailure;
    done(failure);
    QTRY_COMPARE(finished.count(), 2);
    QVERIFY(!maker.isRunning());
    QCOMPARE(maker.name(), QStringLiteral("first"));
    QVERIFY(!maker.message().isEmpty());
}

void TestTokenMaker::nobodyMakesOne()
{
    TokenMaker maker;
    QVERIFY(!maker.isAvailable());
    QSignalSpy finished(&maker, &TokenMaker::finished);
    maker.make(QStringLiteral("name"), QStringLiteral("1234"));
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(!maker.isRunning());
    QVERIFY(maker.name().isEmpty());
    QVERIFY(!maker.message().isEmpty());
}

QTEST_GUILESS_MAIN(TestTokenMaker)
#include "tst_tokenmaker.moc"
