// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/environment.h"
#include "tests/app/looks.h"
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QQmlComponent>
#include <QRegularExpression>
#include <QtTest>

using namespace TrivexTest;

namespace {

QStringList messages;

void collect(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtDebugMsg && type != QtInfoMsg && !TrivexTest::isForeignWarning(message))
        messages += message;
}

QStringList takeMessages()
{
    return std::exchange(messages, QStringList());
}

QQuickItem *buttonNamed(QQuickItem *from, const QString &text)
{
    if (!from->isVisible())
        return nullptr;
    if (from->inherits("QQuickAbstractButton") && from->property("text").toString() == text)
        return from;
    const QList<QQuickItem *> children = from->childItems();
    for (QQuickItem *child : children) {
        if (QQuickItem *found = buttonNamed(child, text))
            return found;
    }
    return nullptr;
}

} // namespace

/// The module of controls without the program around it: every component by itself, the gallery
/// with its dialogs, and the texts that Qt brings.
class TestAppGallery : public QObject {
    Q_OBJECT
public:
    explicit TestAppGallery(const WindowEnvironment &) { }

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void componentsAlone_data();
    void componentsAlone();
    void namesInControls_data();
    void namesInControls();
    void gallery();
    void qtSpeaksRussian();

private:
    static QString controls()
    {
        return Trivex::moduleDirectory() + QStringLiteral("/Trivex/Crypto/Controls");
    }
};

void TestAppGallery::initTestCase()
{
    qInstallMessageHandler(collect);
}

void TestAppGallery::cleanup()
{
    const QStringList said = takeMessages();
    QVERIFY2(said.isEmpty(), qPrintable(said.join(QLatin1Char('\n'))));
}

void TestAppGallery::componentsAlone_data()
{
    QTest::addColumn<QString>("type");
    QFile list(controls() + QStringLiteral("/qmldir"));
    QVERIFY(list.open(QIODevice::ReadOnly));
    const auto lines = QString::fromUtf8(list.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QStringList words = line.split(QLatin1Char(' '));
        if (words.size() == 3 && words.last().endsWith(QLatin1String(".qml")))
            QTest::newRow(qPrintable(words.first())) << words.first();
    }
}

void TestAppGallery::componentsAlone()
{
    QFETCH(QString, type);
    QQmlApplicationEngine engine;
    engine.addImportPath(Trivex::moduleDirectory());
    // In a window and without any property set: nothing may be taken for granted.
    const QString source = QStringLiteral("import QtQuick 2.15\nimport QtQuick.Controls 2.15\n"
                                          "import Trivex.Crypto.Controls 1.0\n"
                                          "ApplicationWindow { width: 500; height: 400\n"
                                          "visible: true\n property QtObject made: %1 {} }")
                               .arg(type);
    QQmlComponent component(&engine);
    component.setData(source.toUtf8(), QUrl());
    const std::unique_ptr<QObject> window(component.create());
    QVERIFY2(window, qPrintable(component.errorString()));
    auto *made = window->property("made").value<QObject *>();
    QVERIFY(made);
    if (auto *item = qobject_cast<QQuickItem *>(made))
        item->setParentItem(qobject_cast<QQuickWindow *>(window.get())->contentItem());
    else if (made->metaObject()->indexOfMethod("open()") >= 0)
        QMetaObject::invokeMethod(made, "open");
    auto *shown = qobject_cast<QQuickWindow *>(window.get());
    QSignalSpy frames(shown, &QQuickWindow::frameSwapped);
    QVERIFY(QTest::qWaitForWindowExposed(shown));
    // Warnings come with the layout and with what is drawn after it.
    for (int i = 0; i < 3; ++i) {
        shown->update();
        QTRY_VERIFY(frames.count() > i);
    }
}

void TestAppGallery::namesInControls_data()
{
    QTest::addColumn<QString>("control");
    // What shows a text in our style, with the text of a stranger.
    const struct {
        const char *name;
        const char *control;
    } controls[] = {
        {"button", "Button { text: name }"},
        {"tool button", "ToolButton { text: name }"},
        {"button below its icon",
         "Button { text: name; icon.source: Theme.icon(\"key\")\n"
         "display: AbstractButton.TextUnderIcon }"},
        {"check box", "CheckBox { text: name }"},
        {"radio button", "RadioButton { text: name }"},
        {"switch", "Switch { text: name }"},
        {"row", "ItemDelegate { text: name; icon.source: Theme.icon(\"key\") }"},
        {"menu", "Menu { MenuItem { text: name } Component.onCompleted: open() }"},
        {"menu's action", "Menu { Action { text: name } Component.onCompleted: open() }"},
        {"chooser", "ComboBox { width: 300; model: [name] }"},
        {"rows of a chooser",
         "ComboBox { width: 300; model: [\"\", name]; Component.onCompleted: popup.open() }"},
        {"hint", "TextField { width: 300; placeholderText: name }"},
        {"dialog's title", "Dialog { title: name; Component.onCompleted: open() }"},
        {"dialog's button",
         "DialogButtonBox { Button { text: name; DialogButtonBox.buttonRole: "
         "DialogButtonBox.AcceptRole } }"},
        {"tool tip", "Item { ToolTip { text: name; visible: true } }"},
        {"label", "Label { text: name }"},
    };
    for (const auto &one : controls)
        QTest::newRow(one.name) << QString::fromLatin1(one.control);
}

