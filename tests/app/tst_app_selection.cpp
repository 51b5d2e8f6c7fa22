// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"
#include "tests/support/userfiles.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QtTest>

#include <algorithm>

using namespace TrivexTest;

namespace {

const QString none = QStringLiteral("nothing");

} // namespace

/// What is highlighted, what is shown in detail and what would be removed are one and the same,
/// whatever becomes of the list.
class TestAppSelection : public WindowTest {
    Q_OBJECT
public:
    using WindowTest::WindowTest;

private Q_SLOTS:
    void init();

    void byMouseAndKeys();
    void searchMovesTheRow();
    void searchHidesTheRow();
    void enterInTheSearch();
    void rowsComeAndGoAround();
    void chosenRowGoes();
    void categoryChanges();
    void windowBecomesNarrow();
    void requestsAreListedAnew();
    void requestsOfOneName();
    void removalOfWhatHasGone();
    void removalGoesOn_data();
    void removalGoesOn();
    void anotherExportMeanwhile_data();
    void anotherExportMeanwhile();
    void helpFromTheDrawer();

private:
    void prepare() override;

    /// Chosen, by each of the three; told apart where they differ.
    QString chosen();
    QString highlighted() const;
    QString shown() const;
    QString removable();
    bool pick(const char *name);
    QString userFile(const char *name) const;
    bool addUser(const char *name) const;
    QString addRequest(const QString &file, const char *subject) const;
};

void TestAppSelection::prepare()
{
    for (const char *name : {"Anna", "Boris", "Clara", "Dmitri", "Elena"})
        QVERIFY(addUser(name));
    for (const char *name : {"Anna", "Boris", "Clara"}) {
        QVERIFY(!addRequest(QLatin1String(name) + QStringLiteral(".csr"), name).isEmpty());
    }
}

void TestAppSelection::init()
{
    m_window->window()->resize(1180, 760);
    QVERIFY(m_window->waitForItem(QStringLiteral("category-users")));
    // Without the search of the test before.
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_steps->show("users"));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Elena")) >= 0);
}

QString TestAppSelection::userFile(const char *name) const
{
    return TrivexTest::userFile(QLatin1String(name) + QStringLiteral(".pem"));
}

bool TestAppSelection::addUser(const char *name) const
{
    const QByteArray certificate = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-subj"),
         QStringLiteral("/O=Example/CN=") + QLatin1String(name)});
    return !writeTestFile(userFile(name), certificate).isEmpty();
}

QString TestAppSelection::addRequest(const QString &file, const char *subject) const
{
    const QByteArray request = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
         QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-subj"),
         QStringLiteral("/CN=") + QLatin1String(subject)});
    return writeTestFile(inHome(QStringLiteral("CertificateRequest/") + file), request);
}

QString TestAppSelection::highlighted() const
{
    QQuickItem *list = m_window->item(QStringLiteral("certificateList"));
    QStringList names;
    for (int i = 0; list && i < m_window->rowCount(); ++i) {
        QQuickItem *row = nullptr;
        QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem *, row),
                                  Q_ARG(int, i));
        if (row && row->property("highlighted").toBool())
            names += row->property("name").toString();
    }
    return names.isEmpty() ? none : names.join(QLatin1Char('+'));
}

QString TestAppSelection::shown() const
{
    const QQuickItem *view = m_window->item(QStringLiteral("detailsView"));
    const QObject *header = view ? view->property("header").value<QObject *>() : nullptr;
    return header ? header->property("name").toString() : none;
}

QString TestAppSelection::removable()
{
    const QQuickItem *button = m_window->item(QStringLiteral("removeButton"));
    if (!button || !button->isEnabled() || !m_window->click(QStringLiteral("removeButton")))
        return none;
    m_steps->waitOpen("removeDialog");
    const QString name =
        m_window->object(QStringLiteral("removeDialog"))->property("name").toString();
    m_window->key(Qt::Key_Escape);
    m_steps->waitClosed("removeDialog");
    return name;
}

