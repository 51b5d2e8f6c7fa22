// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/contexts.h"
#include "qca/adapter/storewriter.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/loopmeter.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTimer>

#include <limits>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Hanging");
const QString OtherName = QStringLiteral("Other");
/// Less than anything here would wait for a module, and more than a busy machine takes; ms.
constexpr int Moment = 2000;
constexpr int Patience = 15000; // ms
/// More than there are.
constexpr int Writes = 40;
/// The end waits for three seconds in all; what hangs would hold it for ten minutes.
constexpr int LongestEnd = 60000;
constexpr Trivex::Worker::Milliseconds ShortLifetime{200};
/// Longer than the test.
const QByteArray Hang = " 1 600000\n";

} // namespace

/// Modules that hang where they are to give something back: a login, a session, themselves.
/// Nobody waits for them, and the other tokens go on.
class TestClosingHangs : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void idleLoginEnds();
    void longestLifetime();
    void logout();
    void withdrawal();
    void finalisation();
    void providerEnds_data();
    void providerEnds();

private:
    /// Writes a certificate to that token, logging in where that is needed.
    bool write(const QString &storeName);
    bool isShown(const QString &storeName) { return !m_stores->entries(storeName).isEmpty(); }
    /// The logins of the first token alone end by themselves; the next such end hangs.
    bool hangInLogout();
    /// Takes the first token out and puts it back, with `orders` in force.
    bool replug(const QByteArray &orders);
    /// Ends QCA; how long that took, in milliseconds.
    qint64 end();

    std::unique_ptr<FaultyToken> m_token;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<PinPrompt> m_prompt;
    std::unique_ptr<Stores> m_stores;
    LoopMeter m_loop;
    QList<QByteArray> m_certificates; ///< made beforehand, because that holds up the loop
    QString m_faultyModule;
    QString m_library;
    int m_number = 0;
};

void TestClosingHangs::initTestCase()
{
    m_token = std::make_unique<FaultyToken>(StoreName);
    TestToken &token = m_token->token();
    TRIVEX_NEED_TOKENS();
    QVERIFY2(token.isValid(), qPrintable(token.problem()));
    QVERIFY(token.addToken(OtherName));
    const TestAuthority authority;
    const QString file = authority.file(QStringLiteral("key.pem"));
    authority.openssl({QStringLiteral("ecparam"), QStringLiteral("-name"),
                       QStringLiteral("prime256v1"), QStringLiteral("-genkey"),
                       QStringLiteral("-noout"), QStringLiteral("-out"), file});
    const QByteArray key = authority.openssl({QStringLiteral("ec"), QStringLiteral("-in"), file,
                                              QStringLiteral("-pubout"), QStringLiteral("-outform"),
                                              QStringLiteral("DER")});
    for (int i = 0; i < Writes; ++i)
        m_certificates.append(authority.issue(key, QStringLiteral("/CN=Made %1").arg(i)));
    QVERIFY(!m_certificates.last().isEmpty());
    m_token->useInThisProcess();
    m_faultyModule = qEnvironmentVariable("TRIVEX_PKCS11_MODULES");
}

/// Each test has a module of its own, because the one before may be inside one that hangs.
void TestClosingHangs::init()
{
    const QString directory = m_token->token().path();
    m_library = QStringLiteral("%1/faulty%2.so").arg(directory).arg(++m_number);
    const QString target = QStringLiteral("%1/target%2.so").arg(directory).arg(m_number);
    QVERIFY(QFile::copy(m_faultyModule, m_library));
    QVERIFY(QFile::copy(TestToken::softHsmLibrary(), target));
    qputenv("TRIVEX_PKCS11_MODULES", QFile::encodeName(m_library));
    qputenv("TRIVEX_FAULTY_TARGET", QFile::encodeName(target));
    m_token->control();
    m_token->forget();
    m_qca = std::make_unique<QCA::Initializer>();
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_stores = std::make_unique<Stores>();
    QVERIFY(m_stores->waitFor(StoreName, Patience) && m_stores->waitFor(OtherName, Patience));
    Trivex::configureTokens({});
    QVERIFY(write(StoreName) && write(OtherName));
    m_loop.start();
}

void TestClosingHangs::cleanup()
{
    m_loop.stop();
    const qint64 spent = end();
    QVERIFY2(spent < LongestEnd, qPrintable(QString::number(spent)));
    QVERIFY2(m_loop.longest() < Moment, qPrintable(QString::number(m_loop.longest())));
}

bool TestClosingHangs::write(const QString &storeName)
{
    const QByteArray der = m_certificates.takeLast();
    Trivex::StoreWriter writer;
    QSignalSpy written(&writer, &Trivex::StoreWriter::written);
    writer.write(m_stores->byName(storeName), QCA::Certificate::fromDER(der));
    const bool isOver = QTest::qWaitFor([&] { return !written.isEmpty(); }, Patience);
    return isOver && !written.first().first().toString().isEmpty()
        && QTest::qWaitFor([&] { return isShown(storeName); }, Patience);
}

bool TestClosingHangs::replug(const QByteArray &orders)
{
    const QString id = m_stores->byName(StoreName)->id();
    const auto isPresent = [&](bool wanted) {
        return QTest::qWaitFor(
            [&] {
                const auto status = Trivex::TokenMonitor::token(id);
                return status.present == wanted && !status.loading;
            },
            Patience);
    };
    m_token->control("remove " + StoreName.toLatin1() + '\n' + orders);
    if (!isPresent(false))
        return false;
    m_token->control(orders);
    return isPresent(true);
}

