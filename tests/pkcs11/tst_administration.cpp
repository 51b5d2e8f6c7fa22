// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/storedanswers.h"
#include "tests/pkcs11/administering.h"
#include "tests/pkcs11/administrationfixture.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>
#include <QTimer>

#include <atomic>

using namespace TrivexTest;
using namespace Trivex;

/// Changing, setting and unblocking PINs, on a real token and at each call that can fail.
class TestAdministration : public AdministrationFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void userChangesPin();
    void wrongPinThenRightOne();
    void triesAreKept();
    void officerSetsPin();
    void officerSetsFirstPin();
    void officerChangesOwnPin();
    void keypad_data();
    void keypad();
    void emptyPinIsNotTried_data();
    void emptyPinIsNotTried();
    void newPinIsRefused_data();
    void newPinIsRefused();
    void failingCall_data();
    void failingCall();
    void tokenGoes();
    void waitingTaskIsDropped_data();
    void waitingTaskIsDropped();
    void nobodyElseHears();
    void oldPinIsForgotten();
};

void TestAdministration::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(prepare());
}

void TestAdministration::init()
{
    if (m_token) // none without the tools
        m_token->forget();
}

void TestAdministration::cleanup()
{
    QVERIFY(resetPins());
}

void TestAdministration::userChangesPin()
{
    QVERIFY(signs());
    m_token->forget();
    const auto result = perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin);
    QCOMPARE(result.error.kind, TokenError::NoError);
    QVERIFY(!result.isEmptied);
    QCOMPARE(m_token->count("C_SetPIN"), 1);
    QCOMPARE(m_token->count("C_Login"), 0);
    QVERIFY(opensWith(NewPin));
    QVERIFY(!opensWith(TestToken::pin()));
    // The login that was there goes on.
    m_prompt->resetCount();
    QVERIFY(signs());
    QCOMPARE(m_prompt->count(), 0);
}

void TestAdministration::wrongPinThenRightOne()
{
    const auto wrong = perform(TokenAdministration::ChangePin, "999999", NewPin);
    QCOMPARE(wrong.error.kind, TokenError::WrongPin);
    QCOMPARE(wrong.error.returnName, QStringLiteral("CKR_PIN_INCORRECT"));
    QCOMPARE(m_token->count("C_SetPIN"), 1);
    QVERIFY(opensWith(TestToken::pin()));
    const auto right = perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin);
    QCOMPARE(right.error.kind, TokenError::NoError);
    QCOMPARE(m_token->count("C_SetPIN"), 2);
    QVERIFY(opensWith(NewPin));
}

void TestAdministration::triesAreKept()
{
    m_token->control("tries 3");
    for (int i = 0; i < 2; ++i)
        QCOMPARE(perform(TokenAdministration::ChangePin, "999999", NewPin).error.kind,
                 TokenError::WrongPin);
    QTRY_COMPARE_WITH_TIMEOUT(TokenMonitor::token(m_storeId).pinState, PinState::FinalTry,
                              Patience);
    // The last one is spent only by somebody who knows that it is the last.
    QCOMPARE(perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin).error.kind,
             TokenError::LastTry);
    QCOMPARE(m_token->count("C_SetPIN"), 2);
    QCOMPARE(perform(TokenAdministration::ChangePin, "999999", NewPin, {}, true).error.kind,
             TokenError::WrongPin);
    QCOMPARE(m_token->count("C_SetPIN"), 3);
    QTRY_COMPARE_WITH_TIMEOUT(TokenMonitor::token(m_storeId).pinState, PinState::Locked, Patience);
    // Locked: nothing is sent, and the administrator unblocks it.
    QCOMPARE(perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin, {}, true).error.kind,
             TokenError::PinLocked);
    QCOMPARE(m_token->count("C_SetPIN"), 3);
    QCOMPARE(perform(TokenAdministration::SetPin, TestToken::soPin(), NewPin).error.kind,
             TokenError::NoError);
    QTRY_COMPARE_WITH_TIMEOUT(TokenMonitor::token(m_storeId).pinState, PinState::Normal, Patience);
    QVERIFY(opensWith(NewPin));
}

