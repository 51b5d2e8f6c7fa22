// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/certificates/countingsource.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <utility>

using TrivexTest::CountingSource;
using TrivexTest::names;
using TrivexTest::systemRows;

namespace {

using Row = CountingSource::Row;

/// More than a search does in one turn of the event loop.
constexpr int Many = 20000;

/// Counts how often two rows are compared.
class CountingModel : public CertificateModel {
public:
    int takeComparisons() { return std::exchange(m_comparisons, 0); }

protected:
    int compare(int row, int other) const override
    {
        ++m_comparisons;
        return CertificateModel::compare(row, other);
    }

private:
    mutable int m_comparisons = 0;
};

/// Knows in which order its issuers were read.
class WatchedSource : public CountingSource {
public:
    QVector<int> takeRows() { return std::exchange(m_read, {}); }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == IssuerRole)
            m_read.append(index.row());
        return CountingSource::data(index, role);
    }

private:
    mutable QVector<int> m_read;
};

QVector<Row> manyRows(int count)
{
    QRandomGenerator random(11);
    QVector<Row> rows;
    for (int i = 0; i < count; ++i)
        rows.append({QString::number(random.bounded(1000000)).rightJustified(6, QLatin1Char('0')),
                     QString(QLatin1Char(char('a' + i % 10))),
                     0,
                     {}});
    return rows;
}

QStringList wanted(const CountingSource &source, const QString &text)
{
    QStringList found;
    for (const Row &row : source.rows()) {
        if (row.name.contains(text))
            found += row.name;
    }
    found.sort();
    return found;
}

/// Whether `model`, which searches names, shows all of the many rows.
bool showMany(CountingSource *source, CertificateModel *model)
{
    source->reset(manyRows(Many));
    model->setSourceModel(source);
    model->setSearchRoles({QStringLiteral("name")});
    return model->rowCount() == Many;
}

/// The turns of the event loop until `model` has changed its rows.
int turnsUntilChange(const QAbstractItemModel &model)
{
    QSignalSpy layout(&model, &QAbstractItemModel::layoutChanged);
    QSignalSpy gone(&model, &QAbstractItemModel::rowsRemoved);
    int turns = 0;
    while (layout.count() + gone.count() == 0 && turns < 1000) {
        QCoreApplication::processEvents();
        ++turns;
    }
    return turns;
}

/// Until the first slice of a search has run.
void beginSlices(CountingSource &source)
{
    source.takeReads();
    for (int turns = 0; source.takeReads() == 0 && turns < 1000; ++turns)
        QCoreApplication::processEvents();
}

} // namespace

/// What the filter model does for a change, counted.
class TestSortedRows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void aKeystrokeSortsNothing();
    void aSearchReadsInTheOrderOfTheSource();
    void aRowThatComesIsPlaced();
    void otherRolesReadNothing();
    void longSearchTakesTurns();
    void whoAsksAtOnceIsAnswered();
    void changesDuringALongSearch();
    void newTextDuringALongSearch();
    void categoryDuringALongSearch();
    void largeChangesDuringALongSearch();
    void categoryUnderAPattern();
    void whoReadsInAReset();
    void changesAreToldToTheEnd();
    void otherOrders();
    void lookedThroughAgain();
    void manyRunsGo();
    void rowsAreRemovedThrough();

private:
    QCA::Initializer m_qca;
};

void TestSortedRows::initTestCase()
{
    QLocale::setDefault(QLocale(QStringLiteral("ru_RU"))); // before the first comparison
    qRegisterMetaType<QList<QPersistentModelIndex>>();
    qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
}

void TestSortedRows::aKeystrokeSortsNothing()
{
    CountingSource source;
    source.reset(manyRows(5000));
    CountingModel model;
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    QCOMPARE(model.rowCount(), 5000);
    QVERIFY(model.takeComparisons() > 5000);
    for (const char *text : {"1", "12", "1", "7", "", "77", ""}) {
        model.setPattern(QLatin1String(text));
        QCOMPARE(names(model), wanted(source, QLatin1String(text)));
        QCOMPARE(model.takeComparisons(), 0);
    }
}

void TestSortedRows::aSearchReadsInTheOrderOfTheSource()
{
    // Where rows lie one behind the other; in the order of names it took more than twice as long.
    for (const int count : {5000, Many}) {
        for (const bool isAsked : {true, false}) {
            WatchedSource source;
            source.reset(manyRows(count));
            CertificateModel model;
            model.setSourceModel(&source);
            model.setSearchRoles({QStringLiteral("issuer")});
            QCOMPARE(model.rowCount(), count);
            QSignalSpy done(&model, &QAbstractItemModel::layoutChanged);
            model.setPattern(QStringLiteral("c"));
            if (!isAsked && done.isEmpty())
                QVERIFY(done.wait());
            QCOMPARE(model.rowCount(), count / 10);
            const QVector<int> read = source.takeRows();
            QCOMPARE(read.size(), count);
            QVERIFY(std::is_sorted(read.cbegin(), read.cend()));
        }
    }
}

