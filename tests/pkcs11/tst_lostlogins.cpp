// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "tests/pkcs11/failurefixture.h"
#include "tests/support/needtokens.h"

using namespace TrivexTest;
using Trivex::TokenError;
using Trivex::TokenMonitor;

namespace {

const QString StoreName = QStringLiteral("Lost");
const QString Hidden = QStringLiteral("hidden");
/// A private and a public key, their certificate and its issuer's.
constexpr int BundleObjects = 4;

} // namespace

/// Logins that end in the middle of an operation: with their session, which a card's reset or a
/// daemon's restart takes away, or without it.
class TestLostLogins : public FailureFixture {
    Q_OBJECT
public:
    TestLostLogins()
        : FailureFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void removalOfAPair_data();
    void removalOfAPair();
    void rowKeepsItsKey();
    void undoAsksOnce_data();
    void undoAsksOnce();
    void failedUndoAsksOnce();
    void undoWithoutASession();
    void generationIsUndone_data();
    void generationIsUndone();
    void generationIsNotRepeated_data();
    void generationIsNotRepeated();
    void failedUndoLeavesTheSession();
    void exchangedToken();
    void noSessionStays_data();
    void noSessionStays();
    void searchOnATokenThatGoes_data();
    void searchOnATokenThatGoes();

private:
    int objects() const { return m_token->token().objectCount(); }
    int privateKeys() const;
    QCA::KeyStoreEntry entry(const QString &name) const { return m_stores->entry(StoreName, name); }
    bool isBundle(const QString &name) const
    {
        return entry(name).type() == QCA::KeyStoreEntry::TypeKeyBundle;
    }
    QString import() { return m_stores->write(m_store, m_bundle); }
    bool generate()
    {
        return !generateCurve(QStringLiteral("ec-secp384r1"), QStringLiteral("made")).isNull();
    }

    QCA::KeyBundle m_bundle;
};

void TestLostLogins::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    // Its public half does not show, and another key's does: nothing tells of it before a login.
    QVERIFY(addKey(QStringLiteral("EC:secp384r1"), QStringLiteral("02"), Hidden));
    QVERIFY(m_token->token().removeObject(QStringLiteral("pubkey"), QStringLiteral("02")));
    m_token->useInThisProcess();
    QVERIFY(start(2));
    m_bundle = makeCurveBundle(QStringLiteral("/CN=Bundle"));
    QVERIFY(!m_bundle.isNull());
}

/// Each test starts with a token that is logged in, by one session.
void TestLostLogins::init()
{
    QVERIFY(m_token->replug(m_store->id()));
    QVERIFY(m_stores->waitForEntries(StoreName, 2));
    QVERIFY(signs());
    countAfresh();
}

void TestLostLogins::cleanup()
{
    m_token->control();
    m_prompt->setPin(TestToken::pin());
    const auto entries = m_stores->currentEntries(StoreName);
    for (const QCA::KeyStoreEntry &one : entries) {
        if (one.name() != QLatin1String("signer") && one.name() != Hidden)
            QVERIFY(m_stores->remove(m_store, one.id()));
    }
}

int TestLostLogins::privateKeys() const
{
    return m_token->token()
        .tool(
            {QStringLiteral("--list-objects"), QStringLiteral("--type"), QStringLiteral("privkey")})
        .count("Private Key Object");
}

void TestLostLogins::removalOfAPair_data()
{
    QTest::addColumn<QByteArray>("order");
    for (const char *order : {"logout-at", "end-sessions-at"}) {
        for (const char *call : {"C_OpenSession 1", "C_DestroyObject 1", "C_DestroyObject 2",
                                 "C_DestroyObject 3", "C_GetSessionInfo 1", "C_GetSessionInfo 2"})
            QTest::addRow("%s %s", order, call) << QByteArray(order) + ' ' + call;
    }
}

/// Both halves go or neither, whoever is logged in then; and nothing is said to have gone that did
/// not.
void TestLostLogins::removalOfAPair()
{
    QFETCH(QByteArray, order);
    const int before = objects();
    const QString id = import();
    QVERIFY(!id.isEmpty());
    m_token->control(order);
    const bool succeeded = m_stores->remove(m_store, id);
    m_token->control();
    // Without the issuer's certificate, which is an entry of its own.
    QCOMPARE(objects() - before, succeeded ? 1 : BundleObjects);
    if (!succeeded) {
        QVERIFY(lastError().kind == TokenError::NotLoggedIn
                || lastError().kind == TokenError::DeviceFailure);
        QVERIFY(m_stores->remove(m_store, id));
    }
    QCOMPARE(objects() - before, 1);
}

