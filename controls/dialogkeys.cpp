// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "controls/dialogkeys.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

namespace Trivex {

namespace {

bool isQuick(const QObject *window)
{
    return window && window->inherits("QQuickWindow");
}

bool isDialogOverQuick(const QWindow *window)
{
    return (window->type() == Qt::Dialog || window->type() == Qt::Sheet)
        && isQuick(window->transientParent());
}

/// Whether a window of this program has the keys.
bool hasKeys()
{
    return QGuiApplication::focusWindow() != nullptr;
}

} // namespace

DialogKeys::DialogKeys(QObject *parent)
    : QObject(parent)
{
    qGuiApp->installEventFilter(this);
}

bool DialogKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (!watched->isWindowType())
        return false;
    auto *window = static_cast<QWindow *>(watched);
    if (event->type() == QEvent::Show)
        dialogShown(window);
    else if (event->type() == QEvent::Hide)
        dialogHidden(window);
    else if (event->type() == QEvent::FocusIn && isQuick(window)
             && static_cast<QFocusEvent *>(event)->reason() == Qt::PopupFocusReason) {
        // Does nothing where an item has kept the focus.
        QFocusEvent active(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(window, &active);
    }
    return false;
}

void DialogKeys::dialogShown(QWindow *dialog)
{
    if (!isDialogOverQuick(dialog) || !hasKeys())
        return;
    dialog->raise();
    dialog->requestActivate();
}

void DialogKeys::dialogHidden(const QWindow *dialog)
{
    if (!isDialogOverQuick(dialog) || !hasKeys())
        return;
    // Afterwards: until the dialog has gone it keeps the window from them.
    m_window = dialog->transientParent();
    QTimer::singleShot(0, this, &DialogKeys::giveBack);
}

void DialogKeys::giveBack()
{
    if (m_window && m_window->isVisible())
        m_window->requestActivate();
    m_window.clear();
}

} // namespace Trivex
