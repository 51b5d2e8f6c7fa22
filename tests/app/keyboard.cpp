// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/keyboard.h"

#include "tests/app/filedialogs.h"
#include "tests/app/pages.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QtTest>

namespace TrivexTest {

bool Keyboard::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (!m_driver.waitFor([] { return QGuiApplication::focusWindow() != nullptr; }))
        return false;
    QTest::keyClick(QGuiApplication::focusWindow(), key, modifiers);
    return true;
}

bool Keyboard::type(const QString &text)
{
    for (const QChar letter : text) {
        if (!QGuiApplication::focusWindow())
            return false;
        QTest::sendKeyEvent(QTest::Click, QGuiApplication::focusWindow(), Qt::Key_unknown,
                            QString(letter), Qt::NoModifier);
    }
    return true;
}

bool Keyboard::hasKeys(const char *name) const
{
    const QQuickItem *item = m_driver.item(QLatin1String(name));
    return item && item->hasActiveFocus();
}

QString Keyboard::focused() const
{
    const QQuickItem *item = m_driver.window()->activeFocusItem();
    return item ? describeItem(item) : QStringLiteral("nothing");
}

bool Keyboard::tabTo(const char *name, int most)
{
    // What is reached may have to be made first, or to become enabled.
    if (!m_driver.waitFor([&] {
            const QQuickItem *item = m_driver.item(QLatin1String(name));
            return item && item->isEnabled() && m_driver.window()->activeFocusItem();
        }))
        return false;
    for (int i = 0; i < most && !hasKeys(name); ++i) {
        if (!press(Qt::Key_Tab))
            return false;
    }
    return hasKeys(name);
}

bool Keyboard::pressButton(const char *name)
{
    return tabTo(name) && press(Qt::Key_Return);
}

bool Keyboard::go(const char *category)
{
    return pressButton(qPrintable(QStringLiteral("category-") + QLatin1String(category)))
        && m_driver.waitFor([&] {
               return m_driver.window()->property("current").toString() == QLatin1String(category);
           });
}

bool Keyboard::givePath(const QString &path)
{
    const bool asked = m_driver.waitFor([] {
        return fileDialog() && QGuiApplication::focusWindow() == fileDialog()->windowHandle();
    });
    if (!asked)
        return false;
    const auto *name = fileDialog()->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    for (int i = 0; i < 30 && QApplication::focusWidget() != name; ++i)
        press(Qt::Key_Tab);
    if (!name || QApplication::focusWidget() != name)
        return false;
    QGuiApplication::clipboard()->setText(path);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_V, Qt::ControlModifier);
    // The first press may choose among the completions instead.
    for (int i = 0; i < 5 && fileDialog(); ++i) {
        press(Qt::Key_Return);
        m_driver.waitFor([] { return !fileDialog() || !QApplication::activePopupWidget(); });
    }
    return !fileDialog();
}

bool Keyboard::chooseRow(const QString &name)
{
    if (!m_driver.waitFor([&] { return m_driver.rowNamed(name) >= 0; }) || !tabTo("certificateList")
        || !press(Qt::Key_Home))
        return false;
    for (int row = m_driver.rowNamed(name); row > 0; --row) {
        if (!press(Qt::Key_Down))
            return false;
    }
    return true;
}

bool Keyboard::isAtPin() const
{
    const QQuickItem *field = m_driver.item(QStringLiteral("pinField"));
    return field && field->hasActiveFocus() && field->property("text").toString().isEmpty()
        && (m_driver.isOpen(QStringLiteral("pinPromptDialog"))
            || m_driver.isOpen(QStringLiteral("signPinDialog")));
}

void Keyboard::answerPins(const QString &pin)
{
    m_pin = pin;
    QObject::disconnect(&m_pins, nullptr, nullptr, nullptr);
    QObject::connect(&m_pins, &QTimer::timeout, &m_pins, [this] {
        if (isAtPin() && type(m_pin))
            press(Qt::Key_Return);
    });
    m_pins.start(20);
}

} // namespace TrivexTest
