// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "qca/adapter/storewriter.h"
#include "qca/keys/keys.h"
#include "qca/questions/generationtarget.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"
#include "qca/questions/questionscope.h"
#include "qca/questions/storedanswers.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>
#include <QTimer>
#include <QtCrypto>

#include <thread>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Questions");

enum Operation { Generate, WriteCertificate, RemoveEntry, Sign };

/// A key object of the provider, which stock classes keep to themselves.
class KeyObject : public QCA::Algorithm {
public:
    KeyObject()
        : QCA::Algorithm(QStringLiteral("rsa"), QStringLiteral("qca-norvel-pkcs11"))
    {
    }
    QCA::RSAContext *rsa() { return dynamic_cast<QCA::RSAContext *>(context()); }
};

} // namespace

/// Where the PIN comes from, and how many attempts each operation costs the token, counted by a
/// module that sees every login. The handler with stored answers and the prompt are made in either
/// order.
class TestTokenQuestions : public TokenFixture {
    Q_OBJECT
public:
    TestTokenQuestions()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void sources_data();
    void sources();
    void storedAnswersAreGoneAfterwards();
    void answersAreTakenByWhatWaits();
    void answersGoWithTheToken_data();
    void answersGoWithTheToken();
    void typedPinIsAskedForAgain_data();
    void typedPinIsAskedForAgain();
    void everyAskingIsLeft();
    void lastTryIsAskedFor();
    void emptyPinIsNeverTried();
    void finalTryNeedsATypedPin();
    void lastTryIsLookedForAgain();
    void lockedTokenAsksNobody();
    void pinPad();
    void addresseeAlone();
    void loginLasts();
    void pinIsInNoMessage();
    void cancelledQuestion();
    void removedTokenEndsTheQuestion();
    void generationMeetsAnother();

private:
    void makeHandlers(bool storedFirst);
    void store(const QByteArray &pin);
    bool perform(Operation operation);
    int logins() const { return m_token->count("C_Login"); }

    QcaAskerThread *m_asker = nullptr;
    Trivex::TokenMonitor m_monitor;
    bool m_isTargeted = false; ///< a generation names its token itself
    QCA::Certificate m_root;
};

void TestTokenQuestions::initTestCase()
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

void TestTokenQuestions::makeHandlers(bool storedFirst)
{
    const auto makeAsker = [this] {
        m_asker = new QcaAskerThread;
        m_asker->start();
        QTRY_VERIFY(m_asker->handler());
        // Registered with QCA from its own thread; wait for that.
        QTest::qWait(50);
    };
    if (storedFirst)
        makeAsker();
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    if (!storedFirst)
        makeAsker();
}

/// Each test starts with a token that is not logged in.
void TestTokenQuestions::init()
{
    QVERIFY(m_token->replug(m_store->id()));
    QVERIFY(m_stores->waitForEntries(StoreName, 1));
    makeHandlers(true);
    m_token->forget();
}

void TestTokenQuestions::cleanup()
{
    m_token->control();
    m_prompt->setPin(TestToken::pin());
    removeOthers();
    m_prompt.reset();
    if (m_asker)
        QcaAskerThread::letGo(std::exchange(m_asker, nullptr), 3000);
}

void TestTokenQuestions::store(const QByteArray &pin)
{
    QcaHandler *handler = m_asker->handler();
    handler->setPassword(QCA::SecureArray(pin));
    handler->setObjectId(QStringLiteral("label"));
    handler->setKeyStoreId(m_store->id());
}

bool TestTokenQuestions::perform(Operation operation)
{
    Trivex::KeyGenerator generator;
    switch (operation) {
    case Generate: {
        generator.setBlockingEnabled(false);
        if (m_isTargeted)
            generator.setTarget(m_store->id(), QStringLiteral("typed"));
        QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
        generator.createRSA(2048, 3, QStringLiteral("qca-norvel-pkcs11"));
        return (!finished.isEmpty() || finished.wait(20000)) && !generator.key().isNull();
    }
    case WriteCertificate:
        return !m_stores->write(m_store, m_root).isEmpty();
    case RemoveEntry:
        return m_stores->remove(m_store,
                                m_stores->entry(StoreName, QStringLiteral("Test Root")).id());
    case Sign:
        return signs();
    }
    return false;
}

