// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"
#include "tests/certificates/flat.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QPointer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QtTest>

#include <chrono>
#include <future>
#include <thread>

using TrivexTest::Flat;
using TrivexTest::KeyStoreFixture;

namespace {

const TrivexTest::PrivateHome privateHome;

/// What a window may stand still for, with room for a busy machine; ms.
constexpr int Moment = 1000;

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

/// Stores that go while the model lives, and models that go.
class TestKeyStoreLifetime : public KeyStoreFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void lostStoreWithRows();
    void lostStoreWithoutRows();
    void deletedWhileAnOperationAsks();
    void deletedWhileAQuestionIsOpen();
    void deletedWhileAModuleHangs();
    void lostStoreWhileAModuleHangs();
    void secondModelWhileAModuleHangs();
    void deletedWhileTheThreadIsBusy();
    void twentyTimes();
};

void TestKeyStoreLifetime::initTestCase()
{
    prepare();
    install();
    configure();
}

void TestKeyStoreLifetime::cleanup()
{
    stores().reset();
}

void TestKeyStoreLifetime::lostStoreWithRows()
{
    addStore("a", "A", {certificate("0"), certificate("1")});
    addStore("b", "B", {certificate("2")});
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    QTRY_COMPARE(model.rowCount(), 3);
    QPointer<QCA::KeyStore> lost = model.keyStoreByName(text("A"));
    QVERIFY(lost);
    const int count = model.keyStoreCount();
    stores().removeStore(text("a"));
    QTRY_COMPARE(ids(model), QStringList({text("2")}));
    QTRY_VERIFY(!lost);
    QCOMPARE(model.keyStoreCount(), count); // its place stays
    QCOMPARE(model.keyStoreByName(text("A")), nullptr);
    addStore("a", "A", {certificate("0")});
    QTRY_COMPARE(model.rowCount(), 2);
}

void TestKeyStoreLifetime::lostStoreWithoutRows()
{
    addStore("a", "A");
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("A")));
    QPointer<QCA::KeyStore> lost = model.keyStoreByName(text("A"));
    stores().removeStore(text("a"));
    QTRY_VERIFY(!lost);
    QCOMPARE(model.rowCount(), 0);
}

void TestKeyStoreLifetime::deletedWhileAnOperationAsks()
{
    addStore("t", "Token", {certificate("c")});
    stores().setAsking(true);
    auto model = std::make_unique<KeyStoreModel>();
    QTRY_COMPARE(model->rowCount(), 1);
    // The handler answers with what is stored: an empty array.
    model->removeCertificate(text("c"));
    QElapsedTimer timer;
    timer.start();
    model.reset();
    QVERIFY2(timer.elapsed() < 4000, "the model waits for ever");
}

// Nothing is stored to answer with, so the asker's thread holds a question that waits for ever.
void TestKeyStoreLifetime::deletedWhileAQuestionIsOpen()
{
    addStore("t", "Token", {certificate("c")});
    stores().setAsking(true);
    for (int round = 0; round < 3; ++round) {
        auto model = std::make_unique<KeyStoreModel>();
        QTRY_COMPARE(model->rowCount(), 1);
        QTRY_VERIFY(model->askerThread()->handler());
        model->askerThread()->handler()->setPassword(QCA::SecureArray());
        QTest::ignoreMessage(QtWarningMsg, "Password is null!");
        model->removeCertificate(text("c"));
        QTRY_COMPARE(stores().openQuestions(), 1);
        QTest::qWait(100); // no answer must come in this time
        QCOMPARE(stores().openQuestions(), 1);
        const QPointer<QThread> asker(model->askerThread());
        QElapsedTimer timer;
        timer.start();
        model.reset();
        QVERIFY2(timer.elapsed() < 3000, "the model waits for the answer");
        QTRY_COMPARE(stores().openQuestions(), 0);
        QTRY_VERIFY(!asker);
    }
    // A later model asks and is answered.
    KeyStoreModel later;
    QSignalSpy removed(&later, &KeyStoreModel::entryRemovedChanged);
    QTRY_COMPARE(later.rowCount(), 1);
    later.removeCertificate(text("c"));
    QTRY_COMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0), QVariant(true));
    QCOMPARE(stores().calls().size(), 4);
}

