// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Questions that reach one signer while it has another one open.
#include "qca/questions/asker.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/question.h"
#include "signing/signverify.h"
#include "tests/support/shortpauses.h"

#include <QSignalSpy>
#include <QtTest>

#include <thread>

namespace {

constexpr int Patience = 30000; // ms

/// A token's thread with a question.
class Asking {
public:
    explicit Asking(const char *storeId, Trivex::Purpose purpose = Trivex::Purpose::Write)
    {
        Trivex::QuestionInfo question;
        question.keyStoreId = QLatin1String(storeId);
        question.purpose = purpose;
        m_thread = std::thread([this, question] {
            const Trivex::Reply reply = Trivex::ask(question, {});
            m_answer = reply.accepted ? reply.password.toByteArray() : QByteArray("-");
            m_done.storeRelease(1);
        });
    }
    ~Asking()
    {
        if (!isOver())
            Trivex::cancelQuestions();
        m_thread.join();
    }

    bool isOver() const { return m_done.loadAcquire() == 1; }
    /// "-" for a rejection, "?" while there is none.
    QByteArray answer() const { return isOver() ? m_answer : QByteArray("?"); }

private:
    QByteArray m_answer;
    QAtomicInt m_done;
    std::thread m_thread;
};

/// Another provider's question.
class PlainQuestion {
public:
    PlainQuestion() { m_asker.ask(QCA::Event::StylePIN, QStringLiteral("file"), nullptr); }
    QByteArray answer()
    {
        m_asker.waitForResponse();
        return m_asker.accepted() ? m_asker.password().toByteArray() : QByteArray("-");
    }
    QCA::PasswordAsker &asker() { return m_asker; }

private:
    QCA::PasswordAsker m_asker;
};

} // namespace

class TestSignQueue : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { m_signer = std::make_unique<SignVerify>(); }
    void cleanup();
    void eachHasItsOwnAnswer();
    void rejectionIsOfOne();
    void acceptedTwiceIsOneAnswer();
    void rejectedWhileTheAnswerIsOnItsWay();
    void rejectedAtOnce();
    void withdrawnWhileTheAnswerIsOnItsWay();
    void withdrawnBehindTheFirst();
    void withdrawnBeforeItsTurn();
    void destroyedWithQuestions();
    void destroyedByTheQuestion();
    void plainEventsWaitTheirTurn();
    void listenerThatGoes();

private:
    void accept(const char *pin) { m_signer->pinAccepted(QLatin1String(pin)); }
    /// Returns when the second question has reached the signer behind the first. The signer tells
    /// nobody of a question that waits, so there is nothing but time to go by.
    static void letArrive() { QTest::qWait(200); }
    /// Returns when an answer that was on its way has met somebody, or nobody.
    static void letPass() { QTest::qWait(2 * Trivex::PinQuestions::AnswerDelay.milliseconds()); }
    /// "a" is asked, "b" waits behind it.
    bool askTwice();

    std::unique_ptr<SignVerify> m_signer;
    std::unique_ptr<QSignalSpy> m_asked;
    std::unique_ptr<Asking> m_first;
    std::unique_ptr<Asking> m_second;
};

void TestSignQueue::cleanup()
{
    m_second.reset();
    m_first.reset();
}

bool TestSignQueue::askTwice()
{
    m_asked = std::make_unique<QSignalSpy>(m_signer.get(), &SignVerify::getPin);
    m_first = std::make_unique<Asking>("a");
    if (!QTest::qWaitFor([this] { return m_asked->count() == 1; }))
        return false;
    m_second = std::make_unique<Asking>("b");
    letArrive();
    return true;
}

void TestSignQueue::eachHasItsOwnAnswer()
{
    QSignalSpy asked(m_signer.get(), &SignVerify::getPin);
    const Asking first("a", Trivex::Purpose::Sign);
    QTRY_COMPARE(asked.count(), 1);
    const Asking second("b");
    letArrive();
    const Asking third("a", Trivex::Purpose::Remove);
    letArrive();
    QCOMPARE(asked.count(), 1);
    for (const char *pin : {"1111", "2222", "3333"}) {
        const int before = asked.count();
        QElapsedTimer clock;
        clock.start();
        accept(pin);
        if (pin[0] != '3')
            QTRY_COMPARE_WITH_TIMEOUT(asked.count(), before + 1, Patience);
        else
            QTRY_VERIFY_WITH_TIMEOUT(third.isOver(), Patience);
        QVERIFY(clock.elapsed() >= Trivex::PinQuestions::AnswerDelay.milliseconds());
    }
    QTRY_COMPARE(first.answer(), QByteArray("1111"));
    QTRY_COMPARE(second.answer(), QByteArray("2222"));
    QCOMPARE(third.answer(), QByteArray("3333"));
    QCOMPARE(asked.count(), 3);
}

void TestSignQueue::rejectionIsOfOne()
{
    QVERIFY(askTwice());
    // A second click on the same button.
    m_signer->pinRejected();
    m_signer->pinRejected();
    QTRY_COMPARE(m_first->answer(), QByteArray("-"));
    QTRY_COMPARE(m_asked->count(), 2);
    QCOMPARE(m_second->answer(), QByteArray("?"));
    accept("2222");
    QTRY_COMPARE(m_second->answer(), QByteArray("2222"));
}

void TestSignQueue::acceptedTwiceIsOneAnswer()
{
    QVERIFY(askTwice());
    accept("1111");
    accept("1112");
    QTRY_COMPARE(m_first->answer(), QByteArray("1111"));
    QTRY_COMPARE(m_asked->count(), 2);
    letPass(); // none must come for "b"
    QCOMPARE(m_second->answer(), QByteArray("?"));
    accept("2222");
    QTRY_COMPARE(m_second->answer(), QByteArray("2222"));
}

