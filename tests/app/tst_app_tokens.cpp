// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QClipboard>
#include <QDir>
#include <QtTest>

using namespace TrivexTest;

/// The window over a token that is slow, low on tries, locked or taken out: each login is counted
/// at the module itself.
class TestAppTokens : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void tokenIsOfferedWhereNoneServes();
    void importNeedsAWritableToken();
    void lastTryNeedsConsent();
    void consentIsAskedAnew();
    void triesAreCountedDownAndNeverSpentAlone();
    void wrongPinAsksAgain();
    void reportIsForAnybody();
    void importThatIsLeft_data();
    void importThatIsLeft();
    void lastTryOfAKey();
    void generationIsStopped();
    void tokenGoesWhileAKeyIsMade();
    void requestIsSignedSlowly();
    void requestIsStopped();
    void pageIsLeftWhileARequestIsSigned();
    void pageIsLeftWhileAKeyIsMade();
    void requestCannotBeWritten();

private:
    void arrive() override;
    void restore() override { m_token.control(); }

    /// Takes the token out and in again, under `orders`: the login ends, nothing is remembered.
    bool freshToken(const QByteArray &orders = {});
    /// A key, a name, and the press that asks for its request; `meanwhile` runs as soon as
    /// the token signs.
    bool askForRequest(const QString &name, const std::function<void()> &meanwhile = {});
    QStringList savedRequests() const;

    bool m_busy = false;
};

void TestAppTokens::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.token().label()));
}

void TestAppTokens::init()
{
    QVERIFY(m_steps->show("personal"));
    QVERIFY(freshToken());
    m_window->meter().reset();
}

bool TestAppTokens::freshToken(const QByteArray &orders)
{
    if (!m_token.replug(m_steps->tokenStoreId()))
        return false;
    m_token.control(orders);
    m_token.forget();
    return true;
}

/// A private token is offered also where one is known that keys can't be made on.
void TestAppTokens::tokenIsOfferedWhereNoneServes()
{
    const auto isOffered = [&] {
        return m_steps->text("emptySecond") == qtTrId("trivex-app-new-token");
    };
    for (const char *order : {"remove 1", "read-only", "no-pin-flag"}) {
        QVERIFY2(m_window->waitFor([&] { return !isOffered(); }), order);
        QVERIFY2(m_window->waitForItem(QStringLiteral("startImport")), order);
        m_token.control(order);
        QVERIFY2(m_window->waitFor(isOffered), order);
        m_token.control();
    }
    QVERIFY(m_window->waitFor([&] { return !isOffered(); }));
}

void TestAppTokens::importThatIsLeft_data()
{
    QTest::addColumn<bool>("isCancelled");
    QTest::newRow("by Escape") << true;
    QTest::newRow("by closing the dialog") << false;
}

/// Escape gives the import up; whoever closes the dialog lets it end. Neither keeps the file.
void TestAppTokens::importThatIsLeft()
{
    QFETCH(bool, isCancelled);
    QVERIFY(freshToken("hold C_Login 1"));
    const int before = m_token.token().objectCount();
    const TestAuthority other(QStringLiteral("Left Root"));
    QVERIFY(m_steps->startImport(other.certificateFile()));
    QVERIFY(m_steps->answerPin(rightPin()));
    QVERIFY(m_token.waitUntilInside("C_Login"));
    QObject *dialog = m_window->object(QStringLiteral("importDialog"));
    QVERIFY(dialog->property("writing").toBool());
    if (isCancelled)
        m_window->key(Qt::Key_Escape);
    else
        QVERIFY(QMetaObject::invokeMethod(dialog, "close"));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(dialog->property("writing").toBool());
    m_token.control();
    QVERIFY(m_window->waitFor([&] { return !dialog->property("writing").toBool(); }));
    QVERIFY(m_window->waitFor([&] { return !dialog->property("ready").toBool(); }));
    QCOMPARE(m_token.token().objectCount(), before + (isCancelled ? 0 : 1));
}

