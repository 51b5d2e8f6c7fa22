// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/samplewindowtest.h"

#include <QtTest>

using namespace TrivexTest;

/// The ready filters: what ends soon, what has ended, what has a key, what is on a token.
class TestAppFilters : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void init();
    void whatEndsSoonIsCounted();
    void countLeadsToTheRows();
    void filterBelongsToItsPage();
    void emptyResultSaysWhy();
    void byKeyboard();
    void withKeyAndOnToken();
    void requestsHaveNone();

private:
    void arrive() override;
    bool choose(const QString &filter);
    QString note(const char *category) const;
    /// By keyboard: opens the menu and goes down so many times.
    bool chooseByKeys(int downs);
};

void TestAppFilters::arrive()
{
    QVERIFY(m_window->waitFor(
        [&] { return m_window->rowNamed(QStringLiteral("Иванова Мария Петровна")) >= 0; }));
}

void TestAppFilters::init()
{
    for (const char *page : {"personal", "users"}) {
        QVERIFY(m_steps->show(page));
        if (m_window->item(QStringLiteral("filterNoticeAction")))
            QVERIFY(m_window->click(QStringLiteral("filterNoticeAction")));
    }
    QTRY_COMPARE(m_window->rowCount(), 2);
}

bool TestAppFilters::choose(const QString &filter)
{
    return m_window->click(QStringLiteral("filterButton")) && m_window->waitForItem(filter)
        && m_window->waitUntilStill() && m_window->click(filter) && m_window->waitUntilStill();
}

QString TestAppFilters::note(const char *category) const
{
    const QQuickItem *item = m_window->item(QStringLiteral("category-") + QLatin1String(category));
    return item ? item->property("note").toString() : QStringLiteral("no item");
}

bool TestAppFilters::chooseByKeys(int downs)
{
    // The mouse would mark the item that it lies on.
    QTest::mouseMove(m_window->window(), QPoint(1, 1));
    m_window->item(QStringLiteral("searchField"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Tab);
    const QQuickItem *button = m_window->item(QStringLiteral("filterButton"));
    if (!button || !button->hasActiveFocus())
        return false;
    m_window->key(Qt::Key_Space);
    if (!m_window->waitForItem(QStringLiteral("filterExpired")) || !m_window->waitUntilStill())
        return false;
    for (int i = 0; i < downs; ++i)
        m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Return);
    return m_window->waitUntilStill();
}

void TestAppFilters::whatEndsSoonIsCounted()
{
    QTRY_COMPARE(note("users"), qtTrId("trivex-app-ends-soon", 1));
    QCOMPARE(note("personal"), QString());
    // A search counts nothing away.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("no such name")));
    QTRY_COMPARE(m_window->rowCount(), 0);
    QCOMPARE(note("users"), qtTrId("trivex-app-ends-soon", 1));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
    QTRY_COMPARE(m_window->rowCount(), 2);
}

void TestAppFilters::countLeadsToTheRows()
{
    QTRY_VERIFY(m_window->item(QStringLiteral("expiringNoticeAction")));
    QVERIFY(m_window->click(QStringLiteral("expiringNoticeAction")));
    QTRY_COMPARE(m_window->rowCount(), 1);
    QCOMPARE(m_window->rowNamed(QStringLiteral("maria.ivanova@example.org")), 0);
    QTRY_VERIFY(m_window->item(QStringLiteral("filterNotice")));
    QVERIFY(m_steps->text("filterNotice").contains(qtTrId("trivex-app-validity-expiring")));
    QVERIFY(m_window->click(QStringLiteral("filterNoticeAction")));
    QTRY_COMPARE(m_window->rowCount(), 2);
}

void TestAppFilters::filterBelongsToItsPage()
{
    QVERIFY(choose(QStringLiteral("filterExpiring")));
    QTRY_COMPARE(m_window->rowCount(), 1);
    QVERIFY(m_steps->show("personal"));
    QTRY_COMPARE(m_window->rowCount(), 2);
    QVERIFY(!m_window->item(QStringLiteral("filterNotice")));
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), 1);
    QVERIFY(m_window->item(QStringLiteral("filterNotice")));
}

void TestAppFilters::emptyResultSaysWhy()
{
    QVERIFY(choose(QStringLiteral("filterExpired")));
    QTRY_COMPARE(m_window->rowCount(), 0);
    const QString title = qtTrId("trivex-app-filter-hides", 2);
    QStringList texts;
    visitItems(m_window->window()->contentItem(),
               [&](QQuickItem *item) { texts += item->property("text").toString(); });
    QVERIFY2(texts.contains(title), qPrintable(texts.join(QLatin1Char('|'))));
    QCOMPARE(m_steps->text("emptyAction"), qtTrId("trivex-app-filter-lift"));
    QVERIFY(m_steps->press("emptyAction"));
    QTRY_COMPARE(m_window->rowCount(), 2);
    // Nothing is hidden by a filter where the search alone finds nothing.
    QVERIFY(choose(QStringLiteral("filterExpiring")));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("no such name")));
    QTRY_COMPARE(m_window->rowCount(), 0);
    QTRY_COMPARE(m_steps->text("emptyAction"), qtTrId("trivex-app-clear-search"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
}

void TestAppFilters::byKeyboard()
{
    QVERIFY(chooseByKeys(1));
    QTRY_COMPARE(m_window->rowCount(), 1);
    QVERIFY(chooseByKeys(2));
    QTRY_COMPARE(m_window->rowCount(), 0);
    // The same again lifts it.
    QVERIFY(chooseByKeys(2));
    QTRY_COMPARE(m_window->rowCount(), 2);
}

void TestAppFilters::withKeyAndOnToken()
{
    QVERIFY(choose(QStringLiteral("filterKeys")));
    QTRY_COMPARE(m_window->rowCount(), 0);
    QVERIFY(choose(QStringLiteral("filterKeys")));
    QTRY_COMPARE(m_window->rowCount(), 2);
    const QString token = QStringLiteral("filterToken-") + m_data.tokenName();
    QVERIFY(choose(token));
    QTRY_COMPARE(m_window->rowCount(), 0);
    QVERIFY(m_steps->text("filterNotice").contains(m_data.tokenName()));
    QVERIFY(m_steps->show("personal"));
    QVERIFY(choose(token));
    QVERIFY(choose(QStringLiteral("filterKeys")));
    QTRY_COMPARE(m_window->rowCount(), 2);
    QVERIFY(choose(QStringLiteral("filterExpiring")));
    QTRY_COMPARE(m_window->rowCount(), 0);
}

void TestAppFilters::requestsHaveNone()
{
    QVERIFY(choose(QStringLiteral("filterExpired")));
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 1);
    QVERIFY(!m_window->item(QStringLiteral("filterButton")));
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), 0);
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppFilters>(argc, argv);
}

#include "tst_app_filters.moc"
