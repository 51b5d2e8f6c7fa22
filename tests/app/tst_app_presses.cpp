// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QtTest>

using namespace TrivexTest;

/// A press does what its button says, or somebody says why not: under a notice, at the edge of what
/// can be seen, and where a value is refused.
class TestAppPresses : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void createUnderANotice();
    void createPartlyHidden();
    void partlyHidden_data();
    void partlyHidden();
    void flagAtTheEdge();
    void keyWhileAnotherIsMade();
    void deleteOfTheSystems();
    void exportOfKeysAlone();
    void typedPathIsWrong();
    void requestThatCannotBeSaved();

private:
    void restore() override { m_token.control(); }
    /// The page with a key that has no request yet, and a name for it.
    bool prepareRequest(const QString &name);
    /// What can be seen of an item, in the window.
    static QRectF seen(const QQuickItem *item);
    /// Presses the mouse there, with a hand that is not quite still, and lets it go.
    void press(const QPointF &place) const;
    bool resize(int width, int height);
};

void TestAppPresses::init()
{
    answerPins(rightPin());
    QVERIFY(resize(1180, 760));
}

bool TestAppPresses::resize(int width, int height)
{
    m_window->window()->resize(width, height);
    return m_window->waitFor([&] {
        return m_window->window()->size() == QSize(width, height)
            && m_window->window()->contentItem()->height() == height;
    }) && m_window->waitUntilStill();
}

bool TestAppPresses::prepareRequest(const QString &name)
{
    return m_steps->startKey(QStringLiteral("pressed"), rightPin()) && m_steps->waitForKey()
        && m_window->fill(QStringLiteral("commonNameInput"), name) && m_window->waitUntilStill();
}

QRectF TestAppPresses::seen(const QQuickItem *item)
{
    QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
    for (const QQuickItem *up = item->parentItem(); up; up = up->parentItem()) {
        if (up->clip())
            place &= up->mapRectToScene({0, 0, up->width(), up->height()});
    }
    return place & item->window()->contentItem()->boundingRect();
}

void TestAppPresses::press(const QPointF &place) const
{
    QTest::mousePress(m_window->window(), Qt::LeftButton, Qt::NoModifier, place.toPoint());
    QTest::mouseMove(m_window->window(), place.toPoint() + QPoint(1, 0));
    QTest::mouseRelease(m_window->window(), Qt::LeftButton, Qt::NoModifier, place.toPoint());
}

/// What was told a moment ago lies over the button for some seconds.
void TestAppPresses::createUnderANotice()
{
    QVERIFY(prepareRequest(QStringLiteral("Under a notice")));
    const QQuickItem *button = m_window->item(QStringLiteral("createRequest"));
    QVERIFY(button);
    QObject *notice = m_window->object(QStringLiteral("toast"));
    const QString long_(400, QLatin1Char('m'));
    QVERIFY(QMetaObject::invokeMethod(notice, "show", Q_ARG(QVariant, long_),
                                      Q_ARG(QVariant, QString())));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")) && m_window->waitUntilStill());
    const QQuickItem *text = m_window->item(QStringLiteral("toastText"));
    const auto middle = [](const QQuickItem *item) {
        return item->mapToScene({item->width() / 2, item->height() / 2});
    };
    const int height = m_window->window()->height();
    QVERIFY(resize(1180, height + qRound(middle(button).y() - middle(text).y())));
    // It goes by itself, and a busy machine may take that long to resize the window.
    QVERIFY(QMetaObject::invokeMethod(notice, "show", Q_ARG(QVariant, long_),
                                      Q_ARG(QVariant, QString())));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")) && m_window->waitUntilStill());
    const QQuickItem *sheet = text->parentItem()->parentItem();
    const QRectF covered = seen(sheet) & seen(button);
    QVERIFY2(covered.width() > 20 && covered.height() > 10, "the notice lies elsewhere");
    QVERIFY(notice->property("visible").toBool());
    press(covered.center());
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard"), 10000));
    QMetaObject::invokeMethod(notice, "close");
    QVERIFY(m_steps->waitClosed("toast"));
}

void TestAppPresses::createPartlyHidden()
{
    QVERIFY(prepareRequest(QStringLiteral("Partly hidden")));
    const QQuickItem *button = m_window->item(QStringLiteral("createRequest"));
    QVERIFY(button);
    const QQuickItem *page = m_window->item(QStringLiteral("newRequestPage"));
    const qreal bottom = page->mapToScene({0, page->height()}).y();
    const qreal top = button->mapToScene({0, 0}).y();
    QVERIFY(resize(1180, m_window->window()->height() - qRound(bottom - top - 10)));
    const QRectF part = seen(button);
    QVERIFY2(part.height() > 4 && part.height() < 15, qPrintable(QString::number(part.height())));
    press(part.center());
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard"), 10000));
}

