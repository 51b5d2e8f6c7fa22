// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/looks.h"
#include "tests/app/samplewindowtest.h"

#include <QLocale>
#include <QtTest>

using namespace TrivexTest;

namespace {

/// The controls of what has just opened, by Tab from where the focus is, once round.
QList<QQuickItem *> roundByTab(WindowDriver &driver, Qt::Key key = Qt::Key_Tab)
{
    QList<QQuickItem *> round;
    QQuickItem *first = driver.window()->activeFocusItem();
    for (QQuickItem *now = first; now && round.size() < 100;) {
        round += now;
        driver.key(key);
        now = driver.window()->activeFocusItem();
        if (round.contains(now))
            break;
    }
    return round;
}

QRectF place(const QQuickItem *item)
{
    return item->mapRectToScene({0, 0, item->width(), item->height()});
}

/// As one reads: what is below comes later, and in one line what is to the right.
bool isAfter(const QQuickItem *item, const QQuickItem *previous)
{
    const QRectF now = place(item);
    const QRectF before = place(previous);
    const bool sameLine = now.top() < before.bottom() - 1 && before.top() < now.bottom() - 1;
    return sameLine ? now.left() > before.left() : now.top() > before.top();
}

} // namespace

/// Where the focus goes, and whether every text has its room.
class TestAppLayout : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void dialogByTab_data();
    void dialogByTab();
    void actionsStandInOneLine_data();
    void actionsStandInOneLine();
    void textsHaveRoom_data();
    void textsHaveRoom();
    void buttonsAreInReach_data();
    void buttonsAreInReach();

private:
    bool opensOneWindow() const override { return false; }
    void open(const char *locale, const QSize &size = {1180, 760});
};

void TestAppLayout::open(const char *locale, const QSize &size)
{
    QLocale::setDefault(QLocale(QLatin1String(locale)));
    openWindow();
    m_window->setTheme(1);
    m_window->window()->resize(size);
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() > 0; }));
}

void TestAppLayout::dialogByTab_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("first");
    // The first control, but where one of several answers is the harmless one.
    QTest::newRow("settings") << "settings"
                              << "settingsDialog"
                              << "colours-0";
    QTest::newRow("manual") << "manual"
                            << "manualDialog"
                            << "manualSections";
    QTest::newRow("bundle") << "locked-import"
                            << "importDialog"
                            << "bundlePassword";
    QTest::newRow("import") << "import"
                            << "importDialog"
                            << "itemsAll";
    QTest::newRow("PIN") << "pin"
                         << "pinPromptDialog"
                         << "pinField";
    QTest::newRow("removal") << "remove"
                             << "removeDialog"
                             << "removeCancel";
    QTest::newRow("error") << "error"
                           << "errorDialog"
                           << "errorClose";
    QTest::newRow("edited request") << "edit"
                                    << "editRequestDialog"
                                    << "commonNameInput";
}

void TestAppLayout::dialogByTab()
{
    QFETCH(QString, page);
    QFETCH(QString, dialog);
    QFETCH(QString, first);
    open("en_US");
    QVERIFY(visitPage(*m_window, m_data, page));
    QVERIFY(m_window->waitFor([&] { return m_window->isOpen(dialog); }));
    m_window->waitUntilStill();
    QQuickItem *focus = m_window->window()->activeFocusItem();
    QVERIFY(focus);
    QCOMPARE(describeItem(focus), describeItem(m_window->item(first)));

    const auto *body =
        qvariant_cast<QQuickItem *>(m_window->object(dialog)->property("contentItem"));
    QVERIFY(body);
    QQuickItem *whole = body->parentItem();
    QList<QQuickItem *> controls;
    visitItems(whole, [&](QQuickItem *item) {
        if (item->isEnabled() && item->activeFocusOnTab() && item->width() > 0)
            controls += item;
    });
    // A list gives the keys to the row that it is at.
    const auto control = [&](QQuickItem *item) {
        QQuickItem *found = item;
        while (found && !controls.contains(found))
            found = found->parentItem();
        return found ? found : item;
    };
    QList<QQuickItem *> round = roundByTab(*m_window);
    std::transform(round.begin(), round.end(), round.begin(), control);
    // These and only these; and back to the first.
    QCOMPARE(m_window->window()->activeFocusItem(), focus);
    for (QQuickItem *item : qAsConst(controls))
        QVERIFY2(round.contains(item), qPrintable(describeItem(item)));
    for (QQuickItem *item : qAsConst(round))
        QVERIFY2(controls.contains(item), qPrintable(describeItem(item)));
    // In the order in which they are read, once turned to begin at the top.
    int turns = 0;
    for (int i = 0; i < round.size(); ++i)
        turns += !isAfter(round.at((i + 1) % round.size()), round.at(i));
    QStringList names;
    for (const QQuickItem *item : qAsConst(round))
        names += describeItem(item);
    QVERIFY2(turns == 1, qPrintable(names.join(QLatin1String(", "))));
    // And backwards the same way.
    QList<QQuickItem *> back = roundByTab(*m_window, Qt::Key_Backtab);
    std::transform(back.begin(), back.end(), back.begin(), control);
    std::reverse(back.begin() + 1, back.end());
    QCOMPARE(back, round);
    leavePage(*m_window);
    QVERIFY(m_window->waitFor([&] { return !m_window->isOpen(dialog); }));
}

