// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"

#include <QStandardPaths>

namespace TrivexTest {

WindowTest::WindowTest(WindowEnvironment &environment)
    : m_environment(environment)
{
}

WindowTest::~WindowTest() = default;

void WindowTest::openWindow()
{
    closeWindow();
    m_window = std::make_unique<WindowDriver>();
    m_steps = std::make_unique<Steps>(*m_window);
}

void WindowTest::closeWindow()
{
    m_robot.reset();
    m_steps.reset();
    m_window.reset();
}

void WindowTest::answerPins(const QString &pin)
{
    if (!m_robot)
        m_robot = std::make_unique<PinRobot>(*m_window);
    m_robot->answer(pin);
}

void WindowTest::initTestCase()
{
    if (QStandardPaths::findExecutable(QStringLiteral("openssl")).isEmpty())
        QSKIP("the openssl program is not installed");
    QVERIFY(m_authority.isValid());
    prepare();
    if (QTest::currentTestFailed() || !opensOneWindow())
        return;
    openWindow();
    arrive();
}

void WindowTest::cleanup()
{
    if (!m_window)
        return;
    if (QTest::currentTestFailed())
        m_steps->leaveTraces(QTest::currentTestFunction());
    m_window->forgetWatches();
    restore();
    m_steps->escape();
    const QStringList warnings = m_window->takeWarnings();
    if (!opensOneWindow())
        closeWindow();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
}

void WindowTest::cleanupTestCase()
{
    closeWindow();
}

} // namespace TrivexTest
