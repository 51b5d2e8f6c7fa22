// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/looks.h"
#include "tests/controls/controlstest.h"
#include "tests/support/testcertificates.h"

#include <QAccessible>
#include <QApplication>
#include <QFileDialog>
#include <QtTest>

using namespace TrivexTest;

/// Dialogs, lists and forms in a foreign application: used, narrow and large, in both languages.
class TestControlsViews : public ControlsTest {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void importDialog_data() { languagesAndSizes(); }
    void importDialog();
    void importChosen();
    void chooserTakesWhatIsTyped();
    void rowWithTheKeysIsFramed();
    void clickedFieldComesIntoSight_data();
    void clickedFieldComesIntoSight();
    void boxIsTickedByEnter();
    void secondPressIsOfTheSameList();
    void smallDialogs_data() { languagesAndSizes(); }
    void smallDialogs();
    void lists_data() { languagesAndSizes(); }
    void lists();
    void forms_data() { languagesAndSizes(); }
    void forms();

private:
    TestAuthority m_authority;
    QString m_bundle;
};

void TestControlsViews::initTestCase()
{
    m_bundle = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("EC"), QStringLiteral("-pkeyopt"),
         QStringLiteral("ec_paramgen_curve:P-256")},
        QStringLiteral("/CN=Мария Иванова"), QStringLiteral("secret"), QStringLiteral("maria"));
    QVERIFY(!m_bundle.isEmpty());
}

void TestControlsViews::importDialog()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(QStringLiteral("ImportDialog {}"), locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QMetaObject::invokeMethod(host.object("importDialog"), "start", Q_ARG(QVariant, m_bundle));
    QVERIFY(host.waitOpen("importDialog"));
    QVERIFY(host.waitForItem("bundlePassword"));
    QTRY_VERIFY(host.item("bundleUnlock") && host.item("bundleUnlock")->isEnabled());
    looksWell(host, QStringLiteral("bundle"));
    host.item("bundlePassword")->forceActiveFocus();
    host.type(QStringLiteral("wrong"));
    QVERIFY(host.click("bundleUnlock"));
    QTRY_VERIFY(host.item("importProblem") && host.item("bundleUnlock")->isEnabled());
    QTRY_COMPARE(host.item("importProblem")->property("level").toInt(), 3);
    looksWell(host, QStringLiteral("wrong-password"));
    host.item("bundlePassword")->setProperty("text", QStringLiteral("secret"));
    QVERIFY(host.click("bundleUnlock"));
    QTRY_VERIFY(!host.item("bundlePassword"));
    looksWell(host, QStringLiteral("preview"));
    QVERIFY(host.item("tokenChooser"));
    // No token is there; the user's own files are, which take no key.
    QVERIFY(host.item("importAccept")->isEnabled());
    QVERIFY(host.item("importWithoutKey"));
    QVERIFY(host.click("itemView"));
    QVERIFY(host.waitOpen("itemDialog"));
    QVERIFY(host.click("itemClose"));
    QVERIFY(host.waitOpen("itemDialog", false));
    QVERIFY(host.click("importCancel"));
    QVERIFY(host.waitOpen("importDialog", false));
}