/// Letter by letter: neither fetched as a picture nor shortened by a mnemonic.
void TestAppGallery::namesInControls()
{
    QFETCH(QString, control);
    const QString name = QStringLiteral("<b>Mallory<img src='x'> & Co");
    QQmlApplicationEngine engine;
    engine.addImportPath(Trivex::moduleDirectory());
    engine.loadData(QStringLiteral("import QtQuick 2.15\nimport QtQuick.Controls 2.15\n"
                                   "import Trivex.Crypto.Controls 1.0\n"
                                   "ApplicationWindow { width: 500; height: 400; visible: true\n"
                                   "property string name: \"%1\"\n %2 }")
                        .arg(name, control)
                        .toUtf8());
    QVERIFY(!engine.rootObjects().isEmpty());
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().first());
    QVERIFY(window && QTest::qWaitForWindowExposed(window));
    QList<QQuickItem *> shown;
    const auto look = [&] {
        shown.clear();
        visitItems(window->contentItem(), [&](QQuickItem *item) {
            if (item->inherits("QQuickText")
                && item->property("text").toString().contains(QLatin1String("Mallory")))
                shown += item;
        });
        return !shown.isEmpty();
    };
    QTRY_VERIFY(look());
    QVERIFY(waitUntilStill(window));
    QVERIFY(look());
    for (const QQuickItem *item : qAsConst(shown)) {
        QCOMPARE(item->property("text").toString(), name);
        QCOMPARE(item->property("textFormat").toInt(), 0); // Text.PlainText
        QVERIFY(item->width() > 0);
    }
}

void TestAppGallery::gallery()
{
    QQmlApplicationEngine engine;
    engine.addImportPath(Trivex::moduleDirectory());
    engine.load(QUrl(QStringLiteral("qrc:/gallery/Gallery.qml")));
    QVERIFY(!engine.rootObjects().isEmpty());
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().first());
    QVERIFY(window && QTest::qWaitForWindowExposed(window));
    window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(window));
    const struct {
        const char *button;
        const char *opened;
    } dialogs[] = {{"trivex-app-pin-title", "pinDialog"},     {"trivex-app-remove", "removeDialog"},
                   {"trivex-app-error-title", "errorDialog"}, {"trivex-app-saved", "toast"},
                   {"trivex-app-colours-dark", nullptr},      {"trivex-app-colours-dark", nullptr}};
    for (const auto &one : dialogs) {
        QQuickItem *button = nullptr;
        QTRY_VERIFY2((button = buttonNamed(window->contentItem(), qtTrId(one.button))), one.button);
        const QPointF middle = button->mapToScene({button->width() / 2, button->height() / 2});
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, middle.toPoint());
        if (!one.opened)
            continue;
        const auto *popup = window->findChild<QObject *>(QLatin1String(one.opened));
        QVERIFY2(popup, one.opened);
        QVERIFY2(QTest::qWaitFor([&] { return popup->property("opened").toBool(); }), one.opened);
        QTest::keyClick(window, Qt::Key_Escape);
        if (qstrcmp(one.opened, "toast") != 0)
            QVERIFY2(QTest::qWaitFor([&] { return !popup->property("visible").toBool(); }),
                     one.opened);
    }
}

void TestAppGallery::qtSpeaksRussian()
{
    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
    Trivex::installQtTranslations();
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const QRegularExpression cyrillic(QStringLiteral("[А-Яа-я]"));
    int seen = 0;
    for (const QAbstractButton *button : dialog.findChildren<QPushButton *>()) {
        if (!button->isVisible() || button->text().isEmpty())
            continue;
        ++seen;
        QVERIFY2(button->text().contains(cyrillic), qPrintable(button->text()));
    }
    for (const QLabel *label : dialog.findChildren<QLabel *>()) {
        if (label->isVisible() && !label->text().isEmpty())
            QVERIFY2(label->text().contains(cyrillic), qPrintable(label->text()));
    }
    QVERIFY(seen >= 2);
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    return runWindowTest<TestAppGallery>(argc, argv, display);
}

#include "tst_app_gallery.moc"
