// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QStringList>

namespace TrivexTest {

/// Waits until two frames after each other show every visible item at one place, at one size and
/// equally clear.
bool waitUntilStill(QQuickWindow *window, int ms = 30000);

/// What is wrong with how an item shows its text; empty when nothing is.
QString lackOfRoom(QQuickItem *item);

/// Everything that a program which reads the screen can ask a field for.
QStringList whatIsTold(QQuickItem *field);

/// What such programs are told unasked of texts and values, while one of these lives.
class Announcements {
public:
    Announcements();
    ~Announcements();
    Announcements(const Announcements &) = delete;
    Announcements &operator=(const Announcements &) = delete;

    QStringList texts() const;
};

} // namespace TrivexTest
