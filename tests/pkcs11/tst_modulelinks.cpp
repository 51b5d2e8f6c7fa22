// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QFile>

#include <unistd.h>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Linked");
constexpr int Patience = 60000;
constexpr int SomeLooks = 5;

} // namespace

/// One library that is named twice, by paths that lead to the same file.
class TestModuleLinks : public TokenFixture {
    Q_OBJECT
public:
    TestModuleLinks()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void isOneModule_data();
    void isOneModule();

private:
    bool waitForLooks(int looks);

    QString m_source;
    QString m_library;
    QString m_hardLink;
    QString m_softLink;
};

void TestModuleLinks::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    m_source = qEnvironmentVariable("TRIVEX_PKCS11_MODULES");
    const QString path = m_token->token().path();
    m_library = path + QStringLiteral("/one.so");
    m_hardLink = path + QStringLiteral("/two.so");
    m_softLink = path + QStringLiteral("/three.so");
}

void TestModuleLinks::init()
{
    m_token->control();
    for (const QString &one : {m_library, m_hardLink, m_softLink})
        QFile::remove(one);
    QVERIFY(QFile::copy(m_source, m_library));
    QCOMPARE(
        link(QFile::encodeName(m_library).constData(), QFile::encodeName(m_hardLink).constData()),
        0);
    QVERIFY(QFile::link(m_hardLink, m_softLink));
}

void TestModuleLinks::cleanup()
{
    m_stores.reset();
    m_prompt.reset();
    m_qca.reset();
}

bool TestModuleLinks::waitForLooks(int looks)
{
    const int before = m_token->count("C_GetSlotList");
    return QTest::qWaitFor([&] { return m_token->count("C_GetSlotList") >= before + 2 * looks; },
                           Patience);
}

void TestModuleLinks::isOneModule_data()
{
    QTest::addColumn<QString>("modules");
    QTest::newRow("twice") << m_library + QLatin1Char(';') + m_library + QLatin1Char(';')
            + m_hardLink;
    QTest::newRow("linked") << m_library + QLatin1Char(';') + m_hardLink;
    QTest::newRow("by a symbolic link") << m_library + QLatin1Char(';') + m_softLink;
    QTest::newRow("with parameters")
        << m_library + QLatin1String("|one;") + m_hardLink + QLatin1String("|two");
    QTest::newRow("one with parameters")
        << m_library + QLatin1Char(';') + m_hardLink + QLatin1String("|two");
    QTest::newRow("the other with parameters") << m_library + QLatin1String("|one;") + m_hardLink;
}

void TestModuleLinks::isOneModule()
{
    QFETCH(QString, modules);
    qputenv("TRIVEX_PKCS11_MODULES", QFile::encodeName(modules));
    m_token->forget();
    QVERIFY(start(1));
    QVERIFY(signs());
    QVERIFY(waitForLooks(SomeLooks));
    QCOMPARE(m_stores->names(), QStringList(StoreName));
    QCOMPARE(Trivex::TokenMonitor::tokens().size(), 1);
    QCOMPARE(m_token->count("C_Initialize"), 1);
    QCOMPARE(m_token->count("C_Finalize"), 0);
    QCOMPARE(m_token->count("C_Login"), 1);
    QCOMPARE(m_token->lastNumber(" open="), 1);

    // The other name takes over, after the end of the first.
    QVERIFY(QFile::remove(m_library));
    QTRY_COMPARE_WITH_TIMEOUT(m_token->count("C_Finalize"), 1, Patience);
    QTRY_COMPARE_WITH_TIMEOUT(m_token->count("C_Initialize"), 2, Patience);
    QVERIFY(m_stores->waitForEntries(StoreName, 1, Patience));
    QTRY_VERIFY_WITH_TIMEOUT(signs(), Patience);
    QVERIFY(waitForLooks(SomeLooks));
    QCOMPARE(m_stores->names(), QStringList(StoreName));
    QCOMPARE(m_token->count("C_Initialize"), 2);

    // The first one is back, and nobody starts anew.
    QCOMPARE(
        link(QFile::encodeName(m_hardLink).constData(), QFile::encodeName(m_library).constData()),
        0);
    QVERIFY(waitForLooks(SomeLooks));
    QVERIFY(signs());
    QCOMPARE(m_token->count("C_Initialize"), 2);
    QCOMPARE(m_token->count("C_Login"), 2);
    cleanup();
    QCOMPARE(m_token->count("C_Finalize"), 2);
    QCOMPARE(m_token->countText("CKR_CRYPTOKI"), 0);
}

QTEST_GUILESS_MAIN(TestModuleLinks)
#include "tst_modulelinks.moc"
