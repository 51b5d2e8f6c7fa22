// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedrequest.h"
#include "tools/rowselection.h"

#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

enum FakeRole { NameRole = Qt::UserRole + 1, CertificateRole };

} // namespace

/// Rows that are chosen, and the one whose details are shown: what is done next is done to them.
class TestRowSelection : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void rangeHasBothEnds_data();
    void rangeHasBothEnds();
    void hiddenCurrentRow();
    void equalRows();
    void rowsAreTakenBack();
    void renewedRowIsTakenBack();

private:
    FiledRequest *add(const QString &name, int row = -1);
    QVariantList chosen() const { return m_selection->chosenRows(); }
    static QVariantList numbers(int first, int last);

    std::unique_ptr<QStandardItemModel> m_source;
    std::unique_ptr<EntryModel> m_entries;
    std::unique_ptr<QSortFilterProxyModel> m_filter;
    std::unique_ptr<SectionedModel> m_rows;
    std::unique_ptr<RowSelection> m_selection;
};

void TestRowSelection::init()
{
    m_selection.reset();
    m_rows.reset();
    m_filter.reset();
    m_entries.reset();
    m_source = std::make_unique<QStandardItemModel>();
    m_source->setItemRoleNames({{NameRole, "name"}, {CertificateRole, "certificate"}});
    m_entries = std::make_unique<EntryModel>();
    m_entries->setSourceModel(m_source.get());
    m_filter = std::make_unique<QSortFilterProxyModel>();
    m_filter->setSourceModel(m_entries.get());
    m_filter->setFilterRole(NameRole);
    m_rows = std::make_unique<SectionedModel>();
    m_rows->setEntries(m_entries.get());
    m_rows->setFilter(m_filter.get());
    m_selection = std::make_unique<RowSelection>();
    m_selection->setRows(m_rows.get());
}

FiledRequest *TestRowSelection::add(const QString &name, int row)
{
    auto *request = new FiledRequest;
    request->setParent(m_source.get());
    request->path = QStringLiteral("/requests/") + name;
    auto *item = new QStandardItem;
    item->setData(name, NameRole);
    item->setData(QVariant::fromValue<QObject *>(request), CertificateRole);
    m_source->insertRow(row < 0 ? m_source->rowCount() : row, item);
    return request;
}

QVariantList TestRowSelection::numbers(int first, int last)
{
    QVariantList rows;
    for (int row = first; row <= last; ++row)
        rows.append(row);
    return rows;
}

void TestRowSelection::rangeHasBothEnds_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("down") << 1 << 3;
    QTest::newRow("up") << 3 << 1;
    QTest::newRow("all") << 0 << 4;
    QTest::newRow("one") << 2 << 2;
}

void TestRowSelection::rangeHasBothEnds()
{
    QFETCH(int, from);
    QFETCH(int, to);
    for (const char *name : {"a", "b", "c", "d", "e"})
        add(QString::fromLatin1(name));
    QTRY_COMPARE(m_rows->count(), 5);
    m_selection->setRow(from);
    m_selection->extendTo(to);
    QCOMPARE(chosen(), numbers(qMin(from, to), qMax(from, to)));
    QCOMPARE(m_selection->count(), qAbs(from - to) + 1);
    QCOMPARE(m_selection->row(), to);
    // From the same end again.
    m_selection->extendTo(from == 0 ? 1 : from - 1);
    QCOMPARE(m_selection->count(), 2);
}

// What a search hides is not acted upon, nor is it what the details show.
void TestRowSelection::hiddenCurrentRow()
{
    for (const char *name : {"alpha", "alps", "beta", "gamma"})
        add(QString::fromLatin1(name));
    QTRY_COMPARE(m_rows->count(), 4);
    m_selection->setRow(0);
    m_selection->toggle(1);
    m_selection->toggle(2);
    QCOMPARE(m_selection->identity(), QStringLiteral("/requests/beta"));
    m_filter->setFilterFixedString(QStringLiteral("al"));
    QTRY_COMPARE(m_rows->count(), 2);
    QCOMPARE(m_selection->count(), 2);
    QCOMPARE(chosen(), numbers(0, 1));
    QCOMPARE(m_selection->row(), 0);
    QCOMPARE(m_selection->identity(), QStringLiteral("/requests/alpha"));
}

// Two rows of one identity: the one that was chosen stays so, whatever comes before it.
void TestRowSelection::equalRows()
{
    add(QStringLiteral("same"));
    const FiledRequest *second = add(QStringLiteral("same"));
    QTRY_COMPARE(m_rows->count(), 2);
    m_selection->setRow(1);
    QCOMPARE(m_selection->certificate(), second);
    add(QStringLiteral("first"), 0);
    QTRY_COMPARE(m_rows->count(), 3);
    QCOMPARE(m_selection->row(), 2);
    QCOMPARE(m_selection->certificate(), second);
    QCOMPARE(chosen(), numbers(2, 2));
}

void TestRowSelection::rowsAreTakenBack()
{
    for (const char *name : {"a", "b", "c"})
        add(QString::fromLatin1(name));
    QTRY_COMPARE(m_rows->count(), 3);
    m_selection->chooseAll();
    QCOMPARE(chosen(), numbers(0, 2));
    m_selection->toggle(0);
    QCOMPARE(chosen(), numbers(1, 2));
    QVERIFY(!m_selection->isChosen(0));
    m_selection->toggle(1);
    QCOMPARE(chosen(), numbers(2, 2));
    QCOMPARE(m_selection->identity(), QStringLiteral("/requests/c"));
    // The last one that goes takes the selection with it.
    m_source->removeRow(2);
    QTRY_COMPARE(m_rows->count(), 2);
    QVERIFY(chosen().isEmpty());
    QCOMPARE(m_selection->row(), -1);
}

/// A row whose certificate was read anew after it was chosen.
void TestRowSelection::renewedRowIsTakenBack()
{
    add(QStringLiteral("a"));
    std::unique_ptr<FiledRequest> old(add(QStringLiteral("b")));
    add(QStringLiteral("c"));
    QTRY_COMPARE(m_rows->count(), 3);
    m_selection->chooseAll();
    FiledRequest renewed;
    renewed.path = old->path;
    m_source->item(1)->setData(QVariant::fromValue<QObject *>(&renewed), CertificateRole);
    old.reset();
    QTRY_VERIFY(m_selection->isChosen(1));
    m_selection->toggle(1);
    QVERIFY(!m_selection->isChosen(1));
    QCOMPARE(chosen(), QVariantList({0, 2}));
    m_source->clear();
}

QTEST_GUILESS_MAIN(TestRowSelection)
#include "tst_rowselection.moc"
