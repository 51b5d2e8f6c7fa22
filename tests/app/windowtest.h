// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/steps.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QApplication>
#include <QLocale>
#include <QTest>

#include <cstdio>

namespace TrivexTest {

/// What every test of the window begins and ends with: the window in this process with hands to
/// work with it, an authority that issues what is needed, and after each test a picture if it
/// failed, no dialog left open and no warning logged. A derived class has its tests as private
/// slots, and `init()` where they start from one page.
class WindowTest : public QObject {
    Q_OBJECT
public:
    /// `environment` outlives the test.
    explicit WindowTest(WindowEnvironment &environment);
    ~WindowTest() override;

protected:
    /// False where each test opens a window of its own, which is closed after it.
    virtual bool opensOneWindow() const { return true; }
    /// Before the window opens: fills the home and the token. May fail as a test does.
    virtual void prepare() { }
    /// Waits, once the window is open, for what every test needs.
    virtual void arrive() { }
    /// After each test, before what is open is left: takes back what the test did to the token.
    virtual void restore() { }

    /// Opens the window, after closing the one before.
    void openWindow();
    void closeWindow();
    /// From now on questions for a PIN are answered by themselves.
    void answerPins(const QString &pin);

    QString home() const { return m_environment.home(); }
    QString inHome(const QString &name) const { return m_environment.file(name); }

    TestAuthority m_authority;
    std::unique_ptr<WindowDriver> m_window;
    std::unique_ptr<Steps> m_steps;
    std::unique_ptr<PinRobot> m_robot;

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

private:
    WindowEnvironment &m_environment;
};

/// A window test over a token, which is a TestToken or a FaultyToken and outlives the test.
template <class Token> class TokenWindowTest : public WindowTest {
public:
    TokenWindowTest(WindowEnvironment &environment, Token &token)
        : WindowTest(environment)
        , m_token(token)
    {
    }

protected:
    static QString rightPin() { return QString::fromLatin1(TestToken::pin()); }

    Token &m_token;
};

/// The rest of a window test's `main()`: says aloud what is missing of the places, or runs the test
/// over them, in the language that its texts are compared in. A place has a `problem()`.
template <class Test, class... Places> int runWindowTest(int argc, char **argv, Places &...places)
{
    for (const QString &problem : {places.problem()...}) {
        if (!problem.isEmpty()) {
            std::printf("SKIP %s\n", qPrintable(problem));
            return 0;
        }
    }
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QApplication application(argc, argv);
    Trivex::Application::prepare();
    Test test(places...);
    return QTest::qExec(&test, argc, argv);
}

/// The same over a display and a token of that name.
template <class Test, class Token>
int runTokenWindowTest(int argc, char **argv, const QString &tokenName)
{
    WindowEnvironment display;
    Token token(tokenName);
    token.useInThisProcess();
    return runWindowTest<Test>(argc, argv, display, token);
}

} // namespace TrivexTest
