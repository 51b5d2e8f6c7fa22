// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/harness.h"
#include "tests/controls/host.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QtCrypto>

#include <cstdio>

namespace TrivexTest {

/// Whether this process has widgets, as TRIVEX_TEST_KIND says.
bool hasWidgets();
/// The style that TRIVEX_TEST_STYLE names is used in this process from now on. Why it can't be;
/// empty when it is.
QString useStyle();

/// A test of our components in a foreign application: each test ends with nothing said on the log.
class ControlsTest : public QObject {
    Q_OBJECT
public:
    ControlsTest();

protected:
    /// Rows for both languages, narrow and huge.
    static void languagesAndSizes();
    /// Every text has its room and can be told from its ground; `name` is that of its picture.
    void looksWell(const Host &host, const QString &name);

private Q_SLOTS:
    void cleanup();
};

/// The whole of such a test's `main()`.
template <class Test> int runControlsTest(int argc, char **argv)
{
    const WindowEnvironment display;
    QString problem = display.problem();
    std::unique_ptr<QGuiApplication> application;
    if (problem.isEmpty()) {
        application.reset(hasWidgets() ? new QApplication(argc, argv)
                                       : new QGuiApplication(argc, argv));
        problem = useStyle();
    }
    if (!problem.isEmpty()) {
        std::printf("SKIP %s\n", qPrintable(problem));
        return 0;
    }
    // As if somebody listened: it is then that Qt tells fields what they are.
    QAccessible::setActive(true);
    const QCA::Initializer qca;
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace TrivexTest