void TestAppPresses::partlyHidden_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("parts");
    const QString parts =
        QStringLiteral("Button { objectName: \"first\"; text: \"First\" }"
                       "Item { id: filler; objectName: \"filler\"; implicitWidth: 10; height: 1 }"
                       "Button { objectName: \"pressed\"; text: \"Press\""
                       "; property int presses: 0; onClicked: ++presses }"
                       "Item { implicitWidth: 10; height: 300 }");
    QTest::newRow("page") << QStringLiteral("FormPage { width: 300; height: 300; ") << parts;
    QTest::newRow("dialog") << QStringLiteral("BaseDialog { height: 300; title: \"A\"; ") << parts;
}

void TestAppPresses::partlyHidden()
{
    QFETCH(QString, type);
    QFETCH(QString, parts);
    QQmlComponent component(qmlEngine(m_window->window()));
    const QString head = QStringLiteral("import QtQuick 2.15\nimport QtQuick.Controls 2.15\n"
                                        "import Trivex.Crypto.Controls 1.0\n");
    component.setData((head + type + parts + QLatin1Char('}')).toUtf8(), QUrl());
    const std::unique_ptr<QObject> made(component.create());
    QVERIFY2(made, qPrintable(component.errorString()));
    if (auto *page = qobject_cast<QQuickItem *>(made.get())) {
        page->setParentItem(m_window->window()->contentItem());
        page->setZ(10);
    } else {
        made->setParent(m_window->window());
        made->setProperty(
            "parent", QVariant::fromValue(m_window->item(QStringLiteral("sidebar"))->parentItem()));
        QMetaObject::invokeMethod(made.get(), "open");
        QTRY_VERIFY(made->property("opened").toBool());
    }
    const auto part = [&](const char *name) {
        return made->findChild<QQuickItem *>(QLatin1String(name));
    };
    QQuickItem *button = part("pressed");
    const auto *view = qobject_cast<QQuickItem *>(made.get());
    if (!view)
        view = made->property("contentItem").value<QQuickItem *>();
    const qreal bottom = view->mapToScene({0, view->height()}).y();
    QQuickItem *filler = part("filler");
    QVERIFY(m_window->waitUntilStill());
    filler->setHeight(filler->height() + bottom - button->mapToScene({0, 0}).y() - 10);
    QTRY_VERIFY(seen(button).height() < button->height());
    const QRectF visible = seen(button);
    QVERIFY2(visible.height() > 4 && visible.height() < 15,
             qPrintable(QString::number(visible.height())));
    press(visible.center());
    QCOMPARE(button->property("presses").toInt(), 1);
    QVERIFY(button->hasActiveFocus());
    // By keyboard it comes into sight, as ever.
    part("first")->forceActiveFocus(Qt::TabFocusReason);
    button->forceActiveFocus(Qt::TabFocusReason);
    QTRY_COMPARE(seen(button).height(), button->height());
    if (!qobject_cast<QQuickItem *>(made.get())) {
        QMetaObject::invokeMethod(made.get(), "close");
        QTRY_VERIFY(!made->property("visible").toBool());
    }
}

/// What is wrong with a value is seen beside its field, also where that lies at the lower edge.
void TestAppPresses::flagAtTheEdge()
{
    QVERIFY(prepareRequest(QStringLiteral("Flagged")));
    QQuickItem *input = m_window->item(QStringLiteral("emailInput"));
    QVERIFY(input);
    const QQuickItem *page = m_window->item(QStringLiteral("newRequestPage"));
    const auto endOf = [](const QQuickItem *item) {
        return item->mapToScene({0, item->height()}).y();
    };
    QVERIFY(resize(1180, m_window->window()->height() - qRound(endOf(page) - endOf(input) - 2)));
    QVERIFY(m_window->click(QStringLiteral("emailInput")));
    QVERIFY(m_window->waitUntilStill());
    m_window->type(QStringLiteral("petr@@"));
    QVERIFY(!m_steps->flag("emailField").isEmpty());
    const QQuickItem *field = m_window->item(QStringLiteral("emailField"));
    QTRY_VERIFY_WITH_TIMEOUT(m_window->isInSight(*field), 10000);
    // A request is refused with the keys in that field.
    QVERIFY(m_steps->press("createRequest"));
    QTRY_VERIFY(input->hasActiveFocus() && m_window->isInSight(*field));
    QVERIFY(!m_window->item(QStringLiteral("savedCard")));
}