void TestAdministration::officerSetsPin()
{
    QVERIFY(signs()); // somebody is logged in, beside whom no administrator gets in
    const auto result = perform(TokenAdministration::SetPin, TestToken::soPin(), NewPin);
    QCOMPARE(result.error.kind, TokenError::NoError);
    QVERIFY(opensWith(NewPin));
    QCOMPARE(m_token->countText("user=officer"), 1);
    // The keys are still there, for who knows the new PIN.
    m_prompt->setPin(NewPin);
    QVERIFY(signs());
    m_prompt->setPin(TestToken::pin());
    QCOMPARE(perform(TokenAdministration::SetPin, "00000000", TestToken::pin()).error.kind,
             TokenError::WrongPin);
    QVERIFY(opensWith(NewPin));
}

void TestAdministration::officerSetsFirstPin()
{
    const QString before = std::exchange(m_storeId, waitForToken(OtherName));
    QVERIFY(!m_storeId.isEmpty());
    QCOMPARE(TokenMonitor::token(m_storeId).pinState, PinState::NotSet);
    const auto none = perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin);
    const auto set = perform(TokenAdministration::SetPin, TestToken::soPin(), NewPin);
    const bool isSet = QTest::qWaitFor(
        [&] { return TokenMonitor::token(m_storeId).pinState == PinState::Normal; }, Patience);
    m_storeId = before;
    QVERIFY(none.error.kind == TokenError::PinNotSet || none.error.kind == TokenError::WrongPin);
    QCOMPARE(set.error.kind, TokenError::NoError);
    QVERIFY(isSet);
    QVERIFY(opensWith(NewPin, "user", OtherName));
}

void TestAdministration::officerChangesOwnPin()
{
    QVERIFY(signs());
    QCOMPARE(perform(TokenAdministration::ChangeOfficerPin, TestToken::soPin(), NewPin).error.kind,
             TokenError::NoError);
    QVERIFY(opensWith(NewPin, "so"));
    QVERIFY(!opensWith(TestToken::soPin(), "so"));
    QVERIFY(opensWith(TestToken::pin()));
}

void TestAdministration::keypad_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("typed");
    QTest::addColumn<QByteArray>("call");
    QTest::newRow("change") << int(TokenAdministration::ChangePin) << TestToken::pin()
                            << QByteArray("C_SetPIN");
    QTest::newRow("unblock") << int(TokenAdministration::SetPin) << TestToken::soPin()
                             << QByteArray("C_InitPIN");
}

/// What a person types stays in the reader: no PIN comes by us, even if one was given.
void TestAdministration::keypad()
{
    QFETCH(int, kind);
    QFETCH(QByteArray, typed);
    QFETCH(QByteArray, call);
    m_token->control("pin-pad " + typed + ' ' + NewPin);
    m_token->forget();
    const auto result = perform(TokenAdministration::Kind(kind), "111111", "222222");
    QCOMPARE(result.error.kind, TokenError::NoError);
    QCOMPARE(m_token->count(call.constData()), 1);
    QCOMPARE(m_token->countText("pin=given"), 0);
    m_token->control();
    QVERIFY(opensWith(NewPin));
}

void TestAdministration::emptyPinIsNotTried_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("orders");
    for (const char *flags : {"", " no-pin-flag", " no-pin-flag no-login-flag"}) {
        const auto row = [flags](const char *name, TokenAdministration::Kind kind) {
            QTest::addRow("%s%s", name, flags)
                << int(kind) << "no-shortest-pin" + QByteArray(flags).replace(' ', '\n');
        };
        row("change", TokenAdministration::ChangePin);
        row("officer's change", TokenAdministration::ChangeOfficerPin);
        row("set", TokenAdministration::SetPin);
        row("initialise", TokenAdministration::Initialise);
    }
}

/// A token that sets no shortest length says nothing of the PIN that it has: it was initialised, so
/// its administrator has one. A try would be used up.
void TestAdministration::emptyPinIsNotTried()
{
    QFETCH(int, kind);
    QFETCH(QByteArray, orders);
    m_token->control(orders);
    m_token->forget();
    const auto result = perform(TokenAdministration::Kind(kind), {}, NewPin, StoreName);
    QCOMPARE(result.error.kind, TokenError::PinMissing);
    for (const char *tried : {"pin=empty", "pin=none", "C_SetPIN ", "C_InitToken "})
        QCOMPARE(m_token->countText(tried), 0);
}