/// The token changes while somebody looks at what is to be imported.
void TestAppTokens::importNeedsAWritableToken()
{
    m_steps->openFile(m_authority.certificateFile());
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(m_window->item(QStringLiteral("tokenChooser"))->property("currentText").toString(),
             m_token.token().label());
    const auto mayBegin = [this] {
        return m_window->item(QStringLiteral("importAccept"))->isEnabled();
    };
    m_token.control("read-only");
    QVERIFY(m_window->waitFor([&] { return !mayBegin(); }));
    m_token.control();
    QVERIFY(m_window->waitFor(mayBegin));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppTokens::lastTryNeedsConsent()
{
    m_token.control("final-try");
    QVERIFY(m_steps->startImport(m_authority.certificateFile()));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    QCOMPARE(m_steps->text("pinTokenName"), m_token.token().label());
    QCOMPARE(m_steps->text("pinTries"), qtTrId("trivex-app-pin-final"));
    const QQuickItem *consent = m_window->item(QStringLiteral("pinConsent"));
    QVERIFY(consent);
    QVERIFY(!consent->property("checked").toBool());

    // Neither the button nor Return sends the PIN without the tick.
    QVERIFY(m_window->fill(QStringLiteral("pinField"), rightPin()));
    QVERIFY(!m_window->item(QStringLiteral("pinAccept"))->isEnabled());
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->holds([&] {
        return m_window->isOpen(QStringLiteral("pinPromptDialog")) && m_token.count("C_Login") == 0;
    }));

    // Ticked, and left all the same.
    QVERIFY(m_window->click(QStringLiteral("pinConsent")));
    QVERIFY(m_window->item(QStringLiteral("pinAccept"))->isEnabled());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("pinPromptDialog"));
    QVERIFY(m_window->waitFor([&] { return !m_steps->text("importFailure").isEmpty(); }));
    QVERIFY(m_window->holds([&] { return m_token.count("C_Login") == 0; }));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QCOMPARE(m_token.token().objectCount(), 0);
}