// A provider that is not ours, inside a call from which it does not return.
void TestKeyStoreLifetime::deletedWhileAModuleHangs()
{
    addStore("t", "Token", {certificate("c")});
    addStore("u", "Other", {certificate("d")});
    auto model = std::make_unique<KeyStoreModel>();
    QTRY_COMPARE(model->rowCount(), 2);
    stores().block();
    model->removeCertificate(text("c"));
    QTRY_COMPARE(stores().calls().size(), 1);
    // Lists that wait behind it.
    stores().setEntries(text("u"), {certificate("d"), certificate("e")});
    QTest::qWait(50); // they are asked for, which shows nowhere
    const QPointer<QCA::KeyStore> store(model->keyStoreByName(text("Token")));
    const auto waiting = std::async(std::launch::async, [this] {
        // So that a model which waits fails, and does not hang the test.
        std::this_thread::sleep_for(std::chrono::seconds(5));
        stores().unblock();
    });
    QElapsedTimer timer;
    timer.start();
    model.reset();
    QVERIFY2(timer.elapsed() < Moment, qPrintable(QString::number(timer.elapsed())));
    stores().unblock();
    // What was let go goes when its operation has ended.
    QTRY_VERIFY(!store);
    KeyStoreModel later;
    QTRY_COMPARE(later.rowCount(), 3);
}

void TestKeyStoreLifetime::lostStoreWhileAModuleHangs()
{
    addStore("t", "Token", {certificate("c")});
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 1);
    const QPointer<QCA::KeyStore> store(model.keyStoreByName(text("Token")));
    stores().block();
    model.removeCertificate(text("c"));
    QTRY_COMPARE(stores().calls().size(), 1);
    const auto waiting = std::async(std::launch::async, [this] {
        // So that a model which waits fails, and does not hang the test.
        std::this_thread::sleep_for(std::chrono::seconds(5));
        stores().unblock();
    });
    QElapsedTimer timer;
    timer.start();
    // As QCA tells of a store that is gone; its own thread can't while the module holds it.
    QVERIFY(QMetaObject::invokeMethod(store, "unavailable"));
    QVERIFY2(timer.elapsed() < Moment, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(!model.keyStoreByName(text("Token")));
    stores().unblock();
    QTRY_VERIFY(!store);
}

void TestKeyStoreLifetime::secondModelWhileAModuleHangs()
{
    addStore("t", "Token", {certificate("c")});
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 1);
    stores().block();
    QSignalSpy removed(&model, &KeyStoreModel::entryRemovedChanged);
    model.removeCertificate(text("c"));
    QTRY_COMPARE(stores().calls().size(), 1);
    const auto waiting = std::async(std::launch::async, [this] {
        // So that a model which waits fails, and does not hang the test.
        std::this_thread::sleep_for(std::chrono::seconds(5));
        stores().unblock();
    });
    QElapsedTimer timer;
    timer.start();
    KeyStoreModel second;
    QVERIFY2(timer.elapsed() < Moment, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(second.keyStoreByName(text("Token")));
    stores().unblock();
    QTRY_COMPARE(second.rowCount(), 1);
    QTRY_COMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0), QVariant(true));
}

void TestKeyStoreLifetime::deletedWhileTheThreadIsBusy()
{
    auto model = std::make_unique<KeyStoreModel>();
    QTRY_VERIFY(model->askerThread()->handler());
    const QPointer<QcaAskerThread> thread(model->askerThread());
    QSemaphore blocked;
    QSemaphore release;
    QMetaObject::invokeMethod(thread->handler(), [&] {
        blocked.release();
        release.acquire();
    });
    blocked.acquire();
    QElapsedTimer timer;
    timer.start();
    model.reset();
    const qint64 spent = timer.elapsed();
    const bool isLeft = thread;
    release.release();
    QVERIFY2(spent >= 2900 && spent < 10000, "not the patience that is promised");
    QVERIFY(isLeft); // let go, not destroyed while it runs
    QTRY_VERIFY(!thread);
}

void TestKeyStoreLifetime::twentyTimes()
{
    addStore("t", "Token", {certificate("c")});
    for (int i = 0; i < 20; ++i) {
        KeyStoreModel model;
        QVERIFY(model.provider());
        if (i % 5 == 0)
            QTRY_COMPARE(model.rowCount(), 1);
    }
    QCOMPARE(QCA::findProvider(text("qca-norvel-pkcs11")), m_fake);
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.provider()->features(), m_fake->features());
}

QTEST_GUILESS_MAIN(TestKeyStoreLifetime)
#include "tst_keystorelifetime.moc"