void TestSortedRows::aRowThatComesIsPlaced()
{
    CountingSource source;
    const QVector<Row> rows = manyRows(4096);
    CountingModel model; // no tester: it looks at every row each time
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    model.rowCount();
    for (const Row &row : rows)
        source.append(row);
    // Bisection of what belongs; the place in what is shown is the same then.
    QVERIFY(model.takeComparisons() <= 14 * 4096);
    source.takeReads();
    source.append({QStringLiteral("5"), {}, 0, {}});
    QVERIFY(model.takeComparisons() <= 15);
    QCOMPARE(names(model), wanted(source, {}));
    // Of a part, it is not.
    model.setPattern(QStringLiteral("7"));
    model.takeComparisons();
    source.append({QStringLiteral("777777"), {}, 0, {}});
    source.append({QStringLiteral("333333"), {}, 0, {}});
    QVERIFY(model.takeComparisons() <= 3 * 15);
    QCOMPARE(names(model), wanted(source, QStringLiteral("7")));
    model.setPattern({});
    QCOMPARE(names(model), wanted(source, {}));
}

void TestSortedRows::otherRolesReadNothing()
{
    CountingSource source;
    source.reset(manyRows(100));
    CertificateModel model;
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    model.setPattern(QStringLiteral("1"));
    QVERIFY(model.rowCount() > 0);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    source.takeReads();
    Q_EMIT source.dataChanged(source.index(0), source.index(99), {CountingSource::IssuerRole});
    QCOMPARE(source.takeReads(), 0);
    QVERIFY(changes.count() > 0);
    for (const QList<QVariant> &change : changes)
        QCOMPARE(change.at(2).value<QVector<int>>(), QVector<int>{CountingSource::IssuerRole});
    // What is searched matters.
    model.setSearchRoles({QStringLiteral("issuer")});
    model.setPattern(QStringLiteral("f"));
    const int before = model.rowCount();
    Row row = source.rows().first();
    row.issuer = QStringLiteral("fff");
    source.change(0, row);
    QCOMPARE(model.rowCount(), before + 1);
}

void TestSortedRows::longSearchTakesTurns()
{
    CountingSource source;
    source.reset(manyRows(Many));
    CertificateModel model;
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name"), QStringLiteral("issuer")});
    QCOMPARE(model.rowCount(), Many);
    source.takeReads();
    QSignalSpy told(&model, &CertificateModel::patternChanged);
    QSignalSpy layouts(&model, &QAbstractItemModel::layoutChanged);
    model.setPattern(QStringLiteral("12"));
    QCOMPARE(told.count(), 1);
    QCOMPARE(source.takeReads(), 0);
    int most = 0;
    int turns = 0;
    while (layouts.isEmpty() && turns < 1000) {
        QCoreApplication::processEvents();
        most = qMax(most, source.takeReads());
        if (most > 0 && layouts.isEmpty())
            QCOMPARE(model.rowCount(), Many); // all at the end
        ++turns;
    }
    QVERIFY2(most <= 2 * 2048, qPrintable(QString::number(most)));
    QVERIFY2(turns >= Many / 2048, qPrintable(QString::number(turns)));
    QCOMPARE(layouts.count(), 1);
    QCOMPARE(names(model), wanted(source, QStringLiteral("12")));
    // Read once, it is quick enough for one turn.
    source.takeReads();
    model.setPattern(QStringLiteral("3"));
    QCOMPARE(layouts.count(), 2);
    QCOMPARE(source.takeReads(), 0);
    QCOMPARE(names(model), wanted(source, QStringLiteral("3")));
}

void TestSortedRows::whoAsksAtOnceIsAnswered()
{
    CountingSource source;
    CertificateModel model;
    QVERIFY(showMany(&source, &model));
    int count = -1;
    connect(&model, &CertificateModel::patternChanged, this,
            [&model, &count] { count = model.rowCount(); });
    model.setPattern(QStringLiteral("123"));
    QCOMPARE(count, wanted(source, QStringLiteral("123")).size());
    QCOMPARE(names(model), wanted(source, QStringLiteral("123")));
}

