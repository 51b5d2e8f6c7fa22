// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/support/userfiles.h"

#include <QScreen>
#include <QSettings>
#include <QtTest>

using namespace TrivexTest;

namespace {

constexpr QSize Usual(1180, 760);
/// More rows than a window shows.
constexpr int Rows = 30;

} // namespace

/// The window on small and large screens, with large text, and where its list stands.
class TestAppSizes : public WindowTest {
    Q_OBJECT
public:
    using WindowTest::WindowTest;

private Q_SLOTS:
    void init();

    void windowFitsItsScreen();
    void windowIsNoSmallerThanItsContents();
    void largeTextGetsFewerColumns_data();
    void largeTextGetsFewerColumns();
    void wideScreenKeepsLinesShort();
    void largeScreenIsUsed_data();
    void largeScreenIsUsed();
    void scrollBelongsToItsCategory();
    void chosenIsReadInWhole_data();
    void chosenIsReadInWhole();

private:
    void prepare() override;
    void restore() override;
    QQuickItem *list() const { return m_window->item(QStringLiteral("certificateList")); }
    double fontSize() const;
    int topRow() const;
};

void TestAppSizes::prepare()
{
    for (int i = 0; i < Rows; ++i) {
        const QString name = QStringLiteral("Person %1").arg(i, 2, 10, QLatin1Char('0'));
        const QByteArray certificate = m_authority.openssl(
            {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
             QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
             QStringLiteral("/dev/null"), QStringLiteral("-subj"), QStringLiteral("/CN=") + name});
        QVERIFY(!writeTestFile(userFile(name + QStringLiteral(".pem")), certificate).isEmpty());
    }
}

void TestAppSizes::init()
{
    m_window->window()->resize(Usual);
    QVERIFY(m_window->waitForItem(QStringLiteral("sidebar")));
    // Without the choice of the test before.
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), Rows);
}

void TestAppSizes::restore()
{
    m_window->setTheme(1, 1);
    m_window->window()->resize(Usual);
}

double TestAppSizes::fontSize() const
{
    const QQuickItem *field = m_window->item(QStringLiteral("searchField"));
    return field ? field->property("font").value<QFont>().pixelSize() : 0;
}

int TestAppSizes::topRow() const
{
    int row = -1;
    const double top = list()->property("contentY").toDouble();
    for (double y = top; row < 0 && y < top + 100; y += 5)
        QMetaObject::invokeMethod(list(), "indexAt", Q_RETURN_ARG(int, row), Q_ARG(qreal, 50),
                                  Q_ARG(qreal, y));
    return row;
}

void TestAppSizes::windowFitsItsScreen()
{
    closeWindow();
    {
        QSettings settings;
        settings.setValue(QStringLiteral("width"), 9000);
        settings.setValue(QStringLiteral("height"), 8000);
    }
    openWindow();
    const QSize screen = m_window->window()->screen()->availableSize();
    const QSize size = m_window->window()->size();
    QVERIFY2(size.width() <= screen.width() && size.height() <= screen.height(),
             qPrintable(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())));
    // Large, still: it is cut, and not forgotten.
    QVERIFY(size.width() > Usual.width());
}

void TestAppSizes::windowIsNoSmallerThanItsContents()
{
    closeWindow();
    {
        // What is left of a window on a screen that was smaller than it.
        QSettings settings;
        settings.setValue(QStringLiteral("width"), 180);
        settings.setValue(QStringLiteral("height"), 240);
    }
    openWindow();
    const QSize least = m_window->window()->minimumSize();
    const QSize size = m_window->window()->size();
    QVERIFY(least.width() > 180 && least.height() > 240);
    QVERIFY2(size.width() >= least.width() && size.height() >= least.height(),
             qPrintable(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())));
}

void TestAppSizes::largeTextGetsFewerColumns_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("columns");
    QTest::newRow("usual") << 1180 << 1.0 << 3;
    QTest::newRow("200 %, usual width") << 1180 << 2.0 << 2;
    QTest::newRow("200 %, half a screen") << 960 << 2.0 << 1;
    QTest::newRow("200 %, wide") << 1800 << 2.0 << 3;
}

void TestAppSizes::largeTextGetsFewerColumns()
{
    QFETCH(int, width);
    QFETCH(double, scale);
    QFETCH(int, columns);
    m_window->setTheme(1, scale);
    m_window->window()->resize(width, 760);
    QTRY_COMPARE(m_window->window()->contentItem()->width(), double(width));
    QTRY_COMPARE(m_window->item(QStringLiteral("sidebar")) != nullptr, columns == 3);
    QTRY_COMPARE(m_window->item(QStringLiteral("menuButton")) != nullptr, columns < 3);
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(!list() || m_window->clickRow(0));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QTRY_COMPARE(list() != nullptr, columns > 1);
    // Nothing that one presses lies outside.
    for (const char *name : {"exportButton", "removeButton", "copyButton"}) {
        const QQuickItem *button = m_window->item(QLatin1String(name));
        QVERIFY(button);
        const QRectF place = button->mapRectToScene({0, 0, button->width(), button->height()});
        QVERIFY2(place.left() >= 0 && place.right() <= width, name);
    }
    if (columns == 1)
        m_window->key(Qt::Key_Escape);
}

