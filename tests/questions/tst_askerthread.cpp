// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"
#include "qca/questions/storedanswers.h"

#include <QtCrypto>
#include <QtTest>

class TestAskerThread : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void handlerExistsOnceRunning()
    {
        QcaAskerThread thread;
        QCOMPARE(thread.objectName(), QStringLiteral("QcaAskerThread"));
        QVERIFY(!thread.handler());
        QTest::ignoreMessage(QtDebugMsg, "\"QcaAskerThread\"  is running");
        thread.start(QThread::InheritPriority);
        QTRY_VERIFY(thread.handler());
        QCOMPARE(thread.handler()->thread(), &thread);
        thread.quit();
        QVERIFY(thread.wait(3000));
    }

    void answersCanBeStoredAtOnce()
    {
        const QcaAskerThread idle;
        QVERIFY(!idle.startedHandler());
        for (int round = 0; round < 20; ++round) {
            auto *thread = new QcaAskerThread;
            thread->start(QThread::InheritPriority);
            QcaHandler *handler = thread->startedHandler();
            QVERIFY(handler);
            handler->setKeyStoreId(QStringLiteral("store"));
            QVERIFY(Trivex::takeStoredAnswers(QStringLiteral("store")));
            QcaAskerThread::letGo(thread, 3000);
        }
    }

    void answersWhileTheCallerBlocks()
    {
        auto *thread = new QcaAskerThread;
        thread->start(QThread::InheritPriority);
        QTRY_VERIFY(thread->handler());
        thread->handler()->setPassword(QCA::SecureArray("1234"));
        QTest::qWait(50); // until the handler has told QCA of itself
        QCA::PasswordAsker asker;
        asker.ask(QCA::Event::StylePIN, QStringLiteral("file"), nullptr);
        asker.waitForResponse();
        QVERIFY(asker.accepted());
        QCOMPARE(asker.password().toByteArray(), QByteArray("1234"));
        QcaAskerThread::letGo(thread, 3000);
    }

    void stoppedWhileAQuestionWaits()
    {
        auto *thread = new QcaAskerThread;
        thread->start(QThread::InheritPriority);
        QTRY_VERIFY(thread->handler());
        thread->handler()->setPassword(QCA::SecureArray());
        QTest::qWait(50); // until the handler has told QCA of itself
        QTest::ignoreMessage(QtWarningMsg, "Password is null!");
        QCA::PasswordAsker asker;
        QSignalSpy ready(&asker, &QCA::PasswordAsker::responseReady);
        asker.ask(QCA::Event::StylePIN, QStringLiteral("file"), nullptr);
        QTest::qWait(50); // until the question has reached the thread, which shows nowhere
        QElapsedTimer timer;
        timer.start();
        QcaAskerThread::letGo(thread, 60000);
        QVERIFY(timer.elapsed() < 30000); // it has ended, and was not given up
        QTRY_COMPARE(ready.count(), 1);
        QVERIFY(!asker.accepted());
    }

    void busyThreadIsLetGo()
    {
        QSemaphore release;
        QSemaphore blocked;
        QPointer<QcaAskerThread> thread(new QcaAskerThread);
        thread->start(QThread::InheritPriority);
        QTRY_VERIFY(thread->handler());
        QMetaObject::invokeMethod(thread->handler(), [&] {
            blocked.release();
            release.acquire();
        });
        blocked.acquire();
        QElapsedTimer timer;
        timer.start();
        QcaAskerThread::letGo(thread, 300);
        QVERIFY(timer.elapsed() >= 290);
        QVERIFY(thread);
        release.release();
        QTRY_VERIFY(!thread);
    }

    void secondRunReplacesTheHandler()
    {
        QPointer<QcaHandler> second;
        {
            QcaAskerThread thread;
            thread.start();
            QTRY_VERIFY(thread.handler());
            QTest::qWait(20); // until the thread stands in its event loop
            thread.quit();
            QVERIFY(thread.wait(3000));
            const QPointer<QcaHandler> first(thread.handler());
            QVERIFY(first); // outlives its run
            thread.start();
            QTRY_VERIFY(!first);
            QTest::qWait(20); // until the thread stands in its event loop
            thread.quit();
            QVERIFY(thread.wait(3000));
            second = thread.handler();
            QVERIFY(second);
        }
        QVERIFY(!second);
    }

private:
    QCA::Initializer m_initializer;
};

QTEST_GUILESS_MAIN(TestAskerThread)
#include "tst_askerthread.moc"