void TestAdministration::newPinIsRefused_data()
{
    QTest::addColumn<QByteArray>("pin");
    QTest::addColumn<QByteArray>("newPin");
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("calls");
    // By one, with what the token says: 4 to 255.
    QTest::newRow("too short") << TestToken::pin() << QByteArray("123") << QByteArray()
                               << int(TokenError::NewPinRefused) << 0;
    QTest::newRow("too long") << TestToken::pin() << QByteArray(256, '1') << QByteArray()
                              << int(TokenError::NewPinRefused) << 0;
    QTest::newRow("none") << TestToken::pin() << QByteArray() << QByteArray()
                          << int(TokenError::PinMissing) << 0;
    QTest::newRow("no old one") << QByteArray() << NewPin << QByteArray()
                                << int(TokenError::PinMissing) << 0;
    QTest::newRow("its length") << TestToken::pin() << NewPin
                                << QByteArray("fail C_SetPIN * CKR_PIN_LEN_RANGE")
                                << int(TokenError::NewPinRefused) << 1;
    QTest::newRow("its letters") << TestToken::pin() << NewPin
                                 << QByteArray("fail C_SetPIN * CKR_PIN_INVALID")
                                 << int(TokenError::NewPinRefused) << 1;
    QTest::newRow("old one expired")
        << TestToken::pin() << NewPin << QByteArray("fail C_SetPIN * CKR_PIN_EXPIRED")
        << int(TokenError::PinExpired) << 1;
}

void TestAdministration::newPinIsRefused()
{
    QFETCH(QByteArray, pin);
    QFETCH(QByteArray, newPin);
    QFETCH(QByteArray, orders);
    QFETCH(int, kind);
    QFETCH(int, calls);
    m_token->control(orders);
    m_token->forget();
    QCOMPARE(int(perform(TokenAdministration::ChangePin, pin, newPin).error.kind), kind);
    QCOMPARE(m_token->count("C_SetPIN"), calls);
}

void TestAdministration::failingCall_data()
{
    QTest::addColumn<int>("task");
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<int>("kind");
    const auto row = [](const char *name, TokenAdministration::Kind task, const char *orders,
                        TokenError::Kind kind) {
        QTest::newRow(name) << int(task) << QByteArray(orders) << int(kind);
    };
    const auto change = TokenAdministration::ChangePin;
    const auto set = TokenAdministration::SetPin;
    row("info", change, "fail C_GetTokenInfo * CKR_DEVICE_ERROR", TokenError::DeviceFailure);
    row("session", change, "fail C_OpenSession * CKR_SESSION_COUNT", TokenError::TokenInUse);
    row("protected", change, "fail C_OpenSession * CKR_TOKEN_WRITE_PROTECTED",
        TokenError::ReadOnly);
    row("set", change, "fail C_SetPIN * CKR_FUNCTION_NOT_SUPPORTED", TokenError::NotSupported);
    row("locked", change, "fail C_SetPIN * CKR_PIN_LOCKED", TokenError::PinLocked);
    row("login first", change, "fail C_SetPIN 1 CKR_USER_NOT_LOGGED_IN", TokenError::NoError);
    row("login always", change, "fail C_SetPIN * CKR_USER_NOT_LOGGED_IN", TokenError::NotLoggedIn);
    row("left at the reader", change, "fail C_SetPIN * CKR_FUNCTION_CANCELED",
        TokenError::Cancelled);
    row("officer's login", set, "fail C_Login * CKR_SESSION_READ_ONLY_EXISTS",
        TokenError::TokenInUse);
    row("officer locked", set, "officer-locked", TokenError::PinLocked);
    row("officer's last try", set, "officer-final-try", TokenError::LastTry);
    row("init", set, "fail C_InitPIN * CKR_DEVICE_ERROR", TokenError::DeviceFailure);
    row("init refused", set, "fail C_InitPIN * CKR_PIN_LEN_RANGE", TokenError::NewPinRefused);
    row("init without login", set, "fail C_InitPIN * CKR_USER_NOT_LOGGED_IN",
        TokenError::NotLoggedIn);
    row("sessions end", set, "end-sessions-at C_InitPIN 1", TokenError::DeviceFailure);
}