void TestAppSizes::wideScreenKeepsLinesShort()
{
    m_window->window()->resize(2560, 1500);
    QTRY_COMPARE(m_window->window()->contentItem()->width(), 2560.0);
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->clickRow(0));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QVERIFY(m_window->waitUntilStill());
    const auto letters = [&](const char *name) {
        return m_window->item(QLatin1String(name))->width() / fontSize();
    };
    QVERIFY(fontSize() > 0);
    QVERIFY2(letters("certificateList") < 70,
             qPrintable(QString::number(letters("certificateList"))));
    QVERIFY2(letters("detailsView") < 75, qPrintable(QString::number(letters("detailsView"))));
    QVERIFY(m_window->click(QStringLiteral("category-newRequest")));
    QVERIFY(m_window->waitForItem(QStringLiteral("keyNameInput")));
    const QQuickItem *field = m_window->item(QStringLiteral("keyNameInput"));
    QVERIFY(field->width() / 13 < 60);
}

void TestAppSizes::largeScreenIsUsed_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("used");
    QTest::newRow("of 2560") << QSize(2560, 1440) << 0.8;
    QTest::newRow("of 3840") << QSize(3840, 2160) << 0.8;
}

/// What a page leaves lies on both sides of it, and is the smaller part.
void TestAppSizes::largeScreenIsUsed()
{
    QFETCH(QSize, size);
    QFETCH(double, used);
    m_window->window()->resize(size);
    QTRY_COMPARE(m_window->window()->contentItem()->width(), double(size.width()));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->clickRow(0));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QVERIFY(m_window->waitUntilStill());
    const double letter = fontSize();
    QVERIFY(letter > 0);
    const auto place = [&](const char *name) {
        const QQuickItem *item = m_window->item(QLatin1String(name));
        return item ? item->mapRectToScene({0, 0, item->width(), item->height()}) : QRectF();
    };
    const auto isCentred = [&](double left, double right) {
        const double from = place("sidebar").right();
        return qAbs((left - from) - (size.width() - right)) < letter * 3;
    };
    const QRectF rows = place("certificateList");
    const QRectF details = place("detailsView");
    const double room = size.width() - place("sidebar").width();
    QVERIFY2((details.right() - rows.left()) / room > used,
             qPrintable(QString::number((details.right() - rows.left()) / room)));
    QVERIFY(isCentred(rows.left(), details.right()));
    // The lines stay short: the values have a column of their own where there is room for it.
    QVERIFY(rows.width() / letter < 70);
    for (const char *name : {"exportButton", "detailsTab"})
        QVERIFY2(details.contains(place(name)), name);
    const bool beside = place("detailsTab").top() < place("exportButton").bottom();
    QCOMPARE(beside, details.width() / letter > 75);
    QVERIFY(m_window->click(QStringLiteral("category-newRequest")));
    QVERIFY(m_window->waitForItem(QStringLiteral("keyNameInput")));
    QVERIFY(m_window->waitUntilStill());
    const QQuickItem *form = m_window->item(QStringLiteral("keyNameInput"));
    while (form->width() < letter * 45)
        form = form->parentItem();
    const QRectF whole = form->mapRectToScene({0, 0, form->width(), form->height()});
    QVERIFY(whole.width() < letter * 60);
    QVERIFY(isCentred(whole.left(), whole.right()));
}

void TestAppSizes::scrollBelongsToItsCategory()
{
    m_window->window()->resize(1180, 500);
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_steps->show("roots"));
    QTRY_COMPARE(m_window->rowCount(), Rows);
    QCOMPARE(topRow(), 0);
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), Rows);
    list()->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_End);
    QTRY_VERIFY(topRow() > 2);
    const int top = topRow();
    // Another category begins where it was left.
    QVERIFY(m_steps->show("roots"));
    QTest::qWait(200); // the other rows are there, as many as before
    QCOMPARE(topRow(), 0);
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 0);
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), Rows);
    QTRY_VERIFY2(qAbs(topRow() - top) <= 1, qPrintable(QString::number(topRow())));
}

void TestAppSizes::chosenIsReadInWhole_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {360, 400, 1180})
        QTest::addRow("%d", width) << width;
}

// What stands in a chooser is told in two lines where one is too short.
void TestAppSizes::chosenIsReadInWhole()
{
    QFETCH(int, width);
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_window->waitForItem(QStringLiteral("signatureForm")));
    m_window->window()->resize(width, Usual.height());
    QTRY_COMPARE(m_window->window()->contentItem()->width(), qreal(width));
    QVERIFY(m_window->waitUntilStill());
    const QQuickItem *chooser = m_window->item(QStringLiteral("signatureForm"));
    const auto *text = chooser->property("contentItem").value<QQuickItem *>();
    QCOMPARE(text->property("text").toString(), qtTrId("trivex-app-form-detached"));
    QTRY_VERIFY2(!text->property("truncated").toBool(), "the end of it is left out");
    QTRY_VERIFY(text->property("contentHeight").toReal() <= text->height());
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    return runWindowTest<TestAppSizes>(argc, argv, display);
}

#include "tst_app_sizes.moc"
