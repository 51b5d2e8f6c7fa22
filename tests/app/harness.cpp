// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/harness.h"

#include "tests/app/looks.h"
#include "tests/support/processortime.h"

#include <QLocale>
#include <QMutex>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QStandardPaths>
#include <QtTest>

namespace TrivexTest {

namespace {

QMutex mutex;
QStringList warnings;

/// What the key store model and its like are specified to log; everything else is a fault.
bool isSpecified(const QString &message)
{
    static const QStringList specified = {QStringLiteral("Error sign"),
                                          QStringLiteral("could not open CMS file"),
                                          QStringLiteral(" not exported!")};
    for (const QString &text : specified) {
        if (message.contains(text))
            return true;
    }
    return false;
}

void collect(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg)
        return;
    fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtInfoMsg)
        return;
    if (isSpecified(message) || isForeignWarning(message))
        return;
    const QMutexLocker locker(&mutex);
    warnings += message;
}

/// Processor time of this thread in milliseconds.
qint64 threadTime()
{
    return processorTime() / 1000000;
}

QQuickItem *findVisible(QQuickItem *from, const QString &name)
{
    if (!from->isVisible())
        return nullptr;
    if (from->objectName() == name)
        return from;
    const QList<QQuickItem *> children = from->childItems();
    for (QQuickItem *child : children) {
        if (QQuickItem *found = findVisible(child, name))
            return found;
    }
    return nullptr;
}

} // namespace

bool isForeignWarning(const QString &message)
{
    return message.contains(QLatin1String("gpgQCAPlugin"));
}

WindowEnvironment::WindowEnvironment()
{
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, QFile::encodeName(m_home.path()));
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(name, QFile::encodeName(m_home.filePath(QString::fromLatin1(name).toLower())));
    QFile::setPermissions(m_home.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QT_IM_MODULE", "none");
    // Portals and platform themes would bring in the machine's own settings.
    qputenv("QT_QPA_PLATFORMTHEME", "none");
    // No token of this machine is looked at; a test that has one names it later.
    qputenv("TRIVEX_PKCS11_MODULES", "/nonexistent.so");
    startDisplay();
}

WindowEnvironment::~WindowEnvironment()
{
    m_display.terminate();
    m_display.waitForFinished(5000);
}

void WindowEnvironment::startDisplay()
{
    if (QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty()) {
        m_problem = QStringLiteral("Xvfb is not installed");
        return;
    }
    // The server picks a free display and writes its number.
    m_display.start(QStringLiteral("Xvfb"),
                    {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                     QStringLiteral("0"), QStringLiteral("2560x1600x24"),
                     QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    QByteArray number;
    while (!number.contains('\n') && m_display.waitForReadyRead(15000))
        number += m_display.readAllStandardOutput();
    if (!number.contains('\n')) {
        m_problem = QStringLiteral("Xvfb did not start");
        return;
    }
    qputenv("DISPLAY", ':' + number.trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
}

FrameMeter::FrameMeter(QQuickWindow *window)
{
    connect(
        window, &QQuickWindow::frameSwapped, this, [this] { ++m_frames; }, Qt::DirectConnection);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(5);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        const qint64 worked = threadTime();
        m_longestWork = qMax(m_longestWork, worked - m_worked);
        m_worked = worked;
    });
    reset();
    m_timer.start();
}

void FrameMeter::reset()
{
    m_stall.start();
    m_longestWork = 0;
    m_worked = threadTime();
    m_frames = 0;
}

WindowDriver::WindowDriver()
{
    qInstallMessageHandler(collect);
    if (!m_application.open())
        qFatal("the window did not open");
    m_application.activate({});
    if (!QTest::qWaitForWindowExposed(window()))
        qFatal("the window was not shown");
    // What works with certificates is made behind the first frame.
    if (!waitFor([&] { return window()->property("work").value<QObject *>() != nullptr; }))
        qFatal("the window does not work");
    m_meter = std::make_unique<FrameMeter>(window());
}

WindowDriver::~WindowDriver()
{
    qInstallMessageHandler(nullptr);
}

QQuickItem *WindowDriver::item(const QString &name) const
{
    // Dialogs live in the overlay, which is a child of the window's root too.
    return findVisible(window()->contentItem(), name);
}

QObject *WindowDriver::object(const QString &name) const
{
    return window()->findChild<QObject *>(name);
}

bool WindowDriver::isOpen(const QString &dialog) const
{
    const QObject *found = object(dialog);
    return found && found->property("opened").toBool();
}

bool WindowDriver::clickItem(QQuickItem *item)
{
    if (!item || !item->isEnabled())
        return false;
    const QPointF middle = item->mapToScene({item->width() / 2, item->height() / 2});
    QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier, middle.toPoint());
    return true;
}

void WindowDriver::waitForFrame()
{
    const int frames = m_meter->frames();
    window()->update();
    waitFor([&] { return m_meter->frames() > frames; }, 200);
}

