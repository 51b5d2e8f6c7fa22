// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <thread>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Cancelling");
constexpr int Patience = 60000; // ms

/// A signature that is waited for on a thread of its own.
class Signing {
public:
    explicit Signing(QCA::PrivateKey key)
        : m_thread([this, key]() mutable {
            m_signature = key.signMessage(QByteArray("data"), QCA::EMSA3_SHA256);
            m_done.storeRelease(1);
        })
    {
    }
    ~Signing() { m_thread.join(); }

    bool isOver() const { return m_done.loadAcquire() == 1; }
    /// Waits for the end.
    bool hasSucceeded() const
    {
        return QTest::qWaitFor([this] { return isOver(); }, Patience) && !m_signature.isEmpty();
    }

private:
    QByteArray m_signature;
    QAtomicInt m_done;
    std::thread m_thread;
};

} // namespace

/// When the end of an operation is asked for: while it waits for its turn, at each step of a login
/// and behind it. Whatever was given up leaves no trace: no question, no login, no signature; and
/// the operation that follows works.
class TestCancelling : public TokenFixture {
    Q_OBJECT
public:
    TestCancelling()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void waitingSignatureNeverAsks();
    void waitingSignatureIsNeverMade();
    void waitingWriteEndsAtOnce();
    void waitingBehindARemoval();
    void betweenTheStepsOfALogin_data();
    void betweenTheStepsOfALogin();
    void duringTheLogin();
    void readingThatFailsAfterTheLogin();
    void beforeTheSignature();
    void whileNothingRuns();
    void runningWriteIsUndone();
    void cancelledBundleIsUndone_data();
    void cancelledBundleIsUndone();
    void cancelledGenerationIsUndone();
    void removalThatFailsIsUndone();
    void abandonedKeysGoAllTheSame();
    void removedTokenEndsWhatWaits();

private:
    QCA::PrivateKey key() const;
    QString keyStoreId() const { return m_store->id(); }
    void cancel() const { Trivex::TokenMonitor::cancel(keyStoreId()); }
    bool isBusy() const { return Trivex::TokenMonitor::token(keyStoreId()).busy; }
    /// Waits until the token works, and is inside the call that the test delays.
    bool isInside() const;
    bool isIdle() const
    {
        return QTest::qWaitFor([this] { return !isBusy(); }, Patience);
    }
    bool signsNow() const { return Signing(key()).hasSucceeded(); }
    /// The id that a write gave, or "" for a failure; "?" while it goes on.
    void startWriting(QString *result);

    QCA::Certificate m_root;
};

void TestCancelling::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    QVERIFY(start(1));
    m_prompt.reset();
    m_root = root();
    QVERIFY(!m_root.isNull());
}

/// Each test starts with a token that is not logged in.
void TestCancelling::init()
{
    QVERIFY(m_token->replug(keyStoreId()));
    QVERIFY(m_stores->waitForEntries(StoreName, 1));
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_token->forget();
}

void TestCancelling::cleanup()
{
    m_token->control();
    m_prompt->answer();
    QVERIFY(isIdle());
    m_prompt->setHolding(false);
    QVERIFY(removeOthers());
    m_prompt.reset();
}

QCA::PrivateKey TestCancelling::key() const
{
    return m_stores->entry(StoreName, QStringLiteral("signer")).keyBundle().privateKey();
}

bool TestCancelling::isInside() const
{
    const bool works = QTest::qWaitFor([this] { return isBusy(); }, Patience);
    QTest::qWait(300); // the module logs a call when it ends: being inside shows nowhere
    return works;
}

void TestCancelling::startWriting(QString *result)
{
    *result = QStringLiteral("?");
    auto *context = new QObject(this);
    connect(m_store, &QCA::KeyStore::entryWritten, context, [result, context](const QString &id) {
        *result = id;
        context->deleteLater();
    });
    m_store->writeEntry(m_root);
}

void TestCancelling::waitingSignatureNeverAsks()
{
    m_token->control("delay C_Login 1 1500");
    const Signing first(key());
    QVERIFY(isInside());
    const Signing second(key());
    QTest::qWait(100); // until it waits for its turn, which shows nowhere
    QCOMPARE(m_prompt->count(), 1);
    // A login that fails leaves the second one to ask.
    m_token->control("fail-after C_Login * CKR_FUNCTION_FAILED");
    cancel();
    QVERIFY(!first.hasSucceeded());
    QVERIFY(!second.hasSucceeded());
    QVERIFY(isIdle());
    QTest::qWait(300); // nothing of what was given up must begin in this time
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_Login"), 1);
    QCOMPARE(m_token->count("C_SignInit"), 0);
    m_token->control();
    QVERIFY(signsNow());
}

