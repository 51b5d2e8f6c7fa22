// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "app/application.h"

#include <QApplication>
#include <QLocale>
#include <QTest>

#include <cstdio>

namespace TrivexTest {

/// The rest of a window test's `main()`, in the language that its texts are compared in: says aloud
/// what is missing, or calls `prepare`, before the application object is made, and runs the test.
template <class Test, class Prepare>
int runWindowTest(int argc, char **argv, const QStringList &problems, Prepare prepare)
{
    for (const QString &problem : problems) {
        if (!problem.isEmpty()) {
            std::printf("SKIP %s\n", qPrintable(problem));
            return 0;
        }
    }
    prepare();
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QApplication application(argc, argv);
    Trivex::Application::prepare();
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace TrivexTest
