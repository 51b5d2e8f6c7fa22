// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/support/leaveroot.h"
#include "tests/support/testtoken.h"

#include <QtTest>

using namespace TrivexTest;

namespace {

/// A home whose p11-kit names the token's module, and nothing else of the machine.
struct ConfiguredHome {
    explicit ConfiguredHome(WindowEnvironment &display)
        : token(QStringLiteral("Токен М"))
        , configuration(display.file(QStringLiteral(".config/pkcs11")))
        , moduleFile(configuration + QStringLiteral("/modules/mine.module"))
    {
        token.useInThisProcess();
        qunsetenv("TRIVEX_PKCS11_MODULES");
        // p11-kit looks below the home, whatever this one says for others.
        qunsetenv("XDG_CONFIG_HOME");
        writeTestFile(configuration + QStringLiteral("/pkcs11.conf"), "user-config: only\n");
    }
    QString problem() const
    {
        return geteuid() == 0 ? QStringLiteral("p11-kit reads no user's configuration as root")
                              : token.problem();
    }
    QByteArray module() const { return "module: " + token.modulePath().toUtf8() + '\n'; }

    TestToken token;
    const QString configuration;
    const QString moduleFile;
};

} // namespace

/// The window finds the modules that p11-kit knows of, without being told.
class TestAppModules : public WindowTest {
    Q_OBJECT
public:
    TestAppModules(WindowEnvironment &environment, ConfiguredHome &configured)
        : WindowTest(environment)
        , m_configured(configured)
    {
    }

private Q_SLOTS:
    void foundAtTheStart();
    void foundLater();

private:
    void prepare() override
    {
        QVERIFY(!writeTestFile(m_configured.moduleFile, m_configured.module()).isEmpty());
        QVERIFY(m_configured.token.writeObject(QStringLiteral("cert"), m_authority.certificate(),
                                               QStringLiteral("01"), QStringLiteral("root")));
    }
    QString entry() const { return QStringLiteral("token-") + m_configured.token.label(); }

    ConfiguredHome &m_configured;
};

void TestAppModules::foundAtTheStart()
{
    QVERIFY(m_window->waitForItem(entry()));
    QVERIFY(m_window->click(entry()));
    QVERIFY(
        m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Test Root")) == 0; }));
}

void TestAppModules::foundLater()
{
    const auto isHere = [&] {
        const QQuickItem *token = m_window->item(entry());
        return token && token->property("note").toString().isEmpty();
    };
    QVERIFY(m_window->waitFor(isHere));
    QVERIFY(QFile::remove(m_configured.moduleFile));
    QVERIFY(m_window->waitFor([&] { return !isHere(); }));
    QVERIFY(!writeTestFile(m_configured.moduleFile, m_configured.module()).isEmpty());
    QVERIFY(m_window->waitFor(isHere));
}

int main(int argc, char **argv)
{
    leaveRoot(argv[0]);
    WindowEnvironment display;
    ConfiguredHome configured(display);
    return runWindowTest<TestAppModules>(argc, argv, display, configured);
}

#include "tst_app_modules.moc"
