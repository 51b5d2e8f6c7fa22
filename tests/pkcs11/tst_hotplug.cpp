// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/failurefixture.h"
#include "tests/support/needtokens.h"

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Storm");
constexpr int Patience = 60000;
/// It goes on with the calls, of which a token that is out gets two at each look: the more calls it
/// is out for, the longer each time takes.
constexpr int StormPatience = 600000;

} // namespace

/// A token with a loose contact: it goes and comes between calls of the module, while it is read,
/// while it signs and while it is written to.
class TestHotplug : public FailureFixture {
    Q_OBJECT
public:
    TestHotplug()
        : FailureFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void storm_data();
    void storm();

private:
    void noteRows();
    bool isOver() const;
    QSet<QString> rows() const;

    QSet<QString> m_allowed;
    int m_wrongRows = 0;
};

void TestHotplug::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    QVERIFY(start(1));
    QVERIFY(signs());
}

QSet<QString> TestHotplug::rows() const
{
    QSet<QString> ids;
    const auto entries = m_stores->entries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries)
        ids.insert(entry.id());
    // No row twice.
    return ids.size() == entries.size() ? ids : QSet<QString>{QStringLiteral("twice")};
}

/// What is shown while the token comes and goes is on it, or is just being written.
void TestHotplug::noteRows()
{
    const QSet<QString> wrong = rows() - m_allowed;
    m_wrongRows += wrong.isEmpty() ? 0 : 1;
}

bool TestHotplug::isOver() const
{
    return m_token->countText("replugged") > 0;
}

void TestHotplug::storm_data()
{
    QTest::addColumn<int>("times");
    QTest::addColumn<int>("calls");
    QTest::newRow("at every third call") << 200 << 3;
    QTest::newRow("at every fifth call") << 60 << 5;
}

void TestHotplug::storm()
{
    QFETCH(int, times);
    QFETCH(int, calls);
    // Its id is known before it is written in the storm.
    const QSet<QString> before = rows();
    const QString rootId = m_stores->write(m_store, root());
    QTRY_COMPARE_WITH_TIMEOUT(rows().size(), before.size() + 1, Patience);
    m_allowed = rows();
    QVERIFY(m_stores->remove(m_store, rootId));
    QTRY_COMPARE_WITH_TIMEOUT(rows(), before, Patience);

    countAfresh();
    QCA::KeyStore *store = m_store;
    int written = 0;
    QObject context;
    connect(store, &QCA::KeyStore::entryWritten, &context, [&] { ++written; });
    connect(store, &QCA::KeyStore::updated, &context, [this] { noteRows(); });
    m_token->control("replug " + QByteArray::number(times) + ' ' + QByteArray::number(calls));
    int begun = 0;
    const auto isOverAfterOneMore = [&] {
        if (begun == written) {
            store->writeEntry(root());
            ++begun;
        }
        signs();
        return isOver();
    };
    QVERIFY(QTest::qWaitFor(isOverAfterOneMore, StormPatience));
    QTRY_COMPARE_WITH_TIMEOUT(written, begun, Patience);
    QCOMPARE(m_wrongRows, 0);
    QCOMPARE(m_token->countText("CKR_PIN_INCORRECT"), 0);

    // Back for good: what is listed is what is on it.
    m_token->control();
    QTRY_VERIFY_WITH_TIMEOUT(signs(), Patience);
    const auto status = [this] { return Trivex::TokenMonitor::token(m_store->id()); };
    QTRY_VERIFY_WITH_TIMEOUT(status().present && status().isRead && !status().busy, Patience);
    // Both halves of the key and its certificate, and the written one where it came to that.
    const int certificates = m_token->token().objectCount() - 2;
    QTRY_COMPARE_WITH_TIMEOUT(rows().size(), certificates, Patience);
    QVERIFY((rows() - m_allowed).isEmpty());
    QVERIFY(rows().contains(before));
    QCOMPARE(m_stores->names(), QStringList(StoreName));
    QCOMPARE(Trivex::TokenMonitor::tokens().size(), 1);
    // Nothing is left open but the one session that keeps the login.
    QTRY_COMPARE_WITH_TIMEOUT(m_token->lastNumber(" open="), 1, Patience);
    if (rows().contains(rootId))
        QVERIFY(m_stores->remove(m_store, rootId));
    QTRY_COMPARE_WITH_TIMEOUT(rows(), before, Patience);
}

QTEST_GUILESS_MAIN(TestHotplug)
#include "tst_hotplug.moc"
