// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QElapsedTimer>
#include <QTimer>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Lifecycle");

} // namespace

/// Starts and ends: of the provider, of tokens while something goes on, of objects that wait.
class TestLifecycle : public TokenFixture {
    Q_OBJECT
public:
    TestLifecycle()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void startNeverWaits();
    void busyEndsThoughAModuleHangs();
    void twentyRounds();
    void keyOutlivesQca();
    void endWhileModuleIsBusy();
    void endWhileTokenIsRead();
    void endWhileQuestionIsOpen();
    void keyIsDestroyedWhileItSigns();

private:
    bool sign(const Stores &stores) { return signs(stores, StoreName); }
};

void TestLifecycle::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
}

void TestLifecycle::startNeverWaits()
{
    m_token->forget();
    m_token->control("delay C_Initialize * 5000\ndelay C_GetTokenInfo * 300");
    const QCA::Initializer qca;
    Stores stores;
    QCOMPARE(m_token->count("C_Initialize"), 0); // a call is counted once it has ended
    QVERIFY(stores.waitForEntries(StoreName, 1, 30000));
    m_token->control();
}

void TestLifecycle::busyEndsThoughAModuleHangs()
{
    m_token->forget();
    m_token->control("delay C_Initialize * 10000");
    const QCA::Initializer qca;
    Stores stores;
    QVERIFY(stores.manager().isBusy());
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY(!stores.manager().isBusy());
    QCOMPARE(m_token->count("C_Initialize"), 0);
    QVERIFY(timer.elapsed() > 1000);
    m_token->control();
    QVERIFY(stores.waitForEntries(StoreName, 1, 30000));
}

void TestLifecycle::twentyRounds()
{
    for (int round = 0; round < 20; ++round) {
        const QCA::Initializer qca;
        PinPrompt prompt(TestToken::pin());
        Stores stores;
        QVERIFY(stores.waitForEntries(StoreName, 1));
        if (round % 4 == 0)
            QVERIFY(sign(stores));
    }
}

void TestLifecycle::keyOutlivesQca()
{
    QCA::Initializer qca;
    QCA::PrivateKey key;
    {
        Stores stores;
        QVERIFY(stores.waitForEntries(StoreName, 1));
        key = stores.entry(StoreName, QStringLiteral("signer")).keyBundle().privateKey();
    }
    // Nobody answers for the PIN.
    QVERIFY(key.signMessage(QByteArray("data"), QCA::EMSA3_SHA256, QCA::DefaultFormat).isEmpty());
}

void TestLifecycle::endWhileModuleIsBusy()
{
    {
        const QCA::Initializer qca;
        PinPrompt prompt(TestToken::pin());
        Stores stores;
        QVERIFY(stores.waitForEntries(StoreName, 1));
        Trivex::KeyGenerator generator;
        generator.setBlockingEnabled(false);
        generator.setTarget(stores.byName(StoreName)->id(), QStringLiteral("left"));
        m_token->forget();
        m_token->control("delay C_GenerateKeyPair 1 10000");
        generator.createRSA(2048, 3, QStringLiteral("qca-norvel-pkcs11"));
        QVERIFY(m_token->waitUntilInside("C_GenerateKeyPair"));
    }
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 0); // the end has not waited for it
    m_token->control();
    // The thread that was left behind ends by itself, and the pair that it made goes with it.
    QTRY_COMPARE(m_token->count("C_GenerateKeyPair"), 1);
    QTRY_COMPARE(m_token->token().objectCount(), 3);
}

// A token's thread that still works when QCA is gone would finalise its module while the process
// already takes the library apart.
void TestLifecycle::endWhileTokenIsRead()
{
    for (int round = 0; round < 3; ++round) {
        m_token->control("delay C_GetAttributeValue 1+ 150");
        m_token->forget();
        {
            const QCA::Initializer qca;
            const Stores stores;
            QTRY_VERIFY(m_token->count("C_FindObjectsInit") > 0);
        }
        m_token->control();
        QCOMPARE(m_token->count("C_Initialize"), 1);
        QCOMPARE(m_token->count("C_Finalize"), 1);
    }
}

void TestLifecycle::endWhileQuestionIsOpen()
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    prompt.setHolding(true);
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(stores.byName(StoreName)->id(), QStringLiteral("left"));
    generator.createRSA(2048, 3, QStringLiteral("qca-norvel-pkcs11"));
    QTRY_COMPARE(prompt.count(), 1);
}

void TestLifecycle::keyIsDestroyedWhileItSigns()
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    prompt.setHolding(true);
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    auto store = stores.byName(StoreName);
    const QString id = store->id();
    QTimer::singleShot(300, this, [&] { m_token->control("remove"); });
    QVERIFY(!sign(stores));
    QTRY_VERIFY(stores.entries(StoreName).isEmpty());
    prompt.answer();
    m_token->control();
}

QTEST_GUILESS_MAIN(TestLifecycle)
#include "tst_lifecycle.moc"
