// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QtTest>

using namespace TrivexTest;

/// The window that is closed over work and over what is typed: it asks, and loses nothing unasked.
class TestAppQuit : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void idle();
    void whileAKeyIsMade();
    void whileATokenIsAtWork();
    void filledRequest();
    void changedRequest();
    void whileAnImportIsWritten();
    void stoppedImport();

private:
    void restore() override { m_token.control(); }
    bool isShown() const { return m_window->window()->isVisible(); }
    /// Tries to close the window by its frame, then by its key, which works over dialogs
    /// too; it asks and stays.
    bool asks();
    /// What the question names, in one line.
    QString named() const;
    bool keepWorking();
    bool closeAllTheSame();
    void showAgain();
};

void TestAppQuit::init()
{
    answerPins(rightPin());
    QApplication::setQuitOnLastWindowClosed(false);
    QVERIFY(isShown());
}

QString TestAppQuit::named() const
{
    return m_window->object(QStringLiteral("quitDialog"))
        ->property("lines")
        .toStringList()
        .join(QLatin1Char('|'));
}

bool TestAppQuit::asks()
{
    m_window->window()->close();
    if (!isShown() || !m_steps->waitOpen("quitDialog"))
        return false;
    // The harmless answer is the one that Enter gives.
    m_window->key(Qt::Key_Return);
    if (!m_steps->waitClosed("quitDialog") || !isShown())
        return false;
    m_window->key(Qt::Key_Q, Qt::ControlModifier);
    return isShown() && m_steps->waitOpen("quitDialog");
}

bool TestAppQuit::keepWorking()
{
    m_window->key(Qt::Key_Escape);
    return m_steps->waitClosed("quitDialog") && isShown();
}

bool TestAppQuit::closeAllTheSame()
{
    return m_window->click(QStringLiteral("quitConfirm"))
        && m_window->waitFor([&] { return !isShown(); });
}

void TestAppQuit::showAgain()
{
    m_window->application().activate({});
    QVERIFY(QTest::qWaitForWindowActive(m_window->window()));
    QVERIFY(m_steps->waitClosed("quitDialog"));
    QVERIFY(m_window->waitUntilStill());
}

void TestAppQuit::idle()
{
    QVERIFY(m_steps->show("newRequest"));
    m_window->window()->close();
    QVERIFY(!isShown());
    showAgain();
    m_window->key(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!isShown());
    showAgain();
}

void TestAppQuit::whileAKeyIsMade()
{
    m_token.control("hold C_GenerateKeyPair *");
    QVERIFY(m_steps->startKey(QStringLiteral("held"), rightPin()));
    QVERIFY(m_token.waitUntilInside("C_GenerateKeyPair"));
    QVERIFY(asks());
    QCOMPARE(named(), qtTrId("trivex-app-quit-request"));
    QVERIFY(keepWorking());
    m_token.control();
    QVERIFY(m_steps->waitForKey());
    // Nothing is typed yet, and the key lies on its token.
    m_window->window()->close();
    QVERIFY(!isShown());
    showAgain();
    QVERIFY(m_steps->press("leaveKey"));
    m_token.control("hold C_GenerateKeyPair *");
    QVERIFY(m_steps->startKey(QStringLiteral("left"), rightPin()));
    QVERIFY(m_token.waitUntilInside("C_GenerateKeyPair"));
    QVERIFY(asks());
    QVERIFY(closeAllTheSame());
    // The key was asked to stop before the window went.
    showAgain();
    QVERIFY(m_steps->waitEnabled("keyNameInput"));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    m_token.control();
}

/// Of work that no page knows the token tells.
void TestAppQuit::whileATokenIsAtWork()
{
    m_token.control("hold C_SetPIN *");
    QVERIFY(m_window->click(QStringLiteral("token-") + m_token.token().label()));
    QVERIFY(m_steps->press("tokenMenuButton"));
    QVERIFY(m_window->click(QStringLiteral("tokenChangePin")));
    QVERIFY(m_steps->waitOpen("changePinDialog"));
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), rightPin()));
    QVERIFY(m_window->fill(QStringLiteral("newPin"), rightPin()));
    QVERIFY(m_window->fill(QStringLiteral("newPinAgain"), rightPin()));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_token.waitUntilInside("C_SetPIN"));
    const auto *tokens =
        m_window->window()->findChild<QAbstractItemModel *>(QStringLiteral("tokens"));
    QVERIFY(m_window->waitFor([&] { return valueOf(*tokens, 0, "busy").toBool(); }));
    QVERIFY(asks());
    QVERIFY2(named().startsWith(m_token.token().label()), qPrintable(named()));
    QVERIFY(keepWorking());
    m_token.control();
    QVERIFY(m_steps->waitClosed("changePinDialog"));
}

