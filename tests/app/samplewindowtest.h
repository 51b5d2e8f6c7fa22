// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/pages.h"
#include "tests/app/windowtest.h"

namespace TrivexTest {

/// A window test over a token and files that have something on every page; they outlive the test.
class SampleWindowTest : public WindowTest {
public:
    SampleWindowTest(WindowEnvironment &environment, const SampleData &data)
        : WindowTest(environment)
        , m_data(data)
    {
    }

protected:
    const SampleData &m_data;
};

/// The whole of such a test's `main()`.
template <class Test> int runSampleWindowTest(int argc, char **argv)
{
    WindowEnvironment display;
    const SampleData data(display);
    return runWindowTest<Test>(argc, argv, display, data);
}

} // namespace TrivexTest
