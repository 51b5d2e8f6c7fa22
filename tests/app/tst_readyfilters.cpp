// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/rowsource.h"
#include "tests/support/loopmeter.h"
#include "tools/modelcount.h"
#include "tools/sectionedmodel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using namespace Trivex;
using TrivexTest::LoopMeter;
using TrivexTest::RowSource;
using TrivexTest::StandInCertificate;

namespace {

class DatedRows : public RowSource {
public:
    /// A certificate that ends in so many days, and began a day before that or yesterday.
    void add(const QString &name, int days)
    {
        auto *certificate = new StandInCertificate;
        certificate->name = name;
        certificate->until = QDateTime::currentDateTimeUtc().addDays(days);
        certificate->from = qMin(certificate->until, QDateTime::currentDateTimeUtc()).addDays(-1);
        RowSource::add(name, certificate);
    }
};

QString names(const QAbstractItemModel &model)
{
    QStringList result;
    for (int i = 0; i < model.rowCount(); ++i)
        result += model.index(i, 0).data(RowSource::NameRole).toString();
    return result.join(QLatin1Char(' '));
}

} // namespace

/// Ready filters over a list, and counts of what they would show.
class TestReadyFilters : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void byValidity();
    void hiddenRowsAreCounted();
    void arrivingRowsAreFiltered();
    void countOfAValue();
    void manyRows();

private:
    std::unique_ptr<DatedRows> m_source;
    std::unique_ptr<EntryModel> m_entries;
    std::unique_ptr<SectionedModel> m_rows;
};

void TestReadyFilters::init()
{
    m_rows.reset();
    m_entries.reset();
    m_source = std::make_unique<DatedRows>();
    m_entries = std::make_unique<EntryModel>();
    m_rows = std::make_unique<SectionedModel>();
    m_entries->setSourceModel(m_source.get());
    m_rows->setEntries(m_entries.get());
    m_source->add(QStringLiteral("past"), -3);
    m_source->add(QStringLiteral("soon"), 11);
    m_source->add(QStringLiteral("later"), 300);
    QTRY_COMPARE(m_rows->count(), 3);
}

void TestReadyFilters::byValidity()
{
    QAbstractItemModelTester tester(m_rows.get(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal);
    m_rows->setWantedValidity(Validity::Expired);
    QTRY_COMPARE(names(*m_rows), QStringLiteral("past"));
    m_rows->setWantedValidity(Validity::Expiring);
    QTRY_COMPARE(names(*m_rows), QStringLiteral("soon"));
    QSignalSpy changed(m_rows.get(), &SectionedModel::readyChanged);
    m_rows->liftFilters();
    QTRY_COMPARE(m_rows->count(), 3);
    QCOMPARE(changed.count(), 1);
    m_rows->liftFilters();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_rows->wantedValidity(), int(Validity::Unknown));
    m_rows->setOnlyWithKeys(true);
    QTRY_COMPARE(m_rows->count(), 0);
    m_rows->setOnlyWithKeys(false);
    m_rows->setWantedStore(QStringLiteral("nowhere"));
    QTRY_COMPARE(m_rows->count(), 0);
}

void TestReadyFilters::hiddenRowsAreCounted()
{
    QCOMPARE(m_rows->hiddenCount(), 0);
    m_rows->setWantedValidity(Validity::Expiring);
    QTRY_COMPARE(m_rows->hiddenCount(), 2);
    // What the search takes away is not hidden by the filter.
    m_rows->setPattern(QStringLiteral("past"));
    QTRY_COMPARE(m_rows->hiddenCount(), 1);
    QCOMPARE(m_rows->count(), 0);
    m_rows->liftFilters();
    QTRY_COMPARE(m_rows->hiddenCount(), 0);
    QCOMPARE(m_rows->count(), 1);
}

void TestReadyFilters::arrivingRowsAreFiltered()
{
    m_rows->setWantedValidity(Validity::Expiring);
    QTRY_COMPARE(m_rows->count(), 1);
    m_source->add(QStringLiteral("another"), 5);
    m_source->add(QStringLiteral("old"), -5);
    QTRY_COMPARE(m_rows->count(), 2);
    QTRY_COMPARE(m_rows->hiddenCount(), 3);
    m_source->removeRow(0);
    QTRY_COMPARE(m_rows->hiddenCount(), 2);
}

void TestReadyFilters::countOfAValue()
{
    ModelCount count;
    count.setModel(m_entries.get());
    QCOMPARE(count.count(), 3);
    count.setRole(QStringLiteral("validity"));
    count.setValue(Validity::Expiring);
    QTRY_COMPARE(count.count(), 1);
    m_source->add(QStringLiteral("another"), 5);
    QTRY_COMPARE(count.count(), 2);
    m_source->removeRow(1);
    QTRY_COMPARE(count.count(), 1);
    count.setRole(QString());
    QTRY_COMPARE(count.count(), 3);
}

void TestReadyFilters::manyRows()
{
    ModelCount count;
    count.setRole(QStringLiteral("validity"));
    count.setValue(Validity::Expiring);
    count.setModel(m_entries.get());
    LoopMeter meter;
    meter.start();
    for (int i = 0; i < 10000; ++i) {
        m_source->add(QString::number(i), i % 2 ? 11 : 300);
        if (i % 100 == 99)
            QCoreApplication::processEvents();
    }
    QTRY_COMPARE(count.count(), 5001);
    m_rows->setWantedValidity(Validity::Expiring);
    QTRY_COMPARE(m_rows->count(), 5001);
    m_rows->liftFilters();
    QTRY_COMPARE(m_rows->count(), 10003);
    QVERIFY2(meter.longest() < LoopMeter::Unnoticed, qPrintable(QString::number(meter.longest())));
}

QTEST_GUILESS_MAIN(TestReadyFilters)
#include "tst_readyfilters.moc"
