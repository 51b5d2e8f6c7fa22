// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/samplewindowtest.h"

#include <QtTest>

using namespace TrivexTest;

namespace {

constexpr QSize Narrow(400, 700);
constexpr QSize Wide(1180, 760);

} // namespace

/// What looked done and was not: judged by what is drawn, by where the keyboard goes, and by what
/// the file or the key is in the end.
class TestAppTraps : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void init();

    void drawerIsSeen_data();
    void drawerIsSeen();
    void sideBarByKeyboard_data();
    void sideBarByKeyboard();
    void algorithmStaysWhenLookedAt();

private:
    void arrive() override;

    QImage grab() const { return m_window->window()->grabWindow(); }
    bool tabTo(const QString &name, int most = 60);
};

void TestAppTraps::init()
{
    m_window->window()->resize(Wide);
    QVERIFY(m_window->waitForItem(QStringLiteral("sidebar")));
}

void TestAppTraps::arrive()
{
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() > 0; }));
}

void TestAppTraps::drawerIsSeen_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {400, 520, 639, 641, 800})
        QTest::addRow("%d", width) << width;
}

void TestAppTraps::drawerIsSeen()
{
    QFETCH(int, width);
    m_window->window()->resize(width, Narrow.height());
    QVERIFY(m_window->waitForItem(QStringLiteral("menuButton")));
    QVERIFY(m_window->waitUntilStill());
    const QImage before = grab();
    QVERIFY(m_window->click(QStringLiteral("menuButton")));
    QVERIFY(m_steps->waitOpen("drawer"));
    QTRY_VERIFY(m_window->item(QStringLiteral("category-users")));
    const QQuickItem *row = m_window->item(QStringLiteral("category-users"));
    // The whole row lies in the window, and what is drawn there is no longer the page.
    QRectF place;
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            place = row->mapRectToScene(QRectF(0, 0, row->width(), row->height()));
            return QRectF(0, 0, width, Narrow.height()).contains(place);
        }(),
        Patience);
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            const QRect area = place.toRect().adjusted(2, 2, -2, -2);
            return grab().copy(area) != before.copy(area);
        }(),
        Patience);
    // The first click goes where it is seen to go.
    QVERIFY(m_steps->show("users"));
    QVERIFY(m_steps->waitClosed("drawer"));
    QVERIFY(m_window->click(QStringLiteral("menuButton")));
    QVERIFY(m_steps->waitOpen("drawer"));
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_steps->waitClosed("drawer"));
}

bool TestAppTraps::tabTo(const QString &name, int most)
{
    for (int i = 0; i < most; ++i) {
        const QQuickItem *wanted = m_window->item(name);
        if (wanted && wanted->hasActiveFocus())
            return true;
        m_window->key(Qt::Key_Tab);
    }
    return false;
}

void TestAppTraps::sideBarByKeyboard_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("narrow") << Narrow;
    QTest::newRow("middle") << QSize(780, 700);
    QTest::newRow("wide") << Wide;
}

void TestAppTraps::sideBarByKeyboard()
{
    QFETCH(QSize, size);
    m_window->window()->resize(size);
    QVERIFY(m_window->waitUntilStill());
    const bool hasDrawer = size != Wide;
    if (hasDrawer) {
        QVERIFY(tabTo(QStringLiteral("menuButton")));
        m_window->key(Qt::Key_Space);
        QVERIFY(m_steps->waitOpen("drawer"));
    }
    QVERIFY(tabTo(QStringLiteral("category-users")));
    m_window->key(Qt::Key_Space);
    QTRY_COMPARE(m_window->window()->property("current").toString(), QStringLiteral("users"));
    if (hasDrawer) {
        QVERIFY(m_steps->waitClosed("drawer"));
        QVERIFY(tabTo(QStringLiteral("menuButton")));
        m_window->key(Qt::Key_Space);
        QVERIFY(m_steps->waitOpen("drawer"));
    }
    // From row to row by arrow, chosen by Enter.
    QVERIFY(tabTo(QStringLiteral("category-users")));
    m_window->key(Qt::Key_Up);
    QVERIFY(m_window->item(QStringLiteral("category-personal"))->hasActiveFocus());
    m_window->key(Qt::Key_Return);
    QTRY_COMPARE(m_window->window()->property("current").toString(), QStringLiteral("personal"));
    if (hasDrawer)
        QVERIFY(m_steps->waitClosed("drawer"));
}

void TestAppTraps::algorithmStaysWhenLookedAt()
{
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_steps->waitEnabled("algorithmChooser"));
    const QQuickItem *chooser = m_window->item(QStringLiteral("algorithmChooser"));
    const QString text = chooser->property("displayText").toString();
    const QVariant value = chooser->property("currentValue");
    QVERIFY2(text.contains(QStringLiteral("RSA, 2048")), qPrintable(text));
    QCOMPARE(value.toInt(), 0);
    QVERIFY(m_window->click(QStringLiteral("algorithmChooser")));
    QTRY_VERIFY(chooser->property("popup").value<QObject *>()->property("opened").toBool());
    m_window->key(Qt::Key_Escape);
    QTRY_VERIFY(!chooser->property("popup").value<QObject *>()->property("visible").toBool());
    QCOMPARE(chooser->property("displayText").toString(), text);
    QCOMPARE(chooser->property("currentValue"), value);
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppTraps>(argc, argv);
}

#include "tst_app_traps.moc"