/// What a login has shown of a token, or was written by it, is not forgotten when the token is read
/// without one.
void TestLostLogins::rowKeepsItsKey()
{
    QTRY_VERIFY(isBundle(Hidden));
    const QString id = entry(Hidden).id();
    QVERIFY(!import().isEmpty());
    QVERIFY(m_stores->waitForEntries(StoreName, 4));
    m_prompt->setPin(QByteArray());
    m_token->forget();
    // The certificate is put back, and the token read, by a session that nobody logs in.
    m_token->control("end-sessions-at C_DestroyObject 1");
    QVERIFY(!m_stores->remove(m_store, entry(QStringLiteral("Test Root")).id()));
    QVERIFY(m_token->count("C_FindObjectsInit") >= 3);
    QCOMPARE(m_token->count("C_Login"), 0);
    QTest::qWait(300); // a row that changes would do it now
    QCOMPARE(entry(Hidden).id(), id);
    QVERIFY(isBundle(Hidden));
    QVERIFY(isBundle(QStringLiteral("signer")));
    QVERIFY(isBundle(QStringLiteral("bundle")));
    QCOMPARE(m_stores->currentEntries(StoreName).size(), 4);
    m_prompt->setPin(TestToken::pin());
    QVERIFY(signs(*m_stores, StoreName, Hidden));
}

void TestLostLogins::undoAsksOnce_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<QByteArray>("pin");
    QTest::addColumn<int>("logins");
    QTest::addColumn<int>("left");
    for (const QByteArray order : {"end-sessions-at", "logout-at"}) {
        // The private half is there when the public one is to follow, or to be read.
        const QByteArray call =
            order == "logout-at" ? " C_GetAttributeValue 1" : " C_CreateObject 2";
        QTest::addRow("%s, right", order.constData())
            << order + call << QByteArray(TestToken::pin()) << 1 << 0;
        QTest::addRow("%s, wrong", order.constData())
            << order + call << QByteArray("000000") << 1 << 1;
        QTest::addRow("%s, none", order.constData()) << order + call << QByteArray() << 0 << 1;
    }
}

/// Without a login nobody sees the private key that has to go again.
void TestLostLogins::undoAsksOnce()
{
    QFETCH(QByteArray, order);
    QFETCH(QByteArray, pin);
    QFETCH(int, logins);
    QFETCH(int, left);
    const int before = objects();
    m_prompt->setPin(pin);
    m_token->control(order);
    QCOMPARE(import(), QString());
    m_token->control();
    QCOMPARE(objects() - before, left);
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_Login"), logins);
    QCOMPARE(m_errors.size(), 1);
    // What had to stay is completed.
    m_prompt->setPin(TestToken::pin());
    QVERIFY(!import().isEmpty());
    QCOMPARE(objects() - before, BundleObjects);
    QVERIFY(m_stores->waitForEntries(StoreName, 4));
    QVERIFY(signs(*m_stores, StoreName, QStringLiteral("bundle")));
}

/// What was put back goes again when the rest can't be put back, by a session of its own.
void TestLostLogins::failedUndoAsksOnce()
{
    const int before = objects();
    const QString id = import();
    QVERIFY(!id.isEmpty());
    countAfresh();
    m_prompt->setPin("000000");
    m_token->control("end-sessions-at C_DestroyObject 3\n"
                     "fail C_CreateObject 2 CKR_DEVICE_MEMORY");
    QVERIFY(!m_stores->remove(m_store, id));
    m_token->control();
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_Login"), 1);
    m_prompt->setPin(TestToken::pin());
    QVERIFY(!import().isEmpty());
    QCOMPARE(objects() - before, BundleObjects);
}

/// A half that can't be taken back shows nowhere, nobody is asked for a PIN that would not help,
/// and a repeated import completes it.
void TestLostLogins::undoWithoutASession()
{
    const int before = objects();
    m_token->control("end-sessions-at C_CreateObject 2\nfail C_OpenSession 2+ CKR_DEVICE_ERROR");
    QCOMPARE(import(), QString());
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_errors.size(), 1);
    m_token->control();
    QCOMPARE(objects() - before, 1);
    QCOMPARE(m_stores->currentEntries(StoreName).size(), 2);
    QVERIFY(!import().isEmpty());
    QCOMPARE(objects() - before, BundleObjects);
    QCOMPARE(privateKeys(), 3);
}

void TestLostLogins::generationIsUndone_data()
{
    QTest::addColumn<QByteArray>("order");
    for (const char *order :
         {"end-sessions-at C_SetAttributeValue 1", "logout-at C_SetAttributeValue 2",
          "logout-at C_GetAttributeValue 1", "end-sessions-at C_GetAttributeValue 4"})
        QTest::newRow(order) << QByteArray(order);
}

void TestLostLogins::generationIsUndone()
{
    QFETCH(QByteArray, order);
    const int before = objects();
    m_token->control(order);
    m_token->forget();
    QVERIFY(!generate());
    m_token->control();
    QCOMPARE(objects(), before);
    QCOMPARE(m_prompt->count(), 1);
    // What a handle of before the end names by now is anybody's.
    QCOMPARE(m_token->countText("C_DestroyObject CKR_OBJECT_HANDLE_INVALID"), 0);
}