void TestAppTokens::consentIsAskedAnew()
{
    const int before = m_token.token().objectCount();
    m_token.control("final-try");
    QVERIFY(m_steps->startImport(m_authority.certificateFile()));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    // Neither the PIN nor the tick of the time before.
    QVERIFY(m_steps->text("pinField").isEmpty());
    QVERIFY(!m_window->item(QStringLiteral("pinConsent"))->property("checked").toBool());
    QVERIFY(m_window->fill(QStringLiteral("pinField"), rightPin()));
    QVERIFY(m_window->click(QStringLiteral("pinConsent")));
    QVERIFY(m_window->click(QStringLiteral("pinAccept")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QCOMPARE(m_token.count("C_Login"), 1);
    QCOMPARE(m_token.token().objectCount(), before + 1);
}

void TestAppTokens::triesAreCountedDownAndNeverSpentAlone()
{
    m_token.control("tries 3");
    const QStringList said = {QString(), qtTrId("trivex-app-pin-low"),
                              qtTrId("trivex-app-pin-final")};
    QVERIFY(m_steps->startImport(m_authority.certificateFile()));
    for (int attempt = 0; attempt < said.size(); ++attempt) {
        QVERIFY(m_steps->waitOpen("pinPromptDialog"));
        QTRY_COMPARE(m_steps->text("pinTries"), said.at(attempt));
        QCOMPARE(m_steps->text("pinWrong"), attempt ? qtTrId("trivex-app-pin-wrong") : QString());
        QCOMPARE(m_window->item(QStringLiteral("pinField"))->property("text").toString(),
                 QString());
        const QQuickItem *consent = m_window->item(QStringLiteral("pinConsent"));
        QCOMPARE(consent != nullptr, attempt == 2);
        QVERIFY(m_window->fill(QStringLiteral("pinField"), QStringLiteral("999999")));
        if (consent)
            QVERIFY(m_window->click(QStringLiteral("pinConsent")));
        QVERIFY(m_window->click(QStringLiteral("pinAccept")));
        QVERIFY(m_window->waitFor([&] { return m_token.count("C_Login") == attempt + 1; }));
        QVERIFY(m_window->holds([&] { return m_token.count("C_Login") == attempt + 1; }));
    }
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-cause-locked"));
    QVERIFY(!m_window->isOpen(QStringLiteral("pinPromptDialog")));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    // Locked: it is said, and no login is tried.
    QVERIFY(m_steps->startImport(m_authority.certificateFile()));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-cause-locked"));
    QVERIFY(!m_window->isOpen(QStringLiteral("pinPromptDialog")));
    QCOMPARE(m_token.count("C_Login"), 3);
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
}

void TestAppTokens::wrongPinAsksAgain()
{
    QVERIFY(freshToken("tries 3"));
    const int before = m_token.token().objectCount();
    // One that none of the others has written.
    const TestAuthority other(QStringLiteral("Other Root"));
    QVERIFY(m_steps->startImport(other.certificateFile()));
    QVERIFY(m_steps->answerPin(QStringLiteral("999999")));
    QTRY_COMPARE(m_steps->text("pinWrong"), qtTrId("trivex-app-pin-wrong"));
    // Read out with the field, by keyboard left at once; nothing is red that nobody did wrong.
    QVERIFY(m_window->item(QStringLiteral("pinField"))->hasActiveFocus());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("pinPromptDialog"));
    QTRY_COMPARE(m_steps->text("importFailure"), qtTrId("trivex-app-import-failed"));
    QCOMPARE(m_window->item(QStringLiteral("importFailure"))->property("level").toInt(), 0);
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    QCOMPARE(m_token.count("C_Login"), 1);
    // Again, and right the second time.
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    QVERIFY(m_steps->text("pinWrong").isEmpty());
    QVERIFY(m_steps->answerPin(QStringLiteral("999999")));
    QTRY_COMPARE(m_steps->text("pinTries"), qtTrId("trivex-app-pin-final"));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->fill(QStringLiteral("pinField"), rightPin()));
    QVERIFY(m_window->click(QStringLiteral("pinConsent")));
    QVERIFY(m_window->click(QStringLiteral("pinAccept")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QCOMPARE(m_token.count("C_Login"), 3);
    QCOMPARE(m_token.token().objectCount(), before + 1);
}

void TestAppTokens::reportIsForAnybody()
{
    QVERIFY(freshToken("fail C_CreateObject * CKR_DEVICE_ERROR"));
    const TestAuthority other(QStringLiteral("Reported Root"));
    QVERIFY(m_steps->startImport(other.certificateFile()));
    QVERIFY(m_steps->answerPin(rightPin()));
    QVERIFY(m_steps->waitOpen("errorDialog"));
    QVERIFY(m_window->click(QStringLiteral("errorReport")));
    const QString report = QGuiApplication::clipboard()->text();
    QVERIFY(report.contains(QStringLiteral("C_CreateObject")));
    // It may go to anybody: no PIN, not whose token and not whose computer.
    QVERIFY(!report.contains(rightPin()));
    QVERIFY(!report.contains(m_token.token().label()));
    QVERIFY(!report.contains(home()));
    QVERIFY(m_window->click(QStringLiteral("errorClose")));
    QVERIFY(m_steps->waitClosed("errorDialog"));
    m_token.control();
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
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
    QVERIFY(m_window->holds([&] {
        return m_token.count("C_Login") == 0 && !m_window->item(QStringLiteral("generateCancel"));
    }));
    QVERIFY(m_window->click(QStringLiteral("generateConsent")));
    QVERIFY(m_steps->waitEnabled("generateButton"));
    // Going elsewhere spends nothing.
    QVERIFY(m_steps->show("personal"));
    QCOMPARE(m_token.count("C_Login"), 0);
}

void TestAppTokens::generationIsStopped()
{
    const int before = m_token.token().objectCount();
    m_token.control("delay C_GenerateKeyPair * 3000");
    QVERIFY(m_steps->startKey(QStringLiteral("slow"), rightPin()));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateCancel")));
    QVERIFY(m_window->waitFor([&] { return m_token.count("C_Login") == 1; }));
    m_window->meter().reset();
    // The window goes on living meanwhile, and so does the mark at the token.
    QVERIFY(m_window->waitFor([&] { return m_window->meter().frames() >= 10; }));
    const QQuickItem *entry = m_window->item(QStringLiteral("token-") + m_token.token().label());
    QVERIFY(entry);
    QVERIFY(entry->property("busy").toBool());

    QVERIFY(m_window->click(QStringLiteral("generateCancel")));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateButton")));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    // The module's own call can't be broken off; what it made is taken away again.
    QVERIFY(m_window->waitFor([&] { return !entry->property("busy").toBool(); }));
    QCOMPARE(m_token.token().objectCount(), before);
    QVERIFY(!m_window->item(QStringLiteral("commonNameInput"))->isEnabled());

    m_token.control();
    QVERIFY(m_steps->startKey(QStringLiteral("quick"), rightPin()));
    QVERIFY(m_steps->waitForKey());
    QCOMPARE(m_token.token().objectCount(), before + 2);
}

void TestAppTokens::tokenGoesWhileAKeyIsMade()
{
    const int before = m_token.token().objectCount();
    m_token.control("delay C_GenerateKeyPair * 1500\nremove-at C_GenerateKeyPair *");
    QVERIFY(m_steps->startKey(QStringLiteral("lost"), rightPin()));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-cause-removed"));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateButton")));
    m_token.control();
    QCOMPARE(m_token.token().objectCount(), before);
}

