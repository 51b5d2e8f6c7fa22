// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What goes while a request waits for its token in a nested event loop.
#include "keystores/keystoremodel.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/requests/home.h"

#include <QQmlEngine>
#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;
FaultyToken *spy = nullptr;
constexpr int Patience = 30000; // ms

enum Victim { Request, Stores, Engine };
enum Call { CreateRequest, SetEditMode, SaveRequest };

} // namespace

class TestRequestNested : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void destroyedWhileItSigns_data();
    void destroyedWhileItSigns();
    void scriptReturnsIntoItsEngine_data();
    void scriptReturnsIntoItsEngine();
    void destroyedBySlots_data();
    void destroyedBySlots();
    void listIsReadAgainMeanwhile();

private:
    void makeKey();
    void call(Call what);

    std::unique_ptr<QQmlEngine> m_engine;
    QPointer<KeyStoreModel> m_stores;
    QPointer<CertificateRequest> m_request;
};

/// As a window has them: everything belongs to an engine.
void TestRequestNested::init()
{
    home->clearRequests();
    m_engine = std::make_unique<QQmlEngine>();
    m_stores = new KeyStoreModel(m_engine.get());
    m_request = new CertificateRequest(m_engine.get());
    m_request->setKeyStoreModel(m_stores);
    makeKey();
}

void TestRequestNested::cleanup()
{
    spy->control();
    m_engine.reset();
    QVERIFY(!m_request);
    QVERIFY(!m_stores);
}

void TestRequestNested::makeKey()
{
    const ComboBoxModel *locations = m_stores->certLocationModel();
    int row = -1;
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            for (int i = 0; i < locations->rowCount(); ++i) {
                if (locations->rowAt(i).type == spy->token().label())
                    row = i;
            }
            return row >= 0;
        }(),
        Patience);
    m_request->init();
    m_request->setPrKeyAlgorithmId(CertificateRequest::EC384);
    m_request->setPrKeyLocationIndex(row);
    m_request->setKeyIdentifier(QStringLiteral("nested"));
    m_request->setPrKeyPin(QString::fromLatin1(TestToken::pin()));
    QSignalSpy done(m_request, &CertificateRequest::createKeyPairDone);
    m_request->createKeyPair();
    QVERIFY(done.wait(Patience));
    m_request->setCommonName(QStringLiteral("Nested"));
}

void TestRequestNested::call(Call what)
{
    switch (what) {
    case CreateRequest:
        m_request->createRequest();
        break;
    case SetEditMode:
        m_request->setEditMode(true);
        break;
    case SaveRequest:
        m_request->saveRequest();
        break;
    }
}

void TestRequestNested::destroyedWhileItSigns_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<int>("victim");
    const QVector<QPair<int, QByteArray>> calls{{CreateRequest, "createRequest"},
                                                {SetEditMode, "setEditMode"},
                                                {SaveRequest, "saveRequest in edit mode"}};
    const QVector<QPair<int, QByteArray>> victims{
        {Request, "request"}, {Stores, "stores"}, {Engine, "engine"}};
    for (const auto &one : calls) {
        for (const auto &victim : victims)
            QTest::newRow(QByteArray(one.second + ", " + victim.second).constData())
                << one.first << victim.first;
    }
}

void TestRequestNested::destroyedWhileItSigns()
{
    QFETCH(int, what);
    QFETCH(int, victim);
    if (what != CreateRequest) {
        m_request->createRequest();
        QCOMPARE(home->requestFiles().size(), 1);
    }
    if (what == SaveRequest)
        m_request->setEditMode(true);
    spy->control("delay C_Sign * 800");
    bool isDone = false;
    QTimer::singleShot(300, this, [&] {
        isDone = true;
        if (victim == Request)
            delete m_request;
        else if (victim == Stores)
            delete m_stores;
        else
            m_engine.reset();
    });
    call(Call(what));
    QVERIFY2(isDone, "it has not waited in an event loop");
    QCOMPARE(bool(m_request), victim == Stores);
    // A new file needs its object; an edited one is whole, whoever has gone.
    const int files = what == CreateRequest && victim != Stores ? 0 : 1;
    QCOMPARE(home->requestFiles().size(), files);
}

void TestRequestNested::scriptReturnsIntoItsEngine_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("createRequest") << QStringLiteral("request.createRequest(); 'back'");
    QTest::newRow("setEditMode") << QStringLiteral("request.setEditMode(true); 'back'");
    QTest::newRow("saveRequest") << QStringLiteral("request.saveRequest() ? 'back' : 'failed'");
}

// A host that is done with its engine says so while the script waits for the token.
void TestRequestNested::scriptReturnsIntoItsEngine()
{
    QFETCH(QString, script);
    m_request->createRequest();
    if (script.contains(QLatin1String("saveRequest")))
        m_request->setEditMode(true);
    spy->control("delay C_Sign * 800");
    const QPointer<QQmlEngine> engine = m_engine.release();
    engine->globalObject().setProperty(QStringLiteral("request"), engine->newQObject(m_request));
    bool isAsked = false;
    bool isThere = false;
    QTimer::singleShot(200, engine, [&] {
        isAsked = true;
        engine->deleteLater();
    });
    QTimer::singleShot(500, this, [&] { isThere = engine; });
    const QJSValue result = engine->evaluate(script);
    QVERIFY(isAsked);
    QVERIFY2(isThere, "the engine has gone under its script");
    QVERIFY(engine);
    QCOMPARE(result.toString(), QStringLiteral("back"));
    QTRY_VERIFY(!engine);
    QVERIFY(!m_request);
}

void TestRequestNested::destroyedBySlots_data()
{
    QTest::addColumn<bool>("wholeEngine");
    QTest::newRow("request") << false;
    QTest::newRow("engine") << true;
}

// The object goes in a slot of its own signal.
void TestRequestNested::destroyedBySlots()
{
    QFETCH(bool, wholeEngine);
    int created = 0;
    connect(m_request, &CertificateRequest::requestCreated, this, [&] {
        ++created;
        if (wholeEngine)
            m_engine.reset();
        else
            delete m_request;
    });
    m_request->createRequest();
    QCOMPARE(created, 1);
    QVERIFY(!m_request);
    QCOMPARE(home->requestFiles().size(), 1);
}

// The list of requests replaces its objects when a file changes, the one that signs too.
void TestRequestNested::listIsReadAgainMeanwhile()
{
    m_request->createRequest();
    CertificateRequestModel model;
    model.setKeyStoreModel(m_stores);
    QCOMPARE(model.rowCount(), 1);
    const QPointer<CertificateRequest> listed(model.index(0)
                                                  .data(CertificateRequestModel::CertificateRole)
                                                  .value<CertificateRequest *>());
    QVERIFY(listed);
    listed->init();
    listed->setCommonName(QStringLiteral("Edited"));
    spy->control("delay C_Sign * 800");
    QTimer::singleShot(300, this, [&] { model.init(); });
    listed->setEditMode(true);
    QVERIFY(!listed);
    QCOMPARE(home->requestFiles().size(), 1);
    QTRY_COMPARE(model.rowCount(), 1);
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    FaultyToken softwareToken(QStringLiteral("Nested"));
    spy = &softwareToken;
    softwareToken.useInThisProcess();
    QCoreApplication application(argc, argv);
    if (!softwareToken.token().isValid()) {
        qInfo("SKIP %s", qPrintable(softwareToken.token().problem()));
        return 0;
    }
    const QCA::Initializer initializer;
    TestRequestNested test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestnested.moc"