void TestSortedRows::changesDuringALongSearch()
{
    CountingSource source;
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    QVERIFY(showMany(&source, &model));
    model.setPattern(QStringLiteral("12"));
    beginSlices(source);
    source.append({QStringLiteral("120000"), {}, 0, {}});
    source.append({QStringLiteral("550000"), {}, 0, {}});
    QCOMPARE(model.rowCount(), Many + 1);
    source.insert(3, systemRows({QStringLiteral("012000")}));
    source.remove(0, 1000);
    source.change(5, {QStringLiteral("000012"), {}, 0, {}});
    source.moveRow(7, 100);
    turnsUntilChange(model);
    QCOMPARE(names(model), wanted(source, QStringLiteral("12")));
}

void TestSortedRows::newTextDuringALongSearch()
{
    CountingSource source;
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    QVERIFY(showMany(&source, &model));
    for (const char *text : {"1", "12", "2", "27"}) {
        model.setPattern(QLatin1String(text));
        beginSlices(source);
    }
    turnsUntilChange(model);
    QCOMPARE(names(model), wanted(source, QStringLiteral("27")));
    model.setSearchRoles({QStringLiteral("name"), QStringLiteral("issuer")});
    model.setPattern(QStringLiteral("272"));
    beginSlices(source);
    model.setPattern(QString());
    QCOMPARE(model.rowCount(), Many);
    // One turn of the loop: no slice of the search that was left must follow.
    QTest::qWait(0);
    QCOMPARE(names(model), wanted(source, {}));
}

void TestSortedRows::categoryDuringALongSearch()
{
    CountingSource source;
    QVector<Row> rows = manyRows(2 * Many);
    for (int i = 0; i < rows.size(); i += 2)
        rows[i].type = 5;
    source.reset(rows);
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    QCOMPARE(model.rowCount(), Many);
    model.setPattern(QStringLiteral("12"));
    beginSlices(source);
    model.setFilterRole(5);
    QStringList found;
    for (const Row &row : qAsConst(rows)) {
        if (row.type == 5 && row.name.contains(QStringLiteral("12")))
            found += row.name;
    }
    found.sort();
    QTRY_COMPARE(names(model), found);
    model.setFilterRole(4);
    QCOMPARE(model.rowCount(), 0);
}

void TestSortedRows::largeChangesDuringALongSearch()
{
    CountingSource source;
    CertificateModel model;
    QVERIFY(showMany(&source, &model));
    model.setPattern(QStringLiteral("12"));
    beginSlices(source);
    // Rows that come are searched at once, the others stay what they are until the end.
    const QVector<Row> rows = manyRows(100);
    source.insert(50, rows);
    const auto isFound = [](const Row &row) { return row.name.contains(QStringLiteral("12")); };
    const int more = int(std::count_if(rows.cbegin(), rows.cend(), isFound));
    QCOMPARE(model.rowCount(), Many + more);
    source.change(0, {QStringLiteral("no"), {}, 0, {}});
    QCOMPARE(model.rowCount(), Many + more - 1);
    turnsUntilChange(model);
    QCOMPARE(names(model), wanted(source, QStringLiteral("12")));
}

/// Nothing of the new category is shown before it is known whether it is found.
void TestSortedRows::categoryUnderAPattern()
{
    for (const int count : {40, 2 * Many}) {
        CountingSource source;
        QVector<Row> rows = manyRows(count);
        for (int i = 0; i < rows.size(); ++i) {
            rows[i].type = i % 2 == 0 ? 5 : 0;
            rows[i].name = QLatin1String(i % 7 == 0 ? "x" : "y") + rows.at(i).name;
        }
        source.reset(rows);
        CertificateModel model;
        model.setSourceModel(&source);
        model.setSearchRoles({QStringLiteral("name")});
        model.setPattern(QStringLiteral("x"));
        QVERIFY(model.rowCount() > 0);
        int wrong = 0;
        const auto look = [&model, &wrong] {
            const QStringList shown = names(model);
            wrong += std::any_of(shown.cbegin(), shown.cend(), [](const QString &name) {
                return name.startsWith(QLatin1Char('y'));
            });
        };
        connect(&model, &QAbstractItemModel::rowsInserted, this, look);
        connect(&model, &QAbstractItemModel::rowsRemoved, this, look);
        connect(&model, &QAbstractItemModel::layoutChanged, this, look);
        model.setFilterRole(5);
        QTRY_COMPARE(model.rowCount(), (count + 13) / 14);
        QCOMPARE(wrong, 0);
    }
}

void TestSortedRows::whoReadsInAReset()
{
    CountingSource source;
    CertificateModel model;
    QVERIFY(showMany(&source, &model));
    int count = 0;
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this,
            [&model, &count] { count = model.rowCount(); });
    QSignalSpy gone(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy layouts(&model, &QAbstractItemModel::layoutChanged);
    model.setPattern(QStringLiteral("12"));
    source.reset(manyRows(300));
    QCOMPARE(count, Many);
    QCOMPARE(gone.count() + layouts.count(), 0);
    QCOMPARE(names(model), wanted(source, QStringLiteral("12")));
}

