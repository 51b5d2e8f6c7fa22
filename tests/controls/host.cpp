// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/controls/host.h"

#include "tests/app/harness.h"
#include "tests/app/looks.h"
#include "tests/app/pages.h"

#include <QDir>
#include <QLocale>
#include <QMutex>
#include <QQmlComponent>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>

namespace TrivexTest {

namespace {

QMutex mutex;
QStringList messages;

/// What the packages of the styles and the display say themselves, with or without us.
bool isOfOthers(const QString &message)
{
    static const QRegularExpression known[] = {
        // Imagine's own picture is in a format whose plugin its package does not ask for.
        QRegularExpression(QStringLiteral(
            "^[^ ]*/QtQuick/Controls\\.2/Imagine/BusyIndicator\\.qml:\\d+:\\d+: QML AnimatedImage: "
            "Error Reading Animated Image File [^ ]*/busyindicator-animation\\.webp$")),
        // Qt gives the focus to a window that is not mapped yet; a window manager would wait for
        // it.
        QRegularExpression(QStringLiteral(
            "^QXcbConnection: XCB error: 8 \\(BadMatch\\), sequence: \\d+, resource id: \\d+, "
            "major code: 42 \\(SetInputFocus\\), minor code: 0$"))};
    return std::any_of(std::begin(known), std::end(known), [&](const QRegularExpression &one) {
        return one.match(message).hasMatch();
    });
}

void collect(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg || isForeignWarning(message) || isOfOthers(message))
        return;
    fprintf(stderr, "%s\n", qPrintable(message));
    const QMutexLocker locker(&mutex);
    messages += message;
}

/// Relative luminance as WCAG 2.1 defines it.
double luminance(const QColor &color)
{
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF())
        + 0.0722 * part(color.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return first > second ? first / second : second / first;
}

/// The colour that most of a place has: the ground of a text.
QColor ground(const QImage &image, const QRect &where)
{
    QHash<QRgb, int> counts;
    for (int y = where.top(); y <= where.bottom(); ++y) {
        for (int x = where.left(); x <= where.right(); ++x)
            ++counts[image.pixel(x, y)];
    }
    QRgb most = 0;
    for (auto one = counts.cbegin(); one != counts.cend(); ++one) {
        if (one.value() > counts.value(most))
            most = one.key();
    }
    return QColor(most);
}

} // namespace

Host::Host(const QString &body, const QString &locale, const QSize &size)
{
    QLocale::setDefault(QLocale(locale));
    const QString source =
        QStringLiteral("import QtQuick 2.15\nimport QtQuick.Controls 2.15\n"
                       "import QtQuick.Layouts 1.15\n"
                       "import Trivex.Crypto 1.0\n"
                       "import Trivex.Crypto.Controls 1.0\n"
                       "import Trivex.Crypto.Tools 1.0\n"
                       "ApplicationWindow { width: %1; height: %2; visible: true\n"
                       "%3\n}")
            .arg(size.width())
            .arg(size.height())
            .arg(body);
    m_engine.loadData(source.toUtf8(), QUrl(QStringLiteral("qrc:/host.qml")));
    if (m_engine.rootObjects().isEmpty()) {
        m_problem = QStringLiteral("not created: ") + takeMessages().join(QLatin1Char('\n'));
        return;
    }
    m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().first());
    m_window->requestActivate();
    if (!QTest::qWaitForWindowActive(m_window))
        m_problem = QStringLiteral("not shown");
}

Host::~Host() = default;

QObject *Host::object(const char *name) const
{
    return m_window->findChild<QObject *>(QLatin1String(name));
}

QQuickItem *Host::item(const char *name) const
{
    QQuickItem *found = nullptr;
    visitItems(m_window->contentItem(), [&](QQuickItem *item) {
        if (item->objectName() == QLatin1String(name))
            found = item;
    });
    return found;
}

