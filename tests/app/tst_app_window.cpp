// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/harness.h"
#include "tests/app/windowmain.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QClipboard>
#include <QLocale>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

using namespace TrivexTest;

namespace {

WindowEnvironment *environment = nullptr;
TestToken *token = nullptr;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 FrameMs = 400; // instrumented code is several times slower
#else
constexpr qint64 FrameMs = 100;
#endif

QString write(const QString &name, const QByteArray &contents)
{
    const QString path = environment->file(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        qFatal("can't write %s", qPrintable(path));
    return path;
}

} // namespace

/// One user's day with the window, by mouse and keyboard, over a real software token. The order
/// matters: the token's login lasts, so what needs a PIN question comes first.
class TestAppWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

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
    void openFile(const QString &path);
    void show(const char *category);
    bool answerPin(const QString &pin, const char *dialog = "pinPromptDialog");
    QString noticeText(const char *name) const;

    TestAuthority m_authority;
    std::unique_ptr<WindowDriver> m_window;
    QString m_bundle;
};

void TestAppWindow::initTestCase()
{
    QVERIFY(m_authority.isValid());
    m_bundle = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA"), QStringLiteral("-pkeyopt"),
         QStringLiteral("rsa_keygen_bits:2048")},
        QStringLiteral("/CN=Pavel Petrov"), QStringLiteral("секрет"), QStringLiteral("Петров"));
    QVERIFY(!m_bundle.isEmpty());
    m_window = std::make_unique<WindowDriver>();
    m_window->takeWarnings();
}

void TestAppWindow::init()
{
    m_window->meter().reset();
}

void TestAppWindow::cleanup()
{
    const QStringList warnings = m_window->takeWarnings();
    const qint64 frame = m_window->meter().longestFrame();
    qInfo("%s: longest frame %lld ms, longest stall %lld ms (%lld ms of it own work), %d frames",
          QTest::currentTestFunction(), frame, m_window->meter().longestStall(),
          m_window->meter().longestWork(), m_window->meter().frames());
    if (QTest::currentTestFailed())
        m_window->window()->grabWindow().save(QDir::temp().filePath(
            QStringLiteral("trivex-%1.png").arg(QLatin1String(QTest::currentTestFunction()))));
    for (int i = 0; i < 3; ++i)
        m_window->key(Qt::Key_Escape);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
    QVERIFY2(frame <= FrameMs, qPrintable(QStringLiteral("a frame took %1 ms").arg(frame)));
    // Between two frames, too, the window has to be there for whoever uses it.
    const qint64 work = m_window->meter().longestWork();
    QVERIFY2(work <= FrameMs, qPrintable(QStringLiteral("%1 ms of work at a time").arg(work)));
}

void TestAppWindow::cleanupTestCase()
{
    m_window.reset();
}

void TestAppWindow::openFile(const QString &path)
{
    m_window->application().activate({path});
}

void TestAppWindow::show(const char *category)
{
    const QString name = QStringLiteral("category-") + QLatin1String(category);
    QVERIFY2(m_window->click(name), category);
    QTest::qWait(50);
}

bool TestAppWindow::answerPin(const QString &pin, const char *dialog)
{
    if (!m_window->waitFor([&] { return m_window->isOpen(QLatin1String(dialog)); }))
        return false;
    return m_window->fill(QStringLiteral("pinField"), pin)
        && m_window->click(QStringLiteral("pinAccept"));
}

QString TestAppWindow::noticeText(const char *name) const
{
    const QQuickItem *notice = m_window->item(QLatin1String(name));
    return notice ? notice->property("text").toString() : QString();
}

void TestAppWindow::showsTheToken()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + token->label()));
    QVERIFY(m_window->click(QStringLiteral("token-") + token->label()));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));
}

void TestAppWindow::bundleWithWrongPassword()
{
    openFile(m_bundle);
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(QStringLiteral("importDialog")); }));
    QVERIFY(!m_window->item(QStringLiteral("importAccept"))->isEnabled());
    // The first, empty try has ended, and the dialog has its size.
    QVERIFY(m_window->waitFor([&] { return !noticeText("importProblem").isEmpty(); }));
    QTest::qWait(100);
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("wrong")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor(
        [&] { return noticeText("importProblem") == qtTrId("trivex-app-bundle-password"); }));
    QVERIFY(!m_window->item(QStringLiteral("importAccept"))->isEnabled());
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_window->waitFor([&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
}

void TestAppWindow::pinIsCancelled()
{
    openFile(m_authority.certificateFile());
    QVERIFY(m_window->waitForItem(QStringLiteral("importAccept")));
    QVERIFY(m_window->waitFor(
        [&] { return m_window->item(QStringLiteral("importAccept"))->isEnabled(); }));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(QStringLiteral("pinPromptDialog")); }));
    QCOMPARE(m_window->item(QStringLiteral("pinTokenName"))->property("text").toString(),
             token->label());
    // Nothing typed, nothing sent.
    QVERIFY(!m_window->item(QStringLiteral("pinAccept"))->isEnabled());
    m_window->key(Qt::Key_Escape);
    QVERIFY(
        m_window->waitFor([&] { return !m_window->isOpen(QStringLiteral("pinPromptDialog")); }));
    QVERIFY(m_window->waitFor([&] { return !noticeText("importFailure").isEmpty(); }));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QCOMPARE(token->objectCount(), 0);
}

