// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/looks.h"

#include <QAccessible>
#include <QDeadlineTimer>
#include <QSignalSpy>
#include <QTest>
#include <QVariant>

namespace TrivexTest {

namespace {

QStringList announced;
QAccessible::UpdateHandler previous = nullptr;

void noteAnnouncement(QAccessibleEvent *event)
{
    if (event->type() == QAccessible::TextInserted)
        announced += static_cast<QAccessibleTextInsertEvent *>(event)->textInserted();
    if (event->type() == QAccessible::TextUpdated)
        announced += static_cast<QAccessibleTextUpdateEvent *>(event)->textInserted();
    if (event->type() == QAccessible::ValueChanged)
        announced += static_cast<QAccessibleValueChangeEvent *>(event)->value().toString();
}

/// Where each visible item from `item` downwards is, how large and how clear.
void appendLooks(const QQuickItem *item, QVector<qreal> &looks)
{
    if (!item->isVisible())
        return;
    looks << item->x() << item->y() << item->width() << item->height() << item->opacity()
          << item->scale();
    const QList<QQuickItem *> children = item->childItems();
    for (const QQuickItem *child : children)
        appendLooks(child, looks);
}

} // namespace

bool waitUntilStill(QQuickWindow *window, int ms)
{
    const QDeadlineTimer end(ms);
    QSignalSpy frames(window, &QQuickWindow::frameSwapped);
    QVector<qreal> before;
    do {
        const int shown = frames.count();
        window->update();
        // A window that is not in sight draws nothing, and is laid out all the same.
        (void)QTest::qWaitFor([&] { return frames.count() > shown; }, 200);
        QVector<qreal> now;
        appendLooks(window->contentItem(), now);
        if (now == before)
            return true;
        before.swap(now);
    } while (!end.hasExpired());
    return false;
}

QString lackOfRoom(QQuickItem *item)
{
    if (item->inherits("QQuickText")) {
        if (item->property("text").toString().isEmpty())
            return {};
        if (item->property("truncated").toBool()
            && item->property("elide").toInt() == Qt::ElideNone)
            return QStringLiteral("cut off");
        const bool wraps = item->property("wrapMode").toInt() != 0;
        const bool elides = item->property("elide").toInt() != Qt::ElideNone;
        if (!wraps && !elides && item->property("contentWidth").toReal() > item->width() + 1)
            return QStringLiteral("wider than its place");
        if (item->property("contentHeight").toReal() > item->height() + 1 && item->height() > 0)
            return QStringLiteral("higher than its place");
        return {};
    }
    // Of a button nothing may be left out or wrapped. Rows of lists elide what they show.
    if (!item->inherits("QQuickAbstractButton") || item->inherits("QQuickItemDelegate"))
        return {};
    const auto *content = qvariant_cast<QQuickItem *>(item->property("contentItem"));
    if (!content || content->inherits("QQuickText"))
        return {};
    if (content->width() > 0 && content->implicitWidth() > content->width() + 1)
        return QStringLiteral("narrower than its text");
    if (content->implicitHeight() > item->height() + 1)
        return QStringLiteral("wrapped");
    return {};
}

QStringList whatIsTold(QQuickItem *field)
{
    QStringList told;
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(field);
    if (!accessible)
        return told;
    for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value,
                            QAccessible::Help, QAccessible::Accelerator})
        told += accessible->text(kind);
    if (QAccessibleTextInterface *text = accessible->textInterface()) {
        int start = 0;
        int end = 0;
        told += text->text(0, text->characterCount());
        for (const auto boundary : {QAccessible::CharBoundary, QAccessible::WordBoundary,
                                    QAccessible::LineBoundary, QAccessible::NoBoundary})
            told += text->textAtOffset(0, boundary, &start, &end);
    }
    if (QAccessibleValueInterface *value = accessible->valueInterface())
        told += value->currentValue().toString();
    for (int i = 0; i < accessible->childCount(); ++i) {
        told += accessible->child(i)->text(QAccessible::Name);
        told += accessible->child(i)->text(QAccessible::Value);
    }
    return told;
}

Announcements::Announcements()
{
    announced.clear();
    previous = QAccessible::installUpdateHandler(noteAnnouncement);
}

Announcements::~Announcements()
{
    QAccessible::installUpdateHandler(previous);
}

QStringList Announcements::texts() const
{
    return announced;
}

} // namespace TrivexTest
