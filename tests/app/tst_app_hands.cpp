// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/windowtest.h"
#include "tests/support/userfiles.h"

#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QStyleHints>
#include <QtTest>

using namespace TrivexTest;

namespace {

/// Names with the issuer and the days that their certificates have left: sorted by each, the order
/// is another one.
struct Person {
    const char *name;
    const char *issuer;
    int days;
};
constexpr Person Persons[] = {{"Anna", "Zeta", 300},
                              {"boris", "Alpha", 500},
                              {"Clara", "Zeta", 100},
                              {"Dmitri", "Beta", 400},
                              {"Elena", "Alpha", 200}};

} // namespace

/// What hands expect of a list: the keys, buttons and menus that act on rows, one or several.
class TestAppHands : public WindowTest {
    Q_OBJECT
public:
    using WindowTest::WindowTest;

private Q_SLOTS:
    void init();

    void deleteAsks();
    void systemRowsStay();
    void rowIsCopied();
    void enterAndEscape_data();
    void enterAndEscape();
    void menuOfARow_data();
    void menuOfARow();
    void rightButtonTakesItsRow();
    void doubleClickOpensOnce();
    void severalByMouse();
    void severalByKeyboard();
    void severalAreFollowed();
    void severalWithoutTheCurrent();
    void severalAreExported();
    void severalAreRemoved();
    void requestsAreRemoved();
    void sorted_data();
    void sorted();
    void orderIsRemembered();
    void lettersSearch();
    void keysAfterRemoval();

private:
    void prepare() override;
    void restore() override;
    QString userFile(const QString &name) const;
    bool addUser(const Person &person) const;
    QQuickItem *list() const { return m_window->item(QStringLiteral("certificateList")); }
    QQuickItem *rowItem(const char *name) const;
    QPoint middleOf(const char *name) const;
    void clickRow(const char *name, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The names in the order of the list.
    QString names() const;
    QString chosen() const;
    bool isInDetails() const;
    QPoint underTheButton();
    bool clicksTwice(const QPoint &place);
};

QString TestAppHands::userFile(const QString &name) const
{
    return TrivexTest::userFile(name + QStringLiteral(".pem"));
}

bool TestAppHands::addUser(const Person &person) const
{
    const QString name = QLatin1String(person.name);
    const QString issuer = m_authority.file(QLatin1String(person.issuer));
    if (!QFile::exists(issuer + QStringLiteral(".pem"))) {
        m_authority.openssl({QStringLiteral("req"), QStringLiteral("-x509"),
                             QStringLiteral("-newkey"), QStringLiteral("ed25519"),
                             QStringLiteral("-nodes"), QStringLiteral("-keyout"),
                             issuer + QStringLiteral(".key"), QStringLiteral("-out"),
                             issuer + QStringLiteral(".pem"), QStringLiteral("-subj"),
                             QStringLiteral("/CN=") + QLatin1String(person.issuer)});
    }
    const QByteArray certificate = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-CA"), issuer + QStringLiteral(".pem"),
         QStringLiteral("-CAkey"), issuer + QStringLiteral(".key"), QStringLiteral("-days"),
         QString::number(person.days), QStringLiteral("-subj"), QStringLiteral("/CN=") + name});
    return !certificate.isEmpty() && !writeTestFile(userFile(name), certificate).isEmpty();
}

void TestAppHands::prepare()
{
    for (const char *name : {"One", "Two", "Three"}) {
        const QByteArray request = m_authority.openssl(
            {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
             QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
             QStringLiteral("/dev/null"), QStringLiteral("-subj"),
             QStringLiteral("/CN=") + QLatin1String(name)});
        QVERIFY(!writeTestFile(
                     inHome(QStringLiteral("CertificateRequest/%1.csr").arg(QLatin1String(name))),
                     request)
                     .isEmpty());
    }
}

void TestAppHands::init()
{
    for (const Person &person : Persons) {
        if (!QFile::exists(userFile(QLatin1String(person.name))))
            QVERIFY(addUser(person));
    }
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), int(std::size(Persons)));
    m_window->takeWarnings();
}

