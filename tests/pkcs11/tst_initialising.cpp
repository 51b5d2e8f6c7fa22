// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/administrationfixture.h"
#include "tests/support/needtokens.h"

using namespace TrivexTest;
using namespace Trivex;

/// Initialising a token: what is on it goes, and only when it was asked for.
class TestInitialising : public AdministrationFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void underANewName();
    void underTheSameName();
    void half();
    void neverUnasked_data();
    void neverUnasked();
    void equalNames();
};

void TestInitialising::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(prepare());
}

void TestInitialising::init()
{
    if (m_token) // none without the tools
        m_token->forget();
}

void TestInitialising::cleanup()
{
    QVERIFY(resetPins());
}

void TestInitialising::underANewName()
{
    QVERIFY(signs());
    QVERIFY(waitForCounts(1, 1));
    const QString before = m_storeId;
    const QString name = QStringLiteral("Новый токен");
    const auto result = perform(TokenAdministration::Initialise, TestToken::soPin(), NewPin, name);
    QCOMPARE(result.error.kind, TokenError::NoError);
    QVERIFY(result.isEmptied);
    m_storeId = waitForToken(name);
    QVERIFY(!m_storeId.isEmpty());
    // The old one is not said to be away: it is no more.
    QVERIFY(TokenMonitor::token(before).name.isEmpty());
    QVERIFY(waitForCounts(0, 0));
    QVERIFY(opensWith(NewPin, "user", name));
    QVERIFY(!opensWith(NewPin, "user", StoreName));
    QVERIFY(m_stores->waitFor(name, Patience));
    QTRY_VERIFY_WITH_TIMEOUT(!m_stores->names().contains(StoreName), Patience);
    QVERIFY(makeAnew());
    QVERIFY(m_stores->waitForEntries(StoreName, 1, Patience));
    QVERIFY(signs());
}

void TestInitialising::underTheSameName()
{
    const QString before = m_storeId;
    const auto result =
        perform(TokenAdministration::Initialise, TestToken::soPin(), TestToken::pin(), StoreName);
    QCOMPARE(result.error.kind, TokenError::NoError);
    QVERIFY(waitForCounts(0, 0));
    QCOMPARE(m_storeId, before);
    QVERIFY(m_stores->waitForEntries(StoreName, 0, Patience));
    QVERIFY(makeAnew());
    QVERIFY(m_stores->waitForEntries(StoreName, 1, Patience));
    QVERIFY(signs());
}

void TestInitialising::half()
{
    m_token->control("fail C_InitPIN * CKR_DEVICE_ERROR");
    const auto result =
        perform(TokenAdministration::Initialise, TestToken::soPin(), NewPin, StoreName);
    QCOMPARE(result.error.kind, TokenError::DeviceFailure);
    QVERIFY(result.isEmptied);
    QVERIFY(waitForCounts(0, 0));
    QTRY_COMPARE_WITH_TIMEOUT(TokenMonitor::token(m_storeId).pinState, PinState::NotSet, Patience);
    m_token->control();
    QCOMPARE(perform(TokenAdministration::SetPin, TestToken::soPin(), TestToken::pin()).error.kind,
             TokenError::NoError);
    QVERIFY(makeAnew());
}

void TestInitialising::neverUnasked_data()
{
    QTest::addColumn<QByteArray>("officer");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<int>("kind");
    const QByteArray right = TestToken::soPin();
    const auto row = [&](const char *title, const QByteArray &officer, const QString &name,
                         const char *orders, TokenError::Kind kind) {
        QTest::newRow(title) << officer << name << QByteArray(orders) << int(kind);
    };
    row("wrong PIN", "00000000", StoreName, "", TokenError::WrongPin);
    row("no name", right, QString(), "", TokenError::NotSupported);
    row("long name", right, QString(17, QChar(0x416)), "", TokenError::NotSupported);
    row("read-only", right, StoreName, "read-only", TokenError::ReadOnly);
    row("protected", right, StoreName, "fail C_InitToken * CKR_TOKEN_WRITE_PROTECTED",
        TokenError::ReadOnly);
    row("somebody's session", right, StoreName, "fail C_InitToken * CKR_SESSION_EXISTS",
        TokenError::TokenInUse);
    row("unknown", right, StoreName, "fail C_InitToken * CKR_FUNCTION_NOT_SUPPORTED",
        TokenError::NotSupported);
    row("device", right, StoreName, "fail C_InitToken * CKR_DEVICE_ERROR",
        TokenError::DeviceFailure);
    row("gone", right, StoreName, "remove-at C_InitToken *", TokenError::TokenRemoved);
    row("last try", right, StoreName, "officer-final-try", TokenError::LastTry);
}

void TestInitialising::neverUnasked()
{
    QFETCH(QByteArray, officer);
    QFETCH(QString, name);
    QFETCH(QByteArray, orders);
    QFETCH(int, kind);
    const int before = objects();
    m_token->control(orders);
    m_token->forget();
    const auto result = perform(TokenAdministration::Initialise, officer, TestToken::pin(), name);
    QCOMPARE(int(result.error.kind), kind);
    QVERIFY(!result.isEmptied);
    const bool wasAsked = m_token->count("C_InitToken") > 0;
    QVERIFY(m_token->count("C_InitToken") <= 1);
    if (wasAsked) {
        // The looks at the slots see it again, as it is.
        m_token->control("count-low");
        QTRY_COMPARE_WITH_TIMEOUT(TokenMonitor::token(m_storeId).pinState, PinState::CountLow,
                                  Patience);
    }
    m_token->control();
    QVERIFY(waitForCounts(1, 1));
    QCOMPARE(objects(), before);
    QVERIFY(m_stores->waitForEntries(StoreName, 1, Patience));
    // A token whose C_InitToken failed is read anew: an entry of before may be taken once more.
    QTRY_VERIFY_WITH_TIMEOUT(signs(), Patience);
}

/// Tokens of one name are told by their stores: the other keeps its PIN and what is on it.
void TestInitialising::equalNames()
{
    const QString first = std::exchange(m_storeId, waitForToken(OtherName));
    const auto made =
        perform(TokenAdministration::Initialise, TestToken::soPin(), TestToken::pin(), StoreName);
    const auto other = [&] {
        const auto tokens = TokenMonitor::tokens();
        for (const TokenStatus &token : tokens) {
            if (token.name.startsWith(StoreName) && token.keyStoreId != first && !token.loading)
                return token.keyStoreId;
        }
        return QString();
    };
    const bool isThere = QTest::qWaitFor([&] { return !other().isEmpty(); }, Patience);
    m_storeId = other();
    const auto changed = perform(TokenAdministration::ChangePin, TestToken::pin(), NewPin);
    const auto back =
        perform(TokenAdministration::Initialise, TestToken::soPin(), TestToken::pin(), OtherName);
    m_storeId = first;
    QVERIFY(isThere);
    for (const TokenAdministrationResult &result : {made, changed, back})
        QCOMPARE(result.error.kind, TokenError::NoError);
    QVERIFY(!waitForToken(OtherName).isEmpty());
    QVERIFY(waitForCounts(1, 1));
    QVERIFY(opensWith(TestToken::pin()));
    QVERIFY(signs());
}

QTEST_GUILESS_MAIN(TestInitialising)
#include "tst_initialising.moc"
