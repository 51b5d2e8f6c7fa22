// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/handsfixture.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QStyleHints>
#include <QtTest>

using namespace TrivexTest;

/// What hands expect of a list: the keys, buttons and menus that act on a row.
class TestAppHands : public HandsFixture {
    Q_OBJECT
public:
    using HandsFixture::HandsFixture;

private Q_SLOTS:
    void init() { showPersons(); }

    void deleteAsks();
    void systemRowsStay();
    void rowIsCopied();
    void enterAndEscape_data();
    void enterAndEscape();
    void menuOfARow_data();
    void menuOfARow();
    void rightButtonTakesItsRow();
    void doubleClickOpensOnce();
    void sorted_data();
    void sorted();
    void orderIsRemembered();
    void lettersSearch();
    void keysAfterRemoval();

private:
    bool isInDetails() const;
    QPoint underTheButton();
    bool clicksTwice(const QPoint &place);
};

bool TestAppHands::isInDetails() const
{
    const QQuickItem *pane = m_window->item(QStringLiteral("detailsPane"));
    for (const QQuickItem *item = m_window->window()->activeFocusItem(); item && pane;
         item = item->parentItem()) {
        if (item == pane)
            return true;
    }
    return false;
}

void TestAppHands::deleteAsks()
{
    clickRow("Clara");
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QCOMPARE(m_window->object(QStringLiteral("removeDialog"))->property("name").toString(),
             QStringLiteral("Clara"));
    // What a second press answers is "no".
    QTRY_VERIFY(m_window->item(QStringLiteral("removeCancel"))->hasActiveFocus());
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QTRY_VERIFY(list()->hasActiveFocus());
    QVERIFY(QFile::exists(userFile(QStringLiteral("Clara"))));
    // In a field it is a letter that goes, and no row.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("Clara")));
    m_window->key(Qt::Key_Home);
    m_window->key(Qt::Key_Delete);
    QCOMPARE(m_steps->text("searchField"), QStringLiteral("lara"));
    QVERIFY(!m_window->isOpen(QStringLiteral("removeDialog")));
}

void TestAppHands::systemRowsStay()
{
    QVERIFY(m_steps->show("system"));
    if (m_window->rowCount() == 0)
        QSKIP("this machine trusts no certificate");
    QVERIFY(m_window->clickRow(0));
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_window->holds([&] { return !m_window->isOpen(QStringLiteral("removeDialog")); }));
}

void TestAppHands::rowIsCopied()
{
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    clickRow("boris");
    m_window->key(Qt::Key_C, Qt::ControlModifier);
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-copied"));
    const QString text = QGuiApplication::clipboard()->text();
    QVERIFY2(text.startsWith(QStringLiteral("boris, ")), qPrintable(text));
    QVERIFY2(text.contains(qtTrId("trivex-app-validity-valid")), qPrintable(text));
    QVERIFY(!text.contains(QLatin1Char('\n')));
}

void TestAppHands::enterAndEscape_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("narrow") << QSize(400, 700);
    QTest::newRow("middle") << QSize(780, 700);
    QTest::newRow("wide") << QSize(1180, 760);
}

void TestAppHands::enterAndEscape()
{
    QFETCH(QSize, size);
    m_window->window()->resize(size);
    QVERIFY(m_window->waitUntilStill());
    list()->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Home);
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QTRY_VERIFY(isInDetails());
    m_window->key(Qt::Key_Escape);
    QTRY_VERIFY(list() && list()->hasActiveFocus());
    QCOMPARE(chosen(), QStringLiteral("boris"));
    // And on from there.
    m_window->key(Qt::Key_Down);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
}

void TestAppHands::menuOfARow_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("right button") << 0 << 0;
    QTest::newRow("menu key") << int(Qt::Key_Menu) << 0;
    QTest::newRow("Shift+F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier);
}