/// Nothing is sent twice, nobody stays logged in, and the old PIN works or the new one does.
void TestAdministration::failingCall()
{
    QFETCH(int, task);
    QFETCH(QByteArray, orders);
    QFETCH(int, kind);
    const bool isChange = task == TokenAdministration::ChangePin;
    m_token->control(orders);
    m_token->forget();
    const auto result = perform(TokenAdministration::Kind(task),
                                isChange ? TestToken::pin() : TestToken::soPin(), NewPin);
    QCOMPARE(int(result.error.kind), kind);
    QVERIFY(m_token->count("C_InitPIN") <= 1);
    QVERIFY(m_token->countText("user=officer") <= 1);
    QVERIFY(m_token->count("C_SetPIN") <= (m_token->count("C_Login") ? 2 : 1));
    m_token->control();
    QVERIFY(opensWith(kind == TokenError::NoError ? NewPin : TestToken::pin()));
    // And the token works as before.
    if (kind != TokenError::NoError)
        QVERIFY(signs());
}

void TestAdministration::tokenGoes()
{
    m_token->control("delay C_SetPIN * 400\nremove-at C_SetPIN *");
    QCOMPARE(perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin).error.kind,
             TokenError::TokenRemoved);
    QTRY_VERIFY_WITH_TIMEOUT(!TokenMonitor::token(m_storeId).present, Patience);
    QCOMPARE(perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin).error.kind,
             TokenError::TokenRemoved);
}

void TestAdministration::waitingTaskIsDropped_data()
{
    QTest::addColumn<bool>("alone");
    QTest::newRow("alone") << true;
    QTest::newRow("with all others") << false;
}

void TestAdministration::waitingTaskIsDropped()
{
    QFETCH(bool, alone);
    m_token->control("delay C_SetPIN * 1500");
    m_token->forget();
    TokenAdministration first;
    first.pin = secret(TestToken::pin());
    first.newPin = secret(NewPin);
    const auto ended = std::make_shared<std::atomic_int>(-1);
    QVERIFY(startTokenAdministration(
        m_storeId, std::move(first),
        [ended](const TokenAdministrationResult &result) { *ended = result.error.kind; }));
    QVERIFY(m_token->waitUntilInside("C_SetPIN"));
    QTimer::singleShot(100, [&] {
        if (alone)
            cancelTokenTask(m_task);
        else
            TokenMonitor::cancel(m_storeId);
    });
    QCOMPARE(perform(TokenAdministration::ChangePin, NewPin, TestToken::pin()).error.kind,
             TokenError::Cancelled);
    // What is inside the token is waited for: its outcome has to be known.
    QTRY_COMPARE_WITH_TIMEOUT(int(*ended), int(TokenError::NoError), Patience);
    QCOMPARE(m_token->count("C_SetPIN"), 1);
    QVERIFY(opensWith(NewPin));
}

void TestAdministration::nobodyElseHears()
{
    TokenMonitor monitor;
    QSignalSpy failed(&monitor, &TokenMonitor::failed);
    perform(TokenAdministration::ChangePin, "999999", NewPin);
    perform(TokenAdministration::SetPin, "99999999", NewPin);
    // No error must be told of in this time.
    QTest::qWait(50);
    QCOMPARE(failed.count(), 0);
}

void TestAdministration::oldPinIsForgotten()
{
    TokenMonitor monitor;
    QSignalSpy changed(&monitor, &TokenMonitor::pinChanged);
    // Answers that wait for the next operation are of the old PIN, too.
    StoredAnswers stored;
    stored.registerSet();
    stored.setKeyStoreId(m_storeId);
    stored.setPassword(QCA::SecureArray(TestToken::pin()));
    perform(TokenAdministration::ChangePin, "999999", NewPin);
    QVERIFY(!stored.answers().password.isEmpty());
    QCOMPARE(perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin).error.kind,
             TokenError::NoError);
    QTRY_COMPARE_WITH_TIMEOUT(changed.count(), 1, Patience);
    QCOMPARE(changed.first().first().toString(), m_storeId);
    QVERIFY(stored.answers().password.isEmpty());
    perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin);
    // No second signal must come in this time.
    QTest::qWait(50);
    QCOMPARE(changed.count(), 1);
}

QTEST_GUILESS_MAIN(TestAdministration)
#include "tst_administration.moc"
