// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/harness.h"

#include <QAccessible>
#include <QApplication>
#include <QDirIterator>
#include <QFile>
#include <QQmlComponent>
#include <QSet>
#include <QStandardPaths>
#include <QtTest>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>

using namespace TrivexTest;

namespace {

/// What stands when the first frame is drawn, with room for a line or two more of the side bar. The
/// whole window is ten times as much.
constexpr int MostObjects = 320;

void collect(QObject *object, QSet<QObject *> *found)
{
    if (!object || found->contains(object))
        return;
    found->insert(object);
    for (QObject *child : object->children())
        collect(child, found);
    if (const auto *item = qobject_cast<QQuickItem *>(object)) {
        const QList<QQuickItem *> items = item->childItems();
        for (QQuickItem *child : items)
            collect(child, found);
    }
}

/// The libraries in this process of which `part` is in the path.
QStringList librariesWith(const char *part)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return {QStringLiteral("/proc/self/maps can't be read")};
    QStringList found;
    const QList<QByteArray> lines = maps.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QString path = QFile::decodeName(line.mid(line.indexOf('/')));
        if (line.contains(part) && !found.contains(path))
            found += path;
    }
    return found;
}

/// Texts that show nothing: each is made, and asks for its font, which may be one that nothing
/// shown has.
int emptyTextsIn(const QSet<QObject *> &objects)
{
    return int(std::count_if(objects.begin(), objects.end(), [](const QObject *object) {
        return object->inherits("QQuickText") && object->property("text").toString().isEmpty();
    }));
}

/// What the first frame of a window found.
struct FirstFrame {
    bool seen = false;
    int objects = 0;
    int emptyTexts = 0;
    QStringList providers;
    QStringList tools;
    bool working = false;
};

} // namespace

/// What the program does before its window stands, and what it leaves for later: counted, because a
/// time says nothing on a busy machine.
class TestAppFirstFrame : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void standsOnLittle();
    void comesWithoutAFrame();
    void opensWhatCameEarly();
    void doesWhatWasAskedEarly();
    void isCompiledAhead();
    void marksALineWhileItIsBusy();
    void linesShowWhatTheyHave();

private:
    static bool works(const Trivex::Application &application)
    {
        return application.window()->property("work").value<QObject *>() != nullptr;
    }
    /// A line of the side bar, of that window; null when it can't be made.
    static std::unique_ptr<QObject> makeLine(const Trivex::Application &application);
};

void TestAppFirstFrame::standsOnLittle()
{
    Trivex::Application application;
    QVERIFY(application.open());
    QQuickWindow *window = application.window();
    FirstFrame first;
    QObject context;
    connect(window, &QQuickWindow::frameSwapped, &context, [&] {
        if (first.seen)
            return;
        QSet<QObject *> objects;
        collect(window, &objects);
        first = {true,
                 objects.size(),
                 emptyTextsIn(objects),
                 librariesWith("/crypto/"),
                 librariesWith("/libtrivextools.so") + librariesWith("/libqmlplugin.so"),
                 works(application)};
    });
    application.activate({});
    QVERIFY(QTest::qWaitFor([&] { return first.seen; }, Patience));
    QVERIFY(!first.working);
    QVERIFY2(first.objects > 100 && first.objects <= MostObjects,
             qPrintable(QString::number(first.objects)));
    QCOMPARE(first.emptyTexts, 0);
    // None of QCA's plugins is there yet, and afterwards they are.
    QVERIFY2(first.providers.isEmpty(), qPrintable(first.providers.join(QLatin1Char('\n'))));
    // Nor is what works with certificates, with its fifty types, or a plugin that is there twice.
    QVERIFY2(first.tools.isEmpty(), qPrintable(first.tools.join(QLatin1Char('\n'))));
    QVERIFY(QTest::qWaitFor([&] { return works(application); }, Patience));
    QVERIFY(!librariesWith("/crypto/").isEmpty());
    QVERIFY(!librariesWith("/libtrivextools.so").isEmpty());
    QSet<QObject *> objects;
    collect(window, &objects);
    QVERIFY(objects.size() > 3 * first.objects);
}

void TestAppFirstFrame::comesWithoutAFrame()
{
    Trivex::Application application;
    QVERIFY(application.open());
    application.window()->hide();
    int frames = 0;
    connect(application.window(), &QQuickWindow::frameSwapped, this, [&] { ++frames; });
    QVERIFY(QTest::qWaitFor([&] { return works(application); }, Patience));
    QCOMPARE(frames, 0);
}

void TestAppFirstFrame::opensWhatCameEarly()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("note.txt"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("text") == 4);
    file.close();
    Trivex::Application application;
    QVERIFY(application.open());
    application.activate({path});
    QVERIFY(!works(application));
    QVERIFY(QTest::qWaitFor(
        [&] {
            return application.window()->property("current").toString() == QLatin1String("sign");
        },
        Patience));
    QVERIFY(application.window()->property("early").toList().isEmpty());
}

