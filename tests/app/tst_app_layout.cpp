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
    void largeTextHasRoom_data();
    void largeTextHasRoom();
    void lossIsNamedInWhole_data() { largeTextHasRoom_data(); }
    void lossIsNamedInWhole();
    void usualTextComesBack_data();
    void usualTextComesBack();
    void resultComesIntoView_data();
    void resultComesIntoView();
    void dialogFollowsTheFocus();

private:
    bool opensOneWindow() const override { return false; }
    void open(const char *locale, const QSize &size = {1180, 760});
    QString faultOf(const QQuickItem *item, const QImage &image) const;
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

void TestAppLayout::largeTextHasRoom_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("English") << QStringLiteral("en_US");
    QTest::newRow("Russian") << QStringLiteral("ru_RU");
}

/// Whether a list keeps this row for later: it is where it was, visible to QML, and not drawn.
bool isPooled(const QQuickItem *row)
{
    const QQuickItem *content = row->parentItem();
    QQuickItem *list = content ? content->parentItem() : nullptr;
    if (!list || !list->inherits("QQuickListView"))
        return false;
    for (int i = 0; i < list->property("count").toInt(); ++i) {
        QQuickItem *shown = nullptr;
        QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem *, shown),
                                  Q_ARG(int, i));
        if (shown == row)
            return false;
    }
    return true;
}

/// What is wrong with the place of a button or a field in a narrow window of `size`; empty where
/// nothing is. `image` is what is drawn.
QString TestAppLayout::faultOf(const QQuickItem *item, const QImage &image) const
{
    // What lies below a dialog is pressed after it.
    const auto isInPopup = [](const QQuickItem *up) {
        while (up && !up->inherits("QQuickPopupItem"))
            up = up->parentItem();
        return up != nullptr;
    };
    if (isInPopup(m_window->window()->activeFocusItem()) && !isInPopup(item))
        return {};
    const bool isField = item->inherits("QQuickTextField");
    if ((!isField && !item->inherits("QQuickAbstractButton")) || isPooled(item))
        return {};
    const QRectF now = place(item);
    if (now.left() < 0 || now.right() > image.width())
        return QStringLiteral("reaches from %1 to %2").arg(now.left()).arg(now.right());
    const qreal room = item->width() - item->property("leftPadding").toReal()
        - item->property("rightPadding").toReal();
    if (isField && room < item->property("font").value<QFont>().pixelSize() * 4)
        return QStringLiteral("has room for %1 px of text").arg(room);
    const QRect seen = now.toRect();
    if (!image.rect().contains(seen) || item->property("text").toString().isEmpty())
        return {}; // in a part that scrolls
    for (int y = seen.top(); y <= seen.bottom(); ++y) {
        for (int x = seen.left() + 4; x < seen.right() - 4; ++x) {
            if (image.pixel(x, y) != image.pixel(seen.left() + 4, y))
                return {};
        }
    }
    return QStringLiteral("is not drawn");
}

/// The narrowest window with texts of twice their size: nothing that one presses or types into
/// lies outside or is crushed, and it is drawn.
void TestAppLayout::largeTextHasRoom()
{
    QFETCH(QString, locale);
    open(qPrintable(locale), {400, 760});
    m_window->setTheme(1, 2);
    QStringList faults;
    const QStringList pages =
        pageNames() + QStringList{QStringLiteral("locked-import"), QStringLiteral("edit")};
    for (const QString &page : pages) {
        QVERIFY2(visitPage(*m_window, m_data, page), qPrintable(page));
        const QImage image = m_window->window()->grabWindow();
        int looked = 0;
        visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
            const QString fault = faultOf(item, image);
            looked += item->inherits("QQuickAbstractButton");
            if (!fault.isEmpty())
                faults += page + QStringLiteral(": ") + describeItem(item) + QLatin1Char(' ')
                    + fault + QLatin1Char(' ') + item->property("text").toString();
        });
        QVERIFY2(looked > 0, qPrintable(page));
        leavePage(*m_window);
    }
    QVERIFY2(faults.isEmpty(), qPrintable(QLatin1Char('\n') + faults.join(QLatin1Char('\n'))));
}

/// The button that erases a token says so to its last letter, in the narrowest window as well.
void TestAppLayout::lossIsNamedInWhole()
{
    QFETCH(QString, locale);
    open(qPrintable(locale), {400, 760});
    m_window->setTheme(1, 1.5);
    QVERIFY(visitPage(*m_window, m_data, QStringLiteral("initialise")));
    QQuickItem *button = m_window->item(QStringLiteral("adminConfirm"));
    QVERIFY(button);
    QCOMPARE(lackOfRoom(button), QString());
    leavePage(*m_window);
}