QString TestAppSelection::chosen()
{
    m_window->waitUntilStill(); // a change of the list is taken up in the next turns of the loop
    const QString inList = highlighted();
    const QString inDetail = shown();
    const QString toGo = removable();
    if (inList == inDetail && inDetail == toGo)
        return inList;
    return QStringLiteral("list %1, details %2, removal %3").arg(inList, inDetail, toGo);
}

bool TestAppSelection::pick(const char *name)
{
    return m_window->waitFor([&] { return m_window->rowNamed(QLatin1String(name)) >= 0; })
        && m_window->clickRow(m_window->rowNamed(QLatin1String(name)));
}

void TestAppSelection::byMouseAndKeys()
{
    QCOMPARE(chosen(), none);
    QVERIFY(pick("Boris"));
    QCOMPARE(chosen(), QStringLiteral("Boris"));
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Down);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_End);
    QCOMPARE(chosen(), QStringLiteral("Elena"));
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Home);
    QCOMPARE(chosen(), QStringLiteral("Anna"));
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Up);
    QCOMPARE(chosen(), QStringLiteral("Anna"));
}

void TestAppSelection::searchMovesTheRow()
{
    QVERIFY(pick("Dmitri"));
    // Boris, Dmitri
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("ri")));
    QTRY_COMPARE(m_window->rowCount(), 2);
    QCOMPARE(chosen(), QStringLiteral("Dmitri"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("dmi")));
    QTRY_COMPARE(m_window->rowCount(), 1);
    QCOMPARE(chosen(), QStringLiteral("Dmitri"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
    QTRY_COMPARE(m_window->rowCount(), 5);
    QCOMPARE(chosen(), QStringLiteral("Dmitri"));
}

void TestAppSelection::searchHidesTheRow()
{
    QVERIFY(pick("Dmitri"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("lara")));
    QTRY_COMPARE(m_window->rowCount(), 1);
    QCOMPARE(chosen(), none);
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("nobody at all")));
    QTRY_COMPARE(m_window->rowCount(), 0);
    QCOMPARE(chosen(), none);
    // When the search ends, the row is chosen that was.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
    QTRY_COMPARE(m_window->rowCount(), 5);
    QCOMPARE(chosen(), QStringLiteral("Dmitri"));
    // Another choice meanwhile stays.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("lara")));
    QTRY_COMPARE(m_window->rowCount(), 1);
    QVERIFY(pick("Clara"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
    QTRY_COMPARE(m_window->rowCount(), 5);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
}

void TestAppSelection::enterInTheSearch()
{
    QVERIFY(pick("Anna"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("elena")));
    QTRY_COMPARE(m_window->rowCount(), 1);
    m_window->key(Qt::Key_Return);
    QCOMPARE(chosen(), QStringLiteral("Elena"));
}

void TestAppSelection::rowsComeAndGoAround()
{
    QVERIFY(pick("Clara"));
    QVERIFY(addUser("Adam"));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Adam")) >= 0);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
    QVERIFY(addUser("Zoe"));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Zoe")) >= 0);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
    QVERIFY(QFile::remove(userFile("Adam")));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Adam")) < 0);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
    QVERIFY(QFile::remove(userFile("Zoe")));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Zoe")) < 0);
    QCOMPARE(chosen(), QStringLiteral("Clara"));
}

void TestAppSelection::chosenRowGoes()
{
    QVERIFY(addUser("Cyril"));
    QVERIFY(pick("Cyril"));
    QCOMPARE(chosen(), QStringLiteral("Cyril"));
    QVERIFY(QFile::remove(userFile("Cyril")));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Cyril")) < 0);
    // Not its neighbour: a second press would remove that.
    QCOMPARE(chosen(), none);
}

void TestAppSelection::categoryChanges()
{
    QVERIFY(pick("Clara"));
    QVERIFY(m_steps->show("requests"));
    QCOMPARE(chosen(), none);
    QVERIFY(pick("Clara"));
    QCOMPARE(chosen(), QStringLiteral("Clara"));
    QVERIFY(m_steps->show("users"));
    QCOMPARE(chosen(), none);
}

void TestAppSelection::windowBecomesNarrow()
{
    QVERIFY(pick("Boris"));
    m_window->window()->resize(400, 700);
    QVERIFY(m_window->waitForItem(QStringLiteral("backButton")));
    QCOMPARE(shown(), QStringLiteral("Boris"));
    QCOMPARE(removable(), QStringLiteral("Boris"));
    QVERIFY(m_window->click(QStringLiteral("backButton")));
    QVERIFY(m_window->waitForItem(QStringLiteral("certificateList")));
    QTRY_COMPARE(highlighted(), QStringLiteral("Boris"));
    // By arrow one looks around; Enter opens.
    m_window->key(Qt::Key_Down);
    QTRY_COMPARE(highlighted(), QStringLiteral("Clara"));
    QCOMPARE(shown(), none);
    m_window->key(Qt::Key_Return);
    QTRY_COMPARE(shown(), QStringLiteral("Clara"));
    QCOMPARE(removable(), QStringLiteral("Clara"));
    m_window->window()->resize(1180, 760);
    QVERIFY(m_window->waitForItem(QStringLiteral("sidebar")));
    QCOMPARE(chosen(), QStringLiteral("Clara"));
}

void TestAppSelection::requestsAreListedAnew()
{
    QVERIFY(m_steps->show("requests"));
    QVERIFY(pick("Boris"));
    const QString added = addRequest(QStringLiteral("Adam.csr"), "Adam");
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Adam")) >= 0);
    QCOMPARE(chosen(), QStringLiteral("Boris"));
    QVERIFY(QFile::remove(added));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Adam")) < 0);
    QCOMPARE(chosen(), QStringLiteral("Boris"));
}

void TestAppSelection::requestsOfOneName()
{
    const QString first = addRequest(QStringLiteral("Same (1).csr"), "Same");
    const QString second = addRequest(QStringLiteral("Same.csr"), "Same");
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 5);
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Same")) + 1));
    QVERIFY(QFile::remove(first));
    QTRY_COMPARE(m_window->rowCount(), 4);
    QCOMPARE(chosen(), QStringLiteral("Same"));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QTRY_VERIFY(!QFile::exists(second));
    QTRY_COMPARE(m_window->rowCount(), 3);
    QCOMPARE(chosen(), none);
}

