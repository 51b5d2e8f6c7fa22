// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/windowtest.h"

#include <array>

namespace TrivexTest {

/// A window on certificates of people, with hands that act on their rows.
class HandsFixture : public WindowTest {
protected:
    /// Names with the issuer and the days that their certificates have left: sorted by each, the
    /// order is another one.
    struct Person {
        const char *name;
        const char *issuer;
        int days;
    };
    static constexpr std::array<Person, 5> Persons = {{{"Anna", "Zeta", 300},
                                                       {"boris", "Alpha", 500},
                                                       {"Clara", "Zeta", 100},
                                                       {"Dmitri", "Beta", 400},
                                                       {"Elena", "Alpha", 200}}};

    using WindowTest::WindowTest;

    /// Shows the certificates of all these people, those that were removed among them.
    void showPersons();
    void restore() override;

    static QString userFile(const QString &name);
    bool addUser(const Person &person) const;
    QQuickItem *list() const { return m_window->item(QStringLiteral("certificateList")); }
    QQuickItem *rowItem(const char *name) const;
    QPoint middleOf(const char *name) const;
    void clickRow(const char *name, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The names in the order of the list.
    QString names() const;
    QString chosen() const;
};

} // namespace TrivexTest