void TestAppHands::menuOfARow()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    const auto open = [&] {
        clickRow("Dmitri", key ? Qt::LeftButton : Qt::RightButton);
        if (key)
            m_window->key(Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        return m_steps->waitOpen("rowMenu");
    };
    QVERIFY(open());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("rowMenu"));
    QTRY_VERIFY(list()->hasActiveFocus());
    QVERIFY(open());
    // What does not apply is not offered.
    QVERIFY(!m_window->item(QStringLiteral("rowMenuEdit")));
    QVERIFY(!m_window->item(QStringLiteral("rowMenuSign")));
    QVERIFY(m_window->click(QStringLiteral("rowMenuCopy")));
    QTRY_VERIFY(QGuiApplication::clipboard()->text().startsWith(QStringLiteral("Dmitri, ")));
    QVERIFY(m_steps->waitClosed("rowMenu"));
    QVERIFY(open());
    QVERIFY(m_window->click(QStringLiteral("rowMenuRemove")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QGuiApplication::clipboard()->clear();
}

void TestAppHands::rightButtonTakesItsRow()
{
    clickRow("Anna");
    clickRow("Elena", Qt::RightButton);
    QVERIFY(m_steps->waitOpen("rowMenu"));
    QCOMPARE(chosen(), QStringLiteral("Elena"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("rowMenu"));
    // One of several that are chosen stands for them all.
    clickRow("Clara", Qt::LeftButton, Qt::ControlModifier);
    clickRow("Elena", Qt::RightButton);
    QVERIFY(m_steps->waitOpen("rowMenu"));
    QCOMPARE(chosen(), QStringLiteral("Clara Elena"));
}

/// The place of a row where the details have a button; null when no row lies there.
QPoint TestAppHands::underTheButton()
{
    for (const Person &person : Persons) {
        clickRow(person.name);
        if (!m_window->waitForItem(QStringLiteral("removeButton")))
            return {};
        QTest::qWait(500); // longer than between the clicks of a double click
        const QQuickItem *remove = m_window->item(QStringLiteral("removeButton"));
        const QPoint button =
            remove->mapToScene({remove->width() / 2, remove->height() / 2}).toPoint();
        m_window->key(Qt::Key_Escape);
        if (!m_window->waitForItem(QStringLiteral("certificateList")))
            return {};
        m_window->waitUntilStill();
        for (const Person &one : Persons) {
            const QQuickItem *row = rowItem(one.name);
            if (row->mapRectToScene({0, 0, row->width(), row->height()}).contains(button))
                return button;
        }
    }
    return {};
}

/// Whether both clicks were done in the time of a double click, with some to spare.
bool TestAppHands::clicksTwice(const QPoint &place)
{
    QElapsedTimer taken;
    taken.start();
    QTest::mouseClick(m_window->window(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::qWait(80); // as fast as people click
    QTest::mouseClick(m_window->window(), Qt::LeftButton, Qt::NoModifier, place);
    const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    if (!taken.hasExpired(interval * 3 / 4))
        return true;
    // These were two clicks, and the second one may have asked something.
    m_window->waitFor([&] { return taken.hasExpired(interval * 2); });
    m_window->waitUntilStill();
    if (m_window->isOpen(QStringLiteral("removeDialog"))) {
        m_window->key(Qt::Key_Escape);
        m_steps->waitClosed("removeDialog");
    }
    m_window->key(Qt::Key_Escape);
    m_window->waitForItem(QStringLiteral("certificateList"));
    m_window->waitUntilStill();
    return false;
}

void TestAppHands::doubleClickOpensOnce()
{
    m_window->window()->resize(400, 700);
    QVERIFY(m_window->waitFor([&] { return m_window->item(QStringLiteral("menuButton")); }));
    QVERIFY(m_window->waitUntilStill());
    // The second click of a double click is meant for the row.
    const QPoint place = underTheButton();
    QVERIFY2(!place.isNull(), "no row lies where the button will be");
    bool isDouble = false;
    for (int i = 0; i < 5 && !isDouble; ++i)
        isDouble = clicksTwice(place);
    QVERIFY2(isDouble, "this machine is too slow for a double click");
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QVERIFY(m_window->holds([&] { return !m_window->isOpen(QStringLiteral("removeDialog")); }));
    // A click that is meant for the button reaches it.
    QTest::qWait(500);
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
}

void TestAppHands::sorted_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("order");
    QTest::addColumn<QString>("turned");
    QTest::newRow("issuer") << QStringLiteral("sortByIssuer")
                            << QStringLiteral("boris Elena Dmitri Anna Clara")
                            << QStringLiteral("Anna Clara Dmitri boris Elena");
    QTest::newRow("end") << QStringLiteral("sortByEnd")
                         << QStringLiteral("Clara Elena Anna Dmitri boris")
                         << QStringLiteral("boris Dmitri Anna Elena Clara");
    QTest::newRow("name") << QStringLiteral("sortByName")
                          << QStringLiteral("Anna boris Clara Dmitri Elena")
                          << QStringLiteral("Elena Dmitri Clara boris Anna");
}

void TestAppHands::sorted()
{
    QFETCH(QString, item);
    QFETCH(QString, order);
    QFETCH(QString, turned);
    clickRow("Clara");
    const auto sort = [&](const QString &by) {
        return m_window->click(QStringLiteral("sortButton")) && m_steps->waitOpen("sortMenu")
            && m_window->click(by) && m_steps->waitClosed("sortMenu");
    };
    if (item == QLatin1String("sortByName"))
        QVERIFY(sort(QStringLiteral("sortByEnd")));
    QVERIFY(sort(item));
    QTRY_COMPARE(names(), order);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
    QVERIFY(sort(item));
    QTRY_COMPARE(names(), turned);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
    // A search keeps the order.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("a")));
    QTRY_VERIFY(m_window->rowCount() > 1);
    m_window->key(Qt::Key_Escape);
    QTRY_COMPARE(names(), turned);
    QVERIFY(sort(QStringLiteral("sortByName")));
    if (item == QLatin1String("sortByName"))
        QTRY_COMPARE(names(), order);
}

void TestAppHands::orderIsRemembered()
{
    QVERIFY(m_window->click(QStringLiteral("sortButton")));
    QVERIFY(m_steps->waitOpen("sortMenu"));
    // By keyboard alone.
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("sortMenu"));
    QTRY_COMPARE(names(), QStringLiteral("boris Elena Dmitri Anna Clara"));
    openWindow();
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(names(), QStringLiteral("boris Elena Dmitri Anna Clara"));
    QVERIFY(m_window->click(QStringLiteral("sortButton")));
    QVERIFY(m_window->click(QStringLiteral("sortByName")));
    QTRY_COMPARE(names(), QStringLiteral("Anna boris Clara Dmitri Elena"));
}

void TestAppHands::lettersSearch()
{
    clickRow("Anna");
    m_window->type(QStringLiteral("dm"));
    QTRY_COMPARE(names(), QStringLiteral("Dmitri"));
    QCOMPARE(m_steps->text("searchField"), QStringLiteral("dm"));
    QVERIFY(m_window->item(QStringLiteral("searchField"))->hasActiveFocus());
    m_window->key(Qt::Key_Escape);
    QTRY_COMPARE(m_window->rowCount(), 5);
    m_window->key(Qt::Key_Escape);
    QTRY_VERIFY(list()->hasActiveFocus());
}

void TestAppHands::keysAfterRemoval()
{
    clickRow("Elena");
    QVERIFY(m_steps->press("removeButton"));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(m_steps->press("removeConfirm"));
    QTRY_COMPARE(names(), QStringLiteral("Anna boris Clara Dmitri"));
    QTRY_VERIFY(list()->hasActiveFocus());
    // Nobody chose another row.
    QCOMPARE(chosen(), QString());
    m_window->key(Qt::Key_Down);
    QVERIFY(!chosen().isEmpty());
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    return runWindowTest<TestAppHands>(argc, argv, display);
}

#include "tst_app_hands.moc"
