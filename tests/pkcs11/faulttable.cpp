// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/faulttable.h"

#include <QDirIterator>
#include <QSemaphore>
#include <QTimer>

#include <algorithm>
#include <thread>

namespace TrivexTest {

namespace {

constexpr int Patience = 30000;
/// A table that found so much is not gone through to its end.
constexpr int MostProblems = 40;
/// So many calls of one name meet every fault; those after them a quarter each, by turns.
constexpr int WholeCalls = 2;
/// One may be that in which the call began.
constexpr int EnoughTurns = 2;

QByteArray described(const Trivex::TokenError &error)
{
    return "kind " + QByteArray::number(error.kind) + ' ' + error.function.toLatin1() + ' '
        + error.returnName.toLatin1();
}

/// What fails by such a fault is another call, or the token can do less.
bool isToldOtherwise(const QByteArray &call, const QByteArray &result,
                     const Trivex::TokenError &error)
{
    // A look at the slots may be who met it. It takes the token away, and no call of the flow has
    // failed then.
    if (call == "C_GetTokenInfo" && error.kind == Trivex::TokenError::TokenRemoved
        && error.function.isEmpty())
        return true;
    // A search and a session that were not ended stand in the way of the next one.
    if (call == "C_FindObjectsFinal" || call == "C_CloseSession")
        return true;
    // The token has said that the object is gone.
    if (call == "C_GetAttributeValue" && result == "CKR_OBJECT_HANDLE_INVALID")
        return true;
    static const QByteArrayList failures = {"CKR_DEVICE_REMOVED",  "CKR_TOKEN_NOT_PRESENT",
                                            "CKR_SLOT_ID_INVALID", "CKR_DEVICE_ERROR",
                                            "CKR_HOST_MEMORY",     "CKR_DEVICE_MEMORY"};
    return call == "C_GetMechanismInfo" && !failures.contains(result);
}

} // namespace

FaultTable::FaultTable(const QString &storeName)
    : TokenFixture(storeName)
{
}

bool FaultTable::startTable(int entries)
{
    connect(&m_monitor, &Trivex::TokenMonitor::failed, this,
            [this](const Trivex::TokenError &error) { noteError(error); });
    return start(entries) && objects() == m_token->token().objectCount() && signs();
}

void FaultTable::noteError(const Trivex::TokenError &error)
{
    if (error.kind != Trivex::TokenError::NoError)
        m_errors.append(error);
}

int FaultTable::objects() const
{
    QDirIterator files(m_token->token().path() + QStringLiteral("/tokens"),
                       {QStringLiteral("*.object")}, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    while (files.hasNext()) {
        // The token has one for itself.
        count += !files.next().endsWith(QLatin1String("token.object"));
    }
    return count;
}

bool FaultTable::settle()
{
    m_token->control();
    return QTest::qWaitFor(
        [this] {
            const auto tokens = Trivex::TokenMonitor::tokens();
            return !tokens.isEmpty()
                && std::all_of(tokens.begin(), tokens.end(), [](const Trivex::TokenStatus &one) {
                       return one.present && one.isRead && !one.loading && !one.busy;
                   });
        },
        Patience);
}

bool FaultTable::worksAgain()
{
    // What a look at the slots met may take the token away, which is read anew then.
    return QTest::qWaitFor([this] { return settle() && signs(); }, Patience);
}

QByteArray FaultTable::startAfresh(const FaultFlow &flow)
{
    const QByteArray end = "end-sessions-at " + flow.first + " 1\n";
    m_token->control("end-sessions-at session 1");
    // The first signature ends them, and may be what fails by it.
    signs();
    if (!worksAgain())
        qFatal("the token does not sign: %s",
               m_errors.isEmpty() ? "no error" : described(m_errors.last()).constData());
    return end;
}

int FaultTable::openSessions() const
{
    return m_token->lastNumber(" open=");
}

QMap<QByteArray, int> FaultTable::callsOf(const FaultFlow &flow)
{
    m_orders = startAfresh(flow);
    m_token->control(m_orders);
    m_token->forget();
    if (!flow.run())
        return {};
    auto calls = m_token->callCounts();
    flow.restore();
    flow.repair();
    // The looks at the slots come at any time, with a flow or without.
    calls.remove("C_GetSlotList");
    return calls;
}

QByteArray FaultTable::checkError(const FaultFlow &flow, bool succeeded, const QByteArray &call,
                                  const Fault &fault) const
{
    if (succeeded)
        return m_errors.isEmpty() ? QByteArray()
                                  : "a success with an error: " + described(m_errors.first());
    if (m_errors.isEmpty())
        return "no error was told";
    const Trivex::TokenError &error = m_errors.first();
    if (m_errors.size() > 1)
        return "two errors: " + described(error) + " and " + described(m_errors.at(1));
    if (error.keyStoreId != flow.storeId)
        return "the error names no token: " + described(error);
    const bool hasCause = error.kind != Trivex::TokenError::DeviceFailure
        || (!error.function.isEmpty() && !error.returnName.isEmpty());
    if (!hasCause || error.function.isEmpty() != error.returnName.isEmpty())
        return "the error has no cause: " + described(error);
    if (!fault.result.isEmpty() && error.function != QString::fromLatin1(call)
        && !isToldOtherwise(call, fault.result, error))
        return "the error names another call: " + described(error);
    return {};
}

QByteArray FaultTable::check(const FaultFlow &flow, const QByteArray &call, const Fault &fault)
{
    const QByteArray fresh = startAfresh(flow);
    const int before = objects();
    // One of each token at most is to be open afterwards.
    const int sessions = std::max(openSessions(), Trivex::TokenMonitor::tokens().size());
    m_orders = fresh + fault.orders;
    m_token->control(m_orders);
    m_token->forget();
    m_prompt->resetCount();
    m_errors.clear();
    const bool succeeded = flow.run();
    const int logins = m_token->count("C_Login");
    QCoreApplication::sendPostedEvents();
    QByteArray problem = checkError(flow, succeeded, call, fault);
    if (!settle())
        return "the token does not come to rest";
    const int change = objects() - before;
    // Of a token that was pulled out nothing can be taken back: what was made by then is left.
    const bool isPulled = fault.removesToken && change > 0 && change <= flow.objects;
    // And an object of which the token says that it is gone is neither removed nor shown any more,
    // until the token is read anew.
    const bool saysGone =
        call == "C_GetAttributeValue" && fault.result == "CKR_OBJECT_HANDLE_INVALID";
    const bool isSaidGone = saysGone && succeeded && change < 0 && change > flow.objects;
    if (saysGone && !m_token->replug(m_store->id()))
        return "the token does not come back";
    const bool mayBeLeft = isPulled || isSaidGone;
    if (problem.isEmpty() && change != (succeeded ? flow.objects : 0) && !mayBeLeft)
        problem = (succeeded ? "succeeded, but " : "failed, but ") + QByteArray::number(change)
            + " objects";
    if (problem.isEmpty() && logins > m_prompt->count() + flow.logins)
        problem = QByteArray::number(logins) + " logins";
    if (succeeded || mayBeLeft)
        flow.restore();
    flow.repair();
    if (!worksAgain())
        return "does not work again";
    if (problem.isEmpty() && objects() != before)
        problem = "not restored";
    const bool losesSession = fault.losesSession || call == "C_CloseSession";
    if (problem.isEmpty() && !losesSession && openSessions() > sessions)
        problem = QByteArray::number(openSessions()) + " sessions are open, before "
            + QByteArray::number(sessions);
    return problem;
}

QByteArray FaultTable::failuresOf(const FaultFlow &flow)
{
    const auto calls = callsOf(flow);
    if (calls.isEmpty())
        return "the flow fails unasked";
    QByteArrayList problems;
    int turn = 0;
    m_rows = 0;
    for (auto call = calls.begin(); call != calls.end(); ++call) {
        for (int number = 1; number <= call.value(); ++number) {
            const auto faults = faultsOf(call.key(), number, turn++, number <= WholeCalls);
            for (const Fault &fault : faults) {
                ++m_rows;
                const QByteArray problem = check(flow, call.key(), fault);
                if (!problem.isEmpty())
                    problems.append(QByteArray(fault.orders).replace('\n', ", ") + ": " + problem);
                if (problems.size() >= MostProblems)
                    return problems.join('\n');
            }
        }
    }
    qInfo("%d calls of %d functions, %d runs", turn, int(calls.size()), m_rows);
    return problems.join('\n');
}

int FaultTable::turnsDuring(const QByteArray &call, const FaultFlow &flow)
{
    const QByteArray begun = "waits " + call + '\n';
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        turns += m_token->countText(begun.constData()) > 0;
        if (turns == EnoughTurns)
            m_token->control();
    });
    // Where the event loop stands still, nothing else would end the call.
    QSemaphore hasEnded;
    std::thread release([&] {
        if (!hasEnded.tryAcquire(1, Patience))
            m_token->control();
    });
    timer.start(5);
    const bool succeeded = flow.run();
    timer.stop();
    hasEnded.release();
    release.join();
    return succeeded ? turns : -1;
}

QByteArray FaultTable::stallsOf(const FaultFlow &flow)
{
    auto calls = callsOf(flow);
    calls.remove("C_GetTokenInfo"); // a look at the slots may be who waits in it
    QByteArrayList problems;
    for (auto call = calls.begin(); call != calls.end(); ++call) {
        m_orders = startAfresh(flow) + "hold " + call.key() + " 1";
        m_token->control(m_orders);
        m_token->forget();
        const int turns = turnsDuring(call.key(), flow);
        if (turns < EnoughTurns)
            problems.append(call.key() + (turns < 0 ? ": failed" : ": the event loop stands"));
        settle();
        if (turns >= 0)
            flow.restore();
        flow.repair();
    }
    return problems.join('\n');
}

} // namespace TrivexTest
