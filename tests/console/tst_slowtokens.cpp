// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/console/outcome.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace TrivexTest;

namespace {

/// More than a window is shown at first.
constexpr int Many = 510;

/// Its second certificate, the last one, comes when the orders change; by then the first one shows:
/// every call takes its time. The public key takes two readings before them.
const QByteArray HalfRead = QByteArrayLiteral("delay any * 30\nhold C_GetAttributeValue 4\n");

} // namespace

/// The program without its window waits for all that is on a token: a part would count as all.
class TestSlowTokens : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init() { m_token->control(); }
    void waitsForTheToken_data();
    void waitsForTheToken();
    void listsALargeToken();

private:
    QString path(const QString &name) const { return m_files.filePath(name); }
    QString write(const QString &name, const QByteArray &bytes) const;

    QTemporaryDir m_files;
    std::unique_ptr<FaultyToken> m_token;
};

QString TestSlowTokens::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(path(name));
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    return isWritten ? file.fileName() : QString();
}

void TestSlowTokens::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    qputenv("HOME", QFile::encodeName(m_files.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("share"))));
    m_token = std::make_unique<FaultyToken>(QStringLiteral("Slow"));
    QVERIFY2(m_token->problem().isEmpty(), qPrintable(m_token->problem()));
    const TestAuthority authority;
    const QString id = QStringLiteral("01");
    QVERIFY(m_token->token().generateKeyPair(QStringLiteral("EC:secp256r1"), id, id));
    // One that was renewed: its name stands twice.
    for (const char *label : {"old", "new"}) {
        const QByteArray certificate =
            authority.issue(m_token->token().publicKey(id), QStringLiteral("/CN=Twice"));
        QVERIFY(m_token->token().writeObject(QStringLiteral("cert"), certificate, id,
                                             QLatin1String(label)));
    }
    m_token->useInThisProcess();
}

void TestSlowTokens::waitsForTheToken_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("complaint");
    QTest::addColumn<int>("rows");
    QTest::newRow("list") << QStringList{QStringLiteral("--list")} << 0 << QByteArray() << 2;
    QTest::newRow("sign") << QStringList{QStringLiteral("--sign"),
                                         write(QStringLiteral("letter"), "Pay 100\n"),
                                         QStringLiteral("--key"),
                                         QStringLiteral("Twice"),
                                         QStringLiteral("--pin-file"),
                                         write(QStringLiteral("pin"), TestToken::pin())}
                          << 1 << QByteArray("Several certificates fit") << 0;
}

void TestSlowTokens::waitsForTheToken()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, complaint);
    m_token->control(HalfRead);
    QProcess process;
    start(process, arguments);
    QByteArray complained;
    const auto isReading = [&] {
        complained += process.readAllStandardError();
        return complained.contains("Reading the tokens");
    };
    QVERIFY(QTest::qWaitFor([&] { return isReading() || process.state() == QProcess::NotRunning; },
                            60000));
    m_token->control();
    const Outcome outcome = finish(process);
    QTEST(outcome.code, "code");
    QVERIFY2(outcome.complained.contains(complaint), outcome.complained.constData());
    QTEST(outcome.said.count("  Twice, "), "rows");
    QVERIFY(!QFile::exists(path(QStringLiteral("letter.p7s"))));
}

/// The last: it fills the token.
void TestSlowTokens::listsALargeToken()
{
    PlainToken plain(TestToken::softHsmLibrary());
    QVERIFY(plain.writeCertificates(Many, TestToken::pin()));
    const Outcome outcome = run({QStringLiteral("--list")});
    QCOMPARE(outcome.code, 0);
    QVERIFY2(outcome.said.startsWith("Slow: " + QByteArray::number(Many + 2) + ' '),
             outcome.said.left(100).constData());
}

QTEST_GUILESS_MAIN(TestSlowTokens)

#include "tst_slowtokens.moc"
