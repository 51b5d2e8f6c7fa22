// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/needtokens.h"
#include "tests/support/testtoken.h"

#include <QSet>

using namespace TrivexTest;

namespace {

/// As many as a store hands over at once when it comes.
constexpr int FirstRows = 500;

} // namespace

/// A store of as many certificates as are handed over at first, and one more: the first has all its
/// rows at once, the other gets its last row with the second announcement.
class TestFirstRows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void steps_data();
    void steps();
};

void TestFirstRows::steps_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("at the step") << FirstRows << QList<int>{FirstRows};
    QTest::newRow("one more") << FirstRows + 1 << QList<int>{FirstRows, FirstRows + 1};
}

void TestFirstRows::steps()
{
    QFETCH(int, count);
    QFETCH(QList<int>, expected);
    const QString name = QStringLiteral("Store of %1").arg(count);
    const TestToken token(name);
    TRIVEX_NEED_TOKENS();
    QVERIFY2(token.isValid(), qPrintable(token.problem()));
    token.useInThisProcess();
    {
        PlainToken plain(TestToken::softHsmLibrary());
        QVERIFY(plain.isOpen() && plain.writeCertificates(count, TestToken::pin()));
    }
    const QCA::Initializer qca;
    Stores stores;
    QCA::KeyStore *store = stores.waitFor(name);
    QVERIFY(store);
    QList<int> steps;
    const auto note = [&] {
        const int rows = store->entryList().size();
        // The token is announced before it has been read; a change may be announced twice.
        if (rows > 0 && (steps.isEmpty() || steps.last() != rows))
            steps += rows;
    };
    connect(store, &QCA::KeyStore::updated, this, note);
    note();
    QTRY_VERIFY(!steps.isEmpty() && steps.last() == count);
    QCOMPARE(steps, expected);
    QSet<QString> ids;
    const auto entries = store->entryList();
    for (const QCA::KeyStoreEntry &entry : entries)
        ids += entry.id();
    QCOMPARE(ids.size(), count);
}

QTEST_GUILESS_MAIN(TestFirstRows)
#include "tst_firstrows.moc"