void TestAppSelection::removalOfWhatHasGone()
{
    const QString file = addRequest(QStringLiteral("Boris (1).csr"), "Boris");
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 4);
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Boris"))));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    // The list is made anew meanwhile, and then the request itself goes.
    const QString other = addRequest(QStringLiteral("Adam.csr"), "Adam");
    QTRY_COMPARE(m_window->rowCount(), 5);
    QVERIFY(m_window->isOpen(QStringLiteral("removeDialog")));
    QVERIFY(QFile::remove(file));
    QTRY_COMPARE(m_window->rowCount(), 4);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QCOMPARE(chosen(), none);
    QVERIFY(QFile::exists(inHome(QStringLiteral("CertificateRequest/Boris.csr"))));
    QVERIFY(QFile::remove(other));
}

void TestAppSelection::removalGoesOn_data()
{
    QTest::addColumn<QString>("entryId");
    QTest::addColumn<int>("type");
    // None of them is ever said to have ended; the last is not even to begin.
    QTest::newRow("no id") << QString() << 1;
    QTest::newRow("unknown id") << QStringLiteral("nobody") << 1;
    QTest::newRow("the system's") << QStringLiteral("Anna's") << 0;
}

void TestAppSelection::removalGoesOn()
{
    QFETCH(QString, entryId);
    QFETCH(int, type);
    const auto *model = m_window->item(QStringLiteral("certificateList"))
                            ->property("model")
                            .value<QAbstractItemModel *>();
    if (type == 0)
        entryId = valueOf(*model, 0, "entryId").toString();
    const QVariantMap row{{QStringLiteral("identity"), valueOf(*model, 0, "identity")},
                          {QStringLiteral("entryId"), entryId},
                          {QStringLiteral("name"), QStringLiteral("Anna")},
                          {QStringLiteral("type"), type}};
    auto *queue =
        m_window->object(QStringLiteral("removeDialog"))->property("queue").value<QObject *>();
    QVERIFY(QMetaObject::invokeMethod(queue, "start",
                                      Q_ARG(QVariant, QVariant(QVariantList{QVariant(row)}))));
    QVERIFY(pick("Elena"));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QTRY_COMPARE(m_window->rowNamed(QStringLiteral("Elena")), -1);
    QVERIFY(m_window->rowNamed(QStringLiteral("Anna")) >= 0);
    QVERIFY(addUser("Elena"));
}