bool Host::waitForItem(const char *name, int ms) const
{
    return QTest::qWaitFor([&] { return item(name) != nullptr; }, ms);
}

bool Host::click(const char *name)
{
    return waitForItem(name) && clickItem(item(name));
}

bool Host::clickItem(QQuickItem *item)
{
    QPointF before(-1, -1);
    const auto isStill = [&] {
        const QPointF now = item->mapToScene({item->width() / 2, item->height() / 2});
        return std::exchange(before, now) == now;
    };
    for (int i = 0; i < 50 && !isStill(); ++i)
        waitUntilStill(m_window, 1000);
    if (!item->isEnabled())
        return false;
    QTest::mouseClick(m_window, Qt::LeftButton, Qt::NoModifier, before.toPoint());
    return true;
}

void Host::key(Qt::Key key) const
{
    QTest::keyClick(m_window, key);
}

void Host::type(const QString &text) const
{
    for (const QChar letter : text)
        QTest::keyClick(m_window, letter.toLatin1());
}

bool Host::isOpen(const char *dialog) const
{
    const QObject *found = object(dialog);
    return found && found->property("opened").toBool();
}

bool Host::waitOpen(const char *dialog, bool open) const
{
    return QTest::qWaitFor([&] {
        const QObject *found = object(dialog);
        return found && found->property(open ? "opened" : "visible").toBool() == open;
    });
}

void Host::picture(const QString &name) const
{
    const QString directory = qEnvironmentVariable("TRIVEX_TEST_PICTURES");
    if (directory.isEmpty())
        return;
    waitUntilStill(m_window);
    QDir().mkpath(directory);
    m_window->grabWindow().save(
        QStringLiteral("%1/%2-%3.png")
            .arg(directory, QFileInfo(qEnvironmentVariable("QT_QUICK_CONTROLS_STYLE")).fileName(),
                 name));
}

QStringList Host::lackOfRoom() const
{
    QStringList lacking;
    visitItems(m_window->contentItem(), [&](QQuickItem *item) {
        const QString lack = TrivexTest::lackOfRoom(item);
        const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
        const bool isText = item->inherits("QQuickText") || item->inherits("QQuickAbstractButton");
        if (!lack.isEmpty())
            lacking += describeItem(item) + QLatin1Char(' ') + lack + QLatin1String(": ")
                + item->property("text").toString();
        else if (isText && item->width() > 0
                 && (place.left() < -1 || place.right() > m_window->width() + 1))
            lacking += describeItem(item) + QLatin1String(" reaches out of the window: ")
                + item->property("text").toString();
    });
    return lacking;
}

QStringList Host::lackOfContrast() const
{
    waitUntilStill(m_window);
    const QImage image = m_window->grabWindow();
    QStringList lacking;
    visitItems(m_window->contentItem(), [&](QQuickItem *item) {
        if (!item->inherits("QQuickText") || !item->isEnabled()
            || item->property("text").toString().trimmed().isEmpty())
            return;
        const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
        const QRect seen = place.toAlignedRect() & image.rect();
        if (seen.isEmpty())
            return; // scrolled away
        const QColor behind = ground(image, seen);
        const QColor ink = item->property("color").value<QColor>();
        // What the style draws by itself (a hint in a field, a button) is the style's own.
        for (const QQuickItem *up = item->parentItem(); up; up = up->parentItem()) {
            if (up->inherits("QQuickTextField") || up->inherits("QQuickAbstractButton")
                || up->inherits("QQuickComboBox"))
                return;
        }
        if (contrast(ink, behind) < 4.5)
            lacking += QStringLiteral("%1 %2 on %3: %4")
                           .arg(describeItem(item), ink.name(), behind.name(),
                                item->property("text").toString());
    });
    return lacking;
}

QStringList Host::takeMessages()
{
    const QMutexLocker locker(&mutex);
    return std::exchange(messages, QStringList());
}

void Host::collectMessages()
{
    qInstallMessageHandler(collect);
}

} // namespace TrivexTest
