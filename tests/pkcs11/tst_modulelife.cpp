// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/restartpause.h"
#include "qca/adapter/keygenerator.h"
#include "qca/tokens/tokenmaking.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/loopmeter.h"
#include "tests/support/needtokens.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

#include <dlfcn.h>
#include <p11-kit/pkcs11.h>

using namespace TrivexTest;
using Trivex::RestartPause;

namespace {

const QString StoreName = QStringLiteral("Life");
constexpr int Patience = 60000;
constexpr int SomeLooks = 5;

} // namespace

/// Modules that are given up and taken again: by their file, after faults of their device, after
/// nonsense.
class TestModuleLife : public TokenFixture {
    Q_OBJECT
public:
    TestModuleLife()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void slotCounts_data();
    void slotCounts();
    void slotListGrows();
    void tokenGoesBetweenTwoCalls();
    void tenThousandSlots();
    void lookFaults();
    void operationFaults();
    void aSingleFaultChangesNothing();
    void refusalsAreNoFaults();
    void failuresCountByOperations_data();
    void failuresCountByOperations();
    void deadSlotsBesideGoodOnes();
    void restartsBecomeRare();
    void blankSlotComesAndGoes();
    void foreignModuleStaysAsItIs();
    void takenAgainWhileAThreadIsInside();
    void pauseGrows();

private:
    bool sign(const Stores &stores) { return signs(stores, StoreName); }
    /// Waits until the module was asked for its slots several times more. At none of these looks
    /// may it be given up or a PIN be sent.
    bool waitForLooks()
    {
        const int before = m_token->count("C_GetSlotList");
        const auto haveCome = [&] { return m_token->count("C_GetSlotList") >= before + SomeLooks; };
        return QTest::qWaitFor(haveCome, Patience);
    }
    bool isShown(Stores &stores) { return stores.entries(StoreName).size() == 1; }

    QString m_library;
};

void TestModuleLife::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    // A copy that can be taken away.
    m_library = m_token->token().path() + QStringLiteral("/faulty.so");
    QVERIFY(QFile::copy(qEnvironmentVariable("TRIVEX_PKCS11_MODULES"), m_library));
}

void TestModuleLife::init()
{
    m_token->control();
    m_token->forget();
    qputenv("TRIVEX_PKCS11_MODULES", QFile::encodeName(m_library));
}

void TestModuleLife::slotCounts_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::newRow("more than memory") << QByteArray("slot-count 18446744073709551615");
    QTest::newRow("a million") << QByteArray("slot-count 1000000");
    QTest::newRow("too small for ever") << QByteArray("fail C_GetSlotList * CKR_BUFFER_TOO_SMALL");
}

void TestModuleLife::slotCounts()
{
    QFETCH(QByteArray, orders);
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    m_token->forget();
    m_token->control(orders);
    QTRY_VERIFY_WITH_TIMEOUT(m_token->count("C_GetSlotList") >= 10, Patience);
    QVERIFY(isShown(stores));
    QVERIFY(sign(stores));
    m_token->control();
    QVERIFY(waitForLooks());
    QVERIFY(isShown(stores));
    QCOMPARE(m_token->count("C_Finalize"), 0);
}

// Readers that come up one after the other: the list that was asked for fits no more when it is
// read.
void TestModuleLife::slotListGrows()
{
    const QCA::Initializer qca;
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    m_token->forget();
    m_token->control("slots-grow\nremove");
    // The token is seen to go, and to come back.
    QTRY_VERIFY_WITH_TIMEOUT(stores.entries(StoreName).isEmpty(), Patience);
    m_token->control("slots-grow");
    QTRY_VERIFY_WITH_TIMEOUT(isShown(stores), Patience);
    m_token->control();
    QCOMPARE(m_token->count("C_Finalize"), 0);
}