void TestAppFirstFrame::doesWhatWasAskedEarly()
{
    Trivex::Application application;
    QVERIFY(application.open());
    QQuickWindow *window = application.window();
    // As the side bar does: another page, the settings.
    QVERIFY(
        QMetaObject::invokeMethod(window, "show", Q_ARG(QVariant, QStringLiteral("newRequest"))));
    window->setProperty("wishes", QVariantList{QStringLiteral("showSettings")});
    QVERIFY(!works(application));
    application.activate({});
    QVERIFY(QTest::qWaitFor([&] { return works(application); }, Patience));
    const auto *settings = window->findChild<QObject *>(QStringLiteral("settingsDialog"));
    QVERIFY(settings);
    QVERIFY(QTest::qWaitFor([&] { return settings->property("opened").toBool(); }, Patience));
    QVERIFY(QMetaObject::invokeMethod(
        window->findChild<QObject *>(QStringLiteral("settingsDialog")), "close"));
    // The keys are the chosen page's and not those of the list behind it.
    const auto *list = window->findChild<QQuickItem *>(QStringLiteral("certificateList"));
    QVERIFY(list);
    QVERIFY(QTest::qWaitFor(
        [&] {
            const QQuickItem *focus = window->activeFocusItem();
            return focus && focus->isVisible() && !list->isAncestorOf(focus) && focus != list
                && focus->objectName() == QLatin1String("keyNameInput");
        },
        Patience));
}

void TestAppFirstFrame::isCompiledAhead()
{
#ifdef TRIVEX_QML_IS_COMPILED
    Trivex::Application application;
    QVERIFY(application.open());
    QVERIFY(QTest::qWaitFor([&] { return works(application); }, Patience));
    // Whatever was compiled when a window opened lies in the cache. Qt's own modules have files
    // there too.
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation)
        + QStringLiteral("/qmlcache");
    QStringList own;
    QDirIterator files(cache, QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        // Their texts are UTF-16 within.
        const QByteArray bytes = file.readAll();
        const QString module = QStringLiteral("Trivex.Crypto");
        if (bytes.contains(QByteArray::fromRawData(reinterpret_cast<const char *>(module.utf16()),
                                                   2 * module.size())))
            own += file.fileName();
    }
    QVERIFY2(own.isEmpty(), qPrintable(own.join(QLatin1Char('\n'))));
#else
    QSKIP("qmlcachegen is not installed");
#endif
}

std::unique_ptr<QObject> TestAppFirstFrame::makeLine(const Trivex::Application &application)
{
    QQmlComponent component(qmlEngine(application.window()),
                            QUrl(QStringLiteral("qrc:/trivex/qml/SidebarItem.qml")));
    std::unique_ptr<QObject> line(component.create());
    if (!line)
        qWarning() << component.errors();
    return line;
}

void TestAppFirstFrame::marksALineWhileItIsBusy()
{
    Trivex::Application application;
    QVERIFY(application.open());
    const std::unique_ptr<QObject> line = makeLine(application);
    QVERIFY(line);
    const auto marks = [&line] {
        QSet<QObject *> objects;
        collect(line.get(), &objects);
        QList<QObject *> found;
        std::copy_if(objects.cbegin(), objects.cend(), std::back_inserter(found),
                     [](QObject *object) { return object->inherits("QQuickBusyIndicator"); });
        return found;
    };
    QVERIFY(marks().isEmpty());
    line->setProperty("note", QStringLiteral("reading"));
    line->setProperty("busy", true);
    QCOMPARE(marks().size(), 1);
    QVERIFY(marks().first()->property("running").toBool());
    // Whoever hears the window hears what it waits for.
    QAccessibleInterface *mark = QAccessible::queryAccessibleInterface(marks().first());
    QVERIFY(mark);
    QCOMPARE(mark->text(QAccessible::Name), QStringLiteral("reading"));
    line->setProperty("busy", false);
    QTRY_VERIFY_WITH_TIMEOUT(marks().isEmpty(), Patience);
}

void TestAppFirstFrame::linesShowWhatTheyHave()
{
    Trivex::Application application;
    QVERIFY(application.open());
    const std::unique_ptr<QObject> line = makeLine(application);
    QVERIFY(line);
    const auto texts = [&line] {
        QSet<QObject *> objects;
        collect(line.get(), &objects);
        QStringList shown;
        for (QObject *object : qAsConst(objects)) {
            const auto *item = qobject_cast<QQuickItem *>(object);
            if (item && item->inherits("QQuickText") && item->isVisible())
                shown += item->property("text").toString();
        }
        shown.sort();
        return shown;
    };
    qobject_cast<QQuickItem *>(line.get())->setParentItem(application.window()->contentItem());
    line->setProperty("text", QStringLiteral("name"));
    QCOMPARE(texts(), QStringList{QStringLiteral("name")});
    line->setProperty("note", QStringLiteral("a note"));
    line->setProperty("count", 7);
    QCOMPARE(texts(),
             (QStringList{QStringLiteral("7"), QStringLiteral("a note"), QStringLiteral("name")}));
    line->setProperty("count", 0);
    line->setProperty("note", QString());
    QTRY_COMPARE_WITH_TIMEOUT(texts(), QStringList{QStringLiteral("name")}, Patience);
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    if (!display.isValid()) {
        std::printf("SKIP %s\n", qPrintable(display.problem()));
        return 0;
    }
    QApplication application(argc, argv);
    Trivex::Application::prepare();
    TestAppFirstFrame test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_app_firstframe.moc"
