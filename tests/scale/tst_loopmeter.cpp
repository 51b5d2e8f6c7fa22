// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The meter of standstills itself: what it leaves out must not be the loop's own work.
#include "tests/support/loopmeter.h"
#include "tests/support/processortime.h"

#include <QtTest>

#include <atomic>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

using TrivexTest::processorTime;

namespace {

constexpr qint64 Work = 200; // ms of a processor

void burn(qint64 ms)
{
    const qint64 end = processorTime() + ms * 1000000;
    while (processorTime() < end) { }
}

} // namespace

class TestLoopMeter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void ownWorkCounts();
    void workThatIsWaitedForCounts();
    void anIdleLoopStandsStillForNobody();
};

void TestLoopMeter::ownWorkCounts()
{
    // Threads of ours that get a processor last: each of them waits for as long as the loop works.
    std::atomic_bool isOver{false};
    std::vector<std::thread> busy;
    for (unsigned i = 0; i < 2 * std::thread::hardware_concurrency() + 2; ++i) {
        busy.emplace_back([&] {
            setpriority(PRIO_PROCESS, id_t(syscall(SYS_gettid)), 19);
            while (!isOver)
                burn(1);
        });
    }
    TrivexTest::LoopMeter meter;
    meter.start();
    // The loop beats before and after the work that is measured.
    QTest::qWait(100);
    QTimer::singleShot(0, this, [] { burn(Work); });
    QTest::qWait(100);
    meter.stop();
    isOver = true;
    for (std::thread &thread : busy)
        thread.join();
    QVERIFY2(meter.longest() >= Work * 3 / 4, qPrintable(QString::number(meter.longest())));
}

void TestLoopMeter::workThatIsWaitedForCounts()
{
    TrivexTest::LoopMeter meter;
    meter.start();
    // The loop beats before and after the work that is waited for.
    QTest::qWait(50);
    QTimer::singleShot(0, this, [] { std::thread([] { burn(Work); }).join(); });
    QTest::qWait(50);
    meter.stop();
    QVERIFY2(meter.longest() >= Work * 3 / 4, qPrintable(QString::number(meter.longest())));
}

void TestLoopMeter::anIdleLoopStandsStillForNobody()
{
    TrivexTest::LoopMeter meter;
    meter.start();
    // The loop has nothing to do in this time.
    QTest::qWait(300);
    meter.stop();
    QVERIFY(meter.beats() > 0);
    QVERIFY2(meter.longest() < Work, qPrintable(QString::number(meter.longest())));
}

QTEST_GUILESS_MAIN(TestLoopMeter)
#include "tst_loopmeter.moc"