void TestCancelling::waitingSignatureIsNeverMade()
{
    QVERIFY(signsNow());
    m_token->forget();
    m_token->control("delay C_SignInit 1 1200");
    const Signing first(key());
    QVERIFY(isInside());
    const Signing second(key());
    QTest::qWait(100); // until it waits for its turn, which shows nowhere
    cancel();
    QVERIFY(!first.hasSucceeded());
    QVERIFY(!second.hasSucceeded());
    QVERIFY(isIdle());
    QTest::qWait(300); // nothing of what was given up must begin in this time
    QCOMPARE(m_token->count("C_SignInit"), 1);
    QCOMPARE(m_token->count("C_Sign"), 0);
    QVERIFY(signsNow());
}

void TestCancelling::waitingWriteEndsAtOnce()
{
    QVERIFY(signsNow());
    m_token->forget();
    m_token->control("delay C_Sign 1 6000");
    const Signing first(key());
    QVERIFY(isInside());
    QString written;
    startWriting(&written);
    QTest::qWait(200); // until it waits for its turn, which shows nowhere
    cancel();
    QTRY_COMPARE(written, QString());
    QCOMPARE(m_token->count("C_Sign"), 0); // it has not waited for its turn
    QVERIFY(!first.hasSucceeded());
    QVERIFY(isIdle());
    QTest::qWait(300); // nothing of what was given up must begin in this time
    QCOMPARE(m_token->count("C_CreateObject"), 0);
    QVERIFY(!m_stores->write(m_store, m_root).isEmpty());
}

void TestCancelling::waitingBehindARemoval()
{
    // What runs can't be ended; its end must not take back what was asked of the next one.
    QVERIFY(!m_stores->write(m_store, m_root).isEmpty());
    QVERIFY(m_stores->waitForEntries(StoreName, 2));
    m_token->forget();
    m_token->control("delay C_DestroyObject 1 1000");
    bool removed = false;
    QObject context;
    connect(m_store, &QCA::KeyStore::entryRemoved, &context, [&](bool done) { removed = done; });
    m_store->removeEntry(m_stores->entry(StoreName, QStringLiteral("Test Root")).id());
    QVERIFY(isInside());
    const Signing second(key());
    QTest::qWait(200); // until it waits for its turn, which shows nowhere
    cancel();
    QVERIFY(!second.hasSucceeded());
    QTRY_VERIFY(removed);
    QVERIFY(isIdle());
    QTest::qWait(300); // nothing of what was given up must begin in this time
    QCOMPARE(m_token->count("C_Sign"), 0);
    QVERIFY(signsNow());
}

void TestCancelling::betweenTheStepsOfALogin_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::newRow("the session's state") << QByteArray("delay C_GetSessionInfo 1 1000");
    QTest::newRow("a new session") << QByteArray("fail C_GetSessionInfo 1 CKR_SESSION_CLOSED\n"
                                                 "delay C_OpenSession * 1000");
    QTest::newRow("the token's flags") << QByteArray("delay C_GetTokenInfo * 800");
}

void TestCancelling::betweenTheStepsOfALogin()
{
    QFETCH(QByteArray, orders);
    // An old question would wait for ever.
    m_prompt->setHolding(true);
    m_token->control(orders);
    const Signing signing(key());
    QVERIFY(isInside());
    cancel();
    QVERIFY(!signing.hasSucceeded());
    m_token->control();
    QVERIFY(isIdle());
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
    m_prompt->setHolding(false);
    QVERIFY(signsNow());
    QCOMPARE(m_prompt->count(), 1);
}

void TestCancelling::duringTheLogin()
{
    // The module logs in all the same; what follows finds the keys that show themselves only then.
    m_token->control("delay C_Login 1 1000");
    const Signing signing(key());
    QVERIFY(isInside());
    cancel();
    QVERIFY(!signing.hasSucceeded());
    QVERIFY(isIdle());
    QCOMPARE(m_token->count("C_SignInit"), 0);
    QVERIFY(signsNow());
    QCOMPARE(m_prompt->count(), 1);
}

