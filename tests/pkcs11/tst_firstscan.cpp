// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/firstscan.h"
#include "providers/pkcs11/life/scanwatch.h"

#include <QSignalSpy>
#include <QTest>

using Trivex::FirstScan;
using Trivex::ScanWatch;

/// Until the first scan is over a program says that it is looking for tokens.
class TestFirstScan : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void endsWithTheLast();
    void endsOnce();
    void nothingComesAfterTheEnd();
    void namesSilentModules();
    void beginsAnew();
    void patience();
    void earlyTimer();
};

void TestFirstScan::endsWithTheLast()
{
    FirstScan scan;
    QSignalSpy over(&scan, &FirstScan::over);
    scan.begin();
    scan.expect(QStringLiteral("module"));
    scan.expect(QStringLiteral("store"));
    scan.fulfil(QStringLiteral("module"));
    QVERIFY(!scan.isOver());
    // Told of twice, as a module is that is looked at again.
    scan.fulfil(QStringLiteral("module"));
    QVERIFY(!scan.isOver());
    QCOMPARE(over.count(), 0);
    scan.fulfil(QStringLiteral("store"));
    QVERIFY(scan.isOver());
    QCOMPARE(over.count(), 1);
}

void TestFirstScan::endsOnce()
{
    FirstScan scan;
    QSignalSpy over(&scan, &FirstScan::over);
    scan.begin();
    scan.expect(QStringLiteral("module"));
    scan.fulfil(QStringLiteral("module"));
    scan.fulfil(QStringLiteral("module"));
    QCOMPARE(over.count(), 1);
}

void TestFirstScan::nothingComesAfterTheEnd()
{
    FirstScan scan;
    QSignalSpy over(&scan, &FirstScan::over);
    scan.begin();
    scan.fulfil(QStringLiteral("nothing"));
    scan.expect(QStringLiteral("late"));
    QVERIFY(scan.isOver());
    scan.fulfil(QStringLiteral("late"));
    QCOMPARE(over.count(), 1);
}

// Programs that want all tokens ask for them when QCA waits no longer.
void TestFirstScan::namesSilentModules()
{
    FirstScan::Clock::time_point now;
    FirstScan scan([&now] { return now; });
    QSignalSpy fulfilled(&scan, &FirstScan::moduleFulfilled);
    scan.begin();
    scan.expect(QStringLiteral("slow"));
    scan.expect(QStringLiteral("quick"));
    scan.expect(QStringLiteral("store"), FirstScan::Token);
    QCOMPARE(scan.silentModules(), QStringList({QStringLiteral("quick"), QStringLiteral("slow")}));
    scan.fulfil(QStringLiteral("quick"));
    QCOMPARE(fulfilled.count(), 1);
    now += FirstScan::Patience;
    scan.checkPatience();
    QVERIFY(scan.isOver());
    QCOMPARE(scan.silentModules(), QStringList(QStringLiteral("slow")));
    scan.expect(QStringLiteral("late"));
    QCOMPARE(scan.silentModules(), QStringList({QStringLiteral("late"), QStringLiteral("slow")}));
    for (const char *what : {"slow", "late", "store", "late"})
        scan.fulfil(QLatin1String(what));
    QCOMPARE(scan.silentModules(), QStringList());
    QCOMPARE(fulfilled.count(), 3);
}

void TestFirstScan::beginsAnew()
{
    FirstScan scan;
    QSignalSpy over(&scan, &FirstScan::over);
    scan.begin();
    scan.expect(QStringLiteral("left"));
    scan.expect(QStringLiteral("module"));
    // What the scan before waited for is forgotten.
    scan.begin();
    QVERIFY(!scan.isOver());
    scan.expect(QStringLiteral("module"));
    scan.fulfil(QStringLiteral("module"));
    QVERIFY(scan.isOver());
    scan.begin();
    QVERIFY(!scan.isOver());
    scan.expect(QStringLiteral("module"));
    scan.fulfil(QStringLiteral("module"));
    QCOMPARE(over.count(), 2);
}

// A module that never answers ends it all the same.
void TestFirstScan::patience()
{
    FirstScan scan;
    QSignalSpy over(&scan, &FirstScan::over);
    scan.begin();
    scan.expect(QStringLiteral("module"));
    QTRY_VERIFY((scan.checkPatience(), scan.isOver()));
    QCOMPARE(over.count(), 1);
    scan.checkPatience();
    QCOMPARE(over.count(), 1);
}

// A timer of the system's may fire before its time, and then nobody else asks again.
void TestFirstScan::earlyTimer()
{
    using std::chrono::milliseconds;
    FirstScan::Clock::time_point now;
    FirstScan scan([&now] { return now; });
    QSignalSpy over(&scan, &FirstScan::over);
    std::function<void()> armed;
    milliseconds delay{0};
    ScanWatch watch(scan, [&](milliseconds wanted, QObject *, std::function<void()> done) {
        delay = wanted;
        armed = std::move(done);
    });
    const auto fire = [&armed] { std::exchange(armed, nullptr)(); };
    scan.begin();
    scan.expect(QStringLiteral("module"));
    watch.start();
    QVERIFY(armed);
    QCOMPARE(delay.count(), FirstScan::Patience.count());
    for (const milliseconds early : {milliseconds(20), milliseconds(1)}) {
        now = FirstScan::Clock::time_point(FirstScan::Patience - early);
        fire();
        QCOMPARE(over.count(), 0);
        QVERIFY2(armed, "nobody asks again");
        QVERIFY(delay.count() > 0 && delay < FirstScan::Patience);
    }
    now = FirstScan::Clock::time_point(FirstScan::Patience);
    fire();
    QCOMPARE(over.count(), 1);
    QVERIFY(!armed);
}

QTEST_GUILESS_MAIN(TestFirstScan)
#include "tst_firstscan.moc"
