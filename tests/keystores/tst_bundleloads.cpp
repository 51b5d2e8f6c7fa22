// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Loads of bundles whose key takes seconds to derive.
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"
#include "tests/support/endingchild.h"
#include "tests/support/loopmeter.h"

#include <QElapsedTimer>
#include <QQmlEngine>
#include <QtTest>

#include <memory>
#include <thread>

using TrivexTest::KeyStoreFixture;
using TrivexTest::LoopMeter;

namespace {

const TrivexTest::PrivateHome privateHome;

/// What a load of the slow bundle takes on any machine.
constexpr int Noticeable = 300; // ms
constexpr int UnderWay = 100; // ms

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

class TestBundleLoads : public KeyStoreFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();

    void windowStaysAlive();
    void quickLoadsRunNoEvents();
    void secondLoadMeanwhile();
    void sameAgainMeanwhile();
    void modelGoesMeanwhile();
    void scriptReturnsIntoItsEngine();
    void processEnds_data();
    void processEnds();

private:
    QString bundleFile(const char *name, const QStringList &further);

    QString m_slow;
    QString m_quick;
    QString m_slowest;
};

void TestBundleLoads::initTestCase()
{
    prepare();
    install();
    configure();
    m_quick = bundleFile("Quick", {});
    // Only the key is derived slowly: the bundle takes half as long to make.
    m_slow = bundleFile(
        "Slow",
        {text("-iter"), text("5000000"), text("-nomaciter"), text("-certpbe"), text("NONE")});
    m_slowest = bundleFile("Slowest", {text("-iter"), text("9900000"), text("-nomaciter")});
    QVERIFY(!m_quick.isEmpty() && !m_slow.isEmpty() && !m_slowest.isEmpty());
}

QString TestBundleLoads::bundleFile(const char *name, const QStringList &further)
{
    // The authority writes all of them under one name.
    const QString path = m_factory.authority().file(text(name) + text(".p12"));
    const QString made = m_factory.authority().bundle(
        {text("-algorithm"), text("RSA"), text("-pkeyopt"), text("rsa_keygen_bits:2048")},
        text("/CN=") + text(name), text("secret"), text("friend"), further);
    return !made.isEmpty() && QFile::rename(made, path) ? path : QString();
}

void TestBundleLoads::windowStaysAlive()
{
    KeyStoreModel model;
    LoopMeter meter;
    int beats = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&beats] { ++beats; });
    timer.start(10);
    QTest::qWait(20); // the timer is in its beat
    beats = 0;
    meter.start();
    QElapsedTimer clock;
    clock.start();
    const bool isLoaded = model.keyBundleFromFile(m_slow, text("secret"));
    const qint64 took = clock.elapsed();
    const int beatsMeanwhile = beats;
    QTest::qWait(20); // a loop that stood still tells only now
    meter.stop();
    QVERIFY(isLoaded);
    QVERIFY2(took >= Noticeable, qPrintable(QString::number(took)));
    QVERIFY2(meter.longest() <= LoopMeter::Unnoticed, qPrintable(QString::number(meter.longest())));
    QVERIFY(beatsMeanwhile > 5);
    QCOMPARE(model.error(), KeyStoreModel::ErrorUnknown);
    QCOMPARE(model.importedCertificateCommonName(), text("Slow"));
    // The same where it fails after the work.
    QVERIFY(!model.keyBundleFromFile(m_slow, text("wrong")));
    QCOMPARE(model.error(), KeyStoreModel::ErrorPassphrase);
    QCOMPARE(model.importedCertificateCommonName(), text("Slow"));
}

/// A host that was never made for it sees no event in the middle of a call.
void TestBundleLoads::quickLoadsRunNoEvents()
{
    KeyStoreModel model;
    QVERIFY(model.keyBundleFromFile(m_quick, text("secret"))); // loads libraries
    bool isRun = false;
    for (int i = 0; i < 5; ++i) {
        isRun = false;
        QTimer::singleShot(0, &model, [&isRun] { isRun = true; });
        QVERIFY(model.keyBundleFromFile(m_quick, text("secret")));
        if (!isRun)
            break;
        // A machine under load may take its time.
    }
    QVERIFY(!isRun);
    QTRY_VERIFY(isRun);
}

