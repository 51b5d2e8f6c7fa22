// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedrequest.h"
#include "tests/app/rowsource.h"
#include "tools/rowlines.h"
#include "tools/rowselection.h"

#include <QtTest>

#include <utility>

using namespace Trivex;

namespace {

constexpr int Many = 2000;

/// Rows of saved requests, which are known by their files. Counts what is read of them.
class Source : public TrivexTest::RowSource {
public:
    static QObject *request(const QString &file)
    {
        auto *made = new TrivexTest::FiledRequest;
        made->path = file;
        return made;
    }
    void add(const QString &file) { RowSource::add(file, request(file)); }
    QVariant data(const QModelIndex &index, int role) const override
    {
        ++m_reads;
        return QStandardItemModel::data(index, role);
    }
    int takeReads() { return std::exchange(m_reads, 0); }

private:
    mutable int m_reads = 0;
};

/// Counts how often its names are gathered.
class CountingEntries : public EntryModel {
public:
    QHash<int, QByteArray> roleNames() const override
    {
        ++m_gathered;
        return EntryModel::roleNames();
    }
    int takeGathered() { return std::exchange(m_gathered, 0); }

private:
    mutable int m_gathered = 0;
};

QString fileOf(int number)
{
    return QStringLiteral("/requests/%1.csr").arg(number);
}

} // namespace

/// What it costs to act on thousands of chosen rows, counted.
class TestManyRows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void roleNamesAreGatheredOnce();
    void identitiesReadLittle();
    void rowsAreFoundByIdentity();
    void identitiesFollowChanges();
    void choosingAllReadsNothing();
    void choiceFollowsRowsTogether();
    void changesAreToldTogether();
    void linesAreReadInPortions();
    void linesOfRowsThatGo();
    void linesAreStopped();
    void questionNamesTheFirst();

private:
    std::unique_ptr<Source> m_source;
    std::unique_ptr<CountingEntries> m_entries;
    std::unique_ptr<SectionedModel> m_rows;
    std::unique_ptr<RowSelection> m_selection;
};

void TestManyRows::init()
{
    m_selection = std::make_unique<RowSelection>();
    m_rows = std::make_unique<SectionedModel>();
    m_entries = std::make_unique<CountingEntries>();
    m_source = std::make_unique<Source>();
    for (int i = 0; i < Many; ++i)
        m_source->add(fileOf(i));
    m_entries->setSourceModel(m_source.get());
    m_rows->setEntries(m_entries.get());
    m_selection->setRows(m_rows.get());
    QTRY_COMPARE(m_rows->count(), Many);
    // What is read ahead is read.
    int before = -1;
    while (std::exchange(before, m_source->takeReads()) != 0)
        QTest::qWait(10);
}

void TestManyRows::roleNamesAreGatheredOnce()
{
    m_entries->takeGathered();
    for (int row = 0; row < Many; ++row) {
        QCOMPARE(m_rows->value(row, QStringLiteral("identity")).toString(), fileOf(row));
        QVERIFY(!m_rows->value(row, QStringLiteral("no such role")).isValid());
    }
    QVERIFY2(m_entries->takeGathered() <= 2, "the names are gathered for each value");
}

void TestManyRows::identitiesReadLittle()
{
    m_selection->chooseAll();
    QCOMPARE(m_selection->count(), Many);
    m_source->takeReads();
    const QStringList identities = m_selection->chosenIdentities();
    const int reads = m_source->takeReads();
    QCOMPARE(identities.size(), Many);
    QCOMPARE(identities.first(), fileOf(0));
    QCOMPARE(identities.last(), fileOf(Many - 1));
    // For each row: its entry and its request to know it by, the latter to tell two alike, and to
    // say who it is.
    QVERIFY2(reads <= 6 * Many, qPrintable(QString::number(reads)));
}

void TestManyRows::rowsAreFoundByIdentity()
{
    m_source->takeReads();
    for (int i = Many - 1; i >= 0; --i)
        QCOMPARE(m_entries->rowOfIdentity(fileOf(i)), i);
    const int reads = m_source->takeReads();
    QVERIFY2(reads <= 5 * Many, qPrintable(QString::number(reads)));
    QCOMPARE(m_entries->rowOfIdentity(QStringLiteral("/none")), -1);
}

void TestManyRows::identitiesFollowChanges()
{
    for (int i = 0; i < 3; ++i)
        QCOMPARE(m_entries->rowOfIdentity(fileOf(Many - 1)), Many - 1);
    m_source->removeRow(0);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(m_entries->rowOfIdentity(fileOf(Many - 1)), Many - 2);
    QCOMPARE(m_entries->rowOfIdentity(fileOf(0)), -1);
    m_source->add(fileOf(0));
    m_source->add(fileOf(0)); // of two the first
    for (int i = 0; i < 3; ++i)
        QCOMPARE(m_entries->rowOfIdentity(fileOf(0)), Many - 1);
    m_source->setCertificate(m_source->item(5), Source::request(fileOf(-1)));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(m_entries->rowOfIdentity(fileOf(-1)), 5);
    m_source->clear();
    for (int i = 0; i < 3; ++i)
        QCOMPARE(m_entries->rowOfIdentity(fileOf(7)), -1);
}

