// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/rowsource.h"
#include "tests/support/loopmeter.h"
#include "tools/sectionedmodel.h"

#include <QAbstractItemModelTester>
#include <QSortFilterProxyModel>
#include <QtTest>

using namespace Trivex;
using TrivexTest::LoopMeter;
using TrivexTest::RowSource;
using TrivexTest::StandInCertificate;

namespace {

/// Instead of days.
constexpr int Endless = -1;

/// Rows that have their number, in the order in which they came.
class Source : public RowSource {
public:
    void add(const QString &name, const QString &issuer, int days)
    {
        auto *certificate = new StandInCertificate;
        if (days != Endless)
            certificate->until = QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC).addDays(days);
        const int number = rowCount();
        QStandardItem *item = RowSource::add(name, certificate);
        item->setData(issuer, IssuerRole);
        item->setData(number, NumberRole);
    }
};

QString numbers(const QAbstractItemModel &model)
{
    QString result;
    for (int i = 0; i < model.rowCount(); ++i)
        result += model.index(i, 0).data(RowSource::NumberRole).toString();
    return result;
}

} // namespace

/// The orders of a list: each both ways, rows that are alike as they came, and what it costs.
class TestRowOrder : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void orders_data();
    void orders();
    void rowsWithoutEndAreLast();
    void rowsThatArriveTakeTheirPlace();
    void manyRows();

private:
    std::unique_ptr<Source> m_source;
    std::unique_ptr<EntryModel> m_entries;
    std::unique_ptr<QSortFilterProxyModel> m_filter;
    std::unique_ptr<SectionedModel> m_rows;
};

void TestRowOrder::init()
{
    m_rows.reset();
    m_filter.reset();
    m_entries.reset();
    m_source = std::make_unique<Source>();
    m_entries = std::make_unique<EntryModel>();
    m_entries->setSourceModel(m_source.get());
    // As the filters of the window: in the order of the names.
    m_filter = std::make_unique<QSortFilterProxyModel>();
    m_filter->setSourceModel(m_entries.get());
    m_filter->setSortRole(RowSource::NameRole);
    m_filter->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_filter->sort(0);
    m_rows = std::make_unique<SectionedModel>();
    m_rows->setEntries(m_entries.get());
}

void TestRowOrder::orders_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("filtered");
    QTest::addColumn<QString>("ascending");
    QTest::addColumn<QString>("descending");
    for (const bool filtered : {false, true}) {
        const auto row = [&](const char *what, int key, const char *up, const char *down) {
            QTest::addRow("%s%s", what, filtered ? ", filtered" : "")
                << key << filtered << QString::fromLatin1(up) << QString::fromLatin1(down);
        };
        row("name", SectionedModel::SortByName, "1023", "3021");
        row("issuer", SectionedModel::SortByIssuer, "0312", "1203");
        row("end", SectionedModel::SortByEnd, "3012", "2103");
    }
}

void TestRowOrder::orders()
{
    QFETCH(int, key);
    QFETCH(bool, filtered);
    QFETCH(QString, ascending);
    QFETCH(QString, descending);
    QAbstractItemModelTester tester(m_rows.get(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal);
    if (filtered)
        m_rows->setFilter(m_filter.get());
    m_source->add(QStringLiteral("boris"), QStringLiteral("alpha"), 20);
    m_source->add(QStringLiteral("anna"), QStringLiteral("beta"), 30);
    m_source->add(QStringLiteral("boris"), QStringLiteral("beta"), 40);
    m_source->add(QStringLiteral("clara"), QStringLiteral("alpha"), 10);
    m_rows->setSortKey(key);
    QTRY_COMPARE(numbers(*m_rows), ascending);
    m_rows->setDescending(true);
    QTRY_COMPARE(numbers(*m_rows), descending);
}

// Whoever looks for what ends soon, or what lasts longest, has no use for rows that never end.
void TestRowOrder::rowsWithoutEndAreLast()
{
    m_source->add(QStringLiteral("a"), QString(), 20);
    m_source->add(QStringLiteral("b"), QString(), Endless);
    m_source->add(QStringLiteral("c"), QString(), 10);
    m_source->add(QStringLiteral("d"), QString(), Endless);
    m_rows->setSortKey(SectionedModel::SortByEnd);
    QTRY_COMPARE(numbers(*m_rows), QStringLiteral("2013"));
    m_rows->setDescending(true);
    QTRY_COMPARE(numbers(*m_rows), QStringLiteral("0213"));
}

void TestRowOrder::rowsThatArriveTakeTheirPlace()
{
    m_rows->setFilter(m_filter.get());
    m_rows->setSortKey(SectionedModel::SortByName);
    for (int i = 0; i < 3; ++i)
        m_source->add(QStringLiteral("same"), QString(), i);
    QTRY_COMPARE(numbers(*m_rows), QStringLiteral("012"));
    m_rows->setDescending(true);
    // Alike: as they came, both ways.
    QTest::qWait(20);
    QCOMPARE(numbers(*m_rows), QStringLiteral("012"));
    m_source->add(QStringLiteral("zoe"), QString(), 1);
    m_source->add(QStringLiteral("anna"), QString(), 1);
    QTRY_COMPARE(numbers(*m_rows), QStringLiteral("30124"));
}

void TestRowOrder::manyRows()
{
    for (int i = 0; i < 10000; ++i)
        m_source->add(QString::number((i * 7919) % 10007), QString::number(i % 50), i % 999);
    QTRY_COMPARE(m_rows->count(), 10000);
    LoopMeter meter;
    meter.start();
    for (const int key :
         {SectionedModel::SortByName, SectionedModel::SortByIssuer, SectionedModel::SortByEnd}) {
        for (const bool descending : {false, true}) {
            m_rows->setSortKey(key);
            m_rows->setDescending(descending);
            // A turn or two of the loop for each order, which are what is measured.
            QTest::qWait(30);
        }
    }
    meter.stop();
    qInfo("longest turn %lld ms", meter.longest());
    QVERIFY2(meter.longest() < LoopMeter::Unnoticed, qPrintable(QString::number(meter.longest())));
}

QTEST_GUILESS_MAIN(TestRowOrder)
#include "tst_roworder.moc"
