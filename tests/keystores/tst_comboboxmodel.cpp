// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/comboboxmodel.h"

#include "tests/certificates/flat.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using TrivexTest::Flat;

class TestComboBoxModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void rows();
    void sorting();
};

void TestComboBoxModel::rows()
{
    Flat<ComboBoxModel> model;
    QAbstractItemModelTester tester(&model);
    QCOMPARE(model.rowAt(0).id, -1);
    QCOMPARE(model.firstSortedId(), -1);
    model.addRow(2, QStringLiteral("Text"), QStringLiteral("data"));
    QCOMPARE(model.rowCount(), 1);
    const QModelIndex index = model.index(0, 0);
    QCOMPARE(model.data(index, ComboBoxModel::NameRole).toString(), QStringLiteral("Text"));
    QCOMPARE(model.data(index, ComboBoxModel::IdRole), QVariant(2));
    QCOMPARE(model.data(index, ComboBoxModel::TypeRole).toString(), QStringLiteral("data"));
    QVERIFY(!model.data(index, ComboBoxModel::NameRole - 1).isValid());
    QVERIFY(!model.data(index, ComboBoxModel::TypeRole + 1).isValid());
    QVERIFY(!model.data(QModelIndex(), ComboBoxModel::NameRole).isValid());
    for (const int outside : {-1, 1}) {
        QCOMPARE(model.rowAt(outside).id, -1);
        QVERIFY(model.rowAt(outside).name.isEmpty());
        QVERIFY(model.rowAt(outside).type.isEmpty());
    }
    QVERIFY(model.containsType(QStringLiteral("data")));
    QVERIFY(!model.containsType(QStringLiteral("Data")));
    const QHash<int, QByteArray> names = {{257, "name"}, {258, "id"}, {259, "type"}};
    QCOMPARE(model.roleNames(), names);
}

void TestComboBoxModel::sorting()
{
    ComboBoxModel model;
    model.addRow(1, QString(), QStringLiteral("b"));
    model.addRow(5, QString(), QStringLiteral("a"));
    QSignalSpy layout(&model, &QAbstractItemModel::layoutChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    QCOMPARE(model.firstSortedId(), 5);
    QCOMPARE(model.rowAt(0).type, QStringLiteral("a"));
    QCOMPARE(layout.count() + reset.count(), 0);
}

QTEST_GUILESS_MAIN(TestComboBoxModel)
#include "tst_comboboxmodel.moc"
