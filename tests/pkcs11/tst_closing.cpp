// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/systemlist.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Closing");
/// What a window may stand still for, with room for a busy machine; ms.
constexpr int Moment = 1000;
constexpr int Patience = 15000;

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
    /// How long the end of the model takes.
    static qint64 end(std::unique_ptr<KeyStoreModel> &model);

    QTemporaryDir m_home;
};

void TestClosing::initTestCase()
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()));
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
    model.setCertLocationId(0);
    model.importCertificate();
}

qint64 TestClosing::end(std::unique_ptr<KeyStoreModel> &model)
{
    QElapsedTimer timer;
    timer.start();
    model.reset();
    return timer.elapsed();
}

// One question is open, and the write behind it will ask the next one.
void TestClosing::questionsEndWithTheModel()
{
    auto model = makeModel();
    QVERIFY(model);
    import(*model, "first");
    import(*model, "second");
    QTRY_COMPARE(m_prompt->count(), 1);
    const qint64 spent = end(model);
    QVERIFY2(spent < Moment, qPrintable(QString::number(spent)));
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
    QElapsedTimer timer;
    timer.start();
    auto second = std::make_unique<KeyStoreModel>();
    QVERIFY2(timer.elapsed() < Moment, qPrintable(QString::number(timer.elapsed())));
    // It lists meanwhile.
    QTRY_COMPARE_WITH_TIMEOUT(second->rowCount(), model->rowCount(), Patience);
    QSignalSpy written(model.get(), &KeyStoreModel::entryWrittenChanged);
    QSignalSpy foreign(second.get(), &KeyStoreModel::entryWrittenChanged);
    const qint64 spent = end(second);
    QVERIFY2(spent < Moment, qPrintable(QString::number(spent)));
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
    const qint64 spent = end(going);
    QVERIFY2(spent < Moment, qPrintable(QString::number(spent)));
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
    const qint64 spent = end(model);
    QVERIFY2(spent < Moment, qPrintable(QString::number(spent)));
    QCOMPARE(m_token->count("C_Login"), 0);
}

void TestClosing::goesOnWithoutAQuestion()
{
    auto model = makeModel();
    QVERIFY(model);
    m_prompt->setHolding(false);
    m_token->control("delay C_CreateObject * 1500");
    import(*model, "silent");
    QTRY_COMPARE(m_prompt->count(), 1);
    QTest::qWait(300); // the module logs a call when it ends: being inside shows nowhere
    const qint64 spent = end(model);
    QVERIFY2(spent < Moment, qPrintable(QString::number(spent)));
    QTRY_COMPARE_WITH_TIMEOUT(m_token->count("C_CreateObject"), 1, Patience);
}

void TestClosing::hangingModuleIsNotWaitedFor()
{
    auto model = makeModel();
    QVERIFY(model);
    m_prompt->setHolding(false);
    m_token->control("delay C_CreateObject * 60000");
    import(*model, "hanging");
    QTRY_COMPARE(m_prompt->count(), 1);
    QTest::qWait(300); // the module logs a call when it ends: being inside shows nowhere
    qint64 spent = end(model);
    QVERIFY2(spent < Moment, qPrintable(QString::number(spent)));
    // Nor by the next one, which lists what is there.
    QElapsedTimer timer;
    timer.start();
    model = makeModel();
    QVERIFY(model);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    spent = end(model);
    QVERIFY2(spent < Moment, qPrintable(QString::number(spent)));
}

QTEST_GUILESS_MAIN(TestClosing)
#include "tst_closing.moc"
