// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/chains/chainrows.h"
#include "tests/chains/madechain.h"
#include "tests/x509/corpus.h"
#include "tools/sectionedmodel.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

/// The stores themselves are what a list is sorted by.
class TestPlaceOrder : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bothWays();

private:
    QCA::Initializer m_initializer;
};

void TestPlaceOrder::bothWays()
{
    ChainRows rows;
    EntryModel entries;
    entries.setSourceModel(&rows);
    SectionedModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setEntries(&entries);
    const Party one = make({"one"}, nullptr);
    const Party two = make({"two"}, nullptr);
    rows.add(ChainRows::SmartCard, "beta", one.der());
    rows.add(ChainRows::SmartCard, "Alpha", one.der());
    rows.add(ChainRows::SmartCard, "Яблоко", one.der());
    rows.add(ChainRows::SmartCard, "beta", two.der());
    rows.add(ChainRows::SmartCard, "арбуз", one.der());
    const auto listed = [&model] {
        QStringList found;
        for (int i = 0; i < model.rowCount(); ++i) {
            const QModelIndex index = model.index(i, 0);
            found += index.data(EntryModel::StoreNameRole).toString() + QLatin1Char(' ')
                + index.data(ChainRows::Name).toString();
        }
        return found.join(QLatin1Char(','));
    };
    model.setSortKey(SectionedModel::SortByPlace);
    QTRY_COMPARE(listed(), QString::fromUtf8("Alpha one,beta one,beta two,арбуз one,Яблоко one"));
    model.setDescending(true);
    QTRY_COMPARE(listed(), QString::fromUtf8("Яблоко one,арбуз one,beta one,beta two,Alpha one"));
    // A token that arrives takes its place.
    rows.add(ChainRows::SmartCard, "gamma", one.der());
    QTRY_COMPARE(listed(),
                 QString::fromUtf8("Яблоко one,арбуз one,gamma one,beta one,beta two,"
                                   "Alpha one"));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    qputenv("LC_ALL", "C.UTF-8");
    QCoreApplication application(argc, argv);
    TestPlaceOrder test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_placeorder.moc"