// Its slot was listed, and has no token by the next call.
void TestModuleLife::tokenGoesBetweenTwoCalls()
{
    const QCA::Initializer qca;
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    for (const char *result : {"CKR_TOKEN_NOT_PRESENT", "CKR_TOKEN_NOT_RECOGNIZED"}) {
        m_token->control(QByteArray("fail C_GetTokenInfo * ") + result);
        QTRY_VERIFY_WITH_TIMEOUT(stores.entries(StoreName).isEmpty(), Patience);
        m_token->control();
        QTRY_VERIFY_WITH_TIMEOUT(isShown(stores), Patience);
    }
}

// A reader in the network with a slot for each of its partitions.
void TestModuleLife::tenThousandSlots()
{
    const QByteArray orders("more-slots 10000");
    m_token->control(orders);
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1, Patience));
    QVERIFY(waitForLooks());
    QVERIFY(isShown(stores));
    QVERIFY(sign(stores));
    // Only those of real tokens get a store.
    QCOMPARE(Trivex::TokenMonitor::tokens().size(), 1);
    LoopMeter meter;
    meter.start();
    m_token->control(orders + "\nremove");
    QTRY_VERIFY_WITH_TIMEOUT(stores.entries(StoreName).isEmpty(), Patience);
    m_token->control(orders);
    QTRY_VERIFY_WITH_TIMEOUT(isShown(stores), Patience);
    QVERIFY(sign(stores));
    QVERIFY2(meter.longest() <= LoopMeter::Unnoticed, qPrintable(QString::number(meter.longest())));
    QCOMPARE(m_token->count("C_Finalize"), 0);
    m_token->control();
}

// A daemon behind the module was restarted: everything fails until the module is started anew.
void TestModuleLife::lookFaults()
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    QVERIFY(sign(stores));
    m_token->forget();
    m_token->control("broken any CKR_DEVICE_ERROR");
    QTRY_COMPARE_WITH_TIMEOUT(m_token->count("C_Initialize"), 1, Patience);
    QVERIFY(stores.waitForEntries(StoreName, 1, Patience));
    QCOMPARE(m_token->count("C_Finalize"), 1);
    // Its login ended with it, and no PIN is sent by itself.
    QVERIFY(waitForLooks());
    QCOMPARE(m_token->count("C_Login"), 0);
    QCOMPARE(prompt.count(), 1);
    QVERIFY(sign(stores));
    QCOMPARE(prompt.count(), 2);
    QCOMPARE(m_token->count("C_Finalize"), 1);
}

// The list of tokens comes from the module's memory; what is done with them fails.
void TestModuleLife::operationFaults()
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    m_token->forget();
    m_token->control("broken session CKR_GENERAL_ERROR");
    for (int i = 0; i < 3; ++i)
        QVERIFY(!sign(stores));
    QTRY_COMPARE_WITH_TIMEOUT(m_token->count("C_Initialize"), 1, Patience);
    QVERIFY(stores.waitForEntries(StoreName, 1, Patience));
    QVERIFY(sign(stores));
    QCOMPARE(m_token->count("C_Login"), 1);
}

void TestModuleLife::refusalsAreNoFaults()
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    QVERIFY(sign(stores));
    m_token->forget();
    // One kind of request is refused like this, again and again; the device does everything else.
    for (const char *result : {"CKR_DEVICE_ERROR", "CKR_GENERAL_ERROR", "CKR_FUNCTION_FAILED"}) {
        m_token->control(QByteArray("fail C_SignInit * ") + result);
        for (int i = 0; i < 4; ++i)
            QVERIFY(!sign(stores));
    }
    QVERIFY(waitForLooks());
    m_token->control("");
    QVERIFY(sign(stores));
    QCOMPARE(m_token->count("C_Finalize"), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
}

void TestModuleLife::aSingleFaultChangesNothing()
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    m_token->forget();
    for (int i = 0; i < 4; ++i) {
        m_token->control("fail C_SignInit 1 CKR_DEVICE_ERROR");
        QVERIFY(!sign(stores));
        QVERIFY(sign(stores));
    }
    QVERIFY(waitForLooks());
    QCOMPARE(m_token->count("C_Finalize"), 0);
    QCOMPARE(m_token->count("C_Login"), 1);
    QVERIFY(isShown(stores));
}