void TestAppLayout::usualTextComesBack_data()
{
    largeTextHasRoom_data();
}

/// Texts of twice their size that become usual again while a page or dialog is shown: it is laid
/// out as if they had never been large.
void TestAppLayout::usualTextComesBack()
{
    QFETCH(QString, locale);
    open(qPrintable(locale), {400, 760});
    const auto buttons = [&] {
        QStringList places;
        visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
            // A row that the list keeps for later comes and goes, and nobody sees it.
            if (!item->inherits("QQuickAbstractButton") || isPooled(item))
                return;
            const QRectF now = place(item);
            places +=
                describeItem(item) + QStringLiteral(" %1x%2").arg(now.width()).arg(now.height());
        });
        return places;
    };
    for (const char *name : {"pin", "initialise", "import", "locked-import", "error", "settings",
                             "remove", "change-pin", "sign"}) {
        const QString page = QLatin1String(name);
        QVERIFY2(visitPage(*m_window, m_data, page), name);
        const QStringList before = buttons();
        m_window->setTheme(1, 2);
        QVERIFY2(m_window->waitUntilStill(Patience), name);
        QVERIFY2(buttons() != before, name);
        m_window->setTheme(1, 1);
        QVERIFY2(m_window->waitUntilStill(Patience), name);
        QTRY_COMPARE(buttons().join(QLatin1Char('\n')), before.join(QLatin1Char('\n')));
        leavePage(*m_window);
    }
    // A binding loop is told as a warning, and those are looked at after each test.
}

void TestAppLayout::resultComesIntoView_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QSize>("size");
    for (const char *page : {"signed", "checked"}) {
        for (const QSize &size : {QSize(400, 760), QSize(780, 700), QSize(780, 460)})
            QTest::addRow("%s in %dx%d", page, size.width(), size.height())
                << QString::fromLatin1(page) << size;
    }
}

/// Who signs or checks sees what came of it, whole, without scrolling; of what is taller than the
/// page, the beginning.
void TestAppLayout::resultComesIntoView()
{
    QFETCH(QString, page);
    QFETCH(QSize, size);
    open("ru_RU", size);
    QVERIFY(visitPage(*m_window, m_data, page));
    const bool isChecked = page == QLatin1String("checked");
    const QQuickItem *result =
        m_window->item(isChecked ? QStringLiteral("signerResult0") : QStringLiteral("signResult"));
    QVERIFY(result);
    const QQuickItem *view = result;
    while (view && !view->inherits("QQuickFlickable"))
        view = view->parentItem();
    QVERIFY(view);
    const QRectF seen = place(view);
    const QRectF now = place(result);
    const qreal above = seen.top() - now.top();
    const qreal below = now.bottom() - seen.bottom();
    QVERIFY2(above <= 0, qPrintable(QString::number(above)));
    QVERIFY2(now.height() > seen.height() || below <= 0, qPrintable(QString::number(below)));
}

/// In a dialog that is taller than its window Tab brings each control into the part that is seen.
void TestAppLayout::dialogFollowsTheFocus()
{
    open("ru_RU", {400, 760});
    m_window->setTheme(1, 2);
    QVERIFY(visitPage(*m_window, m_data, QStringLiteral("edit")));
    int scrolled = 0;
    const QQuickItem *first = m_window->window()->activeFocusItem();
    for (int i = 0; i < 100; ++i) {
        const QQuickItem *now = m_window->window()->activeFocusItem();
        QVERIFY(now);
        const QQuickItem *view = now;
        while (view && !view->inherits("QQuickFlickable"))
            view = view->parentItem();
        // The buttons of the footer stand still.
        if (view) {
            const QRectF seen = place(view);
            QVERIFY2(now->height() > seen.height() || seen.contains(place(now)),
                     qPrintable(describeItem(now)));
            scrolled += view->property("contentY").toReal() > 0;
        }
        m_window->key(Qt::Key_Tab);
        QVERIFY(m_window->waitUntilStill());
        if (m_window->window()->activeFocusItem() == first)
            break;
    }
    QVERIFY(scrolled > 0);
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppLayout>(argc, argv);
}

#include "tst_app_layout.moc"
