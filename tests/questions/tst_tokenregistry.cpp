// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/asker.h"
#include "qca/questions/eventhandler.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/questionnotifier.h"
#include "qca/tokens/tokenregistry.h"
#include "qca/tokens/tokens.h"
#include "tests/support/quietbackend.h"

#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

using Trivex::TokenMonitor;
using Trivex::TokenStatus;

namespace {

constexpr int Patience = 60000; // ms

TokenStatus status(const char *id, bool present, bool busy = false)
{
    TokenStatus made;
    made.keyStoreId = QString::fromLatin1(id);
    made.name = QStringLiteral("Token");
    made.present = present;
    made.busy = busy;
    return made;
}

/// Tells of each cancellation at once, on the thread that asks for it.
class LoudBackend : public TrivexTest::QuietBackend {
public:
    QCA::PrivateKey findPrivateKey(const QString &keyStoreId, const QCA::PublicKey &) override
    {
        tell(keyStoreId);
        return {};
    }

    void cancelOperation(const QString &keyStoreId) override
    {
        ++cancelled;
        tell(keyStoreId);
    }

    bool startChange(const QString &keyStoreId, const Trivex::StoreChange &,
                     Trivex::StoreChangeDone done) override
    {
        tell(keyStoreId);
        done({});
        return true;
    }

    Trivex::CancellationPtr startExtraction(const QString &keyStoreId, const QByteArray &,
                                            Trivex::ExtractionDone done) override
    {
        tell(keyStoreId);
        done({});
        return std::make_shared<Trivex::Cancellation>();
    }
    Trivex::CancellationPtr startAdministration(const QString &keyStoreId,
                                                Trivex::TokenAdministration,
                                                Trivex::TokenAdministrationDone done) override
    {
        tell(keyStoreId);
        done({});
        return std::make_shared<Trivex::Cancellation>();
    }

    void cancelTask(const Trivex::CancellationPtr &task) override
    {
        wasRequested = task->isRequested();
        tell(QStringLiteral("task"));
    }

    int cancelled = 0;
    bool wasRequested = false;

private:
    void tell(const QString &keyStoreId)
    {
        TokenStatus idle = status("loud", true);
        idle.keyStoreId = keyStoreId;
        Trivex::publishTokenStatus(idle, Trivex::nextStatusNumber());
        Trivex::TokenError error;
        error.keyStoreId = keyStoreId;
        error.kind = Trivex::TokenError::Cancelled;
        Trivex::publishTokenError(error);
    }
};

/// Runs `work` on a thread of its own. False when it does not end, which leaves the thread behind.
bool endsInTime(const std::function<void()> &work)
{
    const auto done = std::make_shared<std::atomic_bool>(false);
    std::thread thread([work, done] {
        work();
        *done = true;
    });
    const bool ended = QTest::qWaitFor([&] { return done->load(); }, Patience);
    if (ended)
        thread.join();
    else
        thread.detach();
    return ended;
}

} // namespace

/// What is known of tokens, published by many threads and read by slots.
class TestTokenRegistry : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void laterStatusWins();
    void forgottenStaysForgotten();
    void slotsOfTheMonitorAskBack();
    void slotsOfQuestionsAskBack();
    void refusedOwnerAsksNobody();

private:
    QCA::Initializer m_qca;
};

// Two threads have copied a status, and the one that copied first publishes last.
void TestTokenRegistry::laterStatusWins()
{
    TokenMonitor monitor;
    QSignalSpy changed(&monitor, &TokenMonitor::changed);
    const QString id = QStringLiteral("late");
    const quint64 first = Trivex::nextStatusNumber();
    const quint64 second = Trivex::nextStatusNumber();
    QVERIFY(first < second);
    Trivex::publishTokenStatus(status("late", true, false), second);
    Trivex::publishTokenStatus(status("late", true, true), first);
    QVERIFY2(!TokenMonitor::token(id).busy, "busy for ever");
    QCOMPARE(changed.count(), 1);
    // Of other tokens nothing is lost.
    Trivex::publishTokenStatus(status("other", true), first);
    QVERIFY(TokenMonitor::token(QStringLiteral("other")).present);
    Trivex::publishTokenStatus(status("late", false), Trivex::nextStatusNumber());
    QVERIFY(!TokenMonitor::token(id).present);
}

void TestTokenRegistry::forgottenStaysForgotten()
{
    const quint64 before = Trivex::nextStatusNumber();
    const quint64 last = Trivex::nextStatusNumber();
    TokenStatus forgotten;
    forgotten.keyStoreId = QStringLiteral("gone");
    Trivex::publishTokenStatus(forgotten, last);
    Trivex::publishTokenStatus(status("gone", true), before);
    QVERIFY(!TokenMonitor::token(QStringLiteral("gone")).present);
    for (const TokenStatus &known : TokenMonitor::tokens())
        QVERIFY(known.keyStoreId != QLatin1String("gone"));
    // It may come back later.
    Trivex::publishTokenStatus(status("gone", true), Trivex::nextStatusNumber());
    QVERIFY(TokenMonitor::token(QStringLiteral("gone")).present);
}

