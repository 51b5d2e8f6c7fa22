// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/cancellationscope.h"
#include "qca/questions/eventhandler.h"
#include "qca/questions/generationtarget.h"
#include "qca/questions/operation.h"
#include "qca/questions/questionscope.h"
#include "qca/questions/waiter.h"

#include <QTimer>
#include <QtTest>

#include <thread>

using namespace Trivex;

/// Waiting on the GUI thread and elsewhere, and what is in force meanwhile.
class TestWaiter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void nothingIsInForceInsideTheLoop();
    void nestedLoopsGiveBackWhatTheyFound();
    void resolvedBeforeIsNoWaiting();
    void whatWasToldBeforeHasArrived();
    void resolvedByAnotherThread();
    void otherThreadsBlock();
    void firstCallDecides();
};

void TestWaiter::nothingIsInForceInsideTheLoop()
{
    const QCA::Initializer qca;
    const EventHandler handler;
    const QuestionScope scope(&handler);
    const GenerationTarget target(QStringLiteral("store"), QStringLiteral("label"));
    const auto task = std::make_shared<Cancellation>();
    const CancellationScope taskScope(task);
    QCOMPARE(Operation(Purpose::Sign).cancellation(), task);
    CancellationPtr inside = task;
    Waiter waiter;
    const EventHandler *addressee = &handler;
    QString store = QStringLiteral("store");
    QString object = QStringLiteral("label");
    QTimer::singleShot(0, this, [&] {
        const Operation generation(Purpose::Generate);
        store = generation.keyStoreId();
        object = generation.objectId();
        inside = generation.cancellation();
        addressee = static_cast<const EventHandler *>(QuestionScope::current());
        waiter.resolve();
    });
    waiter.wait();
    QCOMPARE(addressee, nullptr);
    QCOMPARE(store, QString());
    QCOMPARE(object, QString());
    QVERIFY(inside && inside != task);
    QCOMPARE(CancellationScope::current(), task);
    QVERIFY(Operation::unattended(Purpose::Remove, QString()).cancellation() != task);
    QCOMPARE(QuestionScope::current(), &handler);
    QCOMPARE(GenerationTarget::current(), &target);
}

void TestWaiter::nestedLoopsGiveBackWhatTheyFound()
{
    const QCA::Initializer qca;
    const EventHandler outer;
    const EventHandler inner;
    Waiter first;
    Waiter second;
    const QCA::EventHandler *after = nullptr;
    const QuestionScope scope(&outer);
    QTimer::singleShot(0, this, [&] {
        const QuestionScope innerScope(&inner);
        QTimer::singleShot(0, this, [&] { second.resolve(); });
        second.wait();
        after = QuestionScope::current();
        first.resolve();
    });
    first.wait();
    QCOMPARE(after, &inner);
    QCOMPARE(QuestionScope::current(), &outer);
}

void TestWaiter::resolvedBeforeIsNoWaiting()
{
    Waiter waiter;
    waiter.resolve();
    waiter.wait();
    QVERIFY(waiter.isResolved());
}

void TestWaiter::whatWasToldBeforeHasArrived()
{
    // A token tells why it failed, then ends the waiting: here before the waiting has begun.
    Waiter waiter;
    bool isTold = false;
    std::thread token([&] {
        QMetaObject::invokeMethod(
            this, [&] { isTold = true; }, Qt::QueuedConnection);
        waiter.resolve();
    });
    token.join();
    waiter.wait();
    QVERIFY(isTold);
}

void TestWaiter::resolvedByAnotherThread()
{
    for (int round = 0; round < 200; ++round) {
        Waiter waiter;
        std::thread other([&] { waiter.resolve(); });
        waiter.wait();
        other.join();
        QVERIFY(waiter.isResolved());
    }
}

void TestWaiter::otherThreadsBlock()
{
    Waiter waiter;
    QAtomicInt passed;
    std::thread other([&] {
        waiter.wait();
        passed.storeRelease(1);
    });
    QTest::qWait(50); // nobody must pass in this time
    QCOMPARE(passed.loadAcquire(), 0);
    waiter.resolve();
    other.join();
    QCOMPARE(passed.loadAcquire(), 1);
}

void TestWaiter::firstCallDecides()
{
    Waiter waiter;
    QVERIFY(waiter.resolve());
    QVERIFY(!waiter.resolve());
}

QTEST_GUILESS_MAIN(TestWaiter)
#include "tst_waiter.moc"
