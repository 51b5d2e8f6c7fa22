// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/needtokens.h"

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Calls");

/// What a listing asked the module for.
struct Calls {
    int searches = 0;
    int reads = 0;
};

} // namespace

/// How often the module is called for a listing. A search goes through all objects of a token, so
/// one for each certificate would make a listing quadratic, whatever a clock says of small ones.
class TestTokenCalls : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void searchesDoNotGrow();
    void readsInOneSession();

private:
    bool fillUpTo(int certificates);
    Calls list(int certificates);

    std::unique_ptr<FaultyToken> m_token;
    int m_filled = 0;
};

void TestTokenCalls::initTestCase()
{
    m_token = std::make_unique<FaultyToken>(StoreName);
    TRIVEX_NEED_TOKENS();
    QVERIFY2(m_token->token().isValid(), qPrintable(m_token->token().problem()));
    m_token->useInThisProcess();
}

bool TestTokenCalls::fillUpTo(int certificates)
{
    PlainToken plain(TestToken::softHsmLibrary());
    const int missing = certificates - m_filled;
    if (!plain.isOpen() || !plain.writeCertificates(missing, TestToken::pin(), m_filled))
        return false;
    m_filled = certificates;
    return true;
}

Calls TestTokenCalls::list(int certificates)
{
    m_token->forget();
    const QCA::Initializer qca;
    Stores stores;
    if (!stores.waitForEntries(StoreName, certificates, 30000))
        return {};
    // A listing that goes on behind the last entry counts too.
    QTest::qWait(700);
    return {m_token->count("C_FindObjectsInit"), m_token->count("C_GetAttributeValue")};
}

void TestTokenCalls::searchesDoNotGrow()
{
    QList<Calls> calls;
    for (const int certificates : {3, 50, 500}) {
        QVERIFY(fillUpTo(certificates));
        calls.append(list(certificates));
        QVERIFY2(calls.last().searches > 0, "nothing was listed");
        qInfo("%d certificates: %d searches, %d reads", certificates, calls.last().searches,
              calls.last().reads);
    }
    QCOMPARE(calls.at(1).searches, calls.at(0).searches);
    QCOMPARE(calls.at(2).searches, calls.at(0).searches);
    // One read a certificate, whatever else there is to read.
    QCOMPARE(calls.at(1).reads - calls.at(0).reads, 47);
    QCOMPARE(calls.at(2).reads - calls.at(1).reads, 450);
}

/// What a card that takes its time with each call is asked for, but for the looks at its slot: the
/// session that keeps the login, one for all reading with three searches, and each object once.
void TestTokenCalls::readsInOneSession()
{
    constexpr int AroundTheObjects = 18;
    QVERIFY(fillUpTo(500));
    m_token->forget();
    const QCA::Initializer qca;
    Stores stores;
    QVERIFY(stores.waitForEntries(StoreName, 500, 30000));
    QTRY_VERIFY(m_token->count("C_CloseSession") > 0);
    QList<QByteArray> calls = m_token->calls();
    calls = calls.mid(calls.indexOf("C_OpenSession"));
    // Flags of the token are read for the keys that may hide, and by the looks at the slot.
    for (const char *look : {"C_GetSlotList", "C_GetTokenInfo", "C_GetSlotInfo"})
        calls.removeAll(look);
    QCOMPARE(calls.count("C_OpenSession"), 2);
    QCOMPARE(calls.count("C_GetAttributeValue"), 500);
    qInfo("%d calls for %d objects", calls.size(), 500);
    QVERIFY2(calls.size() <= 500 + AroundTheObjects, calls.mid(500).join(' ').constData());
}

QTEST_GUILESS_MAIN(TestTokenCalls)
#include "tst_tokencalls.moc"