void TestTokenQuestions::sources_data()
{
    QTest::addColumn<bool>("storedFirst");
    QTest::addColumn<int>("operation");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QByteArray>("typed");
    QTest::addColumn<bool>("succeeds");
    QTest::addColumn<int>("prompts");
    QTest::addColumn<int>("attempts");
    struct Row {
        const char *name;
        Operation operation;
        QByteArray stored;
        QByteArray typed;
        bool succeeds;
        int prompts;
        int attempts;
    };
    const QByteArray right = TestToken::pin();
    const QByteArray wrong("000000");
    const QByteArray none;
    const Row rows[] = {
        {"generation, stored", Generate, right, right, true, 0, 1},
        {"generation, wrong stored", Generate, wrong, right, false, 0, 1},
        {"write, stored", WriteCertificate, right, right, true, 0, 1},
        {"write, wrong stored", WriteCertificate, wrong, right, false, 0, 1},
        {"write, nothing stored", WriteCertificate, none, right, true, 1, 1},
        {"write, typed wrong", WriteCertificate, none, wrong, false, 1, 1},
        {"write, nobody answers", WriteCertificate, none, none, false, 1, 0},
        {"removal, stored", RemoveEntry, right, right, true, 0, 1},
        {"removal, nothing stored", RemoveEntry, none, right, true, 1, 1},
        {"removal, nobody answers", RemoveEntry, none, none, false, 1, 0},
        {"signing, typed", Sign, none, right, true, 1, 1},
        {"signing, stale answer stored", Sign, wrong, right, true, 1, 1},
        {"signing, right answer stored", Sign, right, wrong, false, 1, 1},
        {"signing, rejected", Sign, right, none, false, 1, 0},
    };
    for (const bool storedFirst : {true, false}) {
        for (const Row &row : rows)
            QTest::addRow("%s, %s", row.name, storedFirst ? "stored first" : "prompt first")
                << storedFirst << int(row.operation) << row.stored << row.typed << row.succeeds
                << row.prompts << row.attempts;
    }
}

void TestTokenQuestions::sources()
{
    QFETCH(bool, storedFirst);
    QFETCH(int, operation);
    QFETCH(QByteArray, stored);
    QFETCH(QByteArray, typed);
    QFETCH(bool, succeeds);
    QFETCH(int, prompts);
    QFETCH(int, attempts);
    if (!storedFirst) {
        cleanup();
        makeHandlers(false);
    }
    if (operation == RemoveEntry) {
        QVERIFY(perform(WriteCertificate));
        QVERIFY(m_stores->waitForEntries(StoreName, 2));
        QVERIFY(m_token->replug(m_store->id()));
        QVERIFY(m_stores->waitForEntries(StoreName, 2));
    }
    m_token->forget();
    m_prompt->resetCount();
    m_prompt->setPin(typed);
    if (!stored.isEmpty())
        store(stored);
    QCOMPARE(perform(Operation(operation)), succeeds);
    QCOMPARE(m_prompt->count(), prompts);
    QCOMPARE(logins(), attempts);
    QCOMPARE(m_token->countText("pin=empty"), 0);
    if (prompts) {
        QCOMPARE(m_prompt->last().tokenName, StoreName);
        QCOMPARE(m_prompt->last().keyStoreId, m_store->id());
    }
}

void TestTokenQuestions::storedAnswersAreGoneAfterwards()
{
    store("000000");
    QVERIFY(!perform(WriteCertificate));
    QCOMPARE(logins(), 1);
    // The wrong PIN is not sent again: the next operation asks.
    QVERIFY(perform(WriteCertificate));
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(logins(), 2);
}

/// A write that has to wait for its turn takes the answers at its start: they are its own, and not
/// those of what runs before it.
void TestTokenQuestions::answersAreTakenByWhatWaits()
{
    m_prompt->setHolding(true);
    QCA::PrivateKey key =
        m_stores->entry(StoreName, QStringLiteral("signer")).keyBundle().privateKey();
    bool hasSigned = true;
    std::thread signing([&] { hasSigned = !signature(key).isEmpty(); });
    const bool isAsked = QTest::qWaitFor([this] { return m_prompt->count() == 1; }, 10000);
    store(TestToken::pin());
    Trivex::StoreWriter writer;
    QSignalSpy written(&writer, &Trivex::StoreWriter::written);
    writer.write(m_store, m_root);
    const bool isTaken = !Trivex::takeStoredAnswers(QString());
    // The signer is refused its PIN; what waits has its own.
    m_prompt->setPin({});
    m_prompt->answer();
    signing.join();
    QVERIFY(isAsked && isTaken && !hasSigned);
    QTRY_COMPARE(written.count(), 1);
    QVERIFY(!written.first().first().toString().isEmpty());
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(logins(), 1);
    m_prompt->setHolding(false);
}

