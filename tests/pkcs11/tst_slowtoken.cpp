// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QScopeGuard>

using namespace TrivexTest;
using Trivex::TokenMonitor;

namespace {

const QString StoreName = QStringLiteral("Slow");
constexpr int Certificates = 9; ///< the one of the key included

/// Every call takes its time, as a card's do.
const QByteArray Slowly = QByteArrayLiteral("delay any * 30\n");

/// That certificate, counted from 1: the public key takes the first two readings.
QByteArray reading(int certificate)
{
    return QByteArrayLiteral("C_GetAttributeValue ") + QByteArray::number(2 + certificate);
}

} // namespace

/// A token that takes long to be read shows what has been read so far.
class TestSlowToken : public TokenFixture {
    Q_OBJECT
public:
    TestSlowToken()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void firstRowBeforeTheLast();
    void rowsNeverChange();
    void failureTakesThemBack();
    void exchangedTokenShowsNothing();
    void loginElsewhereInTheMiddle();

private:
    Trivex::TokenStatus status() const { return TokenMonitor::token(m_storeId); }
    /// Takes the token out and puts it back, to be read under those orders.
    bool plugInWith(const QByteArray &orders);
    QStringList shown() const;

    QString m_storeId;
    QStringList m_whole; ///< the ids of all rows, in their order
};

void TestSlowToken::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    PlainToken plain(TestToken::softHsmLibrary());
    QVERIFY(plain.writeCertificates(Certificates - 1, TestToken::pin()));
    QVERIFY(start(Certificates));
    m_storeId = m_store->id();
}

void TestSlowToken::init()
{
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
    m_whole = shown();
}

bool TestSlowToken::plugInWith(const QByteArray &orders)
{
    m_token->control("remove\n");
    if (!QTest::qWaitFor([&] { return !status().present; }, 30000)
        || !m_stores->waitForEntries(StoreName, 0, 30000))
        return false;
    m_token->forget();
    m_token->control(orders);
    return QTest::qWaitFor([&] { return status().present; }, 30000);
}

QStringList TestSlowToken::shown() const
{
    QStringList ids;
    const auto entries = m_stores->entries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries)
        ids.append(entry.id());
    return ids;
}

/// The last one is not read before the orders change, and some rows are there.
void TestSlowToken::firstRowBeforeTheLast()
{
    QVERIFY(plugInWith(Slowly + "hold " + reading(Certificates) + '\n'));
    QVERIFY(QTest::qWaitFor([&] { return !shown().isEmpty(); }, 30000));
    QVERIFY(shown().size() < Certificates);
    QVERIFY(status().loading && !status().isRead);
    QVERIFY(status().keyFacts.isEmpty());
    QVERIFY(m_token->count("C_GetAttributeValue") <= 1 + Certificates);
    // What shows is there for good.
    const QStringList early = shown();
    QCOMPARE(early, m_whole.mid(0, early.size()));
    m_token->control();
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
    QVERIFY(QTest::qWaitFor([&] { return status().isRead; }, 30000));
    QCOMPARE(shown(), m_whole);
    QCOMPARE(m_token->count("C_GetAttributeValue"), 2 + Certificates);
    QVERIFY(signs());
}

/// Whatever is shown on the way begins as the whole list does, and becomes more.
void TestSlowToken::rowsNeverChange()
{
    QStringList last;
    QStringList odd;
    connect(m_stores->byName(StoreName), &QCA::KeyStore::updated, m_stores.get(), [&] {
        const QStringList now = shown();
        if (now.size() < last.size() || now.mid(0, last.size()) != last)
            odd.append(now.join(QLatin1Char(' ')));
        last = now;
    });
    m_token->control("remove\n");
    QVERIFY(m_stores->waitForEntries(StoreName, 0, 30000));
    last.clear();
    odd.clear();
    m_token->control(Slowly);
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
    QVERIFY2(odd.isEmpty(), qPrintable(odd.join(QLatin1Char('\n'))));
    QCOMPARE(shown(), m_whole);
    disconnect(m_stores->byName(StoreName), nullptr, m_stores.get(), nullptr);
}

void TestSlowToken::failureTakesThemBack()
{
    QVERIFY(plugInWith(Slowly + "hold " + reading(Certificates) + '\n'));
    QVERIFY(QTest::qWaitFor([&] { return !shown().isEmpty(); }, 30000));
    m_token->control("fail session * CKR_DEVICE_ERROR\n");
    QVERIFY(m_stores->waitForEntries(StoreName, 0, 30000));
    QVERIFY(!status().isRead);
    m_token->control();
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
    QCOMPARE(shown(), m_whole);
}

/// Another one in the same reader, which the looks at the slots have not seen yet: nothing of it is
/// shown as this one's.
void TestSlowToken::exchangedTokenShowsNothing()
{
    QVERIFY(plugInWith(Slowly + "hold " + reading(1) + '\n'));
    QVERIFY(m_token->waitUntilInside("C_GetAttributeValue"));
    QVERIFY(QTest::qWaitFor([&] { return m_token->count("C_GetAttributeValue") == 2; }, 30000));
    QStringList seen;
    connect(m_stores->byName(StoreName), &QCA::KeyStore::updated, m_stores.get(),
            [&] { seen += shown(); });
    m_token->control(Slowly + "other-token\nhold C_GetAttributeValue 2\n");
    QVERIFY(QTest::qWaitFor([&] { return !status().present; }, 30000));
    QVERIFY2(seen.isEmpty(), qPrintable(seen.join(QLatin1Char(' '))));
    m_token->control();
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
    disconnect(m_stores->byName(StoreName), nullptr, m_stores.get(), nullptr);
}

/// Another part of the process logs in when the keys are read, and the certificates are not: keys
/// that hid themselves are there all the same.
void TestSlowToken::loginElsewhereInTheMiddle()
{
    QVERIFY(plugInWith("hold " + reading(1) + '\n'));
    QVERIFY(m_token->waitUntilInside("C_GetAttributeValue"));
    QVERIFY(QTest::qWaitFor([&] { return m_token->count("C_GetAttributeValue") == 2; }, 30000));
    PlainToken other(TestToken::softHsmLibrary());
    QVERIFY(other.isOpen() && other.logIn(TestToken::pin()));
    const auto end = qScopeGuard([&] { other.logOut(); });
    m_token->control();
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
    QVERIFY(QTest::qWaitFor([&] { return status().isRead; }, 30000));
    QCOMPARE(shown(), m_whole);
    QVERIFY(signs());
    QCOMPARE(m_token->count("C_Login"), 0);
}

QTEST_GUILESS_MAIN(TestSlowToken)
#include "tst_slowtoken.moc"