void TestAppWindow::pinIsWrong()
{
    openFile(m_authority.certificateFile());
    QVERIFY(m_window->waitForItem(QStringLiteral("importAccept")));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(answerPin(QStringLiteral("999999")));
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(QStringLiteral("errorDialog")); }));
    QCOMPARE(m_window->item(QStringLiteral("errorCause"))->property("text").toString(),
             qtTrId("trivex-app-cause-wrong-pin"));
    // Asked once, never again by itself.
    QTest::qWait(500);
    QVERIFY(!m_window->isOpen(QStringLiteral("pinPromptDialog")));
    QVERIFY(m_window->click(QStringLiteral("errorReport")));
    QVERIFY(!QGuiApplication::clipboard()->text().contains(QStringLiteral("999999")));
    QVERIFY(QGuiApplication::clipboard()->text().contains(QStringLiteral("C_Login")));
    // It may go to anybody: not whose token and not whose computer.
    QVERIFY(!QGuiApplication::clipboard()->text().contains(token->label()));
    QVERIFY(!QGuiApplication::clipboard()->text().contains(environment->home()));
    QVERIFY(m_window->click(QStringLiteral("errorClose")));
    QVERIFY(m_window->waitFor([&] { return !m_window->isOpen(QStringLiteral("errorDialog")); }));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QCOMPARE(token->objectCount(), 0);
}

void TestAppWindow::tokenGoesWhileThePinIsAsked()
{
    openFile(m_authority.certificateFile());
    QVERIFY(m_window->waitForItem(QStringLiteral("importAccept")));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(QStringLiteral("pinPromptDialog")); }));
    token->removeModule();
    const bool closed = m_window->waitFor(
        [&] { return !m_window->isOpen(QStringLiteral("pinPromptDialog")); }, 10000);
    token->restoreModule();
    QVERIFY(closed);
    QTest::qWait(300);
    if (m_window->isOpen(QStringLiteral("errorDialog")))
        m_window->click(QStringLiteral("errorClose"));
    QVERIFY(m_window->waitFor([&] { return !m_window->isOpen(QStringLiteral("errorDialog")); }));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    // The token is back and usable without a restart.
    QVERIFY(m_window->waitFor([&] {
        openFile(m_authority.certificateFile());
        QTest::qWait(200);
        const QQuickItem *accept = m_window->item(QStringLiteral("importAccept"));
        const bool ready = accept && accept->isEnabled();
        m_window->click(QStringLiteral("importCancel"));
        return ready;
    }));
}

void TestAppWindow::generationWithWrongPin()
{
    show("newRequest");
    QVERIFY(m_window->fill(QStringLiteral("keyNameInput"), QStringLiteral("first")));
    QVERIFY(m_window->fill(QStringLiteral("generatePin"), QStringLiteral("999999")));
    QVERIFY(m_window->click(QStringLiteral("generateButton")));
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(QStringLiteral("errorDialog")); }));
    QCOMPARE(m_window->item(QStringLiteral("errorCause"))->property("text").toString(),
             qtTrId("trivex-app-cause-wrong-pin"));
    QVERIFY(m_window->click(QStringLiteral("errorClose")));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateButton")));
    QCOMPARE(token->objectCount(), 0);
}

