// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatemodel.h"
#include "tests/certificates/flat.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

#include <iterator>

using TrivexTest::FakeEntry;
using TrivexTest::Flat;
using TrivexTest::KeyStoreFixture;

namespace {

const TrivexTest::PrivateHome privateHome;

/// More than one turn of the event loop takes in.
constexpr int Many = 150;
/// All that a window shows of the stores.
constexpr int Categories[] = {KeyStoreModel::System, KeyStoreModel::User, KeyStoreModel::SmartCard,
                              KeyStoreModel::Imported, KeyStoreModel::RootImported};

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
    void filtersNeedNoObjects();
    void objectsLiveAsLongAsTheirRows();
    void growingStoreIsNotReadAnew();
    void doubledIdsHaveOneRow();
    void doubledIdsMeetInAnInnerLoop();
    void updateMeetsRowsThatGo();
    void lostStoreTakesItsComingRows();

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
    QTRY_COMPARE(model.rowCount(), Stores * Many);
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
    QTRY_COMPARE(model.rowCount(), 100 + Many);
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

// What filters and sorting ask of every row must not leave an object with each.
void TestKeyStoreRows::filtersNeedNoObjects()
{
    Flat<KeyStoreModel> model;
    addEmptyStores(model, 1);
    CertificateModel filters[std::size(Categories)];
    for (size_t i = 0; i < std::size(Categories); ++i) {
        filters[i].setFilterRole(Categories[i]);
        filters[i].setSourceModel(&model);
    }
    stores().setEntries(name(0), entries(0, true));
    QTRY_COMPARE(model.rowCount(), Many);
    int shown = 0;
    for (CertificateModel &filter : filters)
        shown += filter.rowCount();
    QCOMPARE(shown, Many);
    const Trivex::EntryRows *rows = Trivex::entryRowsOf(&model);
    QVERIFY(rows);
    QVERIFY(rows->originOf(0).hasPrivateKey);
    // Those that were read last wait for the next reader, the others are gone.
    QVector<QPointer<QObject>> read;
    for (int row = 0; row < Many; ++row)
        rows->lookAtCertificate(row, [&read](const QObject &certificate) {
            read.append(const_cast<QObject *>(&certificate));
        });
    QCOMPARE(read.size(), Many);
    QVERIFY(!read.first());
    QCOMPARE(rows->rowOf(read.last()), -1);
    // Who reads what is among them needs no other one.
    stores().forgetReads();
    QObject *shownOne =
        model.index(Many - 1, 0).data(KeyStoreModel::CertificateRole).value<QObject *>();
    QCOMPARE(shownOne, read.last().data());
    QCOMPARE(stores().reads(QStringLiteral("keyBundle")), 0);
    QCOMPARE(rows->rowOf(shownOne), Many - 1);
    QCOMPARE(rows->rowOf(nullptr), -1);
    QVERIFY(!rows->entryOf(-1) && !rows->entryOf(Many));
    QVERIFY(!rows->originOf(Many).hasPrivateKey);
}

void TestKeyStoreRows::objectsLiveAsLongAsTheirRows()
{
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, 1);
    stores().setEntries(name(0), entries(0));
    QTRY_COMPARE(model.rowCount(), Many);
    const auto object = [&model](int row, int role) {
        return model.index(row, 0).data(role).value<QObject *>();
    };
    const int last = Many - 1;
    const QPointer<QObject> entry = object(last, KeyStoreModel::KeyStoreEntryRole);
    const QPointer<QObject> certificate = object(last, KeyStoreModel::CertificateRole);
    QVERIFY(entry && certificate);
    QCOMPARE(entry->property("certificate").value<QObject *>(), certificate.data());
    // Others are read until none of the passing objects is left.
    for (int row = 0; row < last; ++row)
        QVERIFY(object(row, KeyStoreModel::CertificateRole));
    QCOMPARE(object(last, KeyStoreModel::KeyStoreEntryRole), entry.data());
    QCOMPARE(object(last, KeyStoreModel::CertificateRole), certificate.data());
    QVERIFY(!certificate->property("commonName").toString().isEmpty());
    bool wasThere = false;
    connect(&model, &QAbstractItemModel::rowsRemoved, this,
            [&] { wasThere = entry && certificate; });
    stores().setEntries(name(0), entries(0).mid(0, last));
    QTRY_COMPARE(model.rowCount(), last);
    QVERIFY(wasThere);
    QVERIFY(!entry && !certificate);
}

// A directory of many files reports in portions; what it had before is compared, not sorted in
// anew.
void TestKeyStoreRows::growingStoreIsNotReadAnew()
{
    constexpr int More = 10;
    Flat<KeyStoreModel> model;
    addEmptyStores(model, 1);
    const QList<FakeEntry> all = entries(0);
    stores().setEntries(name(0), all.mid(0, Many - More));
    QTRY_COMPARE(model.rowCount(), Many - More);
    stores().forgetReads();
    stores().setEntries(name(0), all);
    QTRY_COMPARE(model.rowCount(), Many);
    // A row and its entry are compared, and rows are looked through for ids that come twice.
    const int ids = stores().reads(QStringLiteral("id"));
    QVERIFY2(ids <= 3 * Many + 5 * More, qPrintable(QString::number(ids)));
    const int names = stores().reads(QStringLiteral("name"));
    QVERIFY2(names <= 2 * More, qPrintable(QString::number(names)));
    QCOMPARE(stores().reads(QStringLiteral("certificate")), 0);
}

