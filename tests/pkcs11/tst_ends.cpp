// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/ending.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Ends");
constexpr int StartPatience = 120000;
/// The end waits for three seconds in all; the rest is for a busy machine.
constexpr int EndPatience = 8000;

const char *const Calls[] = {"",
                             "C_Initialize",
                             "C_GetSlotList",
                             "C_OpenSession",
                             "C_Login",
                             "C_FindObjects",
                             "C_GetTokenInfo",
                             "C_Sign",
                             "C_GenerateKeyPair",
                             "C_Logout",
                             "C_CloseSession",
                             "C_Finalize"};

} // namespace

/// Processes that end while something goes on: whatever their module does, they end by themselves,
/// in time and with the status that they were given.
class TestEnds : public TokenFixture {
    Q_OBJECT
public:
    TestEnds()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void callTakesAMinute_data();
    void callTakesAMinute();
    void callReturnsAfterQca_data();
    void callReturnsAfterQca();
    void generationAtExit();
    void forkedChild();
    void twoApplications();

private:
    void check(const QStringList &arguments);
};

void TestEnds::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
}

void TestEnds::init()
{
    m_token->control();
    m_token->forget();
}

void TestEnds::check(const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    const bool hasBegun = process.waitForReadyRead(StartPatience);
    if (!process.waitForFinished(EndPatience)) {
        process.kill();
        process.waitForFinished();
        QFAIL("the process did not end");
    }
    QVERIFY(hasBegun);
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), EndingStatus);
}

void TestEnds::callTakesAMinute_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("call");
    for (const char *call : Calls) {
        for (const char *way : endingWays)
            QTest::addRow("%s, %s", *call ? call : "nothing", way)
                << QString::fromLatin1(way) << QString::fromLatin1(call);
    }
}

void TestEnds::callTakesAMinute()
{
    QFETCH(QString, way);
    QFETCH(QString, call);
    check({QStringLiteral("--end"), StoreName, way, call,
           m_token->token().path() + QStringLiteral("/control")});
}

void TestEnds::callReturnsAfterQca_data()
{
    QTest::addColumn<QString>("call");
    for (const char *call : {"C_Login", "C_SignInit", "C_Sign", "C_GenerateKeyPair"})
        QTest::newRow(call) << QString::fromLatin1(call);
}

// What the thread holds by then must not be QCA's: a PIN, a result.
void TestEnds::callReturnsAfterQca()
{
    QFETCH(QString, call);
    check({QStringLiteral("--late"), StoreName, QStringLiteral("return"), call,
           m_token->token().path() + QStringLiteral("/control"), QStringLiteral("6500")});
    QVERIFY(m_token->count(call.toLatin1().constData()) > 0);
}

// The generation computes with libcrypto, which would be taken down under it.
void TestEnds::generationAtExit()
{
    for (int round = 0; round < 12; ++round) {
        check({QStringLiteral("--generate"), StoreName, QString::number(5 + 15 * round)});
        if (QTest::currentTestFailed())
            return;
    }
}

void TestEnds::forkedChild()
{
    for (int round = 0; round < 5; ++round) {
        check({QStringLiteral("--fork"), StoreName});
        if (QTest::currentTestFailed())
            return;
    }
}

void TestEnds::twoApplications()
{
    check({QStringLiteral("--two"), StoreName});
}

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--two") == 0)
        return runTwoApplications(argc, argv, QString::fromLocal8Bit(argv[2]));
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString mode = arguments.value(1);
    const Ending ending = {arguments.value(3), arguments.value(4), arguments.value(2),
                           arguments.value(5)};
    if (mode == QLatin1String("--end"))
        return runEnding(ending);
    if (mode == QLatin1String("--late"))
        return runLateReturn(ending, arguments.value(6).toInt());
    if (mode == QLatin1String("--generate"))
        return runGeneratingEnd(arguments.value(2), arguments.value(3).toInt());
    if (mode == QLatin1String("--fork"))
        return runForkingParent(arguments.value(2));
    TestEnds test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ends.moc"