/// Whoever hears of the first of several changed runs may move the others.
void TestSortedRows::changesAreToldToTheEnd()
{
    CountingSource source;
    source.reset(systemRows(
        {QStringLiteral("a"), QStringLiteral("e"), QStringLiteral("c"), QStringLiteral("b")}));
    CertificateModel model;
    model.setSourceModel(&source);
    QCOMPARE(model.rowCount(), 4);
    QStringList told;
    bool isFirst = true;
    connect(&model, &QAbstractItemModel::dataChanged, this,
            [&](const QModelIndex &first, const QModelIndex &last) {
                for (int row = first.row(); row <= last.row(); ++row)
                    told += names(model).at(row);
                if (std::exchange(isFirst, false))
                    source.insert(0, systemRows({QStringLiteral("0")}));
            });
    Q_EMIT source.dataChanged(source.index(0), source.index(2));
    for (const char *name : {"a", "c", "e"})
        QVERIFY2(told.contains(QLatin1String(name)), name);
}

void TestSortedRows::otherOrders()
{
    CountingSource source;
    source.reset(manyRows(300));
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    model.setSourceModel(&source);
    QStringList ordered = wanted(source, {});
    QCOMPARE(names(model), ordered);
    const QPersistentModelIndex first = model.index(0, 0);
    model.sort(0, Qt::DescendingOrder);
    std::reverse(ordered.begin(), ordered.end());
    QCOMPARE(names(model), ordered);
    QCOMPARE(first.row(), 299);
    model.sort(-1);
    QStringList given;
    for (const Row &row : source.rows())
        given += row.name;
    QCOMPARE(names(model), given);
    source.append({QStringLiteral("0"), {}, 0, {}});
    QCOMPARE(model.index(300, 0).data(CountingSource::NameRole).toString(), QStringLiteral("0"));
    model.sort(0, Qt::AscendingOrder);
    QCOMPARE(names(model), wanted(source, {}));
}

void TestSortedRows::lookedThroughAgain()
{
    CountingSource source;
    source.reset(manyRows(300));
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    model.setSourceModel(&source);
    QCOMPARE(model.rowCount(), 300);
    const QPersistentModelIndex third = model.index(3, 0);
    model.invalidate();
    model.setSortRole(Qt::DisplayRole);
    model.setDynamicSortFilter(false);
    QCOMPARE(third.row(), 3);
    // Nothing comes twice or stays behind after that.
    model.setFilterRole(5);
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(!third.isValid());
    model.setFilterRole(0);
    source.remove(10, 5);
    // Without it rows that come are not sorted, those that change stay where they are.
    source.append({QStringLiteral("1"), {}, 0, {}});
    QCOMPARE(names(model).last(), QStringLiteral("1"));
    source.change(295, {QStringLiteral("0"), {}, 0, {}});
    QCOMPARE(names(model).last(), QStringLiteral("0"));
    QCOMPARE(model.mapFromSource(source.index(295)).row(), 295);
    model.setDynamicSortFilter(true);
    QCOMPARE(names(model), wanted(source, {}));
    model.setSourceModel(nullptr);
    QCOMPARE(model.rowCount(), 0);
    model.setSourceModel(&source);
    QCOMPARE(names(model), wanted(source, {}));
}

void TestSortedRows::manyRunsGo()
{
    CountingSource source;
    source.reset(manyRows(1000));
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    model.setSourceModel(&source);
    QCOMPARE(model.rowCount(), 1000);
    const QPersistentModelIndex last = model.mapFromSource(source.index(999));
    const QPersistentModelIndex gone = model.mapFromSource(source.index(100));
    source.remove(0, 500);
    QVERIFY(!gone.isValid());
    QCOMPARE(model.mapToSource(last).row(), 499);
    QCOMPARE(names(model), wanted(source, {}));
    source.insert(250, manyRows(400));
    QCOMPARE(names(model), wanted(source, {}));
    QCOMPARE(model.mapToSource(last).row(), 899);
}

void TestSortedRows::rowsAreRemovedThrough()
{
    CountingSource source;
    source.reset(manyRows(10));
    CertificateModel model;
    model.setSourceModel(&source);
    QVERIFY(!model.removeRows(8, 3));
    QVERIFY(!model.removeRows(0, 1)); // the source has no such thing
    QCOMPARE(model.rowCount(), 10);
    QVERIFY(!model.index(0, 1).isValid());
    QVERIFY(!model.index(10, 0).isValid());
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QVERIFY(!model.hasChildren(model.index(0, 0)));
    QVERIFY(model.hasChildren());
}

QTEST_GUILESS_MAIN(TestSortedRows)
#include "tst_sortedrows.moc"
