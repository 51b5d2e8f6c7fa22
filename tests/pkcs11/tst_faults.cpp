// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QMap>
#include <QSignalSpy>
#include <QTimer>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Faults");

} // namespace

/// Every call of every flow fails once, in each of the ways a token can fail. What must hold: the
/// flow ends, with a clear outcome; a flow that failed leaves nothing behind; no PIN is sent that
/// was not given for that login; the next one works.
///
/// Each flow begins as the first of its process does, because a session that an earlier one left
/// open would keep the login that a fault ends.
class TestFaults : public TokenFixture {
    Q_OBJECT
public:
    TestFaults()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void everyCall_data();
    void everyCall();
    void states_data();
    void states();
    void slowCalls_data();
    void slowCalls();
    void removedInMidCall_data();
    void removedInMidCall();
    void failingAtStart_data();
    void failingAtStart();
    void cleanupTestCase();

private:
    struct Flow {
        /// True when the flow says that it has succeeded.
        std::function<bool()> run;
        /// What the token has more (or less) afterwards.
        int objectsOnSuccess;
        /// Brings the token back to where it was before.
        std::function<void()> restore;
    };
    Flow flow(const QString &name);
    bool generate()
    {
        return !generateCurve(QStringLiteral("ec-secp384r1"), QStringLiteral("made")).isNull();
    }
    /// Ends all sessions of the token. Logged out, that happens at the flow's first call, by the
    /// orders that are returned.
    QByteArray startAfresh(bool loggedIn);
    QMap<QByteArray, int> callsOf(const Flow &flow, bool loggedIn);
    void fail(const Flow &flow, bool loggedIn, const QByteArray &order, int before);
    int objects() const { return m_token->token().objectCount(); }
    void settle();

    QCA::Certificate m_root;
    QCA::KeyBundle m_bundle;
    QString m_written;
    Trivex::TokenMonitor m_monitor;
    QString m_lastError;
};

void TestFaults::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    connect(&m_monitor, &Trivex::TokenMonitor::failed, this,
            [this](const Trivex::TokenError &error) {
                m_lastError =
                    QStringLiteral("%1 0x%2").arg(error.function).arg(error.returnValue, 0, 16);
            });
    QVERIFY(start(1));
    m_root = root();
    m_bundle = makeCurveBundle(QStringLiteral("/CN=Bundle"));
    QVERIFY(!m_root.isNull() && !m_bundle.isNull());
    QVERIFY(signs());
}

void TestFaults::cleanupTestCase()
{
    if (m_token)
        m_token->control();
}

TestFaults::Flow TestFaults::flow(const QString &name)
{
    const auto removeWritten = [this] {
        if (!m_stores->remove(m_store, m_written))
            qFatal("what was written can't be removed");
    };
    const auto write = [this](const auto &what) {
        m_written = m_stores->write(m_store, what);
        return !m_written.isEmpty();
    };
    if (name == QLatin1String("sign"))
        return {[this] { return signs(); }, 0, [] {}};
    if (name == QLatin1String("generate"))
        return {[this] { return generate(); }, 2, [this] { removeGenerated(); }};
    if (name == QLatin1String("write certificate"))
        return {[=] { return write(m_root); }, 1, removeWritten};
    if (name == QLatin1String("write bundle")) {
        // With its chain: the root is an entry of its own.
        return {[=] { return write(m_bundle); }, 4,
                [=] {
                    removeWritten();
                    for (const auto &entry : m_stores->currentEntries(StoreName)) {
                        if (entry.name() == QLatin1String("Test Root"))
                            m_stores->remove(m_store, entry.id());
                    }
                }};
    }
    return {[this] {
                const auto all = m_stores->currentEntries(StoreName);
                for (const auto &entry : all) {
                    if (entry.name() == QLatin1String("bundle"))
                        return m_stores->remove(m_store, entry.id());
                }
                return false;
            },
            -3, [=] { write(m_bundle); }};
}

/// What the provider's own looks at the slot may be doing at the same time is over.
void TestFaults::settle()
{
    m_token->control();
    QVERIFY(QTest::qWaitFor(
        [this] {
            const auto status = Trivex::TokenMonitor::token(m_store->id());
            return status.present && !status.loading && !status.busy;
        },
        10000));
}