void TestAppHands::restore()
{
    if (QFileDialog *dialog = fileDialog())
        dialog->reject();
    m_window->window()->requestActivate();
    m_steps->escape();
    m_window->window()->resize(1180, 760);
    QVERIFY(m_window->waitForItem(QStringLiteral("sidebar")));
}

QQuickItem *TestAppHands::rowItem(const char *name) const
{
    QQuickItem *row = nullptr;
    QMetaObject::invokeMethod(list(), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, row),
                              Q_ARG(int, m_window->rowNamed(QLatin1String(name))));
    return row;
}

QPoint TestAppHands::middleOf(const char *name) const
{
    const QQuickItem *row = rowItem(name);
    return row ? row->mapToScene({row->width() / 2, row->height() / 2}).toPoint() : QPoint();
}

void TestAppHands::clickRow(const char *name, Qt::MouseButton button,
                            Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(m_window->window(), button, modifiers, middleOf(name));
}

QString TestAppHands::names() const
{
    const auto *model = list()->property("model").value<QAbstractItemModel *>();
    QStringList names;
    for (int row = 0; model && row < model->rowCount(); ++row)
        names += valueOf(*model, row, "name").toString();
    return names.join(QLatin1Char(' '));
}

QString TestAppHands::chosen() const
{
    QStringList names;
    for (int row = 0; row < m_window->rowCount(); ++row) {
        QQuickItem *item = nullptr;
        QMetaObject::invokeMethod(list(), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, item),
                                  Q_ARG(int, row));
        if (item && item->property("highlighted").toBool())
            names += item->property("name").toString();
    }
    return names.join(QLatin1Char(' '));
}

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