void TestCancelling::readingThatFailsAfterTheLogin()
{
    // The private keys are still unknown then, and the next operation is logged in already.
    m_token->control("fail C_FindObjectsInit * CKR_FUNCTION_FAILED");
    QVERIFY(!signsNow());
    QVERIFY(isIdle());
    QCOMPARE(m_token->count("C_SignInit"), 0);
    m_token->control();
    QVERIFY(signsNow());
    QCOMPARE(m_prompt->count(), 1);
}

void TestCancelling::beforeTheSignature()
{
    m_token->control("delay C_SignInit 1 1000");
    const Signing signing(key());
    QVERIFY(isInside());
    cancel();
    QVERIFY(!signing.hasSucceeded());
    QVERIFY(isIdle());
    QCOMPARE(m_token->count("C_Sign"), 0);
    QVERIFY(signsNow());
}

void TestCancelling::whileNothingRuns()
{
    cancel();
    QVERIFY(signsNow());
    cancel();
    QVERIFY(!m_stores->write(m_store, m_root).isEmpty());
}

void TestCancelling::runningWriteIsUndone()
{
    QVERIFY(signsNow());
    const int before = m_token->token().objectCount();
    m_token->control("delay C_FindObjectsFinal 1 1000");
    QString written;
    startWriting(&written);
    QVERIFY(isInside());
    cancel();
    QTRY_COMPARE(written, QString());
    QVERIFY(isIdle());
    QCOMPARE(m_token->token().objectCount(), before);
    QVERIFY(!m_stores->write(m_store, m_root).isEmpty());
}

void TestCancelling::cancelledBundleIsUndone_data()
{
    QTest::addColumn<int>("object");
    // Its two keys, its certificate and the issuer's.
    for (int object = 1; object <= 4; ++object)
        QTest::addRow("object %d", object) << object;
}

/// A bundle is several objects: whichever is being written, all of them go, and nothing else does.
/// Behind the last one it is too late, and the write says so.
void TestCancelling::cancelledBundleIsUndone()
{
    QFETCH(int, object);
    const QCA::KeyBundle bundle = makeCurveBundle(QStringLiteral("/CN=Bundle"));
    QVERIFY(!bundle.isNull());
    QVERIFY(signsNow());
    m_token->forget();
    const int before = m_token->token().objectCount();
    const int entries = m_stores->currentEntries(StoreName).size();
    m_token->control("delay C_CreateObject " + QByteArray::number(object) + " 1000");
    QString written = QStringLiteral("?");
    QObject context;
    connect(m_store, &QCA::KeyStore::entryWritten, &context,
            [&](const QString &id) { written = id; });
    m_store->writeEntry(bundle);
    QVERIFY(m_token->waitUntilInside("C_CreateObject"));
    cancel();
    QTRY_VERIFY_WITH_TIMEOUT(written != QLatin1String("?"), Patience);
    QVERIFY(isIdle());
    m_token->control();
    QCOMPARE(m_token->count("C_CreateObject"), object);
    QCOMPARE(written.isEmpty(), object < 4);
    QCOMPARE(m_token->token().objectCount(), written.isEmpty() ? before : before + 4);
    // The bundle and its issuer.
    QCOMPARE(m_stores->currentEntries(StoreName).size(), written.isEmpty() ? entries : entries + 2);
    QVERIFY(signsNow());
    QVERIFY(!m_stores->write(m_store, bundle).isEmpty());
    QCOMPARE(m_token->token().objectCount(), before + 4);
}

void TestCancelling::cancelledGenerationIsUndone()
{
    QVERIFY(signsNow());
    m_token->forget();
    const int before = m_token->token().objectCount();
    m_token->control("delay C_GenerateKeyPair 1 1000");
    Trivex::KeyGenerator generator;
    bool isOver = false;
    connect(&generator, &Trivex::KeyGenerator::finished, this, [&] { isOver = true; });
    generator.setBlockingEnabled(false);
    generator.setTarget(keyStoreId(), QStringLiteral("cancelled"));
    generator.createRSA(2048, 65537, QStringLiteral("qca-norvel-pkcs11"));
    QVERIFY(m_token->waitUntilInside("C_GenerateKeyPair"));
    cancel();
    QTRY_VERIFY_WITH_TIMEOUT(isOver, Patience);
    QVERIFY(generator.key().isNull());
    QVERIFY(isIdle());
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 1);
    QTRY_COMPARE_WITH_TIMEOUT(m_token->token().objectCount(), before, Patience);
    QVERIFY(signsNow());
}

