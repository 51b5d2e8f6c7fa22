// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QtTest>

using namespace TrivexTest;

namespace {

QFileDialog *fileDialog()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

QStringList openPopups()
{
    QStringList names;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets) {
        if (widget->isVisible() && (widget->windowFlags() & Qt::Popup) == Qt::Popup)
            names += QLatin1String(widget->metaObject()->className());
    }
    return names;
}

} // namespace

/// Everything that one does with a certificate, by keyboard alone: the mouse is never touched.
class TestAppKeys : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void helpByF1();
    void enterPressesTheMainButton();
    void typingGoesToTheFirstField();
    void typedPathLeavesNoPopup();
    void wholeLife();

private:
    QString focused() const;
    bool tabTo(const char *name, int most = 80);
    /// Goes to a line of the side bar and opens it.
    bool go(const char *category);
    bool openPath(const QString &path);
    /// Types the PIN when it is asked for, until `done` holds.
    bool typePinUntil(const std::function<bool()> &done);
    bool chooseRow(const QString &name);
    void makeRequest();
    void importIssued();
    void signAndVerify();
    void exportAndRemove();
};

void TestAppKeys::init()
{
    m_window->window()->requestActivate();
    QVERIFY(m_window->waitForItem(QStringLiteral("sidebar")));
}

QString TestAppKeys::focused() const
{
    const QQuickItem *item = m_window->window()->activeFocusItem();
    return item ? describeItem(item) : QString();
}

bool TestAppKeys::tabTo(const char *name, int most)
{
    for (int i = 0; i < most; ++i) {
        const QQuickItem *wanted = m_window->item(QLatin1String(name));
        if (wanted && wanted->hasActiveFocus())
            return true;
        m_window->key(Qt::Key_Tab);
    }
    return false;
}

bool TestAppKeys::go(const char *category)
{
    if (!tabTo(qPrintable(QStringLiteral("category-") + QLatin1String(category))))
        return false;
    m_window->key(Qt::Key_Return);
    return m_window->waitFor([&] {
        return m_window->window()->property("current").toString() == QLatin1String(category);
    });
}

bool TestAppKeys::openPath(const QString &path)
{
    if (!m_window->waitFor([] { return fileDialog() != nullptr; })
        || !QTest::qWaitForWindowExposed(fileDialog()))
        return false;
    auto *name = fileDialog()->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (!name)
        return false;
    fileDialog()->activateWindow();
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, path, Qt::NoModifier, 1);
    QTest::keyClick(name, Qt::Key_Return);
    if (!m_window->waitFor([] { return !fileDialog(); }))
        return false;
    // What a window manager would do; there is none on this display.
    m_window->window()->requestActivate();
    const bool active = QTest::qWaitForWindowActive(m_window->window());
    QFocusEvent focus(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(m_window->window(), &focus);
    return active;
}

bool TestAppKeys::typePinUntil(const std::function<bool()> &done)
{
    return m_window->waitFor(
        [&] {
            for (const char *dialog : {"pinPromptDialog", "signPinDialog"}) {
                if (!m_window->isOpen(QLatin1String(dialog)))
                    continue;
                m_window->type(rightPin());
                m_window->key(Qt::Key_Return);
                m_steps->waitClosed(dialog);
            }
            return done();
        },
        30000);
}

bool TestAppKeys::chooseRow(const QString &name)
{
    if (!m_window->waitFor([&] { return m_window->rowNamed(name) >= 0; })
        || !tabTo("certificateList"))
        return false;
    m_window->key(Qt::Key_Home);
    for (int row = m_window->rowNamed(name); row > 0; --row)
        m_window->key(Qt::Key_Down);
    return true;
}

void TestAppKeys::helpByF1()
{
    m_window->key(Qt::Key_F1);
    QVERIFY(m_steps->waitOpen("helpDialog", 3000));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("helpDialog"));
    // By its button too.
    QVERIFY(tabTo("helpButton"));
    m_window->key(Qt::Key_Space);
    QVERIFY(m_steps->waitOpen("helpDialog", 3000));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("helpDialog"));
}

void TestAppKeys::enterPressesTheMainButton()
{
    QVERIFY(tabTo("settingsButton"));
    m_window->key(Qt::Key_Space);
    QVERIFY(m_steps->waitOpen("settingsDialog"));
    QTRY_VERIFY(m_window->item(QStringLiteral("colours-0"))->hasActiveFocus());
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("settingsDialog", 3000));
}