void TestModuleLife::failuresCountByOperations_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::newRow("generation") << QByteArray("C_GenerateKeyPair");
    QTest::newRow("removal") << QByteArray("C_DestroyObject");
}

// Each tries more than once, or undoes what it began; that is one failure, also of a device that
// can't be asked for random bytes.
void TestModuleLife::failuresCountByOperations()
{
    QFETCH(QByteArray, call);
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    QCA::KeyStore *store = stores.byName(StoreName);
    const QString entryId = stores.entries(StoreName).first().id();
    m_token->forget();
    m_token->control("fail C_GenerateRandom * CKR_FUNCTION_NOT_SUPPORTED\n"
                     "fail "
                     + call + " * CKR_FUNCTION_FAILED");
    for (int round = 0; round < 2; ++round) {
        if (call == "C_DestroyObject") {
            QVERIFY(!stores.remove(store, entryId));
            continue;
        }
        Trivex::KeyGenerator generator;
        generator.setTarget(store->id(), QStringLiteral("refused"));
        QVERIFY(generator.createRSA(2048, 3, QStringLiteral("qca-norvel-pkcs11")).isNull());
    }
    QVERIFY(m_token->count(call.constData()) >= 2);
    QVERIFY(waitForLooks());
    QCOMPARE(m_token->count("C_Finalize"), 0);
    m_token->control();
    QVERIFY(sign(stores));
    QCOMPARE(m_token->count("C_Login"), 1);
}

// A reader that is broken for good is no reason to end the logins of others, wherever it stands.
void TestModuleLife::deadSlotsBesideGoodOnes()
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    QVERIFY(sign(stores));
    m_token->control("more-slots 2\ndead-slots");
    m_token->forget();
    QTRY_VERIFY_WITH_TIMEOUT(m_token->countText("C_GetTokenInfo CKR_DEVICE_ERROR") >= 2 * SomeLooks,
                             Patience);
    QVERIFY(sign(stores));
    QCOMPARE(m_token->count("C_Finalize"), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
    QVERIFY(isShown(stores));
    QCOMPARE(Trivex::TokenMonitor::tokens().size(), 1);
}

// Each pause before a restart is twice as long as the one before. Load makes all of it longer only.
void TestModuleLife::restartsBecomeRare()
{
    const QCA::Initializer qca;
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    m_token->forget();
    QElapsedTimer timer;
    timer.start();
    m_token->control("fail C_GetTokenInfo * CKR_DEVICE_ERROR");
    constexpr int Restarts = 6;
    QTRY_VERIFY_WITH_TIMEOUT(m_token->count("C_Initialize") >= Restarts, 2 * Patience);
    qint64 pauses = 0;
    for (int i = 0; i < Restarts - 1; ++i)
        pauses += RestartPause::Shortest.count() << i;
    QVERIFY2(timer.elapsed() >= pauses, qPrintable(QString::number(timer.elapsed())));
    m_token->control();
    QVERIFY(stores.waitForEntries(StoreName, 1, Patience));
}

// Where the next token can be made: no longer where the module shows no such slot, and none where
// there is no module.
void TestModuleLife::blankSlotComesAndGoes()
{
    Trivex::TokenMakers &makers = Trivex::TokenMakers::instance();
    {
        const QCA::Initializer qca;
        Stores stores;
        QVERIFY(stores.waitForEntries(StoreName, 1));
        QTRY_VERIFY_WITH_TIMEOUT(makers.isOffered(), Patience);
        // It is no token, and has no store.
        QCOMPARE(Trivex::TokenMonitor::tokens().size(), 1);
        m_token->control("slots 1");
        QTRY_VERIFY_WITH_TIMEOUT(!makers.isOffered(), Patience);
        QVERIFY(isShown(stores));
        m_token->control();
        QTRY_VERIFY_WITH_TIMEOUT(makers.isOffered(), Patience);
        m_token->control("remove");
        QTRY_VERIFY_WITH_TIMEOUT(!makers.isOffered(), Patience);
        m_token->control();
        QTRY_VERIFY_WITH_TIMEOUT(makers.isOffered(), Patience);
    }
    QTRY_VERIFY_WITH_TIMEOUT(!makers.isOffered(), Patience);
}