/// Between two presses another list may come to stand where the first one stood.
void TestControlsViews::secondPressIsOfTheSameList()
{
    Host host(QStringLiteral("RevocationListsDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QObject *dialog = host.object("revocationListsDialog");
    QVERIFY(dialog->setProperty("asked", 0));
    QVERIFY(QMetaObject::invokeMethod(dialog->property("lists").value<QObject *>(), "changed"));
    QCOMPARE(dialog->property("asked").toInt(), -1);
    // Nor is a press of the last time the first one of this time.
    QVERIFY(dialog->setProperty("asked", 0));
    QMetaObject::invokeMethod(dialog, "open");
    QVERIFY(host.waitOpen("revocationListsDialog"));
    QCOMPARE(dialog->property("asked").toInt(), -1);
}

/// The dialog that chooses a file: the platform's with widgets, ours without.
void TestControlsViews::importChosen()
{
    Host host(QStringLiteral("ImportDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    if (hasWidgets()) {
        QMetaObject::invokeMethod(host.object("importDialog"), "choose");
        QFileDialog *dialog = nullptr;
        QTRY_VERIFY((dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) ||
                    [&] {
                        const auto all = QApplication::topLevelWidgets();
                        for (QWidget *one : all) {
                            if (!dialog && one->isVisible())
                                dialog = qobject_cast<QFileDialog *>(one);
                        }
                        return dialog != nullptr;
                    }());
        dialog->selectFile(m_bundle);
        QMetaObject::invokeMethod(dialog, "accept");
    } else {
        // A folder of its own is the user's home.
        qputenv("HOME", QFile::encodeName(QFileInfo(m_bundle).absolutePath()));
        QMetaObject::invokeMethod(host.object("importDialog"), "choose");
        QVERIFY(host.waitForItem("filePath"));
        looksWell(host, QStringLiteral("chooser"));
        host.item("filePath")->setProperty("text", m_bundle);
        host.item("filePath")->forceActiveFocus();
        host.key(Qt::Key_Return);
    }
    QVERIFY(host.waitOpen("importDialog"));
    QVERIFY(host.waitForItem("bundlePassword"));
}

/// What was typed is meant as long as nothing is chosen after it, and its notice goes with it.
void TestControlsViews::chooserTakesWhatIsTyped()
{
    Host host(QStringLiteral("property url taken\n"
                             "FileChooser { title: \"File\"; onChosen: taken = file }"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QObject *chooser = host.object("fileChooser");
    const QString folder = QFileInfo(m_bundle).absolutePath();
    chooser->setProperty("folder", QUrl::fromLocalFile(folder));
    QMetaObject::invokeMethod(chooser, "open");
    QVERIFY(host.waitOpen("fileChooser"));
    const auto path = [&] { return host.item("filePath")->property("text").toString(); };
    const auto typePath = [&](const QString &text) {
        QQuickItem *field = host.item("filePath");
        field->forceActiveFocus();
        field->setProperty("text", text);
    };
    typePath(QStringLiteral("/nowhere"));
    QVERIFY(host.click("fileAccept"));
    QVERIFY(host.waitForItem("filePathWrong"));
    QCOMPARE(host.item("filePathWrong")->property("text").toString(),
             qtTrId("trivex-app-path-missing"));
    looksWell(host, QStringLiteral("chooser-missing"));
    // Another folder, and the next time: nothing is left of it.
    chooser->setProperty("folder", QUrl::fromLocalFile(QDir::rootPath()));
    QVERIFY(!host.item("filePathWrong"));
    QCOMPARE(path(), QDir::rootPath());
    typePath(QStringLiteral("/nowhere"));
    host.key(Qt::Key_Return);
    QVERIFY(host.waitForItem("filePathWrong"));
    QMetaObject::invokeMethod(chooser, "close");
    QVERIFY(host.waitOpen("fileChooser", false));
    QMetaObject::invokeMethod(chooser, "open");
    QVERIFY(host.waitOpen("fileChooser"));
    QVERIFY(!host.item("filePathWrong"));
    QCOMPARE(path(), QDir::rootPath());
    typePath(m_bundle);
    QVERIFY(host.click("fileAccept"));
    QVERIFY(host.waitOpen("fileChooser", false));
    QCOMPARE(host.window()->property("taken").toUrl(), QUrl::fromLocalFile(m_bundle));
}

/// The frame goes round the tick, not through it.
void TestControlsViews::rowWithTheKeysIsFramed()
{
    Host host(QStringLiteral("ImportDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QMetaObject::invokeMethod(host.object("importDialog"), "start", Q_ARG(QVariant, m_bundle));
    QVERIFY(host.waitForItem("bundlePassword"));
    QTRY_VERIFY(host.item("bundleUnlock") && host.item("bundleUnlock")->isEnabled());
    host.item("bundlePassword")->setProperty("text", QStringLiteral("secret"));
    QVERIFY(host.click("bundleUnlock"));
    QVERIFY(host.waitForItem("itemTick"));
    waitUntilStill(host.window());
    const auto left = [](const QQuickItem *item) { return item->mapToScene({0, 0}).x(); };
    const auto *box = host.item("itemTick")->property("indicator").value<QQuickItem *>();
    QVERIFY(left(box) >= left(host.item("itemList")) + 3);
}

void TestControlsViews::clickedFieldComesIntoSight_data()
{
    QTest::addColumn<QString>("body");
    const QString column = QStringLiteral(
        "TextField { objectName: \"first\" }\nItem { implicitWidth: 10; height: 700 }\n"
        "LabeledField { label: \"Name\"; hint: \"A hint\"; field.objectName: \"inner\"\n"
        "Layout.fillWidth: true }\nItem { implicitWidth: 10; height: 700 }");
    QTest::newRow("page")
        << QStringLiteral("FormPage { id: made; objectName: \"made\"; anchors.fill: parent\n%1 }")
               .arg(column);
    QTest::newRow("dialog")
        << QStringLiteral(
               "BaseDialog { id: dialog; title: \"Title\"; contentItem.objectName: \"made\"\n"
               "Component.onCompleted: open()\n%1 }")
               .arg(column);
}

void TestControlsViews::clickedFieldComesIntoSight()
{
    QFETCH(QString, body);
    Host host(body);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QVERIFY(host.waitForItem("inner"));
    QVERIFY(waitUntilStill(host.window()));
    QQuickItem *view = host.item("made");
    QQuickItem *field = host.item("inner");
    const auto bottom = [&] { return field->mapToItem(view, {0, field->height()}).y(); };
    host.item("first")->forceActiveFocus();
    QTRY_VERIFY(host.item("first")->hasActiveFocus());
    // The page holds on to it for a moment.
    QTRY_VERIFY(!view->property("awaited").value<QObject *>());
    // Its lower half is below the edge.
    view->setProperty("contentY",
                      view->property("contentY").toReal() + bottom() - view->height()
                          - field->height() / 2);
    QVERIFY(bottom() > view->height() + 1);
    const QPoint place = field->mapToScene({field->width() / 2, 4}).toPoint();
    QTest::mouseClick(host.window(), Qt::LeftButton, Qt::NoModifier, place);
    QTRY_VERIFY(field->hasActiveFocus());
    QTRY_VERIFY(bottom() <= view->height());
}

/// Whoever listens to a box of our own style hears of Enter as of a click; one that stands for some
/// of its rows looks neither empty nor full.
void TestControlsViews::boxIsTickedByEnter()
{
    Host host(QStringLiteral("property int heard: 0\n"
                             "Loader { source: \"file://%1/CheckBox.qml\"; id: made\n"
                             "onLoaded: item.objectName = \"box\"\n"
                             "Connections { target: made.item; function onToggled() { ++heard }\n"
                             "function onClicked() { ++heard } } }")
                  .arg(QStringLiteral(TRIVEX_CONTROLS_STYLE)));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QVERIFY(host.waitForItem("box"));
    QQuickItem *box = host.item("box");
    box->forceActiveFocus();
    host.key(Qt::Key_Return);
    QVERIFY(box->property("checked").toBool());
    QCOMPARE(host.window()->property("heard").toInt(), 2);
    host.key(Qt::Key_Enter);
    QVERIFY(!box->property("checked").toBool());
    QCOMPARE(host.window()->property("heard").toInt(), 4);
    auto *indicator = box->property("indicator").value<QQuickItem *>();
    const QColor empty = indicator->property("color").value<QColor>();
    box->setProperty("checkState", Qt::PartiallyChecked);
    QVERIFY(!box->property("checked").toBool());
    QVERIFY(indicator->property("color").value<QColor>() != empty);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(box);
    QVERIFY(accessible && accessible->state().checkStateMixed);
}

void TestControlsViews::smallDialogs()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(
        QStringLiteral("property int confirmations: 0\n"
                       "RemoveDialog { name: \"Мария Иванова\"; place: \"Token A\"; hasKey: true\n"
                       "onConfirmed: ++confirmations }\n"
                       "ErrorDialog { id: error }\n Toast { id: toast }\n"
                       "function fail() { error.show(qsTrId(\"trivex-app-cause-removed\"),\n"
                       "qsTrId(\"trivex-app-advice-removed\"), \"report\") }\n"
                       "function say() { toast.show(qsTrId(\"trivex-app-saved\")) }"),
        locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    for (const char *button : {"removeCancel", "removeConfirm"}) {
        QMetaObject::invokeMethod(host.object("removeDialog"), "open");
        QVERIFY(host.waitOpen("removeDialog"));
        looksWell(host, QStringLiteral("remove"));
        QVERIFY(host.click(button));
        QVERIFY(host.waitOpen("removeDialog", false));
    }
    QCOMPARE(host.window()->property("confirmations").toInt(), 1);
    QMetaObject::invokeMethod(host.window(), "fail");
    QVERIFY(host.waitOpen("errorDialog"));
    looksWell(host, QStringLiteral("error"));
    QVERIFY(host.click("errorReport"));
    QVERIFY(host.click("errorClose"));
    QVERIFY(host.waitOpen("errorDialog", false));
    QMetaObject::invokeMethod(host.window(), "say");
    QVERIFY(host.waitForItem("toastText"));
    looksWell(host, QStringLiteral("toast"));
}

void TestControlsViews::lists()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(QStringLiteral(R"(
        property int chosen: -1
        property int asked: 0
        background: Rectangle { color: Theme.window }
        ListModel {
            id: rows
            Component.onCompleted: {
                for (const name of ["Мария Иванова", "Иван Петров"])
                    append({ name: name, issuer: "Test Root", section: "USER", initial: name[0],
                             until: new Date(Date.now() + 86400000), hasKey: false,
                             validity: Validity.Expiring })
            }
        }
        Column {
            anchors.fill: parent
            SearchField { id: search; objectName: "search"; width: parent.width }
            CertificateList {
                objectName: "list"; model: rows; pattern: search.text
                width: parent.width; height: 200
                onActivated: chosen = index
            }
            DetailsView {
                width: parent.width; height: parent.height - 260
                header.name: "Мария Иванова"; header.place: "USER"
                header.from: new Date(0); header.until: new Date(4e12)
                header.validity: Validity.Valid
                header.canSign: true; header.canRemove: true
                header.onExportAsked: ++asked; header.onRemoveAsked: ++asked
                header.onSignAsked: ++asked; header.onCopyAsked: ++asked
                groups: [{ rows: [{ label: "Issuer", value: "Test Root", flag: "flag" },
                                  { label: "ИНН", value: "7830002294", fixed: true }] }]
            }
        })"),
              locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    looksWell(host, QStringLiteral("list"));
    host.item("certificateList")->forceActiveFocus();
    host.key(Qt::Key_Down);
    host.key(Qt::Key_Return);
    QCOMPARE(host.window()->property("chosen").toInt(), 1);
    QQuickItem *search = host.item("search");
    search->forceActiveFocus();
    host.type(QStringLiteral("root"));
    QCOMPARE(search->property("text").toString(), QStringLiteral("root"));
    looksWell(host, QStringLiteral("search"));
    host.key(Qt::Key_Escape);
    QCOMPARE(search->property("text").toString(), QString());
    for (const char *button : {"signButton", "exportButton", "removeButton", "copyButton"})
        QVERIFY2(host.click(button), button);
    QCOMPARE(host.window()->property("asked").toInt(), 4);
}

void TestControlsViews::forms()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(QStringLiteral(R"(
        property int acted: 0
        background: Rectangle { color: Theme.window }
        Flickable {
            anchors.fill: parent; contentHeight: column.height
            FillColumn {
                id: column; width: parent.width; spacing: 8
                Notice { objectName: "notice"; level: 3; text: qsTrId("trivex-app-pin-final")
                         actionText: qsTrId("trivex-app-ok"); onAction: ++acted
                         Layout.fillWidth: true }
                EmptyState { height: implicitHeight; icon: "token"; text: qsTrId("trivex-app-no-token")
                             title: qsTrId("trivex-app-no-token"); actionText: "Action"
                             onAction: ++acted; Layout.fillWidth: true }
                TokenChooser { locations: KeyStoreModel.certLocation; Layout.fillWidth: true }
                Card { title: "Card"; Layout.fillWidth: true
                    SubjectForm { objectName: "form"; Layout.fillWidth: true } }
                Row { Badge { validity: Validity.Expired } Avatar { letter: "A" }
                      Icon { name: "key" } }
            }
        })"),
              locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    looksWell(host, QStringLiteral("form"));
    QObject *form = host.object("form");
    QVERIFY(!form->property("complete").toBool());
    host.item("commonNameInput")->forceActiveFocus();
    host.type(QStringLiteral("Maria"));
    QVERIFY(form->property("complete").toBool());
    host.item("innInput")->forceActiveFocus();
    host.type(QStringLiteral("123"));
    QVERIFY(!host.item("innField")->property("flag").toString().isEmpty());
    looksWell(host, QStringLiteral("form-flag"));
    QMetaObject::invokeMethod(form, "clear");
    QVERIFY(!form->property("complete").toBool());
    QMetaObject::invokeMethod(host.object("notice"), "action");
    QCOMPARE(host.window()->property("acted").toInt(), 1);
}

int main(int argc, char **argv)
{
    return runControlsTest<TestControlsViews>(argc, argv);
}

#include "tst_controls_views.moc"
