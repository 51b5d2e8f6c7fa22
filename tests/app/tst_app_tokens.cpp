// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/steps.h"
#include "tests/app/windowmain.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/testcertificates.h"

#include <QDir>
#include <QLocale>
#include <QtTest>

using namespace TrivexTest;

namespace {

WindowEnvironment *environment = nullptr;
FaultyToken *token = nullptr;

QString rightPin()
{
    return QString::fromLatin1(TestToken::pin());
}

} // namespace

/// The window over a token that is slow, low on tries, locked or taken out: each login is counted
/// at the module itself.
class TestAppTokens : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void lastTryNeedsConsent();
    void consentIsAskedAnew();
    void triesAreCountedDownAndNeverSpentAlone();
    void lastTryOfAKey();
    void generationIsStopped();
    void tokenGoesWhileAKeyIsMade();
    void requestIsSignedSlowly();
    void requestIsStopped();
    void pageIsLeftWhileARequestIsSigned();
    void pageIsLeftWhileAKeyIsMade();
    void requestCannotBeWritten();

private:
    /// Takes the token out and in again, under `orders`: the login ends, nothing is remembered.
    bool freshToken(const QByteArray &orders = {});
    /// A key, a name, and the press that asks for its request; `meanwhile` runs half a second
    /// later.
    bool askForRequest(const QString &name, const std::function<void()> &meanwhile = {});
    QStringList savedRequests() const;

    TestAuthority m_authority;
    std::unique_ptr<WindowDriver> m_window;
    std::unique_ptr<Steps> m_steps;
    bool m_busy = false;
};

void TestAppTokens::initTestCase()
{
    QVERIFY(m_authority.isValid());
    m_window = std::make_unique<WindowDriver>();
    m_steps = std::make_unique<Steps>(*m_window);
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + token->token().label()));
    m_window->takeWarnings();
}

void TestAppTokens::init()
{
    QVERIFY(freshToken());
    m_window->meter().reset();
}

void TestAppTokens::cleanup()
{
    if (QTest::currentTestFailed())
        m_steps->savePicture(QTest::currentTestFunction());
    token->control();
    m_steps->escape();
    QVERIFY(m_steps->show("personal"));
    const QStringList warnings = m_window->takeWarnings();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
}

void TestAppTokens::cleanupTestCase()
{
    m_window.reset();
}

bool TestAppTokens::freshToken(const QByteArray &orders)
{
    if (!token->replug(m_steps->tokenStoreId()))
        return false;
    token->control(orders);
    token->forget();
    return true;
}

void TestAppTokens::lastTryNeedsConsent()
{
    token->control("final-try");
    QVERIFY(m_steps->startImport(m_authority.certificateFile()));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    QCOMPARE(m_steps->text("pinTokenName"), token->token().label());
    QCOMPARE(m_steps->text("pinTries"), qtTrId("trivex-app-pin-final"));
    const QQuickItem *consent = m_window->item(QStringLiteral("pinConsent"));
    QVERIFY(consent);
    QVERIFY(!consent->property("checked").toBool());

    // Neither the button nor Return sends the PIN without the tick.
    QVERIFY(m_window->fill(QStringLiteral("pinField"), rightPin()));
    QVERIFY(!m_window->item(QStringLiteral("pinAccept"))->isEnabled());
    m_window->key(Qt::Key_Return);
    QTest::qWait(300);
    QVERIFY(m_window->isOpen(QStringLiteral("pinPromptDialog")));
    QCOMPARE(token->count("C_Login"), 0);

    // Ticked, and left all the same.
    QVERIFY(m_window->click(QStringLiteral("pinConsent")));
    QVERIFY(m_window->item(QStringLiteral("pinAccept"))->isEnabled());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("pinPromptDialog"));
    QVERIFY(m_window->waitFor([&] { return !m_steps->text("importFailure").isEmpty(); }));
    QTest::qWait(300);
    QCOMPARE(token->count("C_Login"), 0);
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QCOMPARE(token->token().objectCount(), 0);
}

void TestAppTokens::consentIsAskedAnew()
{
    const int before = token->token().objectCount();
    token->control("final-try");
    QVERIFY(m_steps->startImport(m_authority.certificateFile()));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    // Neither the PIN nor the tick of the time before.
    QVERIFY(m_steps->text("pinField").isEmpty());
    QVERIFY(!m_window->item(QStringLiteral("pinConsent"))->property("checked").toBool());
    QVERIFY(m_window->fill(QStringLiteral("pinField"), rightPin()));
    QVERIFY(m_window->click(QStringLiteral("pinConsent")));
    QVERIFY(m_window->click(QStringLiteral("pinAccept")));
    QVERIFY(m_steps->waitClosed("importDialog", 30000));
    QCOMPARE(token->count("C_Login"), 1);
    QCOMPARE(token->token().objectCount(), before + 1);
}