void TestTokenQuestions::answersGoWithTheToken_data()
{
    QTest::addColumn<int>("operation");
    QTest::newRow("write") << int(WriteCertificate);
    QTest::newRow("removal") << int(RemoveEntry);
    QTest::newRow("generation") << int(Generate);
}

/// What can't be done now must not be answered later by what was typed for it.
void TestTokenQuestions::answersGoWithTheToken()
{
    QFETCH(int, operation);
    const QString entryId = m_stores->entry(StoreName, QStringLiteral("signer")).id();
    m_token->control("remove");
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).present);
    store(TestToken::pin());
    QVERIFY(operation == RemoveEntry ? !m_stores->remove(m_store, entryId)
                                     : !perform(Operation(operation)));
    QVERIFY(!Trivex::takeStoredAnswers(QString()));
    QCOMPARE(logins(), 0);
    m_token->control();
    QTRY_VERIFY(Trivex::TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).loading);
    QVERIFY(m_stores->waitForEntries(StoreName, 1));
    QVERIFY(perform(WriteCertificate));
    QCOMPARE(m_prompt->count(), 1);
}

void TestTokenQuestions::typedPinIsAskedForAgain_data()
{
    QTest::addColumn<int>("operation");
    QTest::newRow("generation") << int(Generate);
    QTest::newRow("write") << int(WriteCertificate);
    QTest::newRow("removal") << int(RemoveEntry);
    QTest::newRow("signature") << int(Sign);
}

/// By whoever says that he types again; the others are asked once, as `sources` has it.
void TestTokenQuestions::typedPinIsAskedForAgain()
{
    QFETCH(int, operation);
    if (operation == RemoveEntry) {
        QVERIFY(perform(WriteCertificate));
        QVERIFY(m_token->replug(m_store->id()));
        QVERIFY(m_stores->waitForEntries(StoreName, 2));
        m_token->forget();
        m_prompt->resetCount();
    }
    m_prompt->setPin({});
    m_prompt->setTyped({"111111", "222222", TestToken::pin()});
    m_isTargeted = true;
    const bool succeeded = perform(Operation(operation));
    m_isTargeted = false;
    QVERIFY(succeeded);
    QCOMPARE(m_prompt->count(), 3);
    QCOMPARE(logins(), 3);
    QVERIFY(m_prompt->last().wasWrong);
}

void TestTokenQuestions::everyAskingIsLeft()
{
    m_prompt->setPin({});
    m_prompt->setTyped({"111111"});
    QSignalSpy failed(&m_monitor, &Trivex::TokenMonitor::failed);
    QVERIFY(!perform(WriteCertificate));
    QCOMPARE(m_prompt->count(), 2);
    QCOMPARE(logins(), 1);
    QTRY_COMPARE(failed.size(), 1);
    QCOMPARE(failed.first().first().value<Trivex::TokenError>().kind,
             Trivex::TokenError::PinMissing);
}

void TestTokenQuestions::lastTryIsAskedFor()
{
    m_token->control("tries 3");
    m_prompt->setPin({});
    m_prompt->setTyped({"111111", "222222"});
    QVERIFY(!perform(WriteCertificate));
    QCOMPARE(m_prompt->count(), 3);
    QCOMPARE(logins(), 2);
    QCOMPARE(m_prompt->last().pinState, Trivex::PinState::FinalTry);
    QVERIFY(m_prompt->last().needsTypedPin);
    m_prompt->setTyped({"333333", "444444"});
    QVERIFY(!perform(WriteCertificate));
    // It is locked, and nobody is asked for a fourth one.
    QCOMPARE(m_prompt->count(), 4);
    QCOMPARE(logins(), 3);
}

void TestTokenQuestions::emptyPinIsNeverTried()
{
    store("");
    m_prompt->setPin(QByteArray());
    QVERIFY(!perform(WriteCertificate));
    QVERIFY(!perform(Sign));
    QCOMPARE(logins(), 0);
}

void TestTokenQuestions::finalTryNeedsATypedPin()
{
    m_token->control("final-try");
    store(TestToken::pin());
    QVERIFY(perform(WriteCertificate));
    QCOMPARE(m_prompt->count(), 1);
    QVERIFY(m_prompt->last().needsTypedPin);
    QCOMPARE(m_prompt->last().pinState, Trivex::PinState::FinalTry);
    QCOMPARE(logins(), 1);
}