void TestManyRows::choosingAllReadsNothing()
{
    m_source->takeReads();
    m_selection->chooseAll();
    QCOMPARE(m_selection->count(), Many);
    m_selection->toggle(7);
    m_selection->extendTo(Many - 1);
    int chosen = 0;
    for (int row = 0; row < Many; ++row)
        chosen += m_selection->isChosen(row) ? 1 : 0;
    QCOMPARE(chosen, Many - 7);
    // What is known of the current row.
    const int reads = m_source->takeReads();
    QVERIFY2(reads <= 30, qPrintable(QString::number(reads)));
}

void TestManyRows::choiceFollowsRowsTogether()
{
    m_selection->chooseAll();
    // The object outlives its row, and is known again by it.
    auto *object = m_rows->value(10, QStringLiteral("certificate")).value<QObject *>();
    QSignalSpy removed(m_rows.get(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy changed(m_selection.get(), &RowSelection::changed);
    m_source->takeReads();
    m_source->removeRows(10, Many / 2);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_selection->count(), Many - Many / 2);
    // Each of those that go once, to know it when it comes back.
    const int reads = m_source->takeReads();
    QVERIFY2(reads <= 6 * Many / 2, qPrintable(QString::number(reads)));
    // One that comes back is chosen again, another one is not.
    m_source->RowSource::add(fileOf(10), object);
    m_source->add(fileOf(-1));
    QTRY_COMPARE(m_rows->count(), Many - Many / 2 + 2);
    QCOMPARE(m_selection->count(), Many - Many / 2 + 1);
    QVERIFY(m_selection->isChosen(m_rows->rowOfIdentity(fileOf(10))));
    QVERIFY(!m_selection->isChosen(m_rows->rowOfIdentity(fileOf(-1))));
}

void TestManyRows::changesAreToldTogether()
{
    QSignalSpy told(m_rows.get(), &QAbstractItemModel::dataChanged);
    Q_EMIT m_source->dataChanged(m_source->index(0, 0), m_source->index(Many - 1, 0));
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.first().at(0).toModelIndex().row(), 0);
    QCOMPARE(told.first().at(1).toModelIndex().row(), Many - 1);
}

void TestManyRows::linesAreReadInPortions()
{
    m_selection->chooseAll();
    m_selection->toggle(1);
    RowLines lines;
    QSignalSpy finished(&lines, &RowLines::finished);
    lines.write(m_selection.get());
    double before = 0;
    int turns = 0;
    while (lines.isRunning()) {
        const double read = (lines.progress() - before) * (Many - 1);
        QVERIFY2(read <= RowLines::MostInPortion + 0.5, qPrintable(QString::number(read)));
        before = lines.progress();
        ++turns;
        QCoreApplication::processEvents();
    }
    QVERIFY2(turns >= Many / RowLines::MostInPortion, qPrintable(QString::number(turns)));
    QCOMPARE(finished.count(), 1);
    const QStringList written = lines.text().split(QLatin1Char('\n'));
    QCOMPARE(written.size(), Many - 1);
    QCOMPARE(written.first(), fileOf(0));
    QCOMPARE(written.at(1), fileOf(2));
    QCOMPARE(written.last(), fileOf(Many - 1));
}

// What is hidden meanwhile is written, what has gone is not.
void TestManyRows::linesOfRowsThatGo()
{
    m_selection->chooseAll();
    RowLines lines;
    lines.write(m_selection.get());
    QVERIFY(lines.isRunning());
    m_source->removeRows(Many - 100, 100);
    m_rows->setPattern(QStringLiteral("what no row shows"));
    QTRY_VERIFY(!lines.isRunning());
    QTRY_COMPARE(m_rows->count(), 0);
    const QStringList written = lines.text().split(QLatin1Char('\n'));
    QCOMPARE(written.size(), Many - 100);
    QCOMPARE(written.last(), fileOf(Many - 101));
}

void TestManyRows::linesAreStopped()
{
    m_selection->chooseAll();
    RowLines lines;
    QSignalSpy finished(&lines, &RowLines::finished);
    lines.write(m_selection.get());
    lines.cancel();
    QCOMPARE(finished.count(), 1);
    QVERIFY(lines.text().isEmpty() && !lines.isRunning());
    // The last wish counts, and few rows are written at once.
    lines.write(m_selection.get());
    m_selection->setRow(4);
    lines.write(m_selection.get());
    QCOMPARE(finished.count(), 3);
    QCOMPARE(lines.text(), fileOf(4));
}

void TestManyRows::questionNamesTheFirst()
{
    m_selection->chooseAll();
    m_selection->toggle(0);
    m_source->takeReads();
    const QVariantMap summary = m_selection->summary(8);
    const int reads = m_source->takeReads();
    QVERIFY2(reads <= 7 * Many, qPrintable(QString::number(reads)));
    QCOMPARE(summary.value(QStringLiteral("count")).toInt(), Many - 1);
    QCOMPARE(summary.value(QStringLiteral("names")).toStringList().size(), 8);
    QCOMPARE(summary.value(QStringLiteral("identity")).toString(), fileOf(1));
    const QStringList identities = summary.value(QStringLiteral("identities")).toStringList();
    QCOMPARE(identities.size(), Many - 1);
    QCOMPARE(identities.last(), fileOf(Many - 1));
    QVERIFY(summary.value(QStringLiteral("keys")).toList().isEmpty());
    QVERIFY(!summary.value(QStringLiteral("isKey")).toBool());
}

QTEST_MAIN(TestManyRows)
#include "tst_manyrows.moc"
