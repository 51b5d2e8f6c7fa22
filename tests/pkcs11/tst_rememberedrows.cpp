// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/cache/tokencache.h"
#include "qca/tokens/rememberedtokens.h"
#include "qca/tokens/tokenregistry.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"
#include "tools/rememberedtokens.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <atomic>
#include <future>

using namespace TrivexTest;
using Trivex::TokenMonitor;

namespace {

const QString StoreName = QStringLiteral("Remembered");
const QString Provider = QStringLiteral("qca-norvel-pkcs11");

/// Those of an application that has none yet.
void useSettings(const QString &application)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Trivex"));
    QCoreApplication::setApplicationName(application);
}

/// The reading of the token can't begin before the next orders.
const QByteArray NoReading = QByteArrayLiteral("hold C_FindObjectsInit 1\n");

} // namespace

/// Rows of a token that was read before are shown before it is read again, and are nothing but
/// rows.
class TestRememberedRows : public TokenFixture {
    Q_OBJECT
public:
    TestRememberedRows()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void offUnlessSwitchedOn();
    void rowsComeBeforeTheReading();
    void rowsOfAnotherStart();
    void keysWaitForTheReading();
    void rowsThatAreGoneDisappear();
    void keysThatAreGoneDoNotSign();
    void failedReadingTakesThemBack();
    void changesForgetThem();
    void nothingThatALoginShows();
    void switchedOffAgain();
    void switchOfTheUser();
    void everyObjectHears();
    void choiceThatIsNotStored();
    void nothingThatALoginElsewhereShows_data();
    void nothingThatALoginElsewhereShows();
    void oldOnesGoAtTheStart();
    void switchedOffWithoutProvider();
    void switchedOffInAnotherProcess();

private:
    void remember(bool on);
    bool startRemembering();
    bool takeOut();
    /// Lets the token be read and written once more. Where it was switched off meanwhile, the file
    /// of the start may go yet: whoever writes looks behind the writing whether it still is on.
    bool writeAnew();
    /// Takes the token out and puts it back, where its reading is held up.
    bool replugHeld(const QByteArray &orders = {});
    /// The rows while the reading is held up.
    bool waitForHeldRows(int count);
    bool release(const QByteArray &orders = {});
    bool isRead() const { return TokenMonitor::token(m_storeId).isRead; }
    QStringList files() const;
    /// A public key that shows itself after a login only.
    bool addHiddenKey();
    /// Whether a file has these octets.
    bool keeps(const QByteArray &octets) const;

    QTemporaryDir m_home;
    QString m_storeId;
    QByteArray m_hidden; ///< the certificate that shows itself after a login only
    QByteArray m_hiddenPoint; ///< of the key that does
};

