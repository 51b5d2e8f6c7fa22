// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"

#include <QClipboard>
#include <QtTest>

using namespace TrivexTest;

/// The window that has nothing in it yet, and the menus of its fields.
class TestAppStart : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void namesTheToken();
    void offers_data();
    void offers();
    void offersStayInTheirPlace();
    void emptyListsOfferWhatFillsThem_data();
    void emptyListsOfferWhatFillsThem();
    void menuByTheRightButton();
    void menuByKeys_data();
    void menuByKeys();
    void secretsAreNotCopied();

private:
    void arrive() override;
    QString current() const { return m_window->window()->property("current").toString(); }
    bool rightClick(const char *name);
    bool choose(const char *action);
    QString value(const char *field) const;
    bool isEnabled(const char *action) const;
};

void TestAppStart::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.label()));
}

void TestAppStart::init()
{
    QVERIFY(m_steps->show("personal"));
}

bool TestAppStart::rightClick(const char *name)
{
    const QQuickItem *item = m_window->item(QLatin1String(name));
    if (!item)
        return false;
    const QPoint middle = item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    QTest::mouseClick(m_window->window(), Qt::RightButton, Qt::NoModifier, middle);
    return m_window->waitForItem(QStringLiteral("textSelectAll")) && m_window->waitUntilStill();
}

bool TestAppStart::choose(const char *action)
{
    return m_window->click(QLatin1String(action))
        && m_window->waitFor([&] { return !m_window->item(QLatin1String(action)); });
}

QString TestAppStart::value(const char *field) const
{
    return m_window->item(QLatin1String(field))->property("text").toString();
}

bool TestAppStart::isEnabled(const char *action) const
{
    const QQuickItem *item = m_window->item(QLatin1String(action));
    return item && item->isEnabled();
}

void TestAppStart::namesTheToken()
{
    // As long as rows may still come, the page says that instead.
    QVERIFY(m_window->waitForItem(QStringLiteral("startOpen")));
    QStringList texts;
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        if (item->isVisible())
            texts += item->property("text").toString();
    });
    QVERIFY(texts.contains(qtTrId("trivex-app-start-title")));
    QVERIFY2(texts.contains(qtTrId("trivex-app-start-token").arg(m_token.label())),
             qPrintable(texts.join(QLatin1Char('\n'))));
}

void TestAppStart::offers_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("page");
    QTest::addColumn<bool>("byKeyboard");
    for (const bool byKeyboard : {false, true}) {
        const char *how = byKeyboard ? "keyboard" : "mouse";
        QTest::addRow("new request, %s", how)
            << QStringLiteral("emptyAction") << QStringLiteral("newRequest") << byKeyboard;
        QTest::addRow("open a file, %s", how)
            << QStringLiteral("startOpen") << QStringLiteral("sign") << byKeyboard;
        QTest::addRow("import, %s", how)
            << QStringLiteral("startImport") << QStringLiteral("personal") << byKeyboard;
    }
}

void TestAppStart::offers()
{
    QFETCH(QString, button);
    QFETCH(QString, page);
    QFETCH(bool, byKeyboard);
    QVERIFY(m_window->waitForItem(button));
    if (byKeyboard) {
        for (int i = 0; i < 60 && !m_window->item(button)->hasActiveFocus(); ++i)
            m_window->key(Qt::Key_Tab);
        QVERIFY(m_window->item(button)->hasActiveFocus());
        m_window->key(Qt::Key_Return);
    } else {
        QVERIFY(m_window->click(button));
    }
    if (page == QLatin1String("personal"))
        QVERIFY(answerFileDialog(*m_window, {}, false));
    QTRY_COMPARE(current(), page);
}

/// A window on a very small screen is lower than it asks for.
void TestAppStart::offersStayInTheirPlace()
{
    QQuickWindow *window = m_window->window();
    const auto restore = qScopeGuard([=, size = window->size(), least = window->minimumSize()] {
        window->setMinimumSize(least);
        window->resize(size);
        m_window->waitUntilStill();
    });
    window->setMinimumSize({0, 0});
    window->resize(360, 260);
    QVERIFY(m_window->waitForItem(QStringLiteral("startOpen")));
    QVERIFY(m_window->waitUntilStill());
    QQuickItem *const last = m_window->item(QStringLiteral("startOpen"));
    QQuickItem *place = last;
    while (place && !place->property("actionText").isValid())
        place = place->parentItem();
    QVERIFY(place);
    // It may be scrolled already, to what had the keys before.
    const QQuickItem *page = last;
    while (page != place && !page->property("contentY").isValid())
        page = page->parentItem();
    const qreal scrolled = page->property("contentY").toReal();
    // Else it would all have room, and show nothing.
    QVERIFY(place->mapFromItem(last, {0, last->height()}).y() + scrolled > place->height());
    bool isOver = false;
    visitItems(place, [&](QQuickItem *item) {
        if (item->isVisible())
            isOver = isOver || item->mapToItem(place, {0, 0}).y() + scrolled < 0;
    });
    QVERIFY(!isOver);
    for (int i = 0; i < 60 && !last->hasActiveFocus(); ++i)
        m_window->key(Qt::Key_Tab);
    QVERIFY(last->hasActiveFocus());
    QTRY_VERIFY(place->mapFromItem(last, {0, last->height()}).y() <= place->height());
}

