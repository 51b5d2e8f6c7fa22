// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/steps.h"

namespace TrivexTest {

/// Somebody who has no mouse. Every key goes to the window that has the keys at that moment, a file
/// dialog as well; where none has them, it goes nowhere and the step fails. Nothing is set or
/// called past the keys.
class Keyboard {
public:
    explicit Keyboard(WindowDriver &driver)
        : m_driver(driver)
    {
    }

    /// Presses a key once a window of the program has the keys.
    bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    bool type(const QString &text);
    /// Goes on by Tab until the item with this name has the keys.
    bool tabTo(const char *name, int most = 80);
    /// The same, and presses it.
    bool pressButton(const char *name);
    /// Goes to a line of the side bar and opens it.
    bool go(const char *category);
    /// Pastes a path into the file dialog and accepts it.
    bool givePath(const QString &path);
    /// Chooses the row of the shown list with that name.
    bool chooseRow(const QString &name);
    /// From now on a question for a PIN gets `pin` as soon as its field has the keys.
    void answerPins(const QString &pin);
    /// What has the keys, for a message.
    QString focused() const;
    bool hasKeys(const char *name) const;

private:
    bool isAtPin() const;

    WindowDriver &m_driver;
    QTimer m_pins;
    QString m_pin;
};

} // namespace TrivexTest