void TestBundleLoads::secondLoadMeanwhile()
{
    KeyStoreModel model;
    bool isQuickLoaded = false;
    bool isWrongLoaded = true;
    QString meanwhile;
    QTimer::singleShot(UnderWay, &model, [&] {
        isQuickLoaded = model.keyBundleFromFile(m_quick, text("secret"));
        meanwhile = model.importedCertificateCommonName();
        isWrongLoaded = model.keyBundleFromFile(m_quick, text("wrong"));
    });
    QVERIFY(model.keyBundleFromFile(m_slow, text("secret")));
    // Each has loaded its own when it returns.
    QVERIFY(isQuickLoaded);
    QCOMPARE(meanwhile, text("Quick"));
    QVERIFY(!isWrongLoaded);
    QCOMPARE(model.error(), KeyStoreModel::ErrorPassphrase);
    QCOMPARE(model.importedCertificateCommonName(), text("Slow"));
}

/// Impatient hands.
void TestBundleLoads::sameAgainMeanwhile()
{
    KeyStoreModel model;
    int loaded = 0;
    for (int i = 1; i <= 3; ++i) {
        QTimer::singleShot(UnderWay * i, &model,
                           [&] { loaded += model.keyBundleFromFile(m_slow, text("secret")); });
    }
    QVERIFY(model.keyBundleFromFile(m_slow, text("secret")));
    QTRY_COMPARE(loaded, 3);
    QCOMPARE(model.importedCertificateCommonName(), text("Slow"));
}

void TestBundleLoads::modelGoesMeanwhile()
{
    auto *model = new KeyStoreModel;
    QTimer::singleShot(UnderWay, this, [&model] {
        delete model;
        model = nullptr;
    });
    QVERIFY(!model->keyBundleFromFile(m_slow, text("secret")));
    QVERIFY2(!model, "no event has run");
}

// A host that is done with its engine says so while the script waits.
void TestBundleLoads::scriptReturnsIntoItsEngine()
{
    const QPointer<QQmlEngine> engine = new QQmlEngine;
    KeyStoreModel model;
    QQmlEngine::setObjectOwnership(&model, QQmlEngine::CppOwnership);
    engine->globalObject().setProperty(text("model"), engine->newQObject(&model));
    engine->globalObject().setProperty(text("path"), m_slow);
    bool isAsked = false;
    bool isThere = false;
    QTimer::singleShot(UnderWay, engine, [&] {
        isAsked = true;
        engine->deleteLater();
    });
    QTimer::singleShot(2 * UnderWay, this, [&] { isThere = engine; });
    const QJSValue result =
        engine->evaluate(text("model.keyBundleFromFile(path, 'secret') ? 'back' : 'failed'"));
    QVERIFY(isAsked);
    QVERIFY2(isThere, "the engine has gone under its script");
    QVERIFY(engine);
    QCOMPARE(result.toString(), text("back"));
    QTRY_VERIFY(!engine);
}

void TestBundleLoads::processEnds_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"quit", "exit", "thread"})
        QTest::newRow(way) << text(way);
}

void TestBundleLoads::processEnds()
{
    QFETCH(QString, way);
    const QString problem = TrivexTest::childProblem({text("child"), way, m_slowest});
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

namespace {

/// Loads `path`, and is told to end in the middle.
int runChild(const QString &way, const QString &path)
{
    const QCA::Initializer qca;
    KeyStoreModel model;
    bool isLoaded = false;
    // The thread says the word: one that derives keys would be late.
    std::thread([&way] {
        std::this_thread::sleep_for(std::chrono::milliseconds(2 * Noticeable));
        TrivexTest::sayEnding();
        QMetaObject::invokeMethod(qApp, [&way] { TrivexTest::endProcess(way); });
    }).detach();
    QTimer::singleShot(0, &model,
                       [&] { isLoaded = model.keyBundleFromFile(path, text("secret")); });
    const int status = QCoreApplication::exec();
    return isLoaded ? EXIT_FAILURE : status;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("child"))
        return runChild(arguments.value(2), arguments.value(3));
    TestBundleLoads test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_bundleloads.moc"