void TestTokenRegistry::slotsOfTheMonitorAskBack()
{
    const auto backend = std::make_shared<LoudBackend>();
    const bool ended = endsInTime([backend] {
        const QString id = QStringLiteral("loud");
        TokenMonitor monitor;
        int depth = 0;
        int changes = 0;
        int failures = 0;
        const auto askBack = [&] {
            TokenMonitor::token(id);
            TokenMonitor::tokens();
            Trivex::cancelQuestions(id);
            if (depth > 0)
                return;
            ++depth;
            TokenMonitor::cancel(id);
            Trivex::cancelTokenTask(std::make_shared<Trivex::Cancellation>());
            Trivex::findTokenKey(id, QCA::PublicKey());
            Trivex::startStoreChange(
                id, {}, [](const Trivex::StoreChangeResult &) { TokenMonitor::tokens(); });
            --depth;
        };
        connect(&monitor, &TokenMonitor::changed, &monitor, [&] {
            ++changes;
            askBack();
        });
        connect(&monitor, &TokenMonitor::failed, &monitor, [&] {
            ++failures;
            askBack();
        });
        TokenMonitor::cancel(id);
        QVERIFY(changes > 0);
        QVERIFY(failures > 0);
    });
    QVERIFY2(ended, "a slot that asks back hangs");
    QVERIFY(backend->cancelled > 1);
    // The end is asked for before the backend looks for what belongs to the task.
    QVERIFY(backend->wasRequested);
    Trivex::cancelTokenTask(nullptr);
}

void TestTokenRegistry::slotsOfQuestionsAskBack()
{
    Trivex::EventHandler handler;
    QCA::Event open;
    connect(&handler, &QCA::EventHandler::eventReady, this, [&](int, const QCA::Event &event) {
        Trivex::questionInfo(event);
        TokenMonitor::tokens();
        open = event;
    });
    handler.start();
    int withdrawn = 0;
    const auto *notifier = Trivex::QuestionNotifier::instance();
    const auto connection =
        connect(notifier, &Trivex::QuestionNotifier::withdrawn, this, [&](quintptr ticket) {
            const auto info = Trivex::questionInfo(open);
            QVERIFY(info && info->withdrawn && info->ticket == ticket);
            Trivex::cancelQuestions(info->keyStoreId);
            TokenMonitor::cancel(info->keyStoreId);
            TokenMonitor::token(info->keyStoreId);
            ++withdrawn;
        });
    Trivex::QuestionInfo question;
    question.keyStoreId = QStringLiteral("asked");
    const QCA::KeyStoreInfo store(QCA::KeyStore::SmartCard, question.keyStoreId,
                                  QStringLiteral("Token"));
    const auto reply = std::make_shared<Trivex::Reply>();
    QTimer::singleShot(0, this, [&] {
        QTRY_VERIFY(!open.isNull());
        Trivex::cancelQuestions(question.keyStoreId);
    });
    QVERIFY(endsInTime([=] { *reply = Trivex::ask(question, store); }));
    QVERIFY(!reply->accepted);
    QCOMPARE(withdrawn, 1);
    disconnect(connection);
}

// The question that is open ends, and the next one of the same operation is not put to anybody;
// others that concern the same store stay.
void TestTokenRegistry::refusedOwnerAsksNobody()
{
    Trivex::EventHandler handler;
    int asked = 0;
    QVector<int> open;
    connect(&handler, &QCA::EventHandler::eventReady, this, [&](int id, const QCA::Event &) {
        ++asked;
        open << id;
    });
    handler.start();
    Trivex::QuestionInfo question;
    question.keyStoreId = QStringLiteral("shared");
    const QCA::KeyStoreInfo store(QCA::KeyStore::SmartCard, question.keyStoreId,
                                  QStringLiteral("Token"));
    const auto other = std::make_shared<Trivex::OperationOwner>();
    const auto owner = std::make_shared<Trivex::OperationOwner>();
    const auto answered = std::make_shared<std::atomic_bool>(false);
    Trivex::QuestionInfo foreign = question;
    foreign.owner = other;
    std::thread patient([=] { *answered = Trivex::ask(foreign, store).accepted; });
    QTRY_COMPARE(asked, 1);
    question.owner = owner;
    QTimer::singleShot(0, this, [&] {
        QTRY_COMPARE(asked, 2);
        Trivex::refuseQuestions(owner);
    });
    const auto accepted = std::make_shared<std::atomic_int>(0);
    QVERIFY(endsInTime([=] {
        for (int i = 0; i < 3; ++i)
            *accepted += Trivex::ask(question, store).accepted ? 1 : 0;
    }));
    QCOMPARE(int(*accepted), 0);
    QCOMPARE(asked, 2);
    QVERIFY(owner->isClosed());
    QVERIFY(!other->isClosed());
    for (const int id : qAsConst(open))
        handler.submitPassword(id, QCA::SecureArray("1"));
    patient.join();
    QVERIFY(*answered);
}

QTEST_GUILESS_MAIN(TestTokenRegistry)
#include "tst_tokenregistry.moc"