void TestKeyStoreRows::doubledIdsHaveOneRow()
{
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, 1);
    const QList<FakeEntry> all = entries(0);
    const auto expect = [&model](const QVector<int> &numbers) {
        QStringList wanted;
        for (const int number : numbers)
            wanted += QStringLiteral("store-0/%1").arg(number);
        return QTest::qWaitFor([&] { return ids(model) == wanted; }, 10000);
    };
    stores().setEntries(name(0), {all.at(1), all.at(1), all.at(2)});
    QVERIFY(expect({1, 2}));
    // One in front, between, and behind; those that were there twice in another place.
    stores().setEntries(
        name(0), {all.at(0), all.at(1), all.at(3), all.at(1), all.at(2), all.at(2), all.at(4)});
    QVERIFY(expect({1, 2, 0, 3, 4}));
    stores().setEntries(name(0), {all.at(4), all.at(3), all.at(1), all.at(5), all.at(5)});
    QVERIFY(expect({1, 3, 4, 5}));
}

// The row comes while others hear of its bundle, and the next entry has the same id.
void TestKeyStoreRows::doubledIdsMeetInAnInnerLoop()
{
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, 2);
    // Longer than a turn of the event loop may take: each row ends its own.
    connect(&model, &QAbstractItemModel::rowsInserted, this, [] { QThread::msleep(20); });
    int told = 0;
    connect(&model, &KeyStoreModel::keyBundleWritten, this, [&] {
        if (++told != 2)
            return;
        // The report of another store sets the turns going, which this one holds up.
        QEventLoop inner;
        connect(&model, &QAbstractItemModel::rowsInserted, &inner, &QEventLoop::quit);
        stores().setEntries(name(1), {certificate("store-1/0")});
        inner.exec();
    });
    const QList<FakeEntry> all = entries(0, true);
    stores().setEntries(name(0), {all.at(0), all.at(1), all.at(1), all.at(2)});
    QTRY_VERIFY(ids(model).contains(QStringLiteral("store-1/0")));
    QCOMPARE(ids(model),
             QStringList({QStringLiteral("store-0/0"), QStringLiteral("store-0/1"),
                          QStringLiteral("store-0/2"), QStringLiteral("store-1/0")}));
}

// Whoever hears of a row that goes lets the event loop run, and the store reports once more.
void TestKeyStoreRows::updateMeetsRowsThatGo()
{
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, 1);
    const QList<FakeEntry> all = entries(0);
    stores().setEntries(name(0), {all.at(0), all.at(1), all.at(2)});
    QTRY_COMPARE(model.rowCount(), 3);
    int told = 0;
    connect(&model, &QAbstractItemModel::rowsRemoved, this, [&] {
        if (++told != 1)
            return;
        QEventLoop inner;
        connect(&model, &QAbstractItemModel::rowsInserted, &inner, &QEventLoop::quit);
        stores().setEntries(name(0), {all.at(0), all.at(2), all.at(3), all.at(4)});
        inner.exec();
    });
    stores().setEntries(name(0), {all.at(0), all.at(2), all.at(3)});
    const QStringList wanted = {QStringLiteral("store-0/0"), QStringLiteral("store-0/2"),
                                QStringLiteral("store-0/3"), QStringLiteral("store-0/4")};
    QTRY_VERIFY(ids(model).contains(wanted.last()));
    QSignalSpy ready(&model, &KeyStoreModel::keysReady);
    QMetaObject::invokeMethod(&model, "ksmBusyFinished"); // behind all rows that still come
    QTRY_COMPARE(ready.count(), 1);
    QCOMPARE(ids(model), wanted);
}

// The store object itself goes only when the module returns from its call.
void TestKeyStoreRows::lostStoreTakesItsComingRows()
{
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    addEmptyStores(model, 1);
    const QPointer<QCA::KeyStore> lost(model.keyStoreByName(name(0)));
    int rowsAtEnd = -1;
    const auto lose = [&] {
        if (rowsAtEnd >= 0)
            return;
        stores().block();
        model.removeCertificate(QStringLiteral("store-0/0"));
        // Another thread makes the call; the event loop here must not run meanwhile.
        const QDeadlineTimer patience(30000);
        while (stores().calls().isEmpty() && !patience.hasExpired())
            QThread::yieldCurrentThread();
        QVERIFY(QMetaObject::invokeMethod(lost, "unavailable"));
        rowsAtEnd = model.rowCount();
    };
    connect(&model, &QAbstractItemModel::rowsInserted, this, lose, Qt::QueuedConnection);
    stores().setEntries(name(0), entries(0));
    QTRY_VERIFY(rowsAtEnd >= 0);
    QCOMPARE(stores().calls().size(), 1);
    QCOMPARE(rowsAtEnd, 0);
    QVERIFY(lost);
    QSignalSpy ready(&model, &KeyStoreModel::keysReady);
    QMetaObject::invokeMethod(&model, "ksmBusyFinished");
    QTRY_COMPARE(ready.count(), 1);
    QCOMPARE(model.rowCount(), 0);
    stores().unblock();
    QTRY_VERIFY(!lost);
}

QTEST_GUILESS_MAIN(TestKeyStoreRows)
#include "tst_keystorerows.moc"