void TestAppStart::emptyListsOfferWhatFillsThem_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("text");
    for (const char *category : {"users", "roots", "others"})
        QTest::newRow(category) << QString::fromLatin1(category) << qtTrId("trivex-app-import");
    QTest::newRow("requests") << QStringLiteral("requests") << qtTrId("trivex-app-new-request");
}

void TestAppStart::emptyListsOfferWhatFillsThem()
{
    QFETCH(QString, category);
    QFETCH(QString, text);
    QVERIFY(m_steps->show(category.toLatin1().constData()));
    QVERIFY(m_window->waitForItem(QStringLiteral("emptyAction")));
    QCOMPARE(m_steps->text("emptyAction"), text);
    QVERIFY(!m_window->item(QStringLiteral("startOpen")));
}

void TestAppStart::menuByTheRightButton()
{
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_steps->waitEnabled("keyNameInput"));
    QVERIFY(m_window->fill(QStringLiteral("keyNameInput"), QStringLiteral("My key")));
    QVERIFY(rightClick("keyNameInput"));
    // Nothing is selected.
    QVERIFY(!isEnabled("textCut") && !isEnabled("textCopy"));
    QCOMPARE(m_steps->text("textPaste"), qtTrId("trivex-app-text-paste"));
    QVERIFY(choose("textSelectAll"));
    QTRY_VERIFY(m_window->item(QStringLiteral("keyNameInput"))->hasActiveFocus());
    QVERIFY(rightClick("keyNameInput"));
    QVERIFY(choose("textCopy"));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("My key"));
    QCOMPARE(value("keyNameInput"), QStringLiteral("My key"));
    QVERIFY(rightClick("keyNameInput"));
    QVERIFY(choose("textCut"));
    QCOMPARE(value("keyNameInput"), QString());
    QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
    QVERIFY(rightClick("keyNameInput"));
    QVERIFY(choose("textPaste"));
    QCOMPARE(value("keyNameInput"), QStringLiteral("pasted"));
}

void TestAppStart::menuByKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("Menu") << int(Qt::Key_Menu) << int(Qt::NoModifier);
    QTest::newRow("Shift+F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier);
}

void TestAppStart::menuByKeys()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_steps->waitEnabled("keyNameInput"));
    QVERIFY(m_window->fill(QStringLiteral("keyNameInput"), QStringLiteral("typed")));
    m_window->key(Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QVERIFY(m_window->waitForItem(QStringLiteral("textSelectAll")));
    // Left without an effect, and typed on.
    m_window->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_window->item(QStringLiteral("textSelectAll")));
    QTRY_VERIFY(m_window->item(QStringLiteral("keyNameInput"))->hasActiveFocus());
    m_window->type(QStringLiteral(" on"));
    QCOMPARE(value("keyNameInput"), QStringLiteral("typed on"));
    // The last line of the menu.
    m_window->key(Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QVERIFY(m_window->waitForItem(QStringLiteral("textSelectAll")));
    QVERIFY(m_window->waitUntilStill());
    for (int i = 0; i < 8
         && !m_window->item(QStringLiteral("textSelectAll"))->property("highlighted").toBool();
         ++i)
        m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Return);
    QTRY_VERIFY(!m_window->item(QStringLiteral("textSelectAll")));
    QTRY_COMPARE(
        m_window->item(QStringLiteral("keyNameInput"))->property("selectedText").toString(),
        QStringLiteral("typed on"));
}

void TestAppStart::secretsAreNotCopied()
{
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_steps->waitEnabled("generatePin"));
    QVERIFY(m_window->fill(QStringLiteral("generatePin"), QStringLiteral("123456")));
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    QVERIFY(rightClick("generatePin"));
    QVERIFY(!isEnabled("textCut") && !isEnabled("textCopy"));
    QVERIFY(isEnabled("textPaste"));
    m_window->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_window->item(QStringLiteral("textSelectAll")));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppStart, TestToken>(argc, argv, QStringLiteral("Мой токен"));
}

#include "tst_app_start.moc"