bool WindowDriver::waitUntilStill(int ms)
{
    return TrivexTest::waitUntilStill(window(), ms);
}

bool WindowDriver::holds(const std::function<bool()> &condition, int ms)
{
    return !waitFor([&] { return !condition(); }, ms);
}

void WindowDriver::once(const std::function<bool()> &condition, const std::function<void()> &action)
{
    if (!m_watches)
        m_watches = std::make_unique<QObject>();
    auto *timer = new QTimer(m_watches.get());
    connect(timer, &QTimer::timeout, timer, [=] {
        if (!condition())
            return;
        // The action may end the test, and with it the watches.
        const std::function<void()> own = action;
        timer->stop();
        timer->deleteLater();
        own();
    });
    timer->start(20);
}

void WindowDriver::onceShown(const QString &name, const std::function<void()> &action)
{
    once([this, name] { return item(name) != nullptr; }, action);
}

void WindowDriver::forgetWatches()
{
    m_watches.reset();
}

void WindowDriver::settle(const QString &name)
{
    // What was just shown lies where it will stay only after it was polished.
    QRectF before;
    for (int i = 0; i < 20; ++i) {
        waitForFrame();
        const QQuickItem *found = item(name);
        const QRectF now =
            found ? found->mapRectToScene({0, 0, found->width(), found->height()}) : QRectF();
        if (i > 0 && now == before)
            return;
        before = now;
    }
}

bool WindowDriver::click(const QString &name)
{
    waitForItem(name);
    settle(name);
    return clickItem(item(name));
}

void WindowDriver::type(const QString &text)
{
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, window(), Qt::Key_unknown, QString(c), Qt::NoModifier);
}

void WindowDriver::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window(), key, modifiers);
}

bool WindowDriver::isInSight(const QQuickItem &item) const
{
    const QRectF place = item.mapRectToScene({0, 0, item.width(), item.height()});
    for (const QQuickItem *up = item.parentItem(); up; up = up->parentItem()) {
        if (up->clip() && !up->mapRectToScene({0, 0, up->width(), up->height()}).contains(place))
            return false;
    }
    return QRectF(0, 0, window()->width(), window()->height()).contains(place);
}

bool WindowDriver::fill(const QString &name, const QString &text)
{
    QQuickItem *field = item(name);
    // One that has been scrolled out of sight comes into it as by the Tab key.
    if (field && !isInSight(*field)) {
        field->forceActiveFocus(Qt::TabFocusReason);
        waitUntilStill();
    }
    if (!click(name))
        return false;
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    type(text);
    return true;
}

bool WindowDriver::waitFor(const std::function<bool()> &condition, int ms)
{
    const bool hasCome = QTest::qWaitFor(condition, ms);
    // A test that goes on all the same would take its time, and prove nothing.
    if (!hasCome && ms >= Patience) {
        const QMutexLocker locker(&mutex);
        warnings += QStringLiteral("something was waited for in vain");
    }
    return hasCome;
}

bool WindowDriver::waitForItem(const QString &name, int ms)
{
    return waitFor([&] { return item(name) != nullptr; }, ms);
}

int WindowDriver::rowCount() const
{
    const QQuickItem *list = item(QStringLiteral("certificateList"));
    return list ? list->property("count").toInt() : -1;
}

QVariant valueOf(const QAbstractItemModel &model, int row, const char *role)
{
    return model.index(row, 0).data(model.roleNames().key(role, -1));
}

int WindowDriver::rowNamed(const QString &name) const
{
    const QQuickItem *list = item(QStringLiteral("certificateList"));
    if (!list)
        return -1;
    const auto *model = list->property("model").value<QAbstractItemModel *>();
    for (int i = 0; model && i < model->rowCount(); ++i) {
        if (valueOf(*model, i, "name").toString() == name)
            return i;
    }
    return -1;
}

bool WindowDriver::clickRow(int row)
{
    QQuickItem *list = item(QStringLiteral("certificateList"));
    if (!list || row < 0)
        return false;
    QMetaObject::invokeMethod(list, "positionViewAtIndex", Q_ARG(int, row), Q_ARG(int, 4));
    waitUntilStill();
    QQuickItem *delegate = nullptr;
    QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem *, delegate),
                              Q_ARG(int, row));
    return clickItem(delegate);
}

void WindowDriver::setTheme(int mode, double textScale)
{
    QQmlComponent component(qmlEngine(m_application.window()));
    component.setData("import QtQml 2.15\nimport Trivex.Crypto.Controls 1.0\n"
                      "QtObject { function set(mode, scale) {"
                      " Theme.mode = mode; Theme.textScale = scale } }",
                      QUrl());
    const std::unique_ptr<QObject> setter(component.create());
    QMetaObject::invokeMethod(setter.get(), "set", Q_ARG(QVariant, mode),
                              Q_ARG(QVariant, textScale));
}

QStringList WindowDriver::takeWarnings()
{
    const QMutexLocker locker(&mutex);
    QStringList taken;
    taken.swap(warnings);
    return taken;
}

} // namespace TrivexTest
