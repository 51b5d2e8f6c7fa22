// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QProcess>
#include <QtTest>

#include <chrono>
#include <future>
#include <thread>
#include <vector>

using TrivexTest::KeyStoreFixture;

namespace {

const TrivexTest::PrivateHome privateHome;

/// What a window may stand still for, with room for a busy machine; ms.
constexpr int Moment = 1000;
/// How long the module stays in its call after the model and the program have let go of QCA.
constexpr std::chrono::seconds Hang{2};
/// Shorter than what the end of an application waits for.
constexpr std::chrono::milliseconds ShortHang{500};
constexpr int Patience = 40000; // ms

const QString Mark = QStringLiteral("test-mark");

} // namespace

/// A model that goes, and QCA or the application right after it, while a module hangs.
class TestKeyStoreEnd : public KeyStoreFixture {
    Q_OBJECT
public:
    /// A process whose application object goes next. Its exit status.
    static int endApplication(int argc, char *argv[]);
private Q_SLOTS:
    void qcaEndsWhileAModuleHangs();
    void applicationEndsWhileAModuleHangs();

private:
    using Models = std::vector<std::unique_ptr<KeyStoreModel>>;

    /// Models whose stores have something under way that waits for the module; none on failure.
    Models hangingModels();
    std::future<void> returnAfter(std::chrono::milliseconds time);
    /// Whether QCA has ended since the mark was made.
    static bool isNewQca();
};

TestKeyStoreEnd::Models TestKeyStoreEnd::hangingModels()
{
    prepare();
    install();
    configure();
    addStore("t", "Token", {certificate("c")});
    for (const char *id : {"u", "v", "w"})
        addStore(id, id, {certificate(id)});
    auto model = std::make_unique<KeyStoreModel>();
    if (!QTest::qWaitFor([&model] { return model->rowCount() == 4; }))
        return {};
    stores().block();
    model->removeCertificate(QStringLiteral("c"));
    if (!QTest::qWaitFor([this] { return stores().calls().size() == 1; }))
        return {};
    // Its lists wait behind that, each in a thread of its own.
    auto second = std::make_unique<KeyStoreModel>();
    QCA::setProperty(Mark, true);
    Models models;
    models.push_back(std::move(model));
    models.push_back(std::move(second));
    return models;
}

std::future<void> TestKeyStoreEnd::returnAfter(std::chrono::milliseconds time)
{
    return std::async(std::launch::async, [time, script = &stores()] {
        // The call returns after so long, as the test asks for.
        std::this_thread::sleep_for(time);
        script->unblock();
    });
}

bool TestKeyStoreEnd::isNewQca()
{
    const QCA::Initializer qca;
    return QCA::getProperty(Mark).isNull();
}

void TestKeyStoreEnd::qcaEndsWhileAModuleHangs()
{
    Models models = hangingModels();
    QVERIFY(!models.empty());
    const QPointer<QCA::KeyStore> store(models.front()->keyStoreByName(QStringLiteral("Token")));
    const auto hanging = returnAfter(Hang);
    QElapsedTimer timer;
    timer.start();
    models.clear();
    endQca();
    QVERIFY2(timer.elapsed() < Moment, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(store); // let go
    QTRY_VERIFY(!store);
    // QCA has ended with the last of the stores.
    QTRY_VERIFY(isNewQca());
}

int TestKeyStoreEnd::endApplication(int argc, char *argv[])
{
    auto application = std::make_unique<QCoreApplication>(argc, argv);
    TestKeyStoreEnd test;
    Models models = test.hangingModels();
    if (models.empty())
        return 1;
    const auto hanging = test.returnAfter(ShortHang);
    models.clear();
    test.endQca();
    application.reset();
    return isNewQca() ? 0 : 2;
}

void TestKeyStoreEnd::applicationEndsWhileAModuleHangs()
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--end")});
    const bool hasEnded = process.waitForFinished(Patience);
    process.kill();
    process.waitForFinished();
    QVERIFY2(hasEnded, "the process hangs");
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

int main(int argc, char *argv[])
{
    if (argc == 2 && qstrcmp(argv[1], "--end") == 0)
        return TestKeyStoreEnd::endApplication(argc, argv);
    QCoreApplication application(argc, argv);
    TestKeyStoreEnd test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_keystoreend.moc"
