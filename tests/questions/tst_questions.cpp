// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/eventhandler.h"
#include "qca/questions/generationtarget.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/operation.h"
#include "qca/questions/qcahandler.h"
#include "qca/questions/questionnotifier.h"
#include "qca/questions/questionscope.h"
#include "qca/questions/storedanswers.h"

#include <QtTest>

#include <functional>
#include <thread>

using Trivex::Operation;
using Trivex::PinState;
using Trivex::Purpose;

namespace {

const QString storeId = QStringLiteral("token-1");
const QCA::KeyStoreInfo store(QCA::KeyStore::SmartCard, storeId, QStringLiteral("Token"));

/// A person at a prompt: answers with `pin`, or rejects when it is null.
class Person : public QObject {
public:
    explicit Person(const QByteArray &pin)
        : m_pin(pin)
    {
        connect(&m_handler, &QCA::EventHandler::eventReady, this,
                [this](int id, const QCA::Event &event) {
                    if (m_handler.isForAnother(event)) {
                        m_handler.reject(id);
                        return;
                    }
                    ++asked;
                    lastId = id;
                    last = Trivex::questionInfo(event);
                    if (silent)
                        return;
                    if (m_pin.isNull())
                        m_handler.reject(id);
                    else
                        m_handler.submitPassword(id, QCA::SecureArray(m_pin));
                });
    }
    void start() { m_handler.start(); }
    Trivex::EventHandler &handler() { return m_handler; }

    int asked = 0;
    int lastId = -1;
    bool silent = false;
    std::optional<Trivex::QuestionInfo> last;

private:
    QByteArray m_pin;
    Trivex::EventHandler m_handler;
};

Trivex::QuestionInfo info(PinState state = PinState::Normal)
{
    Trivex::QuestionInfo question;
    question.keyStoreId = storeId;
    question.tokenName = QStringLiteral("Token");
    question.pinState = state;
    return question;
}

/// Runs `work` on a thread of its own while this one serves its event loop.
void onWorker(const std::function<void()> &work)
{
    QAtomicInt done;
    std::thread thread([&] {
        work();
        done.storeRelease(1);
    });
    const bool ended = QTest::qWaitFor([&] { return done.loadAcquire() == 1; }, 10000);
    if (!ended)
        Trivex::cancelQuestions();
    thread.join();
    QVERIFY(ended);
}

QByteArray text(const Operation::Pin &pin)
{
    return pin.value.toByteArray();
}

} // namespace

