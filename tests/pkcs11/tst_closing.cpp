// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/locations.h"
#include "tests/support/needtokens.h"
#include "tests/support/systemlist.h"

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Closing");
constexpr int Patience = 60000;

} // namespace

/// Models that go, and others that come, while writes to a token ask or hang.
class TestClosing : public TokenFixture {
    Q_OBJECT
public:
    TestClosing()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void questionsEndWithTheModel();
    void secondModelWhileAQuestionIsOpen();
    void otherModelKeepsItsQuestion_data();
    void otherModelKeepsItsQuestion();
    void writeThroughQcaEndsWithTheModel();
    void goesOnWithoutAQuestion();
    void hangingModuleIsNotWaitedFor();

private:
    std::unique_ptr<KeyStoreModel> makeModel();
    void import(KeyStoreModel &model, const char *name);

    QTemporaryDir m_home;
};

void TestClosing::initTestCase()
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()));
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    m_qca = std::make_unique<QCA::Initializer>();
    setSystemList(); // long, and each model reads it
}

/// Each test starts with a token that is not logged in.
void TestClosing::init()
{
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_prompt->setHolding(true);
    auto model = makeModel();
    QVERIFY(model);
    QVERIFY(m_token->replug(model->keyStoreByName(StoreName)->id()));
    m_token->forget();
}

void TestClosing::cleanup()
{
    m_prompt->answer();
    m_prompt.reset();
    m_token->control();
}

std::unique_ptr<KeyStoreModel> TestClosing::makeModel()
{
    auto model = std::make_unique<KeyStoreModel>();
    const bool isThere = QTest::qWaitFor(
        [&] {
            return model->keyStoreByName(StoreName) && model->rowCount() > 0
                && model->certLocation()->rowCount() > 0;
        },
        Patience);
    return isThere ? std::move(model) : nullptr;
}

void TestClosing::import(KeyStoreModel &model, const char *name)
{
    const QByteArray key = m_token->token().publicKey(QStringLiteral("01"));
    const QByteArray der =
        m_authority->issue(key, QStringLiteral("/CN=%1").arg(QLatin1String(name)));
    const QString path = m_home.filePath(QLatin1String(name));
    QVERIFY(QCA::Certificate::fromDER(der).toPEMFile(path));
    QVERIFY(model.certificateFromPEMFile(path));
    model.setCertLocationId(locationOf(model, StoreName));
    model.importCertificate();
}

// That a model ends at all says that it has waited for no answer: there is none while they are
// held. One question is open, and the write behind it will ask the next one.
void TestClosing::questionsEndWithTheModel()
{
    auto model = makeModel();
    QVERIFY(model);
    import(*model, "first");
    import(*model, "second");
    QTRY_COMPARE(m_prompt->count(), 1);
    model.reset();
    QTest::qWait(300); // no further question must come in this time
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_Login"), 0);
    QCOMPARE(m_token->count("C_CreateObject"), 0);
    // A later model asks and is answered.
    auto later = makeModel();
    QVERIFY(later);
    m_prompt->setHolding(false);
    QSignalSpy written(later.get(), &KeyStoreModel::entryWrittenChanged);
    import(*later, "later");
    QTRY_COMPARE_WITH_TIMEOUT(written.count(), 1, Patience);
    QCOMPARE(written.at(0).at(0), QVariant(false));
}

void TestClosing::secondModelWhileAQuestionIsOpen()
{
    auto model = makeModel();
    QVERIFY(model);
    import(*model, "asking");
    QTRY_COMPARE(m_prompt->count(), 1);
    auto second = std::make_unique<KeyStoreModel>();
    // It lists meanwhile.
    QTRY_COMPARE_WITH_TIMEOUT(second->rowCount(), model->rowCount(), Patience);
    QSignalSpy written(model.get(), &KeyStoreModel::entryWrittenChanged);
    QSignalSpy foreign(second.get(), &KeyStoreModel::entryWrittenChanged);
    second.reset();
    // The question belongs to the first and is still open.
    m_prompt->answer();
    QTRY_COMPARE_WITH_TIMEOUT(written.count(), 1, Patience);
    QCOMPARE(written.at(0).at(0), QVariant(false));
    QVERIFY(foreign.isEmpty());
}

void TestClosing::otherModelKeepsItsQuestion_data()
{
    QTest::addColumn<bool>("askingOneGoes");
    QTest::newRow("the one that asks goes") << true;
    QTest::newRow("the one that waits its turn goes") << false;
}

void TestClosing::otherModelKeepsItsQuestion()
{
    QFETCH(bool, askingOneGoes);
    auto first = makeModel();
    auto second = makeModel();
    QVERIFY(first && second);
    import(*first, "of the first");
    import(*second, "of the second");
    QTRY_COMPARE(m_prompt->count(), 1);
    auto &going = askingOneGoes ? first : second;
    auto &staying = askingOneGoes ? second : first;
    going.reset();
    QSignalSpy written(staying.get(), &KeyStoreModel::entryWrittenChanged);
    QTRY_COMPARE(m_prompt->count(), askingOneGoes ? 2 : 1);
    m_prompt->answer();
    QTRY_COMPARE_WITH_TIMEOUT(written.count(), 1, Patience);
    QCOMPARE(written.at(0).at(0), QVariant(false));
    QTest::qWait(300); // no further question must come in this time
    QCOMPARE(m_prompt->count(), askingOneGoes ? 2 : 1);
}

// A program may write through the store itself, which QCA does on its own thread.
void TestClosing::writeThroughQcaEndsWithTheModel()
{
    auto model = makeModel();
    QVERIFY(model);
    const QByteArray key = m_token->token().publicKey(QStringLiteral("01"));
    const auto certificate =
        QCA::Certificate::fromDER(m_authority->issue(key, QStringLiteral("/CN=Direct")));
    QCA::KeyStore *store = model->keyStoreByName(StoreName);
    store->writeEntry(certificate);
    QTRY_COMPARE(m_prompt->count(), 1);
    store->writeEntry(certificate);
    model.reset();
    QCOMPARE(m_token->count("C_Login"), 0);
}

void TestClosing::goesOnWithoutAQuestion()
{
    auto model = makeModel();
    QVERIFY(model);
    m_prompt->setHolding(false);
    m_token->control("delay C_CreateObject * 5000");
    import(*model, "silent");
    QVERIFY(m_token->waitUntilInside("C_CreateObject"));
    QCOMPARE(m_prompt->count(), 1);
    model.reset();
    QCOMPARE(m_token->count("C_CreateObject"), 0); // it was not waited for
    QTRY_COMPARE_WITH_TIMEOUT(m_token->count("C_CreateObject"), 1, Patience);
}

void TestClosing::hangingModuleIsNotWaitedFor()
{
    auto model = makeModel();
    QVERIFY(model);
    m_prompt->setHolding(false);
    m_token->control("delay C_CreateObject * 60000");
    import(*model, "hanging");
    QVERIFY(m_token->waitUntilInside("C_CreateObject"));
    QCOMPARE(m_prompt->count(), 1);
    model.reset();
    // Nor by the next one, which lists what is there.
    model = makeModel();
    QVERIFY(model);
    model.reset();
    QCOMPARE(m_token->count("C_CreateObject"), 0); // it was not waited for
}

QTEST_GUILESS_MAIN(TestClosing)
#include "tst_closing.moc"
