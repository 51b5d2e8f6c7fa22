// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/samplewindowtest.h"

#include <QPointer>
#include <QtTest>

using namespace TrivexTest;

namespace {

constexpr QSize Wide(1180, 760);
constexpr QSize Narrow(400, 760);

/// How a page of `pageNames()`, or one of the others that `visitPage` knows, gets something more
/// over it. A press is the name of a button, or "@name", the Menu key on that.
struct More {
    const char *name;
    const char *page;
    QVector<const char *> presses;
};

const More mores[] = {{"drawer", "personal", {"menuButton"}},
                      {"manual-of-drawer", "personal", {"menuButton", "helpButton"}},
                      {"settings-of-drawer", "personal", {"menuButton", "settingsButton"}},
                      {"sort-menu", "personal", {"sortButton"}},
                      {"row-menu", "personal", {"@certificateList"}},
                      {"menu-of-details", "details", {"pemTab", "@encodedText"}},
                      {"menu-of-search", "search", {"@searchField"}},
                      {"menu-of-a-dialog", "edit", {"@commonNameInput"}},
                      {"menu-of-a-secret", "pin", {"@pinField"}},
                      {"choice-of-a-dialog", "manual", {"manualSections"}},
                      {"choice-of-a-page", "new-request", {"profileChooser"}},
                      {"choice-of-signers", "sign", {"signKeyChooser"}},
                      {"choice-of-import", "import", {"itemView"}},
                      {"profile", "new-request", {"saveProfile"}},
                      {"keys-of-manual", "manual", {"manualKeys"}}};

QQuickItem *popupItem(QObject *popup)
{
    return popup->property("contentItem").value<QQuickItem *>()->parentItem();
}

} // namespace

/// Escape on every page and in everything that opens there.
class TestAppEscape : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void init();

    void closesTheTopmost_data();
    void closesTheTopmost();
    void asksBeforeEditsGo();

private:
    void restore() override;
    bool arriveAt(const QString &name);
    bool pressAll(const More &more);
    bool waitUntilSettled();
    QVector<QObject *> popups() const;
    QString namesOf(const QVector<QObject *> &popups) const;
    QObject *ownerOf(const QQuickItem *item) const;
    void noteFocus();
    bool keysAreSeen() const;
    QHash<QString, QString> texts() const;

    /// Who had the keys last in each popup, and on the page (null).
    QHash<QObject *, QPointer<QQuickItem>> m_keys;
    QMetaObject::Connection m_noted;
};

void TestAppEscape::init()
{
    m_keys.clear();
    m_noted = connect(m_window->window(), &QQuickWindow::activeFocusItemChanged, this,
                      &TestAppEscape::noteFocus);
}

void TestAppEscape::restore()
{
    disconnect(m_noted);
    leavePage(*m_window);
    m_window->window()->resize(Wide);
    QVERIFY(m_window->waitForItem(QStringLiteral("sidebar")));
    // A narrow window would show the details in the place of the list.
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_steps->show("personal"));
}

/// What is open, from below. Notes that nobody has to close are none of it.
QVector<QObject *> TestAppEscape::popups() const
{
    QVector<QObject *> open;
    const QList<QQuickItem *> layers = m_window->window()->contentItem()->childItems();
    for (const QQuickItem *layer : layers) {
        if (!layer->inherits("QQuickOverlay"))
            continue;
        const QList<QQuickItem *> items = layer->childItems();
        for (const QQuickItem *item : items) {
            // The popup itself; there are dimming backgrounds as well.
            QObject *popup = item->inherits("QQuickPopupItem") ? item->parent() : nullptr;
            if (popup && !popup->inherits("QQuickToolTip")
                && popup->objectName() != QLatin1String("toast")
                && popup->property("visible").toBool())
                open += popup;
        }
    }
    return open;
}

/// Waits until nothing is on its way in or out.
bool TestAppEscape::waitUntilSettled()
{
    return m_window->waitUntilStill() && m_window->waitFor([this] {
        const QVector<QObject *> open = popups();
        return std::all_of(open.begin(), open.end(),
                           [](const QObject *one) { return one->property("opened").toBool(); });
    });
}

QString TestAppEscape::namesOf(const QVector<QObject *> &popups) const
{
    QStringList names;
    for (const QObject *popup : popups)
        names += popup->objectName().isEmpty() ? QLatin1String(popup->metaObject()->className())
                                               : popup->objectName();
    return names.join(QLatin1String(", "));
}

QObject *TestAppEscape::ownerOf(const QQuickItem *item) const
{
    const QVector<QObject *> open = popups();
    for (; item; item = item->parentItem()) {
        for (QObject *popup : open) {
            if (popupItem(popup) == item)
                return popup;
        }
    }
    return nullptr;
}

void TestAppEscape::noteFocus()
{
    QQuickItem *item = m_window->window()->activeFocusItem();
    // A popup that has just closed gives them back by way of the window's root.
    if (item && item != m_window->window()->contentItem() && !item->inherits("QQuickPopupItem"))
        m_keys[ownerOf(item)] = item;
}

/// What is in the fields that can be seen.
QHash<QString, QString> TestAppEscape::texts() const
{
    QHash<QString, QString> found;
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        if (item->inherits("QQuickTextField"))
            found.insert(describeItem(item), item->property("text").toString());
    });
    return found;
}

