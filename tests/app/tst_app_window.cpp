// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/support/testtoken.h"

#include <QtTest>

#include <csignal>
#include <sys/resource.h>

using namespace TrivexTest;

namespace {

/// Of the window's own work between two turns of its loop, by the processor's time, which other
/// programs don't use up.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 WorkMs = 400; // instrumented code is several times slower
#else
constexpr qint64 WorkMs = 100;
#endif
/// Less than any wait for a token takes: the window waits for none.
constexpr qint64 StallMs = 2000;

} // namespace

/// One user's day with the window, by mouse and keyboard, over a real software token. The order
/// matters: the token's login lasts, so what needs a PIN question comes first.
class TestAppWindow : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void showsTheToken();
    void bundleWithWrongPassword();
    void pinIsCancelled();
    void pinIsWrong();
    void tokenGoesWhileThePinIsAsked();
    void generationWithWrongPin();
    void wholeLifeOfACertificate();
    void bundleOntoTheToken();
    void exportToAFullDisk();
    void filesFromASecondStart();

private:
    void prepare() override;
    void restore() override;
    /// Answers for the PIN, as long as it is asked for.
    bool importIsDone();

    QString m_bundle;
};

void TestAppWindow::prepare()
{
    m_bundle = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA"), QStringLiteral("-pkeyopt"),
         QStringLiteral("rsa_keygen_bits:2048")},
        QStringLiteral("/CN=Pavel Petrov"), QStringLiteral("секрет"), QStringLiteral("Петров"));
    QVERIFY(!m_bundle.isEmpty());
}

void TestAppWindow::init()
{
    m_window->meter().reset();
}

void TestAppWindow::restore()
{
    const qint64 work = m_window->meter().longestWork();
    qInfo("%s: longest work %lld ms in %d frames", QTest::currentTestFunction(), work,
          m_window->meter().frames());
    QVERIFY2(work <= WorkMs, qPrintable(QStringLiteral("%1 ms of work at a time").arg(work)));
    const qint64 stall = m_window->meter().longestStall();
    QVERIFY2(stall <= StallMs, qPrintable(QStringLiteral("%1 ms without a turn").arg(stall)));
}

bool TestAppWindow::importIsDone()
{
    return m_steps->answerPinUntil(
        rightPin(), [&] { return !m_window->isOpen(QStringLiteral("importDialog")); });
}

void TestAppWindow::showsTheToken()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.label()));
    QVERIFY(m_window->click(QStringLiteral("token-") + m_token.label()));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));
}

void TestAppWindow::bundleWithWrongPassword()
{
    m_steps->openFile(m_bundle);
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(!m_window->item(QStringLiteral("importAccept"))->isEnabled());
    // The first, empty try has ended, and the dialog has its size.
    QVERIFY(m_window->waitFor([&] { return !m_steps->text("importProblem").isEmpty(); }));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("wrong")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("importProblem") == qtTrId("trivex-app-bundle-password"); }));
    QVERIFY(!m_window->item(QStringLiteral("importAccept"))->isEnabled());
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppWindow::pinIsCancelled()
{
    m_steps->openFile(m_authority.certificateFile());
    QVERIFY(m_window->waitForItem(QStringLiteral("importAccept")));
    QVERIFY(m_window->waitFor(
        [&] { return m_window->item(QStringLiteral("importAccept"))->isEnabled(); }));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    QCOMPARE(m_steps->text("pinTokenName"), m_token.label());
    // Nothing typed, nothing sent.
    QVERIFY(!m_window->item(QStringLiteral("pinAccept"))->isEnabled());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("pinPromptDialog"));
    QVERIFY(m_window->waitFor([&] { return !m_steps->text("importFailure").isEmpty(); }));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QCOMPARE(m_token.objectCount(), 0);
}

void TestAppWindow::pinIsWrong()
{
    m_steps->openFile(m_authority.certificateFile());
    QVERIFY(m_window->waitForItem(QStringLiteral("importAccept")));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_steps->answerPin(QStringLiteral("999999")));
    // Asked again in the same place, and nothing is sent by itself: it is left without an error.
    QTRY_COMPARE(m_steps->text("pinWrong"), qtTrId("trivex-app-pin-wrong"));
    QVERIFY(m_steps->text("pinField").isEmpty());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("pinPromptDialog"));
    QVERIFY(m_window->waitFor([&] { return !m_steps->text("importFailure").isEmpty(); }));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QCOMPARE(m_token.objectCount(), 0);
}

void TestAppWindow::tokenGoesWhileThePinIsAsked()
{
    m_steps->openFile(m_authority.certificateFile());
    QVERIFY(m_window->waitForItem(QStringLiteral("importAccept")));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    m_token.removeModule();
    const bool closed = m_window->waitFor(
        [&] { return !m_window->isOpen(QStringLiteral("pinPromptDialog")); }, 10000);
    m_token.restoreModule();
    QVERIFY(closed);
    // What has become of it is said, in one of two places.
    QVERIFY(m_window->waitFor([&] {
        return m_window->isOpen(QStringLiteral("errorDialog"))
            || !m_steps->text("importFailure").isEmpty();
    }));
    if (m_window->isOpen(QStringLiteral("errorDialog")))
        m_window->click(QStringLiteral("errorClose"));
    QVERIFY(m_steps->waitClosed("errorDialog"));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    // The token is back and usable without a restart.
    m_steps->openFile(m_authority.certificateFile());
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
}