void TestAppSelection::anotherExportMeanwhile_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("into another folder") << true;
    QTest::newRow("given up") << false;
}

void TestAppSelection::anotherExportMeanwhile()
{
    QFETCH(bool, accepted);
    const QString name = accepted ? QStringLiteral("first") : QStringLiteral("kept");
    const QString first = inHome(name);
    const QString second = inHome(QStringLiteral("second"));
    QVERIFY(QDir().mkpath(first) && QDir().mkpath(second));
    QVERIFY(pick("Anna"));
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    QVERIFY(m_window->click(QStringLiteral("exportSeveral")));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QVERIFY(QTest::qWaitForWindowExposed(fileDialog()));
    fileDialog()->setDirectory(first);
    auto *box = fileDialog()->findChild<QDialogButtonBox *>();
    const QList<QAbstractButton *> buttons = box->buttons();
    const auto accept =
        std::find_if(buttons.cbegin(), buttons.cend(), [box](QAbstractButton *button) {
            return box->buttonRole(button) == QDialogButtonBox::AcceptRole;
        });
    QVERIFY(accept != buttons.cend());
    (*accept)->click();
    // In the same turn, so that nothing of the first set is written yet: another set, and a search
    // that takes the first out of sight.
    auto *task = m_window->window()->findChild<QObject *>(QStringLiteral("saveSeveral"));
    const auto *model = m_window->item(QStringLiteral("certificateList"))
                            ->property("model")
                            .value<QAbstractItemModel *>();
    const QVariantList boris{valueOf(*model, 1, "identity")};
    QVERIFY(QMetaObject::invokeMethod(task, "choose", Q_ARG(QVariant, QVariant(boris))));
    m_window->item(QStringLiteral("searchField"))->setProperty("text", QStringLiteral("boris"));
    QVERIFY(answerFileDialog(*m_window, second, accepted));
    QTRY_COMPARE(QDir(first).entryList(QDir::Files).size(), 5);
    QTRY_COMPARE(QDir(second).entryList(QDir::Files).size(), accepted ? 1 : 0);
    QVERIFY(QDir(second).removeRecursively());
    // The display has no window manager and minds the focus of a dialog that closed and opened.
    m_window->takeWarnings();
}

void TestAppSelection::helpFromTheDrawer()
{
    m_window->window()->resize(400, 700);
    QVERIFY(m_window->waitForItem(QStringLiteral("menuButton")));
    for (const char *button : {"helpButton", "settingsButton"}) {
        const bool isHelp = qstrcmp(button, "helpButton") == 0;
        QVERIFY(m_window->click(QStringLiteral("menuButton")));
        QVERIFY(m_steps->waitOpen("drawer"));
        QVERIFY(m_window->waitUntilStill());
        QVERIFY(m_window->click(QLatin1String(button)));
        QVERIFY(m_steps->waitOpen(isHelp ? "manualDialog" : "settingsDialog"));
        QVERIFY(m_steps->waitClosed("drawer"));
        m_window->key(Qt::Key_Escape);
        QVERIFY(m_steps->waitClosed(isHelp ? "manualDialog" : "settingsDialog"));
    }
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    return runWindowTest<TestAppSelection>(argc, argv, display);
}

#include "tst_app_selection.moc"