void TestAppTokens::triesAreCountedDownAndNeverSpentAlone()
{
    token->control("tries 3");
    const QStringList said = {QString(), qtTrId("trivex-app-pin-low"),
                              qtTrId("trivex-app-pin-final")};
    for (int attempt = 0; attempt < said.size(); ++attempt) {
        QVERIFY(m_steps->startImport(m_authority.certificateFile()));
        QVERIFY(m_steps->waitOpen("pinPromptDialog"));
        QCOMPARE(m_steps->text("pinTries"), said.at(attempt));
        const QQuickItem *consent = m_window->item(QStringLiteral("pinConsent"));
        QCOMPARE(consent != nullptr, attempt == 2);
        QVERIFY(m_window->fill(QStringLiteral("pinField"), QStringLiteral("999999")));
        if (consent)
            QVERIFY(m_window->click(QStringLiteral("pinConsent")));
        QVERIFY(m_window->click(QStringLiteral("pinAccept")));
        const QString cause = m_steps->takeError();
        QVERIFY(cause == qtTrId("trivex-app-cause-wrong-pin")
                || (attempt == 2 && cause == qtTrId("trivex-app-cause-locked")));
        QTest::qWait(300);
        QVERIFY(!m_window->isOpen(QStringLiteral("pinPromptDialog")));
        QCOMPARE(token->count("C_Login"), attempt + 1);
        QVERIFY(m_window->click(QStringLiteral("importCancel")));
        QVERIFY(m_steps->waitClosed("importDialog"));
    }
    // Locked: it is said, and no login is tried.
    QVERIFY(m_steps->startImport(m_authority.certificateFile()));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-cause-locked"));
    QVERIFY(!m_window->isOpen(QStringLiteral("pinPromptDialog")));
    QCOMPARE(token->count("C_Login"), 3);
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
}

void TestAppTokens::lastTryOfAKey()
{
    QVERIFY(freshToken("final-try"));
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateConsent")));
    QVERIFY(m_window->fill(QStringLiteral("keyNameInput"), QStringLiteral("last")));
    QVERIFY(m_window->fill(QStringLiteral("generatePin"), rightPin()));
    QVERIFY(!m_window->item(QStringLiteral("generateButton"))->isEnabled());
    m_window->key(Qt::Key_Return);
    QTest::qWait(300);
    QCOMPARE(token->count("C_Login"), 0);
    QVERIFY(!m_window->item(QStringLiteral("generateCancel")));
    QVERIFY(m_window->click(QStringLiteral("generateConsent")));
    QVERIFY(m_steps->waitEnabled("generateButton"));
    // Going elsewhere spends nothing.
    QVERIFY(m_steps->show("personal"));
    QCOMPARE(token->count("C_Login"), 0);
}

void TestAppTokens::generationIsStopped()
{
    const int before = token->token().objectCount();
    token->control("delay C_GenerateKeyPair * 3000");
    QVERIFY(m_steps->startKey(QStringLiteral("slow"), rightPin()));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateCancel")));
    QVERIFY(m_window->waitFor([&] { return token->count("C_Login") == 1; }));
    m_window->meter().reset();
    QTest::qWait(500);
    // The window goes on living meanwhile, and so does the mark at the token.
    const QQuickItem *entry = m_window->item(QStringLiteral("token-") + token->token().label());
    QVERIFY(entry);
    QVERIFY(entry->property("busy").toBool());
    QVERIFY2(m_window->meter().longestWork() <= 100,
             qPrintable(QString::number(m_window->meter().longestWork())));
    QVERIFY(m_window->meter().frames() > 0);

    QVERIFY(m_window->click(QStringLiteral("generateCancel")));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateButton")));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    // The module's own call can't be broken off; what it made is taken away again.
    QVERIFY(m_window->waitFor([&] { return !entry->property("busy").toBool(); }));
    QCOMPARE(token->token().objectCount(), before);
    QVERIFY(!m_window->item(QStringLiteral("commonNameInput"))->isEnabled());

    token->control();
    QVERIFY(m_steps->startKey(QStringLiteral("quick"), rightPin()));
    QVERIFY(m_steps->waitForKey());
    QCOMPARE(token->token().objectCount(), before + 2);
}