void TestAppWindow::generationWithWrongPin()
{
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_window->fill(QStringLiteral("keyNameInput"), QStringLiteral("first")));
    QVERIFY(m_window->fill(QStringLiteral("generatePin"), QStringLiteral("999999")));
    QVERIFY(m_window->click(QStringLiteral("generateButton")));
    QVERIFY(m_steps->waitOpen("errorDialog"));
    QCOMPARE(m_steps->text("errorCause"), qtTrId("trivex-app-cause-wrong-pin"));
    QVERIFY(m_window->click(QStringLiteral("errorClose")));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateButton")));
    QCOMPARE(m_token.objectCount(), 0);
}

void TestAppWindow::wholeLifeOfACertificate()
{
    // A key and a request.
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_window->fill(QStringLiteral("keyNameInput"), QStringLiteral("first")));
    QVERIFY(m_window->fill(QStringLiteral("generatePin"), rightPin()));
    QVERIFY(m_window->click(QStringLiteral("generateButton")));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Иванова Мария")));
    QVERIFY(m_steps->chooseProfile(4));
    QCOMPARE(m_steps->text("commonNameInput"), QStringLiteral("Иванова Мария"));
    QVERIFY(m_window->fill(QStringLiteral("innInput"), QStringLiteral("7707083894")));
    QVERIFY(!m_window->item(QStringLiteral("innField"))->property("flag").toString().isEmpty());
    m_window->key(Qt::Key_Backspace);
    m_window->type(QStringLiteral("3"));
    QVERIFY(m_window->item(QStringLiteral("innField"))->property("flag").toString().isEmpty());
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    const QString request = inHome(QStringLiteral("CertificateRequest/Иванова Мария.csr"));
    QVERIFY(QFile::exists(request));
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 1; }));

    // Its certificate comes and the request is done.
    const QByteArray issued = m_authority.issueForRequest(request);
    QVERIFY(!issued.isEmpty());
    m_steps->openFile(writeTestFile(inHome(QStringLiteral("issued.bin")), issued));
    QVERIFY(m_window->waitForItem(QStringLiteral("importAccept")));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(importIsDone());
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->waitFor(
        [&] { return m_window->rowNamed(QStringLiteral("Иванова Мария")) >= 0; }));
    QVERIFY(m_window->waitFor([&] { return !QFile::exists(request); }));
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));

    // It signs a document, and the signature is good.
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Иванова Мария"))));
    QVERIFY(m_window->click(QStringLiteral("signButton")));
    QVERIFY(m_window->waitForItem(QStringLiteral("signPage")));
    const QString document = writeTestFile(inHome(QStringLiteral("letter.txt")), "Dear all,\n");
    QVERIFY(m_steps->chooseForm(Steps::Raw));
    m_steps->openFile(document);
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_steps->answerPinUntil(
        rightPin(), [&] { return m_steps->text("signResult") == qtTrId("trivex-app-signed"); }));
    QCOMPARE(QFileInfo(document + QStringLiteral(".sig")).size(), 256);
    QVERIFY(m_steps->press("doVerify"));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-verified"); }));

    // It is removed with its key.
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Иванова Мария"))));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QVERIFY(m_steps->answerPinUntil(
        rightPin(), [&] { return m_window->rowNamed(QStringLiteral("Иванова Мария")) < 0; }));
    QCOMPARE(m_token.objectCount(), 0);
}

void TestAppWindow::bundleOntoTheToken()
{
    m_steps->openFile(m_bundle);
    QVERIFY(m_steps->waitOpen("importDialog"));
    // The first, empty try has ended, and the dialog has its size.
    QVERIFY(m_window->waitFor([&] { return !m_steps->text("importProblem").isEmpty(); }));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("секрет")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(importIsDone());
    QVERIFY(m_steps->show("personal"));
    QVERIFY(
        m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Pavel Petrov")) >= 0; }));
}

void TestAppWindow::exportToAFullDisk()
{
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Pavel Petrov"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QDir(home()).mkdir(QStringLiteral("out"));
    const QString folder = inHome(QStringLiteral("out"));
    QObject *pane = m_window->object(QStringLiteral("detailsPane"));
    QVERIFY(pane);
    // No byte may be written: what a full disk does to a file that could be opened.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    QMetaObject::invokeMethod(pane, "exportTo", Q_ARG(QVariant, folder));
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY(m_steps->waitOpen("errorDialog"));
    QCOMPARE(m_steps->text("errorCause"), qtTrId("trivex-app-export-failed"));
    QVERIFY(!m_steps->text("errorAdvice").isEmpty());
    QVERIFY(m_window->click(QStringLiteral("errorClose")));
    QVERIFY(m_steps->waitClosed("errorDialog"));
    // With room it works.
    QMetaObject::invokeMethod(pane, "exportTo", Q_ARG(QVariant, folder));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")));
    QVERIFY(QFileInfo(folder + QStringLiteral("/Pavel Petrov.crt")).size() > 0);
}

void TestAppWindow::filesFromASecondStart()
{
    // Its own, whichever tests came before.
    m_window->application().activate(
        {writeTestFile(inHome(QStringLiteral("second.txt")), "Dear all,\n")});
    QVERIFY(m_window->waitForItem(QStringLiteral("signPage")));
    m_window->application().activate({m_authority.certificateFile()});
    QVERIFY(m_steps->waitOpen("importDialog"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppWindow, TestToken>(argc, argv, QStringLiteral("Токен А"));
}

#include "tst_app_window.moc"