void TestAppQuit::filledRequest()
{
    QVERIFY(m_steps->startKey(QStringLiteral("filled"), rightPin()));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Filled")));
    QVERIFY(asks());
    QCOMPARE(named(), qtTrId("trivex-app-quit-filled"));
    QVERIFY(closeAllTheSame());
    showAgain();
    // Agreed once is not agreed for ever.
    QVERIFY(asks());
    QVERIFY(keepWorking());
    QCOMPARE(m_steps->text("commonNameInput"), QStringLiteral("Filled"));
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    m_window->window()->close();
    QVERIFY(!isShown());
    showAgain();
}

/// After `filledRequest`, whose request is in the list.
void TestAppQuit::changedRequest()
{
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Filled")) >= 0; }));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Filled"))));
    QVERIFY(m_steps->press("editButton"));
    QVERIFY(m_steps->waitOpen("editRequestDialog"));
    // As long as nothing is changed, nothing is lost.
    m_window->window()->close();
    QVERIFY(!isShown());
    showAgain();
    QVERIFY(m_window->fill(QStringLiteral("organizationInput"), QStringLiteral("Example")));
    QVERIFY(asks());
    QCOMPARE(named(), qtTrId("trivex-app-quit-changes"));
    QVERIFY(keepWorking());
    QVERIFY(m_window->isOpen(QStringLiteral("editRequestDialog")));
    QCOMPARE(m_steps->text("organizationInput"), QStringLiteral("Example"));
    QVERIFY(asks());
    QVERIFY(closeAllTheSame());
    showAgain();
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitOpen("leaveEditing"));
    QVERIFY(m_window->click(QStringLiteral("leaveEditingConfirm")));
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
}

void TestAppQuit::whileAnImportIsWritten()
{
    m_token.control("hold C_CreateObject *");
    QVERIFY(m_steps->startImport(m_authority.certificateFile()));
    QVERIFY(m_token.waitUntilInside("C_CreateObject"));
    QVERIFY(asks());
    QCOMPARE(named(), qtTrId("trivex-app-quit-import"));
    QVERIFY(keepWorking());
    m_token.control();
    QVERIFY(m_steps->waitClosed("importDialog"));
}

/// What is written stays; nothing else of the file begins after that.
void TestAppQuit::stoppedImport()
{
    QByteArray certificates;
    for (const char *name : {"One", "Two", "Three"})
        certificates += m_authority.openssl({QStringLiteral("req"), QStringLiteral("-x509"),
                                             QStringLiteral("-newkey"), QStringLiteral("ed25519"),
                                             QStringLiteral("-nodes"), QStringLiteral("-keyout"),
                                             QStringLiteral("/dev/null"), QStringLiteral("-subj"),
                                             QStringLiteral("/CN=") + QLatin1String(name)});
    const QString file = writeTestFile(inHome(QStringLiteral("three.pem")), certificates);
    m_token.control("hold C_CreateObject *");
    QVERIFY(m_steps->startImport(file));
    QVERIFY(m_token.waitUntilInside("C_CreateObject"));
    const int before = m_token.token().objectCount();
    QVERIFY(asks());
    QVERIFY(closeAllTheSame());
    m_token.control();
    showAgain();
    const auto *tokens =
        m_window->window()->findChild<QAbstractItemModel *>(QStringLiteral("tokens"));
    QVERIFY(m_window->waitFor([&] { return !valueOf(*tokens, 0, "busy").toBool(); }));
    QVERIFY(m_window->waitFor([&] {
        return !m_window->object(QStringLiteral("importDialog"))->property("writing").toBool();
    }));
    QVERIFY2(m_token.token().objectCount() <= before + 1, "all the file was written");
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppQuit, FaultyToken>(argc, argv, QStringLiteral("Quit"));
}

#include "tst_app_quit.moc"
