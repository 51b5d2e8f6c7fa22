// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/asker.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/qcahandler.h"
#include "qca/questions/question.h"

#include <QtTest>

#include <thread>

namespace {

const QCA::KeyStoreInfo store(QCA::KeyStore::SmartCard, QStringLiteral("store"),
                              QStringLiteral("Store"));

/// A plain question, as any provider raises it.
class PlainQuestion {
public:
    PlainQuestion() { m_asker.ask(QCA::Event::StylePIN, store, QCA::KeyStoreEntry(), nullptr); }

    bool isAnswered() const { return m_ready.count() > 0; }
    bool accepted() const { return m_asker.accepted(); }
    QByteArray password() const { return m_asker.password().toByteArray(); }
    bool passwordIsNull() const { return m_asker.password().isNull(); }

private:
    QCA::PasswordAsker m_asker;
    QSignalSpy m_ready{&m_asker, &QCA::PasswordAsker::responseReady};
};

/// The head of QCA's shared event record: the only way to an event of an unknown source, because
/// the setters know two.
struct EventHead {
    QAtomicInt references;
    int type;
    int source;
};

EventHead *headOf(QCA::Event &event)
{
    static_assert(sizeof(event) == sizeof(void *), "an event is a pointer to its record");
    return *reinterpret_cast<EventHead **>(&event);
}

/// Our own question of kind 2 or 4, which the handler with stored answers is asked. On another
/// thread, as a token asks.
class OwnQuestion {
public:
    explicit OwnQuestion(int kind)
        : m_thread([this, kind] {
            Trivex::QuestionInfo info;
            info.kind = kind;
            m_reply = Trivex::ask(info, store);
            m_done.storeRelease(1);
        })
    {
    }
    ~OwnQuestion()
    {
        Trivex::cancelQuestions();
        m_thread.join();
    }
    bool isAnswered() const { return m_done.loadAcquire() == 1; }
    Trivex::Reply reply() const { return m_reply; }

private:
    QAtomicInt m_done;
    Trivex::Reply m_reply;
    std::thread m_thread;
};

} // namespace

