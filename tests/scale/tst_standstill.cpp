// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What the tests say of a child that does not do what they wait for.
#include "tests/support/standstill.h"

#include <QProcess>
#include <QtTest>

using namespace TrivexTest;

class TestStandstill : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void threadsOfAProcess();
    void wordComes();
    void endsBefore_data();
    void endsBefore();
    void standsStill();

private:
    void start(const char *script);
    /// Waits until the child has said "here" and waits for a line that never comes.
    void waitUntilItReads();
    std::unique_ptr<QProcess> m_child;
};

void TestStandstill::start(const char *script)
{
    m_child = std::make_unique<QProcess>();
    m_child->start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromLatin1(script)});
    QVERIFY(m_child->waitForStarted());
}

void TestStandstill::waitUntilItReads()
{
    QCOMPARE(problemBefore("here", *m_child), QString());
    const qint64 id = m_child->processId();
    QTRY_VERIFY2(whereItStands(id).startsWith(QLatin1String("sh: state S, ")),
                 qPrintable(whereItStands(id)));
}

void TestStandstill::cleanup()
{
    if (!m_child)
        return;
    m_child->kill();
    m_child->waitForFinished();
    m_child.reset();
}

void TestStandstill::threadsOfAProcess()
{
    start("echo here; read line");
    waitUntilItReads();
    const qint64 id = m_child->processId();
    m_child->kill();
    QVERIFY(m_child->waitForFinished());
    QCOMPARE(whereItStands(id), QStringLiteral("there is no process %1").arg(id));
}

void TestStandstill::wordComes()
{
    start("echo first; echo the word; read line");
    QCOMPARE(problemBefore("the word", *m_child), QString());
    QCOMPARE(m_child->state(), QProcess::Running);
}

void TestStandstill::endsBefore_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("ending");
    QTest::newRow("by itself") << QByteArray("echo some; echo why >&2; exit 3")
                               << QStringLiteral("it has ended with status 3, by itself");
    QTest::newRow("killed") << QByteArray("echo some; echo why >&2; kill -9 $$")
                            << QStringLiteral("it has ended with status 9, Process crashed");
}

void TestStandstill::endsBefore()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, ending);
    start(script.constData());
    const QString problem = problemBefore("the word", *m_child);
    QVERIFY2(problem.startsWith(ending), qPrintable(problem));
    QVERIFY2(problem.contains(QLatin1String("\"some\n\"")), qPrintable(problem));
    QVERIFY2(problem.contains(QLatin1String("\"why\n\"")), qPrintable(problem));
}

void TestStandstill::standsStill()
{
    start("echo why >&2; echo here; read line");
    waitUntilItReads();
    const QRegularExpression warning(QStringLiteral("^Waiting for \"the word\": sh: state S, "));
    for (int look = 0; look < 5; ++look)
        QTest::ignoreMessage(QtWarningMsg, warning);
    const QString problem = problemBefore("the word", *m_child, 10);
    QVERIFY2(problem.startsWith(QLatin1String("it stands still: sh: state S, ")),
             qPrintable(problem));
    QVERIFY2(problem.contains(QLatin1String("and of errors \"why\n\"")), qPrintable(problem));
}

QTEST_GUILESS_MAIN(TestStandstill)
#include "tst_standstill.moc"