class TestQuestions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void orders_data()
    {
        QTest::addColumn<bool>("storedFirst");
        QTest::newRow("stored answers first") << true;
        QTest::newRow("person first") << false;
    }

    void storedPinServesWithoutAsking_data() { orders_data(); }
    void storedPinServesWithoutAsking()
    {
        QFETCH(bool, storedFirst);
        QcaHandler handler;
        Person person("typed");
        startBoth(handler, person, storedFirst);
        handler.setPassword(QCA::SecureArray("stored"));
        handler.setObjectId(QStringLiteral("label"));
        handler.setKeyStoreId(storeId);
        Operation generation(Purpose::Generate);
        QCOMPARE(generation.keyStoreId(), storeId);
        QCOMPARE(generation.objectId(), QStringLiteral("label"));
        Operation::Pin first;
        Operation::Pin second;
        onWorker([&] {
            first = generation.pin(info(), store);
            second = generation.pin(info(), store);
        });
        QCOMPARE(text(first), QByteArray("stored"));
        QVERIFY(!first.typed);
        // A wrong stored PIN ends the operation: it is neither tried again nor asked for.
        QVERIFY(second.value.isEmpty());
        QCOMPARE(person.asked, 0);
    }

    void nothingStaysBehind()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("stored"));
        handler.setKeyStoreId(storeId);
        {
            const Operation write(Purpose::Write, storeId);
        }
        Operation next(Purpose::Write, storeId);
        onWorker([&] { QVERIFY(next.pin(info(), store).value.isEmpty()); });
    }

    void otherStoresAnswersAreNotTaken()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("stored"));
        handler.setKeyStoreId(storeId);
        Operation other(Purpose::Write, QStringLiteral("token-2"));
        Operation own(Purpose::Write, storeId);
        onWorker([&] {
            QVERIFY(other.pin(info(), store).value.isEmpty());
            QCOMPARE(text(own.pin(info(), store)), QByteArray("stored"));
        });
    }

    // A window that closes between the storing and the operation takes its answers along.
    void answersGoWithTheirHandler()
    {
        {
            QcaHandler handler;
            handler.start();
            handler.setPassword(QCA::SecureArray("stored"));
            handler.setKeyStoreId(storeId);
        }
        QVERIFY(!Trivex::takeStoredAnswers(storeId));
        // Not those of another one either, wherever it lies in memory.
        QcaHandler second;
        second.start();
        QVERIFY(!Trivex::takeStoredAnswers(QString()));
        second.setPassword(QCA::SecureArray("second"));
        second.setKeyStoreId(storeId);
        Operation own(Purpose::Write, storeId);
        onWorker([&] { QCOMPARE(text(own.pin(info(), store)), QByteArray("second")); });
        QVERIFY(!Trivex::takeStoredAnswers(QString()));
    }

    void nothingStoredAsksThePerson_data() { orders_data(); }
    void nothingStoredAsksThePerson()
    {
        QFETCH(bool, storedFirst);
        QcaHandler handler;
        Person person("typed");
        startBoth(handler, person, storedFirst);
        handler.setKeyStoreId(storeId);
        Operation removal(Purpose::Remove, storeId);
        Operation::Pin pin;
        onWorker([&] { pin = removal.pin(info(PinState::CountLow), store); });
        QCOMPARE(text(pin), QByteArray("typed"));
        QVERIFY(pin.typed);
        QCOMPARE(person.asked, 1);
        QVERIFY(person.last);
        QCOMPARE(person.last->tokenName, QStringLiteral("Token"));
        QCOMPARE(person.last->purpose, Purpose::Remove);
        QCOMPARE(person.last->pinState, PinState::CountLow);
    }

    void signingNeverTakesStoredAnswers_data() { orders_data(); }
    void signingNeverTakesStoredAnswers()
    {
        QFETCH(bool, storedFirst);
        QcaHandler handler;
        Person person("typed");
        startBoth(handler, person, storedFirst);
        handler.setPassword(QCA::SecureArray("stale"));
        handler.setKeyStoreId(storeId);
        Operation signing(Purpose::Sign, storeId);
        Operation::Pin pin;
        onWorker([&] { pin = signing.pin(info(), store); });
        QCOMPARE(text(pin), QByteArray("typed"));
        // The question that passed by did not cost the other operation its answers.
        Operation write(Purpose::Write, storeId);
        onWorker([&] { QCOMPARE(text(write.pin(info(), store)), QByteArray("stale")); });
    }

    void nobodyToAskEndsAtOnce()
    {
        Operation write(Purpose::Write, storeId);
        onWorker([&] { QVERIFY(write.pin(info(), store).value.isEmpty()); });
        QcaHandler handler;
        handler.start();
        onWorker([&] { QVERIFY(write.pin(info(), store).value.isEmpty()); });
    }

    void rejectionGivesNoPin()
    {
        Person person{QByteArray()};
        person.start();
        Operation signing(Purpose::Sign, storeId);
        onWorker([&] { QVERIFY(signing.pin(info(), store).value.isEmpty()); });
        QCOMPARE(person.asked, 1);
    }

    void emptyPinCountsAsNone()
    {
        Person person(QByteArray(""));
        person.start();
        Operation signing(Purpose::Sign, storeId);
        onWorker([&] { QVERIFY(signing.pin(info(), store).value.isEmpty()); });
    }

    void lastTryNeedsAPerson()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("stored"));
        handler.setKeyStoreId(storeId);
        Operation write(Purpose::Write, storeId);
        onWorker([&] { QVERIFY(write.pin(info(PinState::FinalTry), store).value.isEmpty()); });
        Person person("typed");
        person.start();
        Operation::Pin pin;
        onWorker([&] { pin = write.pin(info(PinState::FinalTry), store); });
        QCOMPARE(text(pin), QByteArray("typed"));
        QVERIFY(person.last->needsTypedPin);
    }

    void lockedTokenAsksNobody()
    {
        Person person("typed");
        person.start();
        Operation write(Purpose::Write, storeId);
        onWorker([&] { QVERIFY(write.pin(info(PinState::Locked), store).value.isEmpty()); });
        QCOMPARE(person.asked, 0);
    }

    void questionReachesItsAddresseeOnly()
    {
        Person first("first");
        Person second("second");
        first.start();
        second.start();
        Operation::Pin pin;
        const Trivex::QuestionScope scope(&second.handler());
        Operation signing(Purpose::Sign, storeId);
        onWorker([&] { pin = signing.pin(info(), store); });
        QCOMPARE(text(pin), QByteArray("second"));
        QCOMPARE(first.asked, 0);
    }

    void guiThreadWaitsInAnEventLoop()
    {
        Person person("typed");
        person.start();
        bool ticked = false;
        QTimer::singleShot(0, this, [&] { ticked = true; });
        Operation signing(Purpose::Sign, storeId);
        QCOMPARE(text(signing.pin(info(), store)), QByteArray("typed"));
        QVERIFY(ticked);
    }

    void cancelledQuestionEndsAndIsWithdrawn()
    {
        Person person("typed");
        person.silent = true;
        person.start();
        QSignalSpy withdrawn(Trivex::QuestionNotifier::instance(),
                             &Trivex::QuestionNotifier::withdrawn);
        QAtomicInt done;
        Operation signing(Purpose::Sign, storeId);
        std::thread asking([&] {
            signing.pin(info(), store);
            done.storeRelease(1);
        });
        QTRY_COMPARE(person.asked, 1);
        Trivex::cancelQuestions(QStringLiteral("another token"));
        QTest::qWait(50); // the question must stay open in this time
        QCOMPARE(done.loadAcquire(), 0);
        Trivex::cancelQuestions(storeId);
        asking.join();
        QTRY_COMPARE(withdrawn.count(), 1);
        QCOMPARE(withdrawn.first().first().value<quintptr>(), person.last->ticket);
        // The late answer to a question that is over harms nobody.
        person.handler().submitPassword(person.lastId, QCA::SecureArray("late"));
        QTest::qWait(50); // the answer arrives, and must meet nobody
    }

    void handlerThatGoesRejectsItsQuestion()
    {
        auto person = std::make_unique<Person>("typed");
        person->silent = true;
        person->start();
        QAtomicInt done;
        Operation signing(Purpose::Sign, storeId);
        std::thread asking([&] {
            signing.pin(info(), store);
            done.storeRelease(1);
        });
        QTRY_COMPARE(person->asked, 1);
        person.reset();
        QTRY_COMPARE(done.loadAcquire(), 1);
        asking.join();
    }

    void settlingEndsWhateverWaits()
    {
        const auto settle = [] {
            Trivex::settleQuestions(std::chrono::steady_clock::now() + std::chrono::seconds(2));
        };
        settle();
        Person person("typed");
        person.silent = true;
        person.start();
        Operation signing(Purpose::Sign, storeId);
        std::thread asking([&] { signing.pin(info(), store); });
        QTRY_COMPARE(person.asked, 1);
        // An open question does not hold it up, on this thread or another.
        settle();
        std::thread(settle).join();
        person.handler().submitPassword(person.lastId, QCA::SecureArray("late"));
        asking.join();
        settle();
    }

    void manyQuestionsAtOnce()
    {
        Person person("typed");
        person.start();
        QAtomicInt right;
        std::vector<std::thread> askers;
        for (int i = 0; i < 8; ++i) {
            askers.emplace_back([&] {
                for (int round = 0; round < 20; ++round) {
                    Operation signing(Purpose::Sign, storeId);
                    if (text(signing.pin(info(), store)) == "typed")
                        right.ref();
                }
            });
        }
        QTRY_COMPARE(right.loadAcquire(), 160);
        for (std::thread &asker : askers)
            asker.join();
    }

    void generationTargetNamesStoreAndLabel()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("stored"));
        handler.setKeyStoreId(storeId);
        handler.setObjectId(QStringLiteral("other"));
        const Trivex::GenerationTarget target(storeId, QStringLiteral("label"));
        Operation generation(Purpose::Generate);
        QCOMPARE(generation.keyStoreId(), storeId);
        QCOMPARE(generation.objectId(), QStringLiteral("label"));
        onWorker([&] { QCOMPARE(text(generation.pin(info(), store)), QByteArray("stored")); });
    }

    void numbersAreNeverUsedAgain()
    {
        // A late answer or withdrawal must not reach a later question.
        Person person("typed");
        person.start();
        QSet<quintptr> numbers;
        for (int i = 0; i < 50; ++i) {
            Operation signing(Purpose::Sign, storeId);
            onWorker([&] { QCOMPARE(text(signing.pin(info(), store)), QByteArray("typed")); });
            numbers.insert(person.last->ticket);
        }
        QCOMPARE(numbers.size(), 50);
        QVERIFY(!numbers.contains(0));
    }

    void requestBeforeTheQuestionAsksNobody()
    {
        Person person("typed");
        person.start();
        Operation signing(Purpose::Sign, storeId);
        signing.cancellation()->request();
        onWorker([&] { QVERIFY(signing.pin(info(), store).value.isEmpty()); });
        QTest::qWait(50); // no question must come in this time
        QCOMPARE(person.asked, 0);
    }

    void requestWithdrawsTheQuestion()
    {
        Person person("typed");
        person.silent = true;
        person.start();
        QSignalSpy withdrawn(Trivex::QuestionNotifier::instance(),
                             &Trivex::QuestionNotifier::withdrawn);
        Operation signing(Purpose::Sign, storeId);
        Operation other(Purpose::Sign, storeId);
        QAtomicInt done;
        std::thread asking([&] {
            signing.pin(info(), store);
            done.storeRelease(1);
        });
        QTRY_COMPARE(person.asked, 1);
        // Each operation has its own.
        other.cancellation()->request();
        QTest::qWait(50); // the question must stay open in this time
        QCOMPARE(done.loadAcquire(), 0);
        signing.cancellation()->request();
        asking.join();
        QTRY_COMPARE(withdrawn.count(), 1);
        QCOMPARE(withdrawn.first().first().value<quintptr>(), person.last->ticket);
    }

    void requestAtAnyMomentEndsTheQuestion()
    {
        Person person("typed");
        person.silent = true;
        person.start();
        for (int round = 0; round < 300; ++round) {
            Operation signing(Purpose::Sign, storeId);
            const Trivex::CancellationPtr cancellation = signing.cancellation();
            std::thread requesting([&] {
                // Each round at another moment of the question.
                std::this_thread::sleep_for(std::chrono::microseconds(round * 2));
                cancellation->request();
            });
            onWorker([&] { QVERIFY(signing.pin(info(), store).value.isEmpty()); });
            requesting.join();
        }
    }

    void unattendedOperationTakesAndAsksNothing()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("stored"));
        handler.setKeyStoreId(storeId);
        Person person("typed");
        person.start();
        Operation cleaning = Operation::unattended(Purpose::Remove, storeId);
        onWorker([&] { QVERIFY(cleaning.pin(info(), store).value.isEmpty()); });
        QCOMPARE(person.asked, 0);
        Operation write(Purpose::Write, storeId);
        onWorker([&] { QCOMPARE(text(write.pin(info(), store)), QByteArray("stored")); });
    }

    // The last one: event loops end at once from here on.
    void endOfTheApplicationWithdrawsTheQuestion()
    {
        Person person("typed");
        person.silent = true;
        person.start();
        QSignalSpy withdrawn(Trivex::QuestionNotifier::instance(),
                             &Trivex::QuestionNotifier::withdrawn);
        QTimer clock;
        connect(&clock, &QTimer::timeout, this, [&] {
            if (person.asked)
                QCoreApplication::quit();
        });
        clock.start(10);
        Operation signing(Purpose::Sign, storeId);
        QVERIFY(signing.pin(info(), store).value.isEmpty());
        QCOMPARE(withdrawn.count(), 1);
        QVERIFY(person.last->ticket);
    }

private:
    static void startBoth(QcaHandler &handler, Person &person, bool storedFirst)
    {
        if (storedFirst)
            handler.start();
        person.start();
        if (!storedFirst)
            handler.start();
    }

    QCA::Initializer m_initializer;
};

QTEST_GUILESS_MAIN(TestQuestions)
#include "tst_questions.moc"