void TestAppWindow::wholeLifeOfACertificate()
{
    // A key and a request.
    show("newRequest");
    QVERIFY(m_window->fill(QStringLiteral("keyNameInput"), QStringLiteral("first")));
    QVERIFY(m_window->fill(QStringLiteral("generatePin"), QString::fromLatin1(TestToken::pin())));
    QVERIFY(m_window->click(QStringLiteral("generateButton")));
    QVERIFY(m_window->waitFor(
        [&] {
            const QQuickItem *field = m_window->item(QStringLiteral("commonNameInput"));
            return field && field->isEnabled();
        },
        60000));
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Иванова Мария")));
    QVERIFY(m_window->fill(QStringLiteral("innInput"), QStringLiteral("7707083894")));
    QVERIFY(!m_window->item(QStringLiteral("innField"))->property("flag").toString().isEmpty());
    m_window->key(Qt::Key_Backspace);
    m_window->type(QStringLiteral("3"));
    QVERIFY(m_window->item(QStringLiteral("innField"))->property("flag").toString().isEmpty());
    auto *button = m_window->item(QStringLiteral("createRequest"));
    QVERIFY(button && button->isEnabled());
    button->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    const QString request =
        environment->file(QStringLiteral("CertificateRequest/Иванова Мария.csr"));
    QVERIFY(QFile::exists(request));
    show("requests");
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 1; }));

    // Its certificate comes and the request is done.
    const QByteArray issued = m_authority.issueForRequest(request);
    QVERIFY(!issued.isEmpty());
    openFile(write(QStringLiteral("issued.bin"), issued));
    QVERIFY(m_window->waitForItem(QStringLiteral("importAccept")));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_window->waitFor([&] {
        if (m_window->isOpen(QStringLiteral("pinPromptDialog")))
            answerPin(QString::fromLatin1(TestToken::pin()));
        return !m_window->isOpen(QStringLiteral("importDialog"));
    }));
    show("personal");
    QVERIFY(m_window->waitFor(
        [&] { return m_window->rowNamed(QStringLiteral("Иванова Мария")) >= 0; }));
    QVERIFY(m_window->waitFor([&] { return !QFile::exists(request); }));
    show("requests");
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));

    // It signs a document, and the signature is good.
    show("personal");
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Иванова Мария"))));
    QVERIFY(m_window->click(QStringLiteral("signButton")));
    QVERIFY(m_window->waitForItem(QStringLiteral("signPage")));
    const QString document = write(QStringLiteral("letter.txt"), "Dear all,\n");
    openFile(document);
    QVERIFY(m_window->waitFor([&] {
        const QQuickItem *sign = m_window->item(QStringLiteral("doSign"));
        return sign && sign->isEnabled();
    }));
    m_window->item(QStringLiteral("doSign"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor([&] {
        if (m_window->isOpen(QStringLiteral("signPinDialog")))
            answerPin(QString::fromLatin1(TestToken::pin()), "signPinDialog");
        return noticeText("signResult") == qtTrId("trivex-app-signed");
    }));
    QCOMPARE(QFileInfo(document + QStringLiteral(".sig")).size(), 256);
    m_window->item(QStringLiteral("doVerify"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor(
        [&] { return noticeText("signResult") == qtTrId("trivex-app-verified"); }));

    // It is removed with its key.
    show("personal");
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Иванова Мария"))));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QVERIFY(m_window->waitFor([&] {
        if (m_window->isOpen(QStringLiteral("pinPromptDialog")))
            answerPin(QString::fromLatin1(TestToken::pin()));
        return m_window->rowNamed(QStringLiteral("Иванова Мария")) < 0;
    }));
    QCOMPARE(token->objectCount(), 0);
}

void TestAppWindow::bundleOntoTheToken()
{
    openFile(m_bundle);
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(QStringLiteral("importDialog")); }));
    // The first, empty try has ended, and the dialog has its size.
    QVERIFY(m_window->waitFor([&] { return !noticeText("importProblem").isEmpty(); }));
    QTest::qWait(100);
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("секрет")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor([&] {
        const QQuickItem *accept = m_window->item(QStringLiteral("importAccept"));
        return accept && accept->isEnabled();
    }));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_window->waitFor([&] {
        if (m_window->isOpen(QStringLiteral("pinPromptDialog")))
            answerPin(QString::fromLatin1(TestToken::pin()));
        return !m_window->isOpen(QStringLiteral("importDialog"));
    }));
    show("personal");
    QVERIFY(
        m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Pavel Petrov")) >= 0; }));
}

void TestAppWindow::exportToAFullDisk()
{
    show("personal");
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Pavel Petrov"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QDir(environment->home()).mkdir(QStringLiteral("out"));
    const QString folder = environment->file(QStringLiteral("out"));
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
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(QStringLiteral("errorDialog")); }));
    QCOMPARE(m_window->item(QStringLiteral("errorCause"))->property("text").toString(),
             qtTrId("trivex-app-export-failed"));
    QVERIFY(!m_window->item(QStringLiteral("errorAdvice"))->property("text").toString().isEmpty());
    QVERIFY(m_window->click(QStringLiteral("errorClose")));
    QVERIFY(m_window->waitFor([&] { return !m_window->isOpen(QStringLiteral("errorDialog")); }));
    // With room it works.
    QMetaObject::invokeMethod(pane, "exportTo", Q_ARG(QVariant, folder));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")));
    QVERIFY(QFileInfo(folder + QStringLiteral("/Pavel Petrov.crt")).size() > 0);
}

void TestAppWindow::filesFromASecondStart()
{
    m_window->application().activate({environment->file(QStringLiteral("letter.txt"))});
    QVERIFY(m_window->waitForItem(QStringLiteral("signPage")));
    m_window->application().activate({m_authority.certificateFile()});
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(QStringLiteral("importDialog")); }));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_window->waitFor([&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    TestToken software(QStringLiteral("Токен А"));
    return TrivexTest::runWindowTest<TestAppWindow>(argc, argv,
                                                    {display.problem(), software.problem()}, [&] {
                                                        software.useInThisProcess();
                                                        environment = &display;
                                                        token = &software;
                                                    });
}

#include "tst_app_window.moc"
