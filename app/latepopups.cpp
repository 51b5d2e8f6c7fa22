// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/latepopups.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QPointer>
#include <QTimer>

namespace Trivex {

namespace {

/// True for the list of completions of a field that nobody sees.
bool isLeft(const QWidget *widget)
{
    const QWidget *field = qobject_cast<const QAbstractItemView *>(widget) && widget->isWindow()
        ? widget->focusProxy()
        : nullptr;
    return field && !field->isVisible();
}

void hideLeft()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (widget->isVisible() && isLeft(widget))
            widget->hide();
    }
}

} // namespace

bool LatePopups::eventFilter(QObject *watched, QEvent *event)
{
    const bool dialogGoes =
        event->type() == QEvent::Hide && qobject_cast<const QFileDialog *>(watched);
    const bool listComes =
        event->type() == QEvent::Show && isLeft(qobject_cast<const QWidget *>(watched));
    // Afterwards: a widget is not hidden while it is being shown.
    if (dialogGoes || listComes)
        QTimer::singleShot(0, this, &hideLeft);
    return false;
}

} // namespace Trivex
