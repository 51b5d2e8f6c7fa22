// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QtTest>

using namespace TrivexTest;

namespace {

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

/// Where the keys go, and what they do, where the mouse is never touched.
class TestAppKeys : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void helpByF1();
    void manualBySections();
    void enterPressesTheMainButton();
    void typingGoesToTheFirstField();
    void typedPathLeavesNoPopup();

private:
    QString focused() const;
    bool tabTo(const char *name, int most = 80);
    /// Goes to a line of the side bar and opens it.
    bool go(const char *category);
    bool openPath(const QString &path);
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
        || !QTest::qWaitForWindowActive(fileDialog()))
        return false;
    auto *name = fileDialog()->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (!name)
        return false;
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, path, Qt::NoModifier, 1);
    // The first press may choose among the completions instead.
    for (int i = 0; i < 3 && fileDialog(); ++i) {
        QTest::keyClick(name, Qt::Key_Return);
        m_window->waitFor([] { return !fileDialog(); }, 3000);
    }
    return !fileDialog()
        && m_window->waitFor([&] { return m_window->window()->activeFocusItem() != nullptr; });
}

void TestAppKeys::helpByF1()
{
    m_window->key(Qt::Key_F1);
    QVERIFY(m_steps->waitOpen("manualDialog", 3000));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("manualDialog"));
    // By its button too.
    QVERIFY(tabTo("helpButton"));
    m_window->key(Qt::Key_Space);
    QVERIFY(m_steps->waitOpen("manualDialog", 3000));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("manualDialog"));
}

void TestAppKeys::manualBySections()
{
    m_window->key(Qt::Key_F1);
    QVERIFY(m_steps->waitOpen("manualDialog", 3000));
    QQuickItem *chooser = m_window->item(QStringLiteral("manualSections"));
    const QQuickItem *text = m_window->item(QStringLiteral("manualText"));
    QVERIFY(chooser && text);
    QTRY_VERIFY(chooser->hasActiveFocus());
    const int count = chooser->property("count").toInt();
    QVERIFY(count > 8);
    QSet<QString> seen;
    int pictures = 0;
    for (int i = 0; i < count; ++i) {
        QTRY_COMPARE(chooser->property("currentIndex").toInt(), i);
        const QString shown = text->property("text").toString();
        QVERIFY(shown.size() > 100);
        seen += shown;
        // A picture that is not there is drawn as a small mark.
        if (shown.contains(QLatin1String("<img"))) {
            ++pictures;
            QVERIFY(text->property("contentHeight").toReal() > 300);
        }
        QVERIFY(text->property("contentWidth").toReal() <= text->width());
        m_window->key(Qt::Key_Down);
    }
    QCOMPARE(seen.size(), count);
    QCOMPARE(pictures, 5);
    QVERIFY(m_window->click(QStringLiteral("manualKeys")));
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

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppKeys, TestToken>(argc, argv, QStringLiteral("Keys"));
}

#include "tst_app_keys.moc"