void TestRememberedRows::initTestCase()
{
    for (const char *name : {"HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qputenv(name, QFile::encodeName(m_home.path()));
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    QVERIFY(m_token->token().writeObject(QStringLiteral("cert"), m_authority->certificate(),
                                         QStringLiteral("55"), QStringLiteral("authority")));
    m_token->useInThisProcess();
    m_hidden = m_authority->issue(m_token->token().publicKey(QStringLiteral("01")),
                                  QStringLiteral("/CN=Hidden"));
    PlainToken plain(TestToken::softHsmLibrary());
    QVERIFY(plain.writeHiddenCertificate(m_hidden, TestToken::pin()));
    QVERIFY(addHiddenKey());
}

bool TestRememberedRows::addHiddenKey()
{
    const QString key = m_authority->file(QStringLiteral("hidden.pem"));
    const QString publicHalf = m_authority->file(QStringLiteral("hidden.der"));
    m_authority->openssl({QStringLiteral("genpkey"), QStringLiteral("-algorithm"),
                          QStringLiteral("EC"), QStringLiteral("-pkeyopt"),
                          QStringLiteral("ec_paramgen_curve:P-256"), QStringLiteral("-out"), key});
    m_authority->openssl({QStringLiteral("pkey"), QStringLiteral("-in"), key,
                          QStringLiteral("-pubout"), QStringLiteral("-outform"),
                          QStringLiteral("DER"), QStringLiteral("-out"), publicHalf});
    QFile file(publicHalf);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    m_hiddenPoint = file.readAll().right(64);
    m_token->token().tool({QStringLiteral("--write-object"), publicHalf, QStringLiteral("--type"),
                           QStringLiteral("pubkey"), QStringLiteral("--private"),
                           QStringLiteral("--id"), QStringLiteral("88"), QStringLiteral("--label"),
                           QStringLiteral("hidden")});
    return !m_token->token().publicKey(QStringLiteral("88")).isEmpty();
}

void TestRememberedRows::init()
{
    m_token->control();
    QVERIFY(startRemembering());
}

void TestRememberedRows::cleanup()
{
    m_token->control();
    m_stores.reset();
    m_prompt.reset();
    m_qca.reset();
}

void TestRememberedRows::remember(bool on)
{
    QVariantMap config = QCA::getProviderConfig(Provider);
    config.insert(QStringLiteral("remember_tokens"), on);
    QCA::setProviderConfig(Provider, config);
}

bool TestRememberedRows::startRemembering()
{
    // Its file is of this start then.
    QDir(Trivex::rememberedTokensDirectory()).removeRecursively();
    m_qca = std::make_unique<QCA::Initializer>();
    remember(true);
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_stores = std::make_unique<Stores>();
    m_store = m_stores->waitFor(StoreName, 30000);
    if (!m_store)
        return false;
    m_storeId = m_store->id();
    // Written behind the rows.
    return QTest::qWaitFor([&] { return isRead() && files().size() == 1; }, 30000);
}

bool TestRememberedRows::keeps(const QByteArray &octets) const
{
    QFile file(Trivex::rememberedTokensDirectory() + QLatin1Char('/') + files().value(0));
    return file.open(QIODevice::ReadOnly) && file.readAll().contains(octets);
}

QStringList TestRememberedRows::files() const
{
    return QDir(Trivex::rememberedTokensDirectory()).entryList({QStringLiteral("*.rows")});
}

bool TestRememberedRows::takeOut()
{
    m_token->control("remove\n");
    return QTest::qWaitFor([&] { return !TokenMonitor::token(m_storeId).present; }, 30000)
        && m_stores->waitForEntries(StoreName, 0, 30000);
}

bool TestRememberedRows::writeAnew()
{
    if (!takeOut())
        return false;
    Trivex::removeRememberedTokens(Trivex::rememberedTokensDirectory());
    m_token->control();
    return QTest::qWaitFor([&] { return isRead() && files().size() == 1; }, 30000);
}

bool TestRememberedRows::replugHeld(const QByteArray &orders)
{
    if (!takeOut())
        return false;
    m_token->forget();
    m_token->control(orders + NoReading);
    return m_token->waitUntilInside("C_FindObjectsInit");
}

bool TestRememberedRows::waitForHeldRows(int count)
{
    return m_stores->waitForEntries(StoreName, count, 30000)
        && m_token->count("C_GetAttributeValue") == 0 && !isRead();
}

bool TestRememberedRows::release(const QByteArray &orders)
{
    m_token->control(orders + "# on\n");
    return QTest::qWaitFor([&] { return isRead(); }, 30000);
}

void TestRememberedRows::offUnlessSwitchedOn()
{
    const QCA::Provider *provider = QCA::findProvider(Provider);
    QVERIFY(provider);
    QCOMPARE(const_cast<QCA::Provider *>(provider)->defaultConfig().value(
                 QStringLiteral("remember_tokens")),
             QVariant(false));
    QCOMPARE(Trivex::rememberedTokensDirectory(), m_home.filePath(QStringLiteral("trivex/tokens")));
}

void TestRememberedRows::rowsComeBeforeTheReading()
{
    QVERIFY(m_stores->waitForEntries(StoreName, 2, 30000));
    QStringList before;
    const auto entries = m_stores->entries(StoreName);
    for (const QCA::KeyStoreEntry &one : entries)
        before.append(one.id() + one.name() + QString::number(int(one.type())));
    QVERIFY(replugHeld());
    QVERIFY(waitForHeldRows(2));
    QVERIFY(TokenMonitor::token(m_storeId).loading);
    const auto held = m_stores->entries(StoreName);
    QStringList remembered;
    for (const QCA::KeyStoreEntry &one : held)
        remembered.append(one.id() + one.name() + QString::number(int(one.type())));
    QCOMPARE(remembered, before);
    QVERIFY(release());
    QVERIFY(m_stores->waitForEntries(StoreName, 2, 30000));
}

void TestRememberedRows::rowsOfAnotherStart()
{
    cleanup();
    m_token->control(NoReading);
    m_token->forget();
    m_qca = std::make_unique<QCA::Initializer>();
    remember(true);
    m_stores = std::make_unique<Stores>();
    QVERIFY(m_stores->waitFor(StoreName, 30000));
    QVERIFY(waitForHeldRows(2));
    QVERIFY(release());
}

void TestRememberedRows::keysWaitForTheReading()
{
    QVERIFY(replugHeld());
    QVERIFY(waitForHeldRows(2));
    const QCA::KeyStoreEntry entry = m_stores->entry(StoreName, QStringLiteral("signer"));
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    const QCA::KeyBundle bundle = entry.keyBundle();
    auto made =
        std::async(std::launch::async, [key = bundle.privateKey()] { return signature(key); });
    QVERIFY(release());
    QVERIFY(QTest::qWaitFor(
        [&] { return made.wait_for(std::chrono::milliseconds(0)) == std::future_status::ready; },
        30000));
    // Nothing was asked of the token for it before certificates and both halves were searched for.
    const QList<QByteArray> calls = m_token->calls();
    QVERIFY(calls.indexOf("C_Login") > 0);
    QVERIFY(calls.indexOf("C_SignInit") > calls.indexOf("C_Login"));
    QCOMPARE(calls.mid(0, calls.indexOf("C_Login")).count("C_FindObjectsInit"), 4);
    QCA::PublicKey publicKey = bundle.certificateChain().primary().subjectPublicKey();
    QVERIFY(publicKey.verifyMessage(QByteArray("data"), made.get(), QCA::EMSA3_SHA256,
                                    QCA::DefaultFormat));
    QVERIFY(m_token->count("C_GetAttributeValue") > 0);
}

void TestRememberedRows::rowsThatAreGoneDisappear()
{
    const QByteArray der = m_authority->issue(m_token->token().publicKey(QStringLiteral("01")),
                                              QStringLiteral("/CN=Short-lived"));
    QVERIFY(m_token->token().writeObject(QStringLiteral("cert"), der, QStringLiteral("66"),
                                         QStringLiteral("gone")));
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(m_stores->waitForEntries(StoreName, 3, 30000));
    QTRY_VERIFY(keeps(der));
    QVERIFY(takeOut());
    QVERIFY(m_token->token().removeObject(QStringLiteral("cert"), QStringLiteral("66")));
    QVERIFY(replugHeld());
    QVERIFY(waitForHeldRows(3));
    QVERIFY(release());
    QVERIFY(m_stores->waitForEntries(StoreName, 2, 30000));
    // Nor is it remembered any longer.
    QTRY_VERIFY(!keeps(der));
    QVERIFY(replugHeld());
    QVERIFY(waitForHeldRows(2));
    QVERIFY(release());
}

/// Of a row that another program has emptied meanwhile nothing is used.
void TestRememberedRows::keysThatAreGoneDoNotSign()
{
    QVERIFY(m_token->token().generateKeyPair(QStringLiteral("EC:secp384r1"), QStringLiteral("77"),
                                             QStringLiteral("away")));
    const QByteArray der = m_authority->issue(m_token->token().publicKey(QStringLiteral("77")),
                                              QStringLiteral("/CN=Away"));
    QVERIFY(m_token->token().writeObject(QStringLiteral("cert"), der, QStringLiteral("77"),
                                         QStringLiteral("away")));
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(m_stores->waitForEntries(StoreName, 3, 30000));
    QTRY_VERIFY(keeps(der));
    QVERIFY(takeOut());
    for (const char *type : {"cert", "pubkey", "privkey"})
        m_token->token().removeObject(QString::fromLatin1(type), QStringLiteral("77"));
    QVERIFY(replugHeld());
    QVERIFY(waitForHeldRows(3));
    const QCA::KeyBundle bundle = m_stores->entry(StoreName, QStringLiteral("away")).keyBundle();
    auto made =
        std::async(std::launch::async, [key = bundle.privateKey()] { return signature(key); });
    QVERIFY(release());
    QVERIFY(QTest::qWaitFor(
        [&] { return made.wait_for(std::chrono::milliseconds(0)) == std::future_status::ready; },
        30000));
    QVERIFY(made.get().isEmpty());
    QCOMPARE(m_token->count("C_SignInit"), 0);
    // What hid is listed after the login.
    QTRY_VERIFY(m_stores->entry(StoreName, QStringLiteral("away")).isNull());
}

void TestRememberedRows::failedReadingTakesThemBack()
{
    QVERIFY(replugHeld());
    QVERIFY(waitForHeldRows(2));
    m_token->control("fail C_FindObjectsInit * CKR_DEVICE_MEMORY\n");
    QVERIFY(m_stores->waitForEntries(StoreName, 0, 30000));
    QVERIFY(!isRead());
    m_token->control();
    QVERIFY(m_stores->waitForEntries(StoreName, 2, 30000));
}

void TestRememberedRows::changesForgetThem()
{
    QCOMPARE(files().size(), 1);
    const QByteArray der = m_authority->issue(m_token->token().publicKey(QStringLiteral("01")),
                                              QStringLiteral("/CN=Written"));
    const QString id = m_stores->write(m_store, QCA::Certificate::fromDER(der));
    QVERIFY(!id.isEmpty());
    QVERIFY(files().isEmpty());
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(QTest::qWaitFor([&] { return files().size() == 1; }, 30000));
    QVERIFY(m_stores->waitForEntries(StoreName, 3, 30000));
    QVERIFY(m_stores->remove(m_store, id));
    QVERIFY(files().isEmpty());
}

/// A certificate that hides without a login is listed after one, and not written to the disk.
void TestRememberedRows::nothingThatALoginShows()
{
    // The reading comes behind the login, because it failed before.
    QVERIFY(takeOut());
    m_token->control("fail C_FindObjectsInit 1+ CKR_DEVICE_MEMORY\n");
    QVERIFY(QTest::qWaitFor([&] { return TokenMonitor::token(m_storeId).present; }, 30000));
    std::atomic<bool> isOver = false;
    Trivex::StoreChange change;
    change.kind = Trivex::StoreChange::ShowKeys;
    QVERIFY(Trivex::startStoreChange(m_storeId, change,
                                     [&](const Trivex::StoreChangeResult &) { isOver = true; }));
    QVERIFY(QTest::qWaitFor([&] { return isOver.load(); }, 30000));
    QVERIFY(m_token->count("C_Login") > 0);
    // The login may end before anybody asks what hides without one.
    m_token->control("logout-at C_OpenSession 2");
    QVERIFY(m_stores->waitForEntries(StoreName, 3, 30000));
    QVERIFY(!m_stores->entry(StoreName, QStringLiteral("0")).isNull());
    cleanup();
    QCOMPARE(files().size(), 1);
    QVERIFY(keeps(m_authority->certificate()));
    QVERIFY(!keeps(m_hidden));
    QVERIFY(!keeps(m_hiddenPoint));
    // Nor in a start in which nobody logs in.
    QVERIFY(startRemembering());
    QVERIFY(m_stores->waitForEntries(StoreName, 2, 30000));
}

void TestRememberedRows::switchedOffAgain()
{
    remember(false);
    QVERIFY(replugHeld());
    // Rows are published before the reading begins, which holds.
    QVERIFY(m_stores->currentEntries(StoreName).isEmpty());
    QVERIFY(release());
    QVERIFY(m_stores->waitForEntries(StoreName, 2, 30000));
    remember(true);
    QVERIFY(writeAnew());
    QVERIFY(replugHeld());
    QCOMPARE(m_stores->currentEntries(StoreName).size(), 2);
    QVERIFY(release());
}

/// Beside the provider's setting, kept from one start to the next, and no file stays behind it.
void TestRememberedRows::switchOfTheUser()
{
    remember(false);
    useSettings(QStringLiteral("switch"));
    Trivex::RememberedTokens::apply();
    Trivex::RememberedTokens user;
    QVERIFY(!user.isOn());
    QSignalSpy changed(&user, &Trivex::RememberedTokens::onChanged);
    user.setOn(true);
    user.setOn(true);
    QCOMPARE(changed.size(), 1);
    Trivex::setTokensRemembered(false);
    Trivex::RememberedTokens::apply();
    QVERIFY(user.isOn());
    QVERIFY(writeAnew());
    QVERIFY(replugHeld());
    QVERIFY(waitForHeldRows(2));
    // What the start has written is no proof that this switch has anything written.
    Trivex::removeRememberedTokens(Trivex::rememberedTokensDirectory());
    QVERIFY(files().isEmpty());
    QVERIFY(release());
    QVERIFY(QTest::qWaitFor([&] { return files().size() == 1; }, 30000));
    user.setOn(false);
    QTRY_VERIFY(files().isEmpty());
    Trivex::RememberedTokens::apply();
    QVERIFY(!user.isOn());
}

/// Of two QML engines both show it, whichever was used.
void TestRememberedRows::everyObjectHears()
{
    useSettings(QStringLiteral("both"));
    Trivex::RememberedTokens::apply();
    Trivex::RememberedTokens used;
    Trivex::RememberedTokens other;
    QSignalSpy heard(&other, &Trivex::RememberedTokens::onChanged);
    used.setOn(true);
    QCOMPARE(heard.size(), 1);
    QVERIFY(other.isOn());
    other.setOn(false);
    QCOMPARE(heard.size(), 2);
    QVERIFY(!used.isOn());
}

/// What is stored nowhere holds for nobody, and the objects say so.
void TestRememberedRows::choiceThatIsNotStored()
{
    QCoreApplication::setOrganizationName(QStringLiteral("blocked"));
    QCoreApplication::setApplicationName(QStringLiteral("choice"));
    const QString folder = m_home.filePath(QStringLiteral("blocked"));
    QFile file(folder);
    QVERIFY(file.open(QIODevice::WriteOnly));
    Trivex::RememberedTokens::apply();
    Trivex::RememberedTokens user;
    QVERIFY(user.isSaved());
    QSignalSpy changed(&user, &Trivex::RememberedTokens::onChanged);
    user.setOn(true);
    QVERIFY(!user.isSaved());
    QVERIFY(!user.isOn());
    QVERIFY(!Trivex::tokensAreStillRemembered());
    QCOMPARE(changed.size(), 1);
    QVERIFY(file.remove());
    user.setOn(true);
    QVERIFY(user.isSaved());
    QVERIFY(Trivex::tokensAreStillRemembered());
    user.setOn(false);
}

void TestRememberedRows::nothingThatALoginElsewhereShows_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::newRow("login wanted") << QByteArray("no-login-state\n");
    QTest::newRow("login not mentioned") << QByteArray("no-login-state\nno-login-flag\n");
}

/// A login of another part of this process shows objects that the token does not tell of as shown
/// by one: they are listed, and not written.
void TestRememberedRows::nothingThatALoginElsewhereShows()
{
    QFETCH(QByteArray, orders);
    QVERIFY(takeOut());
    m_token->forget();
    m_token->control(orders + NoReading);
    QVERIFY(m_token->waitUntilInside("C_FindObjectsInit"));
    PlainToken other(TestToken::softHsmLibrary());
    QVERIFY(other.isOpen() && other.logIn(TestToken::pin()));
    const auto end = qScopeGuard([&] { other.logOut(); });
    Trivex::removeRememberedTokens(Trivex::rememberedTokensDirectory());
    QVERIFY(release(orders));
    QVERIFY(m_stores->waitForEntries(StoreName, 3, 30000));
    QVERIFY(QTest::qWaitFor([&] { return files().size() == 1; }, 30000));
    QVERIFY(keeps(m_authority->certificate()));
    QVERIFY(!keeps(m_hidden));
    QVERIFY(!keeps(m_hiddenPoint));
    // The rows of keys are those of a token that hides them.
    QVERIFY(replugHeld(orders));
    QVERIFY(waitForHeldRows(2));
    QCOMPARE(m_stores->entry(StoreName, QStringLiteral("signer")).type(),
             QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(release());
}

/// Also where nothing is remembered any longer.
void TestRememberedRows::oldOnesGoAtTheStart()
{
    cleanup();
    QFile file(Trivex::rememberedTokensDirectory() + QLatin1Char('/') + files().value(0));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(
        file.setFileTime(QDateTime::currentDateTimeUtc().addDays(-Trivex::TokenCache::MostDays - 1),
                         QFileDevice::FileModificationTime));
    file.close();
    m_qca = std::make_unique<QCA::Initializer>();
    remember(false);
    m_stores = std::make_unique<Stores>();
    QVERIFY(m_stores->waitFor(StoreName, 30000));
    QTRY_VERIFY(files().isEmpty());
}

/// A page that has no key stores removes the files all the same, and the next start does what was
/// not done.
void TestRememberedRows::switchedOffWithoutProvider()
{
    const QString directory = Trivex::rememberedTokensDirectory();
    useSettings(QStringLiteral("without"));
    cleanup();
    QCOMPARE(files().size(), 1);
    Trivex::RememberedTokens user;
    user.setOn(true);
    QCOMPARE(files().size(), 1);
    user.setOn(false);
    QTRY_VERIFY(!QFileInfo::exists(directory));
    QVERIFY(QDir().mkpath(directory));
    Trivex::RememberedTokens::apply();
    QTRY_VERIFY(!QFileInfo::exists(directory));
}

void TestRememberedRows::switchedOffInAnotherProcess()
{
    useSettings(QStringLiteral("processes"));
    Trivex::RememberedTokens::apply();
    Trivex::RememberedTokens user;
    user.setOn(true);
    QVERIFY(Trivex::tokensAreStillRemembered());
    // As another process writes it: this one is told of nothing.
    QFile file(QSettings().fileName());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QVERIFY(file.write("[General]\nrememberTokens=false\n") > 0);
    file.close();
    QVERIFY(Trivex::tokensAreRemembered());
    QVERIFY(!Trivex::tokensAreStillRemembered());
    user.setOn(false);
}

QTEST_GUILESS_MAIN(TestRememberedRows)
#include "tst_rememberedrows.moc"