// Who initialised it in this process has sessions of its own.
void TestModuleLife::foreignModuleStaysAsItIs()
{
    const QString copy = m_token->token().path() + QStringLiteral("/foreign.so");
    QVERIFY(QFile::exists(copy) || QFile::copy(m_library, copy));
    void *library = dlopen(QFile::encodeName(copy).constData(), RTLD_NOW | RTLD_LOCAL);
    QVERIFY(library);
    const auto list = reinterpret_cast<CK_C_GetFunctionList>(dlsym(library, "C_GetFunctionList"));
    CK_FUNCTION_LIST *functions = nullptr;
    QCOMPARE(list(&functions), CK_RV(CKR_OK));
    QCOMPARE(functions->C_Initialize(nullptr), CK_RV(CKR_OK));
    // Parameters make p11-kit hand out the module itself.
    qputenv("TRIVEX_PKCS11_MODULES", QFile::encodeName(copy) + "|own=1");
    {
        const QCA::Initializer qca;
        Stores stores;
        QVERIFY(stores.waitForEntries(StoreName, 1));
        m_token->forget();
        m_token->control("broken any CKR_DEVICE_ERROR");
        QTRY_VERIFY_WITH_TIMEOUT(m_token->count("C_GetTokenInfo") >= 6, Patience);
        QCOMPARE(m_token->count("C_Finalize"), 0);
        m_token->control();
    }
    QCOMPARE(m_token->count("C_Finalize"), 0);
    QCOMPARE(functions->C_Finalize(nullptr), CK_RV(CKR_OK));
    dlclose(library);
}

// The thread that was left inside must not finalise the module under its successor.
void TestModuleLife::takenAgainWhileAThreadIsInside()
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 1));
    const QString away = m_library + QStringLiteral(".away");
    m_token->control("delay C_Sign 1 6000");
    QTimer::singleShot(700, this, [&] { QFile::rename(m_library, away); });
    QVERIFY(!sign(stores));
    QTRY_VERIFY_WITH_TIMEOUT(stores.entries(StoreName).isEmpty(), Patience);
    QVERIFY(QFile::rename(away, m_library));
    QVERIFY(stores.waitForEntries(StoreName, 1, Patience));
    QCOMPARE(m_token->count("C_Sign"), 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_token->count("C_Sign"), 1, Patience);
    QVERIFY(waitForLooks());
    QVERIFY(isShown(stores));
    QVERIFY(sign(stores));
    QCOMPARE(m_token->count("C_Finalize"), 0);
}

void TestModuleLife::pauseGrows()
{
    constexpr RestartPause::Milliseconds Longest{60000};
    RestartPause pause(Longest);
    RestartPause::Clock::time_point now{};
    QVERIFY(pause.isOver(now));
    for (const int seconds : {500, 1000, 2000, 4000, 8000, 16000, 32000, 60000, 60000}) {
        pause.failed(now);
        now += RestartPause::Milliseconds(seconds - 1);
        QVERIFY(!pause.isOver(now));
        now += RestartPause::Milliseconds(1);
        QVERIFY(pause.isOver(now));
        // Started again, but not for long.
        pause.works(now);
    }
    now += Longest;
    pause.works(now);
    pause.failed(now);
    QVERIFY(pause.isOver(now + RestartPause::Shortest));
}

QTEST_GUILESS_MAIN(TestModuleLife)
#include "tst_modulelife.moc"