bool TestAppEscape::pressAll(const More &more)
{
    for (const char *press : more.presses) {
        const bool menu = *press == '@';
        const QString name = QLatin1String(press + (menu ? 1 : 0));
        if (!m_window->waitForItem(name) || !m_window->waitUntilStill())
            return false;
        QQuickItem *item = m_window->item(name);
        if (!item->activeFocusOnTab())
            item = item->nextItemInFocusChain(true); // what it is made of
        item->forceActiveFocus(Qt::TabFocusReason);
        if (menu)
            m_window->key(Qt::Key_Home); // a list has a menu for its rows only
        m_window->key(menu ? Qt::Key_Menu : Qt::Key_Space);
        if (!m_window->waitUntilStill())
            return false;
    }
    return true;
}

bool TestAppEscape::arriveAt(const QString &name)
{
    const auto *more = std::find_if(std::begin(mores), std::end(mores), [&](const More &one) {
        return name == QLatin1String(one.name);
    });
    if (more == std::end(mores))
        return visitPage(*m_window, m_data, name);
    if (!visitPage(*m_window, m_data, QLatin1String(more->page)))
        return false;
    const QString below = namesOf(popups());
    return pressAll(*more) && m_window->waitFor([&] { return namesOf(popups()) != below; });
}

void TestAppEscape::closesTheTopmost_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QSize>("size");
    QStringList names = pageNames();
    names += {QStringLiteral("edit"), QStringLiteral("locked-import")};
    names.removeAll(QStringLiteral("waiting-import")); // the next file comes when one goes
    for (const More &more : mores)
        names += QLatin1String(more.name);
    for (const QString &name : qAsConst(names))
        QTest::newRow(qPrintable(name)) << name << Narrow;
    // Here the details stand beside the list, and have the keys as well as that.
    for (const char *name : {"details", "search", "requests", "edit", "remove", "pem", "step",
                             "row-menu", "sign", "change-pin"})
        QTest::newRow(qPrintable(QLatin1String(name) + QStringLiteral(", wide")))
            << QString::fromLatin1(name) << Wide;
}

void TestAppEscape::closesTheTopmost()
{
    QFETCH(QString, page);
    QFETCH(QSize, size);
    m_window->window()->resize(size);
    QVERIFY(m_window->waitForItem(size == Wide ? QStringLiteral("sidebar")
                                               : QStringLiteral("menuButton")));
    QVERIFY(arriveAt(page));
    QVERIFY(waitUntilSettled());
    QVector<QObject *> open = popups();
    const QString current = m_window->window()->property("current").toString();
    const QHash<QString, QString> before = texts();
    if (!open.isEmpty())
        open.removeLast();
    const QPointer<QQuickItem> opener = m_keys.value(open.isEmpty() ? nullptr : open.last());
    const bool isPage = popups().isEmpty();
    m_window->key(Qt::Key_Escape);
    QVERIFY(waitUntilSettled());
    // One thing has gone, and what lies below it has the keys again.
    QCOMPARE(namesOf(popups()), namesOf(open));
    QCOMPARE(m_window->window()->property("current").toString(), current);
    QVERIFY2(keysAreSeen(), qPrintable(page));
    if (!isPage && opener && opener->isVisible())
        QCOMPARE(describeItem(m_window->window()->activeFocusItem()), describeItem(opener));
    // What was typed stays, but for a search, which Escape is there to end.
    QHash<QString, QString> after = texts();
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (after.contains(it.key()) && !it.key().contains(QLatin1String("searchField")))
            QCOMPARE(after.value(it.key()), it.value());
    }
    if (!open.isEmpty())
        return;
    m_window->key(Qt::Key_Escape);
    QVERIFY(waitUntilSettled());
    QVERIFY(m_window->window()->isVisible());
    QCOMPARE(m_window->window()->property("current").toString(), current);
    QVERIFY2(keysAreSeen(), qPrintable(page));
}

bool TestAppEscape::keysAreSeen() const
{
    const QQuickItem *item = m_window->window()->activeFocusItem();
    return item && item->isVisible() && item->isEnabled()
        && item != m_window->window()->contentItem();
}

void TestAppEscape::asksBeforeEditsGo()
{
    QVERIFY(visitPage(*m_window, m_data, QStringLiteral("edit")));
    QVERIFY(m_steps->waitOpen("editRequestDialog"));
    const QString saved = m_steps->text("organizationInput");
    QVERIFY(m_window->fill(QStringLiteral("organizationInput"), QStringLiteral("Typed")));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitOpen("leaveEditing"));
    QVERIFY(m_window->isOpen(QStringLiteral("editRequestDialog")));
    // Escape is no consent.
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("leaveEditing"));
    QVERIFY(m_window->isOpen(QStringLiteral("editRequestDialog")));
    QCOMPARE(m_steps->text("organizationInput"), QStringLiteral("Typed"));
    QVERIFY(m_window->item(QStringLiteral("organizationInput"))->hasActiveFocus());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitOpen("leaveEditing"));
    QVERIFY(m_steps->press("leaveEditingConfirm"));
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
    // What was thrown away does not come back, and what is there again is left without a question.
    QVERIFY(m_steps->press("editButton"));
    QVERIFY(m_steps->waitOpen("editRequestDialog"));
    QCOMPARE(m_steps->text("organizationInput"), saved);
    QVERIFY(m_window->fill(QStringLiteral("organizationInput"), QStringLiteral("Typed")));
    QVERIFY(m_window->fill(QStringLiteral("organizationInput"), saved));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppEscape>(argc, argv);
}

#include "tst_app_escape.moc"