void TestAppLayout::actionsStandInOneLine_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("locale");
    for (const char *page : {"details", "requests"}) {
        for (const char *locale : {"en_US", "ru_RU"})
            QTest::addRow("%s, %s", page, locale)
                << QString::fromLatin1(page) << QString::fromLatin1(locale);
    }
}

void TestAppLayout::actionsStandInOneLine()
{
    QFETCH(QString, page);
    QFETCH(QString, locale);
    open(qPrintable(locale));
    QVERIFY(visitPage(*m_window, m_data, page));
    const auto middle = [&](const char *name) {
        const QQuickItem *button = m_window->item(QLatin1String(name));
        return button ? place(button).center().y() : -1;
    };
    QVERIFY(m_window->waitForItem(QStringLiteral("exportButton")));
    const qreal line = middle("exportButton");
    for (const char *name : {page == QLatin1String("details") ? "signButton" : "editButton",
                             "removeButton", "copyButton"})
        QVERIFY2(qAbs(middle(name) - line) <= 1, name);
}

void TestAppLayout::textsHaveRoom_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("width");
    for (const char *locale : {"en_US", "ru_RU"}) {
        for (const int width : {400, 800, 1180, 1920, 3840})
            QTest::addRow("%s, %d px", locale, width) << QString::fromLatin1(locale) << width;
    }
}

void TestAppLayout::textsHaveRoom()
{
    QFETCH(QString, locale);
    QFETCH(int, width);
    open(qPrintable(locale), {width, 760});
    QStringList faults;
    const QStringList pages =
        pageNames() + QStringList{QStringLiteral("locked-import"), QStringLiteral("edit")};
    for (const QString &page : pages) {
        QVERIFY2(visitPage(*m_window, m_data, page), qPrintable(page));
        int texts = 0;
        visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
            texts += item->inherits("QQuickText");
            const QString fault = lackOfRoom(item);
            if (!fault.isEmpty())
                faults += page + QStringLiteral(": ") + describeItem(item) + QStringLiteral(" \"")
                    + item->property("text").toString() + QStringLiteral("\" is ") + fault;
        });
        QVERIFY2(texts > 3, qPrintable(page));
        leavePage(*m_window);
    }
    QVERIFY2(faults.isEmpty(), qPrintable(QLatin1Char('\n') + faults.join(QLatin1Char('\n'))));
}

void TestAppLayout::buttonsAreInReach_data()
{
    QTest::addColumn<QString>("page");
    for (const char *page : {"token", "step", "filters", "token-menu", "token-facts", "change-pin",
                             "unblock", "initialise", "expired", "undo", "manual", "remove"})
        QTest::newRow(page) << QString::fromLatin1(page);
}

/// The narrowest window with texts of twice their size.
void TestAppLayout::buttonsAreInReach()
{
    QFETCH(QString, page);
    QLocale::setDefault(QLocale(QStringLiteral("ru_RU")));
    openWindow();
    m_window->setTheme(1, 2);
    m_window->window()->resize(400, 760);
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() > 0; }));
    QVERIFY(visitPage(*m_window, m_data, page));
    QStringList faults;
    int buttons = 0;
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        if (!item->inherits("QQuickAbstractButton"))
            return;
        ++buttons;
        const QRectF now = place(item);
        if (now.left() < 0 || now.right() > 400)
            faults += describeItem(item)
                + QStringLiteral(" from %1 to %2").arg(now.left()).arg(now.right());
    });
    QVERIFY(buttons > 0);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
    leavePage(*m_window);
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppLayout>(argc, argv);
}

#include "tst_app_layout.moc"
