// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/certificates/flat.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using TrivexTest::FakeEntry;
using TrivexTest::Flat;
using TrivexTest::KeyStoreFixture;

namespace {

const TrivexTest::PrivateHome privateHome;

/// More than one turn of the event loop takes in.
constexpr int Many = 150;

} // namespace

/// Long lists of several stores that come at the same time.
class TestKeyStoreRows : public KeyStoreFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void rowsOfAStoreComeTogether();
    void updateKeepsItsPlace();
    void readyFollowsTheRows();
    void readyWithoutRowsComesAtOnce();
    void storeDeletedWhileItsRowsCome_data();
    void storeDeletedWhileItsRowsCome();
    void deletedStoreTakesItsRows();

private:
    QList<FakeEntry> entries(int store, bool keyed = false);
    static QString name(int store) { return QStringLiteral("store-%1").arg(store); }
    void addEmptyStores(KeyStoreModel &model, int count);
    /// The stores of the rows, each once where its rows are together.
    static QStringList groups(const KeyStoreModel &model);
};

void TestKeyStoreRows::initTestCase()
{
    prepare();
    install();
    configure();
}

void TestKeyStoreRows::cleanup()
{
    stores().reset();
}

QList<FakeEntry> TestKeyStoreRows::entries(int store, bool isKeyed)
{
    QList<FakeEntry> list;
    for (int i = 0; i < Many; ++i) {
        const QByteArray id = QStringLiteral("%1/%2").arg(name(store)).arg(i).toLatin1();
        list << (isKeyed ? keyed(id.constData()) : certificate(id.constData()));
    }
    return list;
}

void TestKeyStoreRows::addEmptyStores(KeyStoreModel &model, int count)
{
    for (int i = 0; i < count; ++i)
        addStore(name(i).toLatin1().constData(), name(i).toLatin1().constData());
    for (int i = 0; i < count; ++i)
        QTRY_VERIFY(model.keyStoreByName(name(i)));
    // Their first, empty lists, which show nowhere.
    QTest::qWait(200);
}

QStringList TestKeyStoreRows::groups(const KeyStoreModel &model)
{
    QStringList found;
    const QStringList all = ids(model);
    for (const QString &id : all) {
        const QString store = id.section(QLatin1Char('/'), 0, 0);
        if (found.isEmpty() || found.last() != store)
            found << store;
    }
    return found;
}

void TestKeyStoreRows::rowsOfAStoreComeTogether()
{
    constexpr int Stores = 5;
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, Stores);
    QStringList reported;
    for (int i = 0; i < Stores; ++i)
        connect(model.keyStoreByName(name(i)), &QCA::KeyStore::updated, this,
                [&, i] { reported << name(i); });
    for (int i = Stores - 1; i >= 0; --i)
        stores().setEntries(name(i), entries(i));
    QTRY_COMPARE_WITH_TIMEOUT(model.rowCount(), Stores * Many, 20000);
    QCOMPARE(reported.size(), Stores);
    QCOMPARE(groups(model), reported);
    QCOMPARE(ids(model).first(), reported.first() + QStringLiteral("/0"));
    QCOMPARE(ids(model).last(), reported.last() + QStringLiteral("/%1").arg(Many - 1));
}

// A store that reports again before its turn has its last list shown, where it stood.
void TestKeyStoreRows::updateKeepsItsPlace()
{
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, 2);
    int reports = 0;
    connect(model.keyStoreByName(name(0)), &QCA::KeyStore::updated, this, [&] {
        // Its first rows are there; the rest is replaced.
        if (++reports == 1)
            stores().setEntries(name(0), entries(0).mid(0, 100));
    });
    stores().setEntries(name(0), entries(0));
    stores().setEntries(name(1), entries(1));
    QTRY_COMPARE(reports, 2);
    QTRY_COMPARE_WITH_TIMEOUT(model.rowCount(), 100 + Many, 20000);
    const QStringList all = ids(model);
    QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), all.size());
}

void TestKeyStoreRows::readyFollowsTheRows()
{
    Flat<KeyStoreModel> model;
    addEmptyStores(model, 2);
    QVector<int> rowsAtReady;
    connect(&model, &KeyStoreModel::keysReady, this, [&] { rowsAtReady << model.rowCount(); });
    int reports = 0;
    for (int i = 0; i < 2; ++i) {
        connect(model.keyStoreByName(name(i)), &QCA::KeyStore::updated, this, [&] {
            if (++reports == 2)
                QMetaObject::invokeMethod(&model, "ksmBusyFinished");
        });
        stores().setEntries(name(i), entries(i));
    }
    QTRY_COMPARE(rowsAtReady.size(), 1);
    QCOMPARE(rowsAtReady.first(), 2 * Many);
}

void TestKeyStoreRows::readyWithoutRowsComesAtOnce()
{
    KeyStoreModel model;
    QTRY_VERIFY(!model.isBusy());
    QSignalSpy ready(&model, &KeyStoreModel::keysReady);
    QSignalSpy notReady(&model, &KeyStoreModel::keysNotReady);
    QMetaObject::invokeMethod(&model, "ksmBusyStarted");
    QCOMPARE(notReady.count(), 1);
    QVERIFY(model.isBusy());
    QMetaObject::invokeMethod(&model, "ksmBusyFinished");
    QCOMPARE(ready.count(), 1);
    QVERIFY(!model.isBusy());
}

void TestKeyStoreRows::storeDeletedWhileItsRowsCome_data()
{
    QTest::addColumn<bool>("atAnnouncement");
    QTest::newRow("at a row") << false;
    QTest::newRow("at the announcement of a key") << true;
}

void TestKeyStoreRows::storeDeletedWhileItsRowsCome()
{
    QFETCH(bool, atAnnouncement);
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, 2);
    QPointer<QCA::KeyStore> doomed(model.keyStoreByName(name(0)));
    int seen = 0;
    const auto strike = [&] {
        if (++seen == Many / 2)
            delete doomed;
    };
    if (atAnnouncement)
        connect(&model, &KeyStoreModel::keyBundleWritten, this, strike);
    else
        connect(&model, &QAbstractItemModel::rowsInserted, this, strike, Qt::QueuedConnection);
    stores().setEntries(name(0), entries(0, true));
    QTRY_VERIFY(!doomed);
    QTRY_COMPARE(model.rowCount(), 0);
    // The others go on.
    stores().setEntries(name(1), entries(1));
    QTRY_COMPARE(model.rowCount(), Many);
    QCOMPARE(groups(model), QStringList({name(1)}));
    QCOMPARE(model.keyStoreByName(name(0)), nullptr);
}

void TestKeyStoreRows::deletedStoreTakesItsRows()
{
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, 2);
    stores().setEntries(name(0), {certificate("store-0/0")});
    stores().setEntries(name(1), {certificate("store-1/0")});
    QTRY_COMPARE(model.rowCount(), 2);
    delete model.keyStoreByName(name(0));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(groups(model), QStringList({name(1)}));
    for (int role = KeyStoreModel::NameRole; role <= KeyStoreModel::EntryIdRole; ++role)
        QVERIFY(model.index(0, 0).data(role).isValid());
    model.removeCertificate(QStringLiteral("store-0/0"));
    QVERIFY(stores().calls().isEmpty());
}

QTEST_GUILESS_MAIN(TestKeyStoreRows)
#include "tst_keystorerows.moc"