QByteArray TestFaults::startAfresh(bool loggedIn)
{
    const QByteArray end("end-sessions-at session 1\n");
    m_token->control(end);
    // The first one fails when it is its new session that ends, and all do while a look at the
    // slots that met the fault has the token for removed.
    bool isReady = signs() || signs();
    for (int looks = 0; !isReady && looks < 3; ++looks) {
        QTest::qWait(600);
        settle();
        isReady = QTest::qWaitFor([this] { return !m_stores->entries(StoreName).isEmpty(); }, 10000)
            && signs();
    }
    if (!isReady)
        qFatal("the token does not sign: %s", qPrintable(m_lastError));
    return loggedIn ? QByteArray() : end;
}

QMap<QByteArray, int> TestFaults::callsOf(const Flow &flow, bool loggedIn)
{
    m_token->control(startAfresh(loggedIn));
    m_token->forget();
    if (!flow.run())
        return {};
    auto calls = m_token->callCounts();
    flow.restore();
    // The provider's own looks at the slots come at any time.
    calls.remove("C_GetSlotList");
    calls.remove("C_CloseSession");
    return calls;
}

void TestFaults::everyCall_data()
{
    QTest::addColumn<QString>("flowName");
    QTest::addColumn<bool>("loggedIn");
    QTest::addColumn<QByteArray>("fault");
    const char *faults[] = {
        "CKR_DEVICE_REMOVED",        "CKR_DEVICE_ERROR", "CKR_SESSION_HANDLE_INVALID",
        "CKR_PIN_INCORRECT",         "CKR_PIN_LOCKED",   "CKR_DEVICE_MEMORY",
        "CKR_TOKEN_WRITE_PROTECTED",
    };
    // Those that may end the login.
    const char *ends[] = {"fail %1 %2 CKR_DEVICE_REMOVED", "fail %1 %2 CKR_SESSION_HANDLE_INVALID",
                          "fail %1 %2 CKR_PIN_INCORRECT", "end-sessions-at %1 %2",
                          "logout-at %1 %2"};
    for (const char *name :
         {"sign", "generate", "write certificate", "write bundle", "remove bundle"}) {
        const auto row = [name](const QByteArray &rowName, bool loggedIn, const QByteArray &fault) {
            QTest::addRow("%s, %s", name, rowName.constData())
                << QString::fromLatin1(name) << loggedIn << fault;
        };
        for (const char *fault : faults)
            row(fault, true, QByteArray("fail %1 %2 ") + fault);
        row("done but CKR_DEVICE_ERROR", true, "fail-after %1 %2 CKR_DEVICE_ERROR");
        row("sessions end", true, "end-sessions-at %1 %2");
        row("login ends", true, "logout-at %1 %2");
        for (const QByteArray end : ends)
            row("logged out, " + QByteArray(end).replace(" %1 %2", ""), false, end);
    }
}

void TestFaults::fail(const Flow &flow, bool loggedIn, const QByteArray &order, int before)
{
    m_token->control(startAfresh(loggedIn) + order);
    m_token->forget();
    m_prompt->resetCount();
    const bool succeeded = flow.run();
    settle();
    if (order.contains("C_GetTokenInfo")) {
        // A look at the slots may have met the fault instead, and has the token for removed soon.
        QTest::qWait(100);
        settle();
    }
    const int change = objects() - before;
    QVERIFY2(change == (succeeded ? flow.objectsOnSuccess : 0),
             qPrintable(QStringLiteral("%1: %2, last error %3, objects %4")
                            .arg(QString::fromLatin1(order),
                                 succeeded ? QStringLiteral("succeeded") : QStringLiteral("failed"),
                                 m_lastError)
                            .arg(change)));
    QVERIFY2(m_token->count("C_Login") <= m_prompt->count(), order.constData());
    if (succeeded)
        flow.restore();
    // It goes on at once; and a device that failed again and again, with nothing going well
    // between, would have its module started anew.
    else if (order.contains("CKR_DEVICE_ERROR"))
        QVERIFY2(signs(), order.constData());
}

void TestFaults::everyCall()
{
    QFETCH(QString, flowName);
    QFETCH(bool, loggedIn);
    QFETCH(QByteArray, fault);
    const Flow tested = flow(flowName);
    const bool isRemoval = tested.objectsOnSuccess < 0;
    if (isRemoval)
        tested.restore();
    const auto calls = callsOf(tested, loggedIn);
    QVERIFY2(!calls.isEmpty(), qPrintable(m_lastError));
    const int before = objects();
    for (auto call = calls.begin(); call != calls.end(); ++call) {
        for (int count = 1; count <= call.value(); ++count) {
            const QByteArray order = QByteArray(fault)
                                         .replace("%1", call.key())
                                         .replace("%2", QByteArray::number(count));
            fail(tested, loggedIn, order, before);
            if (QTest::currentTestFailed())
                return;
        }
    }
    QVERIFY(signs());
    QVERIFY(tested.run());
    if (!isRemoval)
        tested.restore();
}