class TestQcaHandler : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storedPinIsSubmittedOnce()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("1234"));
        PlainQuestion first;
        QTRY_VERIFY(first.isAnswered());
        QVERIFY(first.accepted());
        QCOMPARE(first.password(), QByteArray("1234"));

        PlainQuestion second;
        QTRY_VERIFY(second.isAnswered());
        QVERIFY(second.accepted());
        QCOMPARE(second.password(), QByteArray());
        QVERIFY(!second.passwordIsNull());
    }

    void nullPasswordIsNotSubmitted()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray());
        QTest::ignoreMessage(QtWarningMsg, "Password is null!");
        PlainQuestion question;
        QTest::qWait(50); // no answer must come in this time
        QVERIFY(!question.isAnswered());
        handler.rejectPending();
        QTRY_VERIFY(question.isAnswered());
        QVERIFY(!question.accepted());
    }

    void storedIdAnswersItsKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("key store id") << int(Trivex::KeyStoreIdQuestion);
        QTest::newRow("entry name") << int(Trivex::EntryNameQuestion);
    }

    void storedIdAnswersItsKind()
    {
        QFETCH(int, kind);
        QcaHandler handler;
        handler.start();
        handler.setKeyStoreId(QStringLiteral("store-7"));
        handler.setObjectId(QStringLiteral("object-7"));
        OwnQuestion question(kind);
        QTRY_VERIFY(question.isAnswered());
        QVERIFY(question.reply().accepted);
        QCOMPARE(question.reply().text,
                 kind == Trivex::KeyStoreIdQuestion ? QStringLiteral("store-7")
                                                    : QStringLiteral("object-7"));
    }

    void missingIdIsReported_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("key store id")
            << int(Trivex::KeyStoreIdQuestion) << QByteArray("KeyStore Id is empty!");
        QTest::newRow("entry name")
            << int(Trivex::EntryNameQuestion) << QByteArray("Object Id is empty!");
    }

    void missingIdIsReported()
    {
        QFETCH(int, kind);
        QFETCH(QByteArray, message);
        QcaHandler handler;
        handler.start();
        QTest::ignoreMessage(QtWarningMsg, message.constData());
        OwnQuestion question(kind);
        QTest::qWait(500); // no answer must come in this time
        QVERIFY(!question.isAnswered());
    }

    void anyEventForgetsAllAnswers()
    {
        QcaHandler handler;
        handler.start();
        handler.setKeyStoreId(QStringLiteral("store-7"));
        handler.setObjectId(QStringLiteral("object-7"));
        PlainQuestion plain;
        QTRY_VERIFY(plain.isAnswered());
        QTest::ignoreMessage(QtWarningMsg, "KeyStore Id is empty!");
        OwnQuestion question(Trivex::KeyStoreIdQuestion);
        QTest::qWait(100); // no answer must come in this time
        QVERIFY(!question.isAnswered());
    }

    void tokenEventIsNeverAnswered()
    {
        QcaHandler handler;
        handler.start();
        QTest::ignoreMessage(QtWarningMsg, "Unexpected event type");
        QCA::TokenAsker asker;
        QSignalSpy ready(&asker, &QCA::TokenAsker::responseReady);
        asker.ask(store, QCA::KeyStoreEntry(), nullptr);
        QTest::qWait(50); // no answer must come in this time
        QCOMPARE(ready.count(), 0);
        handler.rejectPending();
        QTRY_COMPARE(ready.count(), 1);
        QVERIFY(!asker.accepted());
    }

    void nullEventIsReported()
    {
        QcaHandler handler;
        handler.setPassword(QCA::SecureArray("1234"));
        QTest::ignoreMessage(QtWarningMsg, "Event is null");
        QVERIFY(QMetaObject::invokeMethod(&handler, "qcaEventReady", Q_ARG(int, 3),
                                          Q_ARG(QCA::Event, QCA::Event())));
        // The answers are gone.
        handler.start();
        PlainQuestion question;
        QTRY_VERIFY(question.isAnswered());
        QCOMPARE(question.password(), QByteArray());
    }

    void nullEventLeavesTheOpenQuestion()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray());
        QTest::ignoreMessage(QtWarningMsg, "Password is null!");
        PlainQuestion question;
        QTest::qWait(50); // until the question has reached the handler, which tells nobody
        QTest::ignoreMessage(QtWarningMsg, "Event is null");
        QVERIFY(QMetaObject::invokeMethod(&handler, "qcaEventReady", Q_ARG(int, 1000),
                                          Q_ARG(QCA::Event, QCA::Event())));
        handler.rejectPending(); // still means the question before
        QTRY_VERIFY(question.isAnswered());
        QVERIFY(!question.accepted());
    }

    void unknownSourceIsReported()
    {
        QCA::Event event;
        event.setPasswordKeyStore(QCA::Event::StylePIN, store, QCA::KeyStoreEntry(), nullptr);
        EventHead *head = headOf(event);
        head->source = QCA::Event::Data;
        QCOMPARE(event.source(), QCA::Event::Data); // the record is what it is taken for
        head->source = 2;

        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("1234"));
        QTest::ignoreMessage(QtWarningMsg, "Unexpected Source for Event!");
        QVERIFY(QMetaObject::invokeMethod(&handler, "qcaEventReady", Q_ARG(int, 1000),
                                          Q_ARG(QCA::Event, event)));
        // The answers are gone.
        PlainQuestion question;
        QTRY_VERIFY(question.isAnswered());
        QCOMPARE(question.password(), QByteArray());
    }

    void bothSourcesAreAnswered()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("file"));
        QCA::PasswordAsker asker;
        QSignalSpy ready(&asker, &QCA::PasswordAsker::responseReady);
        asker.ask(QCA::Event::StylePassphrase, QStringLiteral("file.p12"), nullptr);
        QTRY_COMPARE(ready.count(), 1);
        QVERIFY(asker.accepted());
        QCOMPARE(asker.password().toByteArray(), QByteArray("file"));
    }

    void rejectPendingRejectsOncePerEvent()
    {
        QcaHandler handler;
        QCA::EventHandler next;
        QSignalSpy passedOn(&next, &QCA::EventHandler::eventReady);
        handler.start();
        next.start();
        for (int round = 1; round <= 2; ++round) {
            handler.setPassword(QCA::SecureArray());
            QTest::ignoreMessage(QtWarningMsg, "Password is null!");
            PlainQuestion question;
            QTest::qWait(30); // until the question has reached the handler, which tells nobody
            handler.rejectPending();
            handler.rejectPending();
            QTRY_COMPARE(passedOn.count(), round);
            next.reject(passedOn.last().first().toInt());
            QTRY_VERIFY(question.isAnswered());
            QVERIFY(!question.accepted());
        }
    }

    void rejectAfterAnswerIsHarmless()
    {
        QcaHandler handler;
        handler.start();
        handler.setPassword(QCA::SecureArray("1"));
        PlainQuestion question;
        QTRY_VERIFY(question.isAnswered());
        handler.rejectPending();
        QVERIFY(question.accepted());
    }

    void interfaceIsOneSlot()
    {
        const QMetaObject &meta = QcaHandler::staticMetaObject;
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        const QMetaMethod method = meta.method(meta.methodOffset());
        QCOMPARE(method.methodSignature(), QByteArray("qcaEventReady(int,QCA::Event)"));
        QCOMPARE(method.access(), QMetaMethod::Private);
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

private:
    QCA::Initializer m_initializer;
};

QTEST_GUILESS_MAIN(TestQcaHandler)
#include "tst_qcahandler.moc"