void TestCancelling::removalThatFailsIsUndone()
{
    // A removal that fails half way puts back what is gone, even when nobody wants it any more.
    const QCA::KeyBundle bundle =
        makeBundle(QStringLiteral("RSA"), QStringLiteral("rsa_keygen_bits:2048"),
                   QStringLiteral("/CN=Bundle"));
    QVERIFY(!bundle.isNull());
    const QString id = m_stores->write(m_store, bundle);
    QVERIFY(!id.isEmpty());
    const auto listed = [&] {
        const QCA::KeyStoreEntry entry = withId(m_stores->currentEntries(StoreName), id);
        return !entry.isNull() && entry.type() == QCA::KeyStoreEntry::TypeKeyBundle;
    };
    QTRY_VERIFY(listed());
    const int before = m_token->token().objectCount();
    m_token->control("delay C_DestroyObject 2 1000\nfail C_DestroyObject 2 CKR_DEVICE_ERROR");
    bool over = false;
    bool removed = true;
    QObject context;
    connect(m_store, &QCA::KeyStore::entryRemoved, &context, [&](bool done) {
        removed = done;
        over = true;
    });
    m_store->removeEntry(id);
    QVERIFY(isInside());
    cancel();
    QTRY_VERIFY(over);
    m_token->control();
    QVERIFY(!removed);
    QVERIFY(isIdle());
    QCOMPARE(m_token->token().objectCount(), before);
    QVERIFY(listed());
}

void TestCancelling::abandonedKeysGoAllTheSame()
{
    QVERIFY(signsNow());
    const int before = m_token->token().objectCount();
    auto generator = std::make_unique<Trivex::KeyGenerator>();
    generator->setBlockingEnabled(false);
    generator->setTarget(keyStoreId(), QStringLiteral("abandoned"));
    generator->createRSA(2048, 65537, QStringLiteral("qca-norvel-pkcs11"));
    // Not in the event loop, where the generator would hear of its key.
    const auto sleepUntil = [](const std::function<bool()> &condition) {
        for (int i = 0; i < 200 && !condition(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return condition();
    };
    QVERIFY(sleepUntil([&] { return m_token->count("C_GenerateKeyPair") == 1; }));
    QVERIFY(sleepUntil([&] { return !isBusy(); }));
    m_token->control("delay C_SignInit 1 1000");
    const Signing signing(key());
    QVERIFY(sleepUntil([&] { return isBusy(); }));
    generator.reset();
    cancel();
    QVERIFY(!signing.hasSucceeded());
    QVERIFY(isIdle());
    QTRY_COMPARE_WITH_TIMEOUT(m_token->token().objectCount(), before, Patience);
}

void TestCancelling::removedTokenEndsWhatWaits()
{
    QVERIFY(signsNow());
    m_token->forget();
    m_token->control("delay C_SignInit 1 8000");
    const Signing first(key());
    QVERIFY(isInside());
    const Signing second(key());
    QTest::qWait(100); // until it waits for its turn, which shows nowhere
    m_token->control("remove");
    QVERIFY(!second.hasSucceeded());
    QVERIFY(!first.hasSucceeded());
    QCOMPARE(m_token->count("C_SignInit"), 0); // neither has waited for the call to end
    QTRY_COMPARE_WITH_TIMEOUT(m_token->count("C_SignInit"), 1, Patience);
    QTest::qWait(300); // the call has returned, and nothing must follow it
    QCOMPARE(m_token->count("C_Sign"), 0);
    m_token->control();
    QTRY_VERIFY(Trivex::TokenMonitor::token(keyStoreId()).present);
    QTRY_VERIFY(!Trivex::TokenMonitor::token(keyStoreId()).loading);
    QVERIFY(m_stores->waitForEntries(StoreName, 1));
    QVERIFY(signsNow());
}

QTEST_GUILESS_MAIN(TestCancelling)
#include "tst_cancelling.moc"