void TestSignQueue::rejectedWhileTheAnswerIsOnItsWay()
{
    QVERIFY(askTwice());
    accept("1111");
    m_signer->pinRejected();
    QTRY_COMPARE(m_first->answer(), QByteArray("-"));
    QTRY_COMPARE(m_asked->count(), 2);
    letPass(); // none must come for "b"
    QCOMPARE(m_second->answer(), QByteArray("?"));
    m_signer->pinRejected();
    QTRY_COMPARE(m_second->answer(), QByteArray("-"));
}

void TestSignQueue::rejectedAtOnce()
{
    QSignalSpy asked(m_signer.get(), &SignVerify::getPin);
    connect(m_signer.get(), &SignVerify::getPin, m_signer.get(), &SignVerify::pinRejected);
    const Asking first("a");
    const Asking second("b");
    QTRY_COMPARE(first.answer(), QByteArray("-"));
    QTRY_COMPARE(second.answer(), QByteArray("-"));
    QCOMPARE(asked.count(), 2);
}

void TestSignQueue::withdrawnWhileTheAnswerIsOnItsWay()
{
    QVERIFY(askTwice());
    accept("1111");
    QTest::qWait(1); // the answer is on its way
    Trivex::cancelQuestions(QStringLiteral("a"));
    QTRY_COMPARE(m_first->answer(), QByteArray("-"));
    QTRY_COMPARE(m_asked->count(), 2);
    letPass(); // none must come for "b"
    QCOMPARE(m_second->answer(), QByteArray("?"));
    accept("2222");
    QTRY_COMPARE(m_second->answer(), QByteArray("2222"));
}

void TestSignQueue::withdrawnBehindTheFirst()
{
    QVERIFY(askTwice());
    Trivex::cancelQuestions(QStringLiteral("b"));
    QTRY_COMPARE(m_second->answer(), QByteArray("-"));
    accept("1111");
    QTRY_COMPARE(m_first->answer(), QByteArray("1111"));
    QTest::qWait(200); // no question must come in this time
    QCOMPARE(m_asked->count(), 1);
    // Nothing is left behind that would take this for its answer.
    const Asking third("c");
    QTRY_COMPARE(m_asked->count(), 2);
    accept("3333");
    QTRY_COMPARE(third.answer(), QByteArray("3333"));
}

void TestSignQueue::withdrawnBeforeItsTurn()
{
    // Both in one turn of the event loop.
    QVERIFY(askTwice());
    m_signer->pinRejected();
    Trivex::cancelQuestions(QStringLiteral("b"));
    QTRY_COMPARE(m_second->answer(), QByteArray("-"));
    QTest::qWait(200); // whatever wrongly asks for "b" has asked by then
    const int before = m_asked->count();
    const Asking third("c");
    QTRY_COMPARE(m_asked->count(), before + 1);
    accept("3333");
    QTRY_COMPARE(third.answer(), QByteArray("3333"));
}

void TestSignQueue::destroyedWithQuestions()
{
    QVERIFY(askTwice());
    accept("1111");
    m_signer.reset();
    QTRY_COMPARE(m_first->answer(), QByteArray("-"));
    QTRY_COMPARE(m_second->answer(), QByteArray("-"));
    letPass(); // it must meet nobody
}

void TestSignQueue::destroyedByTheQuestion()
{
    connect(m_signer.get(), &SignVerify::getPin, this, [&] { m_signer->deleteLater(); });
    const Asking first("a");
    const Asking second("b");
    QTRY_COMPARE(first.answer(), QByteArray("-"));
    QTRY_COMPARE(second.answer(), QByteArray("-"));
    m_signer.release();
}

void TestSignQueue::plainEventsWaitTheirTurn()
{
    QSignalSpy asked(m_signer.get(), &SignVerify::getPin);
    const Asking first("a");
    QTRY_COMPARE(asked.count(), 1);
    PlainQuestion second;
    PlainQuestion third;
    letArrive();
    QCOMPARE(asked.count(), 1);
    accept("1111");
    QTRY_COMPARE(asked.count(), 2);
    QCOMPARE(first.answer(), QByteArray("1111"));
    QSignalSpy ready(&second.asker(), &QCA::PasswordAsker::responseReady);
    accept("2222");
    QTRY_COMPARE_WITH_TIMEOUT(asked.count(), 3, Patience);
    QTRY_COMPARE(ready.count(), 1);
    accept("3333");
    QCOMPARE(second.answer(), QByteArray("2222"));
    QSignalSpy thirdReady(&third.asker(), &QCA::PasswordAsker::responseReady);
    QTRY_COMPARE(thirdReady.count(), 1);
    QCOMPARE(third.answer(), QByteArray("3333"));
    // Kept for the next plain event, and for none of ours.
    PlainQuestion fourth;
    QSignalSpy fourthReady(&fourth.asker(), &QCA::PasswordAsker::responseReady);
    QTRY_COMPARE(fourthReady.count(), 1);
    QCOMPARE(fourth.answer(), QByteArray("3333"));
    QCOMPARE(asked.count(), 3);
}

void TestSignQueue::listenerThatGoes()
{
    auto page = std::make_unique<QObject>();
    int asked = 0;
    connect(m_signer.get(), &SignVerify::getPin, page.get(), [&] { ++asked; });
    const Asking first("a");
    QTRY_COMPARE(asked, 1);
    const Asking second("b");
    letArrive();
    page.reset();
    m_signer->pinRejected();
    QTRY_COMPARE(first.answer(), QByteArray("-"));
    QTRY_COMPARE(second.answer(), QByteArray("-"));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TrivexTest::shortenPauses();
    TestSignQueue test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_signqueue.moc"