void TestAppKeys::typingGoesToTheFirstField()
{
    m_window->key(Qt::Key_N, Qt::ControlModifier);
    QVERIFY(m_steps->waitEnabled("keyNameInput"));
    QTRY_VERIFY2(m_window->item(QStringLiteral("keyNameInput"))->hasActiveFocus(),
                 qPrintable(focused()));
    m_window->type(QStringLiteral("typed"));
    QCOMPARE(m_steps->text("keyNameInput"), QStringLiteral("typed"));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->item(QStringLiteral("generatePin"))->hasActiveFocus());
    QVERIFY(go("sign"));
    QTRY_VERIFY2(m_window->item(QStringLiteral("chooseDocument"))->hasActiveFocus(),
                 qPrintable(focused()));
    QVERIFY(go("personal"));
    QTRY_VERIFY2(m_window->item(QStringLiteral("certificateList"))->hasActiveFocus(),
                 qPrintable(focused()));
}

void TestAppKeys::typedPathLeavesNoPopup()
{
    const QString path =
        writeTestFile(inHome(QStringLiteral("typed/ca.crt")), toPem(m_authority.certificate()));
    QVERIFY(!path.isEmpty());
    m_window->key(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(openPath(path));
    QVERIFY(m_steps->waitOpen("importDialog"));
    QTRY_VERIFY2(openPopups().isEmpty(), qPrintable(openPopups().join(QLatin1Char(' '))));
    // The completion comes late where the folder is read slowly.
    QTest::qWait(500);
    QVERIFY2(openPopups().isEmpty(), qPrintable(openPopups().join(QLatin1Char(' '))));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppKeys::makeRequest()
{
    QVERIFY2(go("newRequest"), qPrintable(focused()));
    QTRY_VERIFY(m_window->item(QStringLiteral("keyNameInput"))
                && m_window->item(QStringLiteral("keyNameInput"))->hasActiveFocus());
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    m_window->type(QStringLiteral("by keyboard"));
    m_window->key(Qt::Key_Return);
    m_window->type(rightPin());
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitForKey());
    QTRY_VERIFY2(m_window->item(QStringLiteral("commonNameInput"))->hasActiveFocus(),
                 qPrintable(focused()));
    m_window->type(QStringLiteral("Keyboard"));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    QVERIFY(QFile::exists(inHome(QStringLiteral("CertificateRequest/Keyboard.csr"))));
}

void TestAppKeys::importIssued()
{
    const QByteArray issued =
        m_authority.issueForRequest(inHome(QStringLiteral("CertificateRequest/Keyboard.csr")));
    QVERIFY(!issued.isEmpty());
    const QString path = writeTestFile(inHome(QStringLiteral("issued.crt")), issued);
    m_window->key(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(openPath(path));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    m_window->key(Qt::Key_Return);
    QVERIFY(typePinUntil([&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
    QVERIFY(go("personal"));
    QVERIFY(chooseRow(QStringLiteral("Keyboard")));
}

void TestAppKeys::signAndVerify()
{
    const QString document = writeTestFile(inHome(QStringLiteral("letter.txt")), "Dear all,\n");
    m_window->key(Qt::Key_Return);
    QVERIFY(tabTo("signButton"));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("signPage")));
    QVERIFY(tabTo("chooseDocument"));
    m_window->key(Qt::Key_Return);
    QVERIFY(openPath(document));
    QVERIFY(m_steps->waitEnabled("doSign"));
    QVERIFY(tabTo("doSign"));
    m_window->key(Qt::Key_Return);
    QVERIFY(
        typePinUntil([&] { return m_steps->text("signResult") == qtTrId("trivex-app-signed"); }));
    QCOMPARE(QFileInfo(document + QStringLiteral(".sig")).size(), 256);
    QVERIFY(tabTo("doVerify"));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-verified"); }));
}

void TestAppKeys::exportAndRemove()
{
    QVERIFY(go("personal"));
    QVERIFY(chooseRow(QStringLiteral("Keyboard")));
    m_window->key(Qt::Key_Menu);
    QVERIFY(m_steps->waitOpen("rowMenu"));
    for (int i = 0; i < 10
         && !m_window->item(QStringLiteral("rowMenuExport"))->property("highlighted").toBool();
         ++i)
        m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Return);
    const QString exported = inHome(QStringLiteral("exported.crt"));
    QVERIFY(openPath(exported));
    QTRY_VERIFY(QFile::exists(exported));
    QVERIFY(chooseRow(QStringLiteral("Keyboard")));
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(tabTo("removeConfirm"));
    m_window->key(Qt::Key_Return);
    QVERIFY(typePinUntil([&] { return m_window->rowNamed(QStringLiteral("Keyboard")) < 0; }));
    QCOMPARE(m_token.objectCount(), 0);
}

void TestAppKeys::wholeLife()
{
    for (const auto step : {&TestAppKeys::makeRequest, &TestAppKeys::importIssued,
                            &TestAppKeys::signAndVerify, &TestAppKeys::exportAndRemove}) {
        (this->*step)();
        if (QTest::currentTestFailed())
            return;
    }
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppKeys, TestToken>(argc, argv, QStringLiteral("Keys"));
}

#include "tst_app_keys.moc"