bool TestClosingHangs::hangInLogout()
{
    Trivex::TokenSettings settings;
    settings.loginLifetime = ShortLifetime;
    Trivex::configureTokens(settings);
    if (!replug({}) || !write(StoreName))
        return false;
    m_token->forget();
    const bool ends = QTest::qWaitFor([&] { return m_token->count("C_Logout") > 0; }, Patience);
    m_token->control("delay C_Logout" + Hang);
    // A logout that hangs has begun by then; no other one must follow in the same time again.
    QTest::qWait(4 * int(ShortLifetime.count()));
    m_token->forget();
    QTest::qWait(4 * int(ShortLifetime.count()));
    return ends && m_token->count("C_Logout") == 0;
}

qint64 TestClosingHangs::end()
{
    QElapsedTimer timer;
    timer.start();
    m_stores.reset();
    m_prompt.reset();
    m_qca.reset();
    return timer.elapsed();
}

void TestClosingHangs::idleLoginEnds()
{
    Trivex::TokenSettings settings;
    settings.loginLifetime = ShortLifetime;
    Trivex::configureTokens(settings);
    QVERIFY(replug({}));
    m_prompt->resetCount();
    QVERIFY(write(StoreName));
    QTRY_VERIFY_WITH_TIMEOUT(m_token->countText("C_Logout CKR_OK") > 0, Patience);
    QVERIFY(write(StoreName));
    QCOMPARE(m_prompt->count(), 2);
}

// What clocks can't count is no time at all to them.
void TestClosingHangs::longestLifetime()
{
    const QString provider = QStringLiteral("qca-norvel-pkcs11");
    const QVariantMap before = QCA::getProviderConfig(provider);
    QVariantMap config = before;
    config[QStringLiteral("login_lifetime")] = std::numeric_limits<int>::max();
    QCA::setProviderConfig(provider, config);
    const bool isBack = replug({});
    m_token->forget();
    // No logout must come in this time.
    QTest::qWait(500);
    QCA::setProviderConfig(provider, before);
    QVERIFY(isBack);
    QCOMPARE(m_token->count("C_Logout"), 0);
}

void TestClosingHangs::logout()
{
    QVERIFY(hangInLogout());
    QVERIFY(write(OtherName));
    // What comes to the token meanwhile waits its turn, and can be told to end.
    const QString id = m_stores->byName(StoreName)->id();
    QTimer::singleShot(300, this, [&] { Trivex::TokenMonitor::cancel(id); });
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!write(StoreName));
    // It has ended, and was not given up.
    QVERIFY2(timer.elapsed() < Patience, qPrintable(QString::number(timer.elapsed())));
    // Taken out and put in, it works at once.
    QVERIFY(replug("delay C_Logout" + Hang));
    QVERIFY(write(StoreName));
}

void TestClosingHangs::withdrawal()
{
    m_token->forget();
    m_token->control("remove " + StoreName.toLatin1() + "\ndelay C_CloseSession" + Hang);
    QTRY_VERIFY_WITH_TIMEOUT(!isShown(StoreName), Patience);
    // No session must be closed in this time.
    QTest::qWait(500);
    QCOMPARE(m_token->count("C_CloseSession"), 0);
    QVERIFY(write(OtherName));
    m_token->control();
    QTRY_VERIFY_WITH_TIMEOUT(isShown(StoreName), Patience);
    QVERIFY(write(StoreName));
}

// The other token is in the hands of another module.
void TestClosingHangs::finalisation()
{
    const QString other = m_token->token().modulePath();
    m_token->control("remove " + OtherName.toLatin1() + "\ndelay C_Finalize" + Hang);
    QTRY_VERIFY_WITH_TIMEOUT(!isShown(OtherName), Patience);
    qputenv("TRIVEX_PKCS11_MODULES", QFile::encodeName(m_library + QLatin1Char(';') + other));
    QTRY_VERIFY_WITH_TIMEOUT(m_stores->byName(OtherName) && isShown(OtherName), Patience);
    QVERIFY(write(OtherName));
    m_token->forget();
    QVERIFY(QFile::remove(m_library));
    QTRY_VERIFY_WITH_TIMEOUT(m_token->count("C_CloseSession") > 0, Patience);
    // The module must not be finalised in this time.
    QTest::qWait(1000);
    QCOMPARE(m_token->count("C_Finalize"), 0);
    QVERIFY(write(OtherName));
}

void TestClosingHangs::providerEnds_data()
{
    QTest::addColumn<QByteArray>("call");
    for (const char *call : {"C_Logout", "C_CloseSession", "C_Finalize"})
        QTest::newRow(call) << QByteArray(call);
}

void TestClosingHangs::providerEnds()
{
    QFETCH(QByteArray, call);
    if (call == "C_Logout")
        QVERIFY(hangInLogout());
    else
        m_token->control("delay " + call + Hang);
    const qint64 spent = end();
    QVERIFY2(spent < LongestEnd, qPrintable(QString::number(spent)));
    // It was there that it waited.
    QVERIFY2(spent > 2000, qPrintable(QString::number(spent)));
}

QTEST_GUILESS_MAIN(TestClosingHangs)
#include "tst_closinghangs.moc"
