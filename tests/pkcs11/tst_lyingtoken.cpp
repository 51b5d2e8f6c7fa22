// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Lying");

} // namespace

/// A module whose calls succeed, but with lengths and handles that can't be. The operation fails
/// with an error, nothing is left of it and nothing else is touched; the next one works.
class TestLyingToken : public TokenFixture {
    Q_OBJECT
public:
    TestLyingToken()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void signatures_data();
    void signatures();
    void pairs_data();
    void pairs();
    void pairThatIsThere_data();
    void pairThatIsThere();
    void idsOfBothHalves();
    void writtenObject();
    void pairWithoutItsIds();
    void cleanupTestCase();

private:
    bool sign(const QString &name) const { return signs(*m_stores, StoreName, name); }
    /// The ids of the objects "made" of that type.
    QByteArray idsOfMade(const char *type) const;
    bool generate()
    {
        return !generateCurve(QStringLiteral("ec-secp384r1"), QStringLiteral("made")).isNull();
    }

    Trivex::TokenMonitor m_monitor;
};

void TestLyingToken::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addKey(QStringLiteral("rsa:2048"), QStringLiteral("01"), QStringLiteral("RSA")));
    QVERIFY(addKey(QStringLiteral("EC:secp384r1"), QStringLiteral("02"), QStringLiteral("EC")));
    m_token->useInThisProcess();
    QVERIFY(start(2));
}

void TestLyingToken::cleanupTestCase()
{
    if (m_token)
        m_token->control();
}

void TestLyingToken::signatures_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("length");
    for (const char *name : {"RSA", "EC"}) {
        for (const char *length :
             {"0", "1", "255", "257", "2049", "1000000000", "4294967297", "18446744073709551615"})
            QTest::addRow("%s %s", name, length) << QString::fromLatin1(name) << QByteArray(length);
    }
}

void TestLyingToken::signatures()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, length);
    QVERIFY(sign(name));
    QSignalSpy failed(&m_monitor, &Trivex::TokenMonitor::failed);
    m_token->control("report C_Sign 1 " + length);
    QVERIFY(!sign(name));
    QTRY_COMPARE(failed.size(), 1);
    QCOMPARE(failed.first().first().value<Trivex::TokenError>().function, QStringLiteral("C_Sign"));
    QVERIFY(sign(name));
}

void TestLyingToken::pairs_data()
{
    QTest::addColumn<QByteArray>("handle");
    for (const char *handle : {"0", "1", "2", "3", "18446744073709551615"})
        QTest::newRow(handle) << QByteArray(handle);
}

void TestLyingToken::pairs()
{
    QFETCH(QByteArray, handle);
    const int before = m_token->token().objectCount();
    m_token->control("report C_GenerateKeyPair 1 " + handle);
    QVERIFY(!generate());
    QCOMPARE(m_token->token().objectCount(), before);
    QVERIFY(sign(QStringLiteral("RSA")));
    QVERIFY(sign(QStringLiteral("EC")));
}

QByteArray TestLyingToken::idsOfMade(const char *type) const
{
    const auto lines = m_token->token()
                           .tool({QStringLiteral("--list-objects"), QStringLiteral("--type"),
                                  QString::fromLatin1(type)})
                           .split('\n');
    QByteArray ids;
    bool isMade = false;
    for (const QByteArray &line : lines) {
        if (line.contains("label:"))
            isMade = line.contains("made");
        else if (isMade && line.contains("ID:"))
            ids += line.simplified() + ' ';
    }
    return ids;
}

void TestLyingToken::pairThatIsThere_data()
{
    QTest::addColumn<QByteArray>("distance");
    // The numbers of handles and sessions go up by one.
    for (const char *distance : {"-1", "-2", "-3", "-4", "-5", "-6", "-7", "-8"})
        QTest::newRow(distance) << QByteArray(distance);
}

/// The handles are those of the pair that was made before, each of the right class.
void TestLyingToken::pairThatIsThere()
{
    QFETCH(QByteArray, distance);
    QCA::PrivateKey known = generateCurve(QStringLiteral("ec-secp384r1"), QStringLiteral("made"));
    QVERIFY(!known.isNull());
    const int before = m_token->token().objectCount();
    m_token->control("report C_GenerateKeyPair 1 " + distance);
    QVERIFY(!generate());
    m_token->control();
    QCOMPARE(m_token->token().objectCount(), before);
    QVERIFY(!signature(known).isEmpty());
    removeGenerated();
}

/// A token that renames one half of a pair and not the other: they would not find each other.
void TestLyingToken::idsOfBothHalves()
{
    m_token->control("fail C_SetAttributeValue 2 CKR_FUNCTION_FAILED\n"
                     "fail C_SetAttributeValue 3 CKR_FUNCTION_FAILED");
    QVERIFY(generate());
    m_token->control();
    QVERIFY(!idsOfMade("pubkey").isEmpty());
    QCOMPARE(idsOfMade("privkey"), idsOfMade("pubkey"));
    removeGenerated();
}

void TestLyingToken::writtenObject()
{
    const int before = m_token->token().objectCount();
    m_token->control("report C_CreateObject 1 0");
    QCOMPARE(m_stores->write(m_store, root()), QString());
    QCOMPARE(m_token->token().objectCount(), before);
    m_token->control();
    const QString id = m_stores->write(m_store, root());
    QVERIFY(!id.isEmpty());
    QVERIFY(m_stores->remove(m_store, id));
    QCOMPARE(m_token->token().objectCount(), before);
}

/// The pair is written, and can't be found by what it was written with: that is no bundle.
void TestLyingToken::pairWithoutItsIds()
{
    const QCA::KeyBundle bundle = makeCurveBundle(QStringLiteral("/CN=Nameless"));
    const int before = m_token->token().objectCount();
    m_token->control("lie CKA_ID * empty");
    QCOMPARE(m_stores->write(m_store, bundle), QString());
    m_token->control();
    QCOMPARE(m_token->token().objectCount(), before);
    QVERIFY(!m_stores->write(m_store, bundle).isEmpty());
}

QTEST_GUILESS_MAIN(TestLyingToken)
#include "tst_lyingtoken.moc"
