// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/pages.h"
#include "tests/app/windowtest.h"

namespace TrivexTest {

/// A test of the dialog that offers what is in a file, beside an empty token.
class ContentsTest : public TokenWindowTest<TestToken> {
public:
    using TokenWindowTest::TokenWindowTest;

protected:
    void prepare() override;
    void arrive() override;
    void restore() override;
    /// Before each test.
    void begin();

    enum Way { CommandLine, Drop, Dialog };

    QString make(const char *name, const QByteArray &contents) const
    {
        return writeTestFile(inHome(QString::fromUtf8(name)), contents);
    }
    QByteArray run(const QString &arguments) const
    {
        return m_authority.openssl(arguments.split(QLatin1Char(' ')));
    }
    /// A certificate of its own for that name, PEM.
    QByteArray certificate(const char *name) const;
    bool bring(int way, const QString &path);
    int items() const;
    /// Clicks the tick beside that name.
    bool turn(const QString &name);
    bool choosePlace(const QString &name);
    bool import();
    QStringList files() const;
    void removeFiles();
};

} // namespace TrivexTest
