// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokenregistry.h"
#include "tests/support/quietbackend.h"
#include "tools/signingkeys.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

using namespace Trivex;

namespace {

enum Role { EntryIdRole = Qt::UserRole + 1, StoreIdRole };

/// Counts the looks that are asked for.
class LookBackend : public TrivexTest::QuietBackend {
public:
    void takeLook(const QString &keyStoreId) override { asked.append(keyStoreId); }
    QStringList asked;
};

class Rows : public QStandardItemModel {
public:
    QHash<int, QByteArray> roleNames() const override
    {
        return {{EntryIdRole, "entryId"}, {StoreIdRole, "storeId"}};
    }
    void add(const QString &store, const QString &entry)
    {
        auto *item = new QStandardItem(entry);
        item->setData(entry, EntryIdRole);
        item->setData(store, StoreIdRole);
        appendRow(item);
    }
};

QString a()
{
    return QStringLiteral("a");
}

QString b()
{
    return QStringLiteral("b");
}

void publish(const QString &storeId, bool present, bool isRead = true)
{
    TokenStatus status;
    status.keyStoreId = storeId;
    status.name = storeId;
    status.present = present;
    status.isRead = isRead;
    publishTokenStatus(status, nextStatusNumber());
}

void publishUnfit(const QString &storeId, const QSet<QString> &entries)
{
    TokenLook look;
    look.isTaken = true;
    look.unfitToSign = entries;
    publishTokenLook(storeId, look);
}

} // namespace

/// Which keys are offered for a signature.
class TestSigningKeys : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void unfitOnesAreLeftOut();
    void rowsThatComeLater();
    void anotherTokenInItsPlace();
    void nobodyIsAskedBefore();

private:
    QByteArray shown() const;

    LookBackend m_backend;
    std::unique_ptr<Rows> m_rows;
    std::unique_ptr<SigningKeys> m_keys;
};

void TestSigningKeys::init()
{
    m_keys.reset();
    publish(a(), false);
    publish(b(), false);
    m_rows = std::make_unique<Rows>();
    m_rows->add(a(), QStringLiteral("1"));
    m_rows->add(a(), QStringLiteral("2"));
    m_rows->add(b(), QStringLiteral("1"));
    m_keys = std::make_unique<SigningKeys>();
    new QAbstractItemModelTester(
        m_keys.get(), QAbstractItemModelTester::FailureReportingMode::Fatal, m_keys.get());
    m_keys->setSource(m_rows.get());
    m_keys->setAsking(true);
    m_backend.asked.clear();
    publish(a(), true);
    publish(b(), true);
}

QByteArray TestSigningKeys::shown() const
{
    QStringList all;
    for (int row = 0; row < m_keys->rowCount(); ++row) {
        const QModelIndex index = m_keys->index(row, 0);
        all += index.data(StoreIdRole).toString() + index.data(EntryIdRole).toString();
    }
    return all.join(QLatin1Char(' ')).toLatin1();
}

void TestSigningKeys::unfitOnesAreLeftOut()
{
    QSignalSpy leftOut(m_keys.get(), &SigningKeys::leftOutChanged);
    QCOMPARE(m_backend.asked, QStringList({a(), b()}));
    // Until the token has told: all of them.
    QCOMPARE(shown(), QByteArray("a1 a2 b1"));
    publishUnfit(a(), {QStringLiteral("1")});
    QCOMPARE(shown(), QByteArray("a2 b1"));
    QCOMPARE(m_keys->leftOut(), 1);
    QCOMPARE(leftOut.count(), 1);
    // One that says nothing keeps its keys, the same id among them.
    publishUnfit(b(), {});
    QCOMPARE(shown(), QByteArray("a2 b1"));
    QCOMPARE(m_backend.asked.size(), 2);
}

void TestSigningKeys::rowsThatComeLater()
{
    publishUnfit(a(), {QStringLiteral("3")});
    QCOMPARE(m_keys->leftOut(), 0);
    m_rows->add(a(), QStringLiteral("3"));
    QCOMPARE(shown(), QByteArray("a1 a2 b1"));
    QCOMPARE(m_keys->leftOut(), 1);
    m_rows->removeRow(3);
    QCOMPARE(m_keys->leftOut(), 0);
}

void TestSigningKeys::anotherTokenInItsPlace()
{
    publishUnfit(a(), {QStringLiteral("1")});
    publish(a(), false);
    QCOMPARE(shown(), QByteArray("a1 a2 b1"));
    m_backend.asked.clear();
    publish(a(), true, false);
    QVERIFY(m_backend.asked.isEmpty());
    publish(a(), true);
    QCOMPARE(m_backend.asked, QStringList(a()));
}

void TestSigningKeys::nobodyIsAskedBefore()
{
    publish(a(), false);
    m_keys->setAsking(false);
    m_backend.asked.clear();
    publish(a(), true);
    QVERIFY(m_backend.asked.isEmpty());
    m_keys->setAsking(true);
    QCOMPARE(m_backend.asked, QStringList(a()));
}

QTEST_GUILESS_MAIN(TestSigningKeys)
#include "tst_signingkeys.moc"