bool TestAppTokens::askForRequest(const QString &name, const std::function<void()> &meanwhile)
{
    if (!m_steps->startKey(name, rightPin()) || !m_steps->waitForKey()
        || !m_window->fill(QStringLiteral("commonNameInput"), name))
        return false;
    m_window->meter().reset();
    // The press returns once the token has answered: the window waits in an event loop.
    if (meanwhile)
        m_window->once([this] { return m_token.count("C_SignInit") > 0; }, meanwhile);
    return m_steps->press("createRequest");
}

QStringList TestAppTokens::savedRequests() const
{
    return QDir(inHome(QStringLiteral("CertificateRequest"))).entryList(QDir::Files | QDir::Hidden);
}

void TestAppTokens::requestIsSignedSlowly()
{
    const QStringList before = savedRequests();
    m_token.control("delay C_Sign * 1500");
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
    QCOMPARE(m_token.count("C_Sign"), 1);
    // The window went on living meanwhile.
    QVERIFY2(m_window->meter().frames() >= 10,
             qPrintable(QString::number(m_window->meter().frames())));
}

void TestAppTokens::requestIsStopped()
{
    const QStringList before = savedRequests();
    m_token.control("delay C_Sign * 3000");
    QVERIFY(askForRequest(QStringLiteral("Stopped"), [this] { m_steps->press("requestCancel"); }));
    QVERIFY(m_steps->waitEnabled("createRequest"));
    QCOMPARE(savedRequests(), before);
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    // The key is still there, and the next press signs.
    m_token.control();
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    QVERIFY(savedRequests().contains(QStringLiteral("Stopped.csr")));
}

void TestAppTokens::pageIsLeftWhileARequestIsSigned()
{
    m_token.control("delay C_Sign * 1500");
    QVERIFY(askForRequest(QStringLiteral("Left Alone"), [this] { m_steps->show("personal"); }));
    // What was asked for is done, and said.
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() >= 0; }));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")));
    QCOMPARE(m_steps->text("toastText"), qtTrId("trivex-app-saved"));
    QVERIFY(savedRequests().contains(QStringLiteral("Left Alone.csr")));
}

void TestAppTokens::pageIsLeftWhileAKeyIsMade()
{
    m_token.control("delay C_GenerateKeyPair * 1500");
    QVERIFY(m_steps->startKey(QStringLiteral("away"), rightPin()));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateCancel")));
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() >= 0; }));
    const QQuickItem *entry = m_window->item(QStringLiteral("token-") + m_token.token().label());
    QVERIFY(m_window->waitFor([&] { return !entry->property("busy").toBool(); }));
    // The key is not lost: the page still has it, ready for its subject.
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Came Back")));
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
}

void TestAppTokens::requestCannotBeWritten()
{
    const QString folder = inHome(QStringLiteral("CertificateRequest"));
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
    return runTokenWindowTest<TestAppTokens, FaultyToken>(argc, argv, QStringLiteral("Токен Б"));
}

#include "tst_app_tokens.moc"