void TestAppHands::severalByMouse()
{
    clickRow("Anna");
    clickRow("Clara", Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(chosen(), QStringLiteral("Anna Clara"));
    QTRY_COMPARE(m_steps->text("selectionCount"), qtTrId("trivex-app-chosen", 2));
    // No details of one, with buttons that would act on it alone.
    QVERIFY(!m_window->item(QStringLiteral("detailsView")));
    clickRow("Elena", Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(chosen(), QStringLiteral("Clara Dmitri Elena"));
    clickRow("Dmitri", Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(chosen(), QStringLiteral("Clara Elena"));
    clickRow("Clara", Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(chosen(), QStringLiteral("Elena"));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    clickRow("Anna", Qt::LeftButton, Qt::ControlModifier);
    clickRow("boris");
    QCOMPARE(chosen(), QStringLiteral("boris"));
}

void TestAppHands::severalByKeyboard()
{
    clickRow("boris");
    m_window->key(Qt::Key_Down, Qt::ShiftModifier);
    m_window->key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(chosen(), QStringLiteral("boris Clara Dmitri"));
    m_window->key(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(chosen(), QStringLiteral("boris Clara"));
    m_window->key(Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(chosen(), QStringLiteral("Anna boris"));
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(chosen(), QStringLiteral("Anna boris Clara Dmitri Elena"));
    m_window->key(Qt::Key_C, Qt::ControlModifier);
    QTRY_COMPARE(QGuiApplication::clipboard()->text().split(QLatin1Char('\n')).size(), 5);
    m_window->key(Qt::Key_Escape);
    QCOMPARE(chosen(), QStringLiteral("Anna"));
    m_window->key(Qt::Key_Down);
    QCOMPARE(chosen(), QStringLiteral("boris"));
}

void TestAppHands::severalAreFollowed()
{
    clickRow("boris");
    clickRow("Dmitri", Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(addUser({"Bella", "Alpha", 50}));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Bella")) >= 0);
    QTRY_COMPARE(chosen(), QStringLiteral("boris Dmitri"));
    QVERIFY(QFile::remove(userFile(QStringLiteral("Bella"))));
    QTRY_COMPARE(m_window->rowCount(), 5);
    QTRY_COMPARE(chosen(), QStringLiteral("boris Dmitri"));
    // Nothing that is not seen is acted on.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("ri")));
    QTRY_COMPARE(names(), QStringLiteral("boris Dmitri"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("dmi")));
    QTRY_COMPARE(names(), QStringLiteral("Dmitri"));
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QCOMPARE(m_window->object(QStringLiteral("removeDialog"))->property("name").toString(),
             QStringLiteral("Dmitri"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
}

void TestAppHands::severalWithoutTheCurrent()
{
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 3);
    clickRow("Two");
    clickRow("One", Qt::LeftButton, Qt::ControlModifier);
    clickRow("Three", Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("o")));
    QTRY_COMPARE(names(), QStringLiteral("One Two"));
    QTRY_COMPARE(chosen(), QStringLiteral("One Two"));
    // What is asked is asked of what is seen.
    QVERIFY(m_window->click(QStringLiteral("removeSeveral")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QCOMPARE(m_window->object(QStringLiteral("removeDialog"))->property("title").toString(),
             qtTrId("trivex-app-remove-requests-title", 2));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    // One that is left is as good as chosen alone.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("tw")));
    QTRY_COMPARE(names(), QStringLiteral("Two"));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    // Those that come back are chosen again.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
    QTRY_COMPARE(chosen(), QStringLiteral("One Three Two"));
}

void TestAppHands::severalAreExported()
{
    const QString folder = inHome(QStringLiteral("Несколько"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(!writeTestFile(folder + QStringLiteral("/Anna.crt"), "precious").isEmpty());
    clickRow("Anna");
    clickRow("Clara", Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(m_window->click(QStringLiteral("exportSeveral")));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QCOMPARE(fileDialog()->fileMode(), QFileDialog::Directory);
    QVERIFY(answerFileDialog(*m_window, folder));
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-exported").arg(folder));
    QStringList files = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    QCOMPARE(files.join(QLatin1Char(' ')),
             QStringLiteral("Anna (2).crt Anna.crt Clara.crt boris.crt"));
    QFile precious(folder + QStringLiteral("/Anna.crt"));
    QVERIFY(precious.open(QIODevice::ReadOnly));
    QCOMPARE(precious.readAll(), QByteArray("precious"));
    for (const QString &file : {QStringLiteral("Anna (2)"), QStringLiteral("boris")}) {
        const QString subject = QString::fromUtf8(m_authority.openssl(
            {QStringLiteral("x509"), QStringLiteral("-noout"), QStringLiteral("-subject"),
             QStringLiteral("-in"), folder + QLatin1Char('/') + file + QStringLiteral(".crt")}));
        QVERIFY2(subject.contains(file.left(4)), qPrintable(subject));
    }
}

void TestAppHands::severalAreRemoved()
{
    clickRow("Anna");
    clickRow("Clara", Qt::LeftButton, Qt::ShiftModifier);
    clickRow("boris", Qt::LeftButton, Qt::ControlModifier);
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    const QObject *dialog = m_window->object(QStringLiteral("removeDialog"));
    QCOMPARE(dialog->property("name").toString(), QStringLiteral("Anna\nClara"));
    QCOMPARE(dialog->property("title").toString(), qtTrId("trivex-app-remove-several-title", 2));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QTRY_COMPARE(names(), QStringLiteral("boris Dmitri Elena"));
    QVERIFY(!QFile::exists(userFile(QStringLiteral("Anna"))));
    QVERIFY(!QFile::exists(userFile(QStringLiteral("Clara"))));
    QVERIFY(QFile::exists(userFile(QStringLiteral("boris"))));
    QVERIFY(QFile::exists(userFile(QStringLiteral("Dmitri"))));
}

void TestAppHands::requestsAreRemoved()
{
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 3);
    QCOMPARE(names(), QStringLiteral("One Three Two"));
    clickRow("One");
    clickRow("Two", Qt::LeftButton, Qt::ControlModifier);
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QTRY_COMPARE(names(), QStringLiteral("Three"));
    QCOMPARE(QDir(inHome(QStringLiteral("CertificateRequest")))
                 .entryList(QDir::Files)
                 .join(QLatin1Char(' ')),
             QStringLiteral("Three.csr"));
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