void TestFaults::states_data()
{
    QTest::addColumn<QString>("flowName");
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<int>("kind");
    for (const char *name : {"generate", "write certificate", "write bundle"}) {
        const QString flowName = QString::fromLatin1(name);
        QTest::addRow("%s, read-only", name)
            << flowName << QByteArray("read-only") << int(Trivex::TokenError::ReadOnly);
        QTest::addRow("%s, full", name)
            << flowName << QByteArray("full") << int(Trivex::TokenError::TokenFull);
    }
}

void TestFaults::states()
{
    QFETCH(QString, flowName);
    QFETCH(QByteArray, orders);
    QFETCH(int, kind);
    const Flow tested = flow(flowName);
    const int before = objects();
    Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    m_token->control(orders);
    QVERIFY(!tested.run());
    settle();
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(int(failed.first().first().value<Trivex::TokenError>().kind), kind);
    QCOMPARE(objects(), before);
    QVERIFY(tested.run());
    tested.restore();
}

void TestFaults::slowCalls_data()
{
    QTest::addColumn<QString>("flowName");
    QTest::addColumn<QByteArray>("call");
    QTest::newRow("sign") << "sign" << QByteArray("C_Sign");
    QTest::newRow("generate") << "generate" << QByteArray("C_GenerateKeyPair");
    QTest::newRow("write") << "write certificate" << QByteArray("C_CreateObject");
    QTest::newRow("search") << "write certificate" << QByteArray("C_FindObjects");
}

/// Five seconds in one call: the event loop goes on meanwhile, and the flow succeeds.
void TestFaults::slowCalls()
{
    QFETCH(QString, flowName);
    QFETCH(QByteArray, call);
    const Flow tested = flow(flowName);
    m_token->control("delay " + call + " 1 5000");
    m_token->forget();
    // Of the loop, from when the call has begun until it is counted, which is when it has ended.
    const QByteArray begun = "waits " + call + '\n';
    int beats = 0;
    QTimer beat;
    connect(&beat, &QTimer::timeout, this, [&] {
        beats += m_token->countText(begun.constData()) > 0 && m_token->count(call.constData()) == 0;
    });
    beat.start(20);
    QVERIFY(tested.run());
    QVERIFY2(beats >= 25, qPrintable(QString::number(beats)));
    settle();
    tested.restore();
}

void TestFaults::removedInMidCall_data()
{
    QTest::addColumn<QString>("flowName");
    QTest::addColumn<QByteArray>("call");
    QTest::newRow("sign") << "sign" << QByteArray("C_Sign");
    QTest::newRow("sign, start") << "sign" << QByteArray("C_SignInit");
    QTest::newRow("generate") << "generate" << QByteArray("C_GenerateKeyPair");
    QTest::newRow("write") << "write certificate" << QByteArray("C_CreateObject");
    QTest::newRow("bundle") << "write bundle" << QByteArray("C_CreateObject");
}

/// The token leaves at a call and comes back later.
void TestFaults::removedInMidCall()
{
    QFETCH(QString, flowName);
    QFETCH(QByteArray, call);
    const Flow tested = flow(flowName);
    const int before = objects();
    m_token->control("remove-at " + call + " 1");
    QVERIFY(!tested.run());
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(m_stores->entries(StoreName).isEmpty());
    QCOMPARE(objects(), before);
    settle();
    QVERIFY(m_stores->waitForEntries(StoreName, 1));
    QVERIFY(tested.run());
    tested.restore();
}

void TestFaults::failingAtStart_data()
{
    QTest::addColumn<QByteArray>("call");
    for (const char *call : {"C_GetTokenInfo", "C_OpenSession", "C_GetSessionInfo",
                             "C_FindObjectsInit", "C_FindObjects", "C_GetAttributeValue"})
        QTest::newRow(call) << QByteArray(call);
}

/// A first reading that fails is tried again.
void TestFaults::failingAtStart()
{
    QFETCH(QByteArray, call);
    m_token->control("remove");
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(m_stores->entries(StoreName).isEmpty());
    m_token->control("fail " + call + " 1 CKR_DEVICE_ERROR");
    QVERIFY(m_stores->waitForEntries(StoreName, 1));
    settle();
    QVERIFY(signs());
}

QTEST_GUILESS_MAIN(TestFaults)
#include "tst_faults.moc"
