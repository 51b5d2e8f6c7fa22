// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/looks.h"
#include "tests/app/pages.h"
#include "tests/controls/controlstest.h"

#include <QFileInfo>
#include <QQmlContext>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace TrivexTest;

namespace {

/// What a stranger may have written as the name of a token, a person or a file.
const QString StrangersName = QStringLiteral("<b>Mallory<img src='x'> & Co $& %1 %2");

} // namespace

/// Every type of Trivex.Crypto.Controls and Trivex.Crypto.Tools in an application that knows
/// nothing of our style: made and shown, nothing said on the log.
class TestControlsTypes : public ControlsTest {
    Q_OBJECT
private Q_SLOTS:
    void everyType_data();
    void everyType();
    void strangersNames_data();
    void strangersNames();
};

void TestControlsTypes::everyType_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("isSingleton");
    const auto read = [](const char *name) {
        QFile file(QStringLiteral(TRIVEX_MODULE_SOURCES "/") + QLatin1String(name));
        file.open(QIODevice::ReadOnly);
        return QString::fromUtf8(file.readAll());
    };
    const auto addAll = [](const QString &text, const char *pattern, bool isSingleton) {
        QRegularExpression expression(QLatin1String(pattern), QRegularExpression::MultilineOption);
        auto found = expression.globalMatch(text);
        int count = 0;
        for (; found.hasNext(); ++count) {
            const QString type = found.next().captured(1);
            QTest::newRow(qPrintable(type)) << type << isSingleton;
        }
        return count;
    };
    const QString list = read("controls/qmldir");
    const QString controls = read("controls/controlsplugin.cpp");
    const QString tools = read("tools/toolsplugin.cpp");
    QVERIFY(addAll(list, "^(\\w+) 1\\.0 \\w+\\.qml$", false) > 20);
    QVERIFY(addAll(list, "^singleton (\\w+) 1\\.0", true) > 0);
    QVERIFY(addAll(controls, "^\\s*uri, 1, 0, \"(\\w+)\",$", true) > 0);
    QVERIFY(addAll(tools, "qmlRegisterType<\\w+>\\(uri, 1, 0, \"(\\w+)\"\\)", false) > 5);
    QVERIFY(addAll(tools, "registerHelper<\\w+>\\(uri, \"(\\w+)\"\\)", true) > 1);
}

/// The file that an item is of: that of the next item up that QML made, for what C++ makes.
QString fileOf(const QQuickItem *item)
{
    for (; item; item = item->parentItem()) {
        if (const QQmlContext *context = qmlContext(item))
            return context->baseUrl().path();
    }
    return {};
}

/// Texts of ours below `from` that would show a stranger's name as rich text, images included: also
/// those that buttons, rows and menus make of their `text`.
QStringList richTexts(QQuickItem *from)
{
    constexpr int AutoText = 2; // Text.AutoText
    QStringList found;
    visitItems(from, [&](QQuickItem *item) {
        const QVariant format = item->property("textFormat");
        const QString file = fileOf(item);
        if (format.isValid() && format.toInt() == AutoText
            && file.contains(QLatin1String("/Trivex/Crypto/Controls/")))
            found += describeItem(item) + QLatin1String(" in ") + QFileInfo(file).fileName();
    });
    return found;
}

/// By itself and without any property set: nothing may be taken for granted.
void TestControlsTypes::everyType()
{
    QFETCH(QString, type);
    QFETCH(bool, isSingleton);
    const Host host(QStringLiteral("property QtObject made: ") + type
                    + (isSingleton ? QString() : QStringLiteral(" {}")));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    auto *made = host.window()->property("made").value<QObject *>();
    QVERIFY(made);
    if (auto *item = qobject_cast<QQuickItem *>(made))
        item->setParentItem(host.window()->contentItem());
    else if (made->metaObject()->indexOfMethod("open()") >= 0)
        QMetaObject::invokeMethod(made, "open");
    QVERIFY(waitUntilStill(host.window()));
    const QStringList rich = richTexts(host.window()->contentItem());
    QVERIFY2(rich.isEmpty(), qPrintable(rich.join(QLatin1Char('\n'))));
}

void TestControlsTypes::strangersNames_data()
{
    QTest::addColumn<QString>("body");
    const auto add = [](const char *name, const char *body) {
        QTest::newRow(name) << QString::fromLatin1(body);
    };
    add("row of a chooser",
        "TokenChooser { anchors.fill: parent }\n"
        "function show(name) { made.model = [{ name: name }]; made.popup.open() }\n"
        "property var made: contentItem.children[0].children[1]");
    add("file",
        "FileChooser { id: made }\n"
        "function show(name) { made.folder = Files.url(folder); made.open() }");
    add("row of a list",
        "ListModel { id: rows }\n"
        "CertificateList { anchors.fill: parent; model: rows }\n"
        "function show(name) { rows.append({ name: name, issuer: name,\n"
        "section: name, initial: \"M\", hasKey: false, until: new Date(),\n"
        "validity: Validity.Valid }) }");
    add("details",
        "DetailsView { id: made; anchors.fill: parent }\n"
        "function show(name) { made.header.name = name; made.header.place = name\n"
        "made.groups = [{ title: name, rows: [{ label: name, value: name }] }] }");
    add("PIN",
        "PinDialog { id: made }\n"
        "function show(name) { made.tokenName = name; made.purposeText = name\n"
        "made.pinText = name; made.ask() }");
    add("removal",
        "RemoveDialog { id: made }\n"
        "function show(name) { made.name = name; made.place = name; made.open() }");
    add("error",
        "ErrorDialog { id: made }\n"
        "function show(name) { made.show(name, name, name) }");
    add("toast", "Toast { id: made }\nfunction show(name) { made.show(name) }");
    add("notice", "Notice { id: made; width: 300 }\nfunction show(name) { made.text = name }");
    add("card", "Card { id: made; width: 300 }\nfunction show(name) { made.title = name }");
    add("empty list",
        "EmptyState { id: made; width: 300 }\n"
        "function show(name) { made.title = name; made.text = name }");
    add("row by itself",
        "PlainDelegate { id: made; width: 300 }\n"
        "function show(name) { made.text = name }");
}

/// In the host's style whatever shows a name shows it letter by letter: no picture is fetched for
/// it and nothing of it is lost.
void TestControlsTypes::strangersNames()
{
    QFETCH(QString, body);
    const QTemporaryDir folder;
    QFile file(folder.filePath(StrangersName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const Host host(body + QStringLiteral("\nproperty string folder"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    host.window()->setProperty("folder", folder.path());
    QVERIFY(QMetaObject::invokeMethod(host.window(), "show", Q_ARG(QVariant, StrangersName)));
    QStringList wrong;
    int seen = 0;
    const auto look = [&] {
        wrong.clear();
        seen = 0;
        visitItems(host.window()->contentItem(), [&](QQuickItem *item) {
            if (!item->inherits("QQuickText")
                || !item->property("text").toString().contains(QLatin1String("Mallory")))
                return;
            ++seen;
            // 0 is Text.PlainText.
            if (item->property("textFormat").toInt() != 0
                || !item->property("text").toString().contains(StrangersName))
                wrong += describeItem(item) + QLatin1Char(' ') + item->property("text").toString();
        });
        return seen > 0;
    };
    QTRY_VERIFY(look());
    QVERIFY(waitUntilStill(host.window()));
    look();
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

int main(int argc, char **argv)
{
    return runControlsTest<TestControlsTypes>(argc, argv);
}

#include "tst_controls_types.moc"