// Another program uses up the tries at any moment: what the token said last before a login decides
// whether a PIN goes there that nobody has typed for it.
void TestTokenQuestions::lastTryIsLookedForAgain()
{
    int refused = 0;
    for (int call = 1; call <= 8 && m_token->count("C_Login") == 0; ++call) {
        // The looks at the slots count, too: they come at any time.
        m_token->control("final-try-at C_GetTokenInfo " + QByteArray::number(call));
        m_prompt->setPin(QByteArray());
        m_prompt->resetCount();
        store(TestToken::pin());
        const bool succeeded = perform(WriteCertificate);
        if (!succeeded && m_prompt->count() == 0)
            ++refused;
        QCOMPARE(logins(), succeeded ? 1 : 0);
    }
    QVERIFY(refused > 0);
}

void TestTokenQuestions::lockedTokenAsksNobody()
{
    Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    m_token->control("locked");
    store(TestToken::pin());
    QVERIFY(!perform(WriteCertificate));
    QVERIFY(!perform(Sign));
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(logins(), 0);
    QTRY_COMPARE(failed.count(), 2);
    QCOMPARE(failed.first().first().value<Trivex::TokenError>().kind,
             Trivex::TokenError::PinLocked);
    QTRY_COMPARE(Trivex::TokenMonitor::token(m_store->id()).pinState, Trivex::PinState::Locked);
}

void TestTokenQuestions::pinPad()
{
    m_token->control("pin-pad " + TestToken::pin());
    QVERIFY(perform(Sign));
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->countText("pin=none"), 1);
    QTRY_VERIFY(Trivex::TokenMonitor::token(m_store->id()).hasPinPad);
}

void TestTokenQuestions::addresseeAlone()
{
    PinPrompt second(TestToken::pin());
    {
        const Trivex::QuestionScope scope(second.handler());
        QVERIFY(perform(Sign));
    }
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(second.count(), 1);
}

void TestTokenQuestions::loginLasts()
{
    QVERIFY(perform(Sign));
    QVERIFY(perform(Sign));
    QVERIFY(perform(WriteCertificate));
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(logins(), 1);
}

void TestTokenQuestions::pinIsInNoMessage()
{
    static QByteArray messages;
    messages.clear();
    const auto previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) {
            messages += text.toUtf8() + '\n';
        });
    m_prompt->setPin("secret-pin");
    store("other-secret");
    perform(WriteCertificate);
    perform(Sign);
    qInstallMessageHandler(previous);
    QCOMPARE(logins(), 2);
    QVERIFY(!messages.contains("secret"));
    QVERIFY(!QCA::logger()->currentLogDevices().contains(QStringLiteral("secret")));
}

void TestTokenQuestions::cancelledQuestion()
{
    m_prompt->setHolding(true);
    QTimer::singleShot(300, this, [this] { Trivex::TokenMonitor::cancel(m_store->id()); });
    QVERIFY(!perform(Sign));
    QCOMPARE(logins(), 0);
    m_prompt->answer();
    m_prompt->setHolding(false);
    QVERIFY(perform(Sign));
}

void TestTokenQuestions::removedTokenEndsTheQuestion()
{
    m_prompt->setHolding(true);
    QTimer::singleShot(300, this, [this] { m_token->control("remove"); });
    QVERIFY(!perform(Sign));
    QCOMPARE(logins(), 0);
    m_prompt->answer();
    m_prompt->setHolding(false);
    m_token->control();
    QTRY_VERIFY(Trivex::TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).loading);
    QCOMPARE(m_stores->currentEntries(StoreName).size(), 1);
    QVERIFY(m_stores->waitForEntries(StoreName, 1));
    QVERIFY(perform(Sign));
}

// Whoever answers for a generation that is waited for begins another one with the same object. The
// first one's end, which comes later, must not take the second one's key away.
void TestTokenQuestions::generationMeetsAnother()
{
    const int before = m_token->token().objectCount();
    KeyObject object;
    QVERIFY(object.rsa());
    const auto generate = [&](const QString &name) {
        const Trivex::GenerationTarget target(m_store->id(), name);
        object.rsa()->createPrivate(2048, 3, true);
        return object.rsa()->isPrivate();
    };
    m_prompt->setHolding(true);
    bool hasMet = false;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (m_prompt->count() == 0)
            return;
        timer.stop();
        m_prompt->answer();
        hasMet = generate(QStringLiteral("made"));
    });
    timer.start(0);
    QVERIFY(generate(QStringLiteral("first")));
    QVERIFY(hasMet);
    QTRY_COMPARE(m_token->token().objectCount(), before + 2);
    removeGenerated();
}

QTEST_GUILESS_MAIN(TestTokenQuestions)
#include "tst_tokenquestions.moc"