void TestAppTokens::tokenGoesWhileAKeyIsMade()
{
    const int before = token->token().objectCount();
    token->control("delay C_GenerateKeyPair * 1500\nremove-at C_GenerateKeyPair *");
    QVERIFY(m_steps->startKey(QStringLiteral("lost"), rightPin()));
    QCOMPARE(m_steps->takeError(30000), qtTrId("trivex-app-cause-removed"));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateButton")));
    token->control();
    QCOMPARE(token->token().objectCount(), before);
}

bool TestAppTokens::askForRequest(const QString &name, const std::function<void()> &meanwhile)
{
    if (!m_steps->startKey(name, rightPin()) || !m_steps->waitForKey()
        || !m_window->fill(QStringLiteral("commonNameInput"), name))
        return false;
    m_window->meter().reset();
    // The press returns once the token has answered: the window waits in an event loop.
    if (meanwhile)
        QTimer::singleShot(500, this, meanwhile);
    return m_steps->press("createRequest");
}

QStringList TestAppTokens::savedRequests() const
{
    return QDir(environment->file(QStringLiteral("CertificateRequest")))
        .entryList(QDir::Files | QDir::Hidden);
}

void TestAppTokens::requestIsSignedSlowly()
{
    const QStringList before = savedRequests();
    token->control("delay C_Sign * 1500");
    QVERIFY(askForRequest(QStringLiteral("Slow Signer"), [this] {
        m_busy = m_window->item(QStringLiteral("requestBusy")) != nullptr;
        // A second press must not make a second file.
        m_window->key(Qt::Key_Return);
    }));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    QVERIFY(m_busy);
    QVERIFY(!m_window->item(QStringLiteral("requestBusy")));
    QCOMPARE(savedRequests().size(), before.size() + 1);
    QVERIFY(savedRequests().contains(QStringLiteral("Slow Signer.csr")));
    QCOMPARE(token->count("C_Sign"), 1);
    QVERIFY2(m_window->meter().longestWork() <= 100,
             qPrintable(QString::number(m_window->meter().longestWork())));
}

void TestAppTokens::requestIsStopped()
{
    const QStringList before = savedRequests();
    token->control("delay C_Sign * 3000");
    QVERIFY(askForRequest(QStringLiteral("Stopped"), [this] { m_steps->press("requestCancel"); }));
    QVERIFY(m_steps->waitEnabled("createRequest"));
    QCOMPARE(savedRequests(), before);
    // What the subsystem says of a request that got no signature.
    QCOMPARE(m_window->takeWarnings(),
             QStringList{QStringLiteral("Certificate request not created!")});
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    // The key is still there, and the next press signs.
    token->control();
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    QVERIFY(savedRequests().contains(QStringLiteral("Stopped.csr")));
}

void TestAppTokens::pageIsLeftWhileARequestIsSigned()
{
    token->control("delay C_Sign * 1500");
    QVERIFY(askForRequest(QStringLiteral("Left Alone"), [this] { m_steps->show("personal"); }));
    // What was asked for is done, and said.
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() >= 0; }));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")));
    QCOMPARE(m_steps->text("toastText"), qtTrId("trivex-app-saved"));
    QVERIFY(savedRequests().contains(QStringLiteral("Left Alone.csr")));
}

void TestAppTokens::pageIsLeftWhileAKeyIsMade()
{
    token->control("delay C_GenerateKeyPair * 1500");
    QVERIFY(m_steps->startKey(QStringLiteral("away"), rightPin()));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateCancel")));
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() >= 0; }));
    QTest::qWait(2500);
    // The key is not lost: the page still has it, ready for its subject.
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Came Back")));
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
}

void TestAppTokens::requestCannotBeWritten()
{
    const QString folder = environment->file(QStringLiteral("CertificateRequest"));
    QVERIFY(QFile::rename(folder, folder + QStringLiteral(".away")));
    QVERIFY(!writeTestFile(folder, "in the way").isEmpty());
    QVERIFY(askForRequest(QStringLiteral("Nowhere")));
    const QString cause = m_steps->takeError();
    QFile::remove(folder);
    QVERIFY(QFile::rename(folder + QStringLiteral(".away"), folder));
    QCOMPARE(cause, qtTrId("trivex-app-request-not-made"));
    QVERIFY(!m_window->item(QStringLiteral("savedCard")));
    // The subsystem logs what it could not write.
    const QStringList warnings = m_window->takeWarnings();
    QCOMPARE(warnings.filter(QStringLiteral("not created")).size(), warnings.size());
    // With room the same page goes on.
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    FaultyToken faulty(QStringLiteral("Токен Б"));
    return TrivexTest::runWindowTest<TestAppTokens>(
        argc, argv, {display.problem(), faulty.token().problem()}, [&] {
            faulty.useInThisProcess();
            environment = &display;
            token = &faulty;
        });
}

#include "tst_app_tokens.moc"