void TestLostLogins::generationIsNotRepeated_data()
{
    QTest::addColumn<QByteArray>("order");
    for (const char *order : {"end-sessions-at C_GenerateKeyPair 1",
                              "fail C_GenerateKeyPair 1 CKR_SESSION_HANDLE_INVALID",
                              "fail C_GenerateKeyPair 1 CKR_SESSION_CLOSED"})
        QTest::newRow(order) << QByteArray(order);
}

/// Another exponent is for a token that refuses this one, not for one that nobody is logged in at.
void TestLostLogins::generationIsNotRepeated()
{
    QFETCH(QByteArray, order);
    const int before = objects();
    m_token->control(order);
    QVERIFY(generateRsa(2048, 3, QStringLiteral("made")).isNull());
    m_token->control();
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 1);
    QCOMPARE(objects(), before);
}

/// The failure of the operation is what is reported, and what the device is asked for after it.
void TestLostLogins::failedUndoLeavesTheSession()
{
    const QString id = import();
    QVERIFY(!id.isEmpty());
    m_token->forget();
    m_token->control("fail C_DestroyObject 1 CKR_DEVICE_ERROR\n"
                     "fail C_FindObjectsInit 1 CKR_SESSION_HANDLE_INVALID");
    QVERIFY(!m_stores->remove(m_store, id));
    QCOMPARE(m_token->countText("C_FindObjectsInit CKR_SESSION_HANDLE_INVALID"), 1);
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(m_errors.first().returnName, QStringLiteral("CKR_DEVICE_ERROR"));
    QCOMPARE(m_token->count("C_GenerateRandom"), 1);
    QVERIFY(signs());
    QCOMPARE(m_token->count("C_Login"), 0);
}

/// Another token in the same reader, which the looks at the slots have not seen yet.
void TestLostLogins::exchangedToken()
{
    m_token->control("end-sessions-at session 1\nother-token");
    QVERIFY(!signs());
    QVERIFY(!generate());
    QCOMPARE(import(), QString());
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
    m_token->control();
    QTRY_VERIFY(TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(!TokenMonitor::token(m_store->id()).loading);
    QVERIFY(m_stores->waitForEntries(StoreName, 2));
    QVERIFY(signs());
    QCOMPARE(m_token->count("C_Login"), 1);
}

void TestLostLogins::noSessionStays_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::newRow("success") << QByteArray();
    for (const char *call : {"C_SignInit", "C_Sign", "C_GenerateKeyPair", "C_CreateObject",
                             "C_DestroyObject", "C_FindObjects", "C_GetAttributeValue"})
        QTest::newRow(call) << QByteArray("fail ") + call + " 1 CKR_FUNCTION_FAILED";
    QTest::newRow("sessions end") << QByteArray("end-sessions-at C_OpenSession 2");
}

/// Tokens have room for a few sessions: after any number of operations there is one.
void TestLostLogins::noSessionStays()
{
    QFETCH(QByteArray, order);
    const auto round = [this] {
        signs();
        if (generate())
            removeGenerated();
        const QString id = import();
        if (!id.isEmpty())
            m_stores->remove(m_store, id);
    };
    const auto open = [this] {
        return m_token->countText("C_OpenSession CKR_OK") - m_token->countText("C_CloseSession ");
    };
    for (int i = 0; i < 3; ++i) {
        m_token->control(order);
        round();
        m_token->control();
        round();
    }
    QVERIFY(m_token->countText("C_OpenSession CKR_OK") >= 10);
    QCOMPARE(open(), 0);
}

void TestLostLogins::searchOnATokenThatGoes_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::newRow("before it") << QByteArray("remove");
    for (const char *call : {"C_OpenSession 1", "C_Login 1", "C_FindObjectsInit 1",
                             "C_FindObjectsInit 2", "C_FindObjects 1", "C_GetAttributeValue 1"})
        QTest::newRow(call) << QByteArray("remove-at ") + call;
}

/// Wherever in the search for a key it goes, there is none, and the next search finds what is
/// there.
void TestLostLogins::searchOnATokenThatGoes()
{
    QFETCH(QByteArray, order);
    const QString id = m_store->id();
    const QCA::PublicKey hidden = entry(Hidden).certificate().subjectPublicKey();
    const QCA::PublicKey unknown = Trivex::publicKeyOf(m_bundle.privateKey());
    QVERIFY(!hidden.isNull() && !unknown.isNull());
    QVERIFY(m_token->replug(id));
    m_token->control(order);
    if (order == "remove")
        QTRY_VERIFY(!TokenMonitor::token(id).present);
    QVERIFY(Trivex::findTokenKey(id, unknown).isNull());
    m_token->control();
    QTRY_VERIFY(TokenMonitor::token(id).present && !TokenMonitor::token(id).loading);
    m_store = m_stores->waitFor(StoreName, 30000);
    QVERIFY(m_store && m_stores->waitForEntries(StoreName, 2, 30000));
    // What is left of the token that went may answer once more.
    QTRY_VERIFY(!Trivex::findTokenKey(id, hidden).isNull());
}

QTEST_GUILESS_MAIN(TestLostLogins)
#include "tst_lostlogins.moc"