/// While a key is made no request is begun for another one, and that is said.
void TestAppPresses::keyWhileAnotherIsMade()
{
    QVERIFY(prepareRequest(QStringLiteral("Left")));
    QVERIFY(m_steps->press("leaveKey"));
    QVERIFY(m_steps->waitEnabled("keyNameInput"));
    const QString storeId = m_steps->tokenStoreId();
    m_token.control("hold C_GenerateKeyPair *");
    QVERIFY(m_steps->startKey(QStringLiteral("slow"), rightPin()));
    QVERIFY(m_token.waitUntilInside("C_GenerateKeyPair"));
    QVERIFY(m_window->waitForItem(QStringLiteral("generateCancel")));
    QObject *loader = m_window->item(QStringLiteral("newRequestPage"))->parentItem();
    QMetaObject::invokeMethod(loader, "useKey", Q_ARG(QVariant, storeId),
                              Q_ARG(QVariant, QStringLiteral("01")),
                              Q_ARG(QVariant, QStringLiteral("another")));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-request-busy"));
    m_token.control();
    QVERIFY(m_steps->waitForKey());
}

void TestAppPresses::deleteOfTheSystems()
{
    QVERIFY(m_steps->show("system"));
    if (!m_window->waitFor([&] { return m_window->rowCount() > 0; }, 10000)) {
        std::printf("SKIP no certificates of the system\n");
        return;
    }
    QVERIFY(m_window->clickRow(0));
    m_window->key(Qt::Key_Delete);
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-system-stays"));
    QVERIFY(!m_window->isOpen(QStringLiteral("removeDialog")));
}

/// They become no files, which is said before anybody chooses a folder.
void TestAppPresses::exportOfKeysAlone()
{
    for (const char *name : {"first alone", "second alone"}) {
        QVERIFY(m_steps->startKey(QString::fromLatin1(name), rightPin()));
        QVERIFY(m_steps->waitForKey());
        QVERIFY(m_steps->press("leaveKey"));
    }
    QVERIFY(m_window->click(QStringLiteral("token-") + m_token.token().label()));
    const auto row = [&](const char *name) {
        return m_window->rowNamed(QString::fromLatin1(name));
    };
    QTRY_VERIFY(row("first alone") >= 0 && row("second alone") >= 0);
    QVERIFY(m_window->clickRow(row("first alone")));
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    QVERIFY(m_window->waitForItem(QStringLiteral("exportSeveral")));
    QVERIFY(m_window->click(QStringLiteral("exportSeveral")));
    QVERIFY(m_steps->waitOpen("errorDialog"));
    QCOMPARE(m_steps->text("errorAdvice"), qtTrId("trivex-app-keys-are-no-files"));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-export-failed"));
    QVERIFY(!fileDialog());
}

/// The chooser for applications without widgets keeps what was typed and says what is wrong.
void TestAppPresses::typedPathIsWrong()
{
    QQmlComponent component(qmlEngine(m_window->window()));
    component.setData("import Trivex.Crypto.Controls 1.0\n"
                      "FileChooser { property int answers: 0; onChosen: ++answers }",
                      QUrl());
    const std::unique_ptr<QObject> made(component.create());
    QVERIFY2(made, qPrintable(component.errorString()));
    made->setParent(m_window->window());
    made->setProperty("parent",
                      QVariant::fromValue(m_window->item(QStringLiteral("sidebar"))->parentItem()));
    QMetaObject::invokeMethod(made.get(), "open");
    QTRY_VERIFY(made->property("opened").toBool());
    const QString missing = inHome(QStringLiteral("there is no such file.pem"));
    QVERIFY(m_window->fill(QStringLiteral("filePath"), missing));
    m_window->key(Qt::Key_Return);
    QTRY_COMPARE(m_steps->text("filePathWrong"), qtTrId("trivex-app-path-missing"));
    QCOMPARE(m_steps->text("filePath"), missing);
    QVERIFY(made->property("opened").toBool());
    QCOMPARE(made->property("answers").toInt(), 0);
    const QString there = writeTestFile(inHome(QStringLiteral("there.pem")), "there");
    QVERIFY(m_window->fill(QStringLiteral("filePath"), there));
    QVERIFY(!m_window->item(QStringLiteral("filePathWrong")));
    m_window->key(Qt::Key_Return);
    QTRY_COMPARE(made->property("answers").toInt(), 1);
    QTRY_VERIFY(!made->property("visible").toBool());
}

/// A request that was made and found no place on the disk: it is said why, and the next press
/// saves it.
void TestAppPresses::requestThatCannotBeSaved()
{
    QVERIFY(prepareRequest(QStringLiteral("Without a place")));
    const QString folder = inHome(QStringLiteral("CertificateRequest"));
    const QString aside = inHome(QStringLiteral("aside"));
    const bool wasThere = QDir().rename(folder, aside);
    QVERIFY(!writeTestFile(folder, "a file of that name").isEmpty());
    QVERIFY(m_steps->press("createRequest"));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-request-not-made"));
    QVERIFY(!m_window->item(QStringLiteral("savedCard")));
    QVERIFY(QFile::remove(folder));
    QVERIFY(!wasThere || QDir().rename(aside, folder));
    QCOMPARE(m_steps->text("commonNameInput"), QStringLiteral("Without a place"));
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppPresses, FaultyToken>(argc, argv, QStringLiteral("Presses"));
}

#include "tst_app_presses.moc"
