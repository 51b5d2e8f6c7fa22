// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/application.h"
#include "app/environment.h"
#include "console/order.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <pwd.h>
#include <unistd.h>

namespace {

/// The files that the window opens for these arguments.
QStringList pathsOf(const QStringList &arguments)
{
    QCommandLineParser parser;
    Trivex::describe(&parser);
    parser.parse(QStringList{QStringLiteral("trivex")} + arguments);
    return Trivex::Application::absolute(Trivex::orderOf(parser).files);
}

} // namespace

/// What the program makes of the environment and the arguments that it is started with. Without a
/// window, because a process with threads keeps its environment.
class TestEnvironment : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void mendsHome_data();
    void mendsHome();
    void ignoresRelativeFolders_data();
    void ignoresRelativeFolders();
    void takesFilesAndUrls();
};

void TestEnvironment::mendsHome_data()
{
    QTest::addColumn<QByteArray>("home");
    QTest::addColumn<bool>("stays");
    QTest::newRow("unset") << QByteArray() << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("relative") << QByteArray("some/where") << false;
    QTest::newRow("here") << QByteArray(".") << false;
    QTest::newRow("missing") << QByteArray("/nonexistent/any") << true;
    QTest::newRow("odd letters") << QByteArray("/a b/%41#?\xE9") << true;
}

void TestEnvironment::mendsHome()
{
    QFETCH(QByteArray, home);
    QFETCH(bool, stays);
    const passwd *user = getpwuid(getuid());
    if (!user || !user->pw_dir || user->pw_dir[0] != '/')
        QSKIP("SKIP the system's list has no home folder for this user");
    const QByteArray before = qgetenv("HOME");
    const auto restore = qScopeGuard([&] { qputenv("HOME", before); });
    if (home.isNull())
        qunsetenv("HOME");
    else
        qputenv("HOME", home);
    const QByteArray own = user->pw_dir;
    Trivex::mendEnvironment();
    QCOMPARE(qgetenv("HOME"), stays ? home : own);
}

void TestEnvironment::ignoresRelativeFolders_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<int>("location");
    QTest::newRow("data") << QByteArray("XDG_DATA_HOME")
                          << int(QStandardPaths::GenericDataLocation);
    QTest::newRow("configuration")
        << QByteArray("XDG_CONFIG_HOME") << int(QStandardPaths::GenericConfigLocation);
    QTest::newRow("cache") << QByteArray("XDG_CACHE_HOME")
                           << int(QStandardPaths::GenericCacheLocation);
    QTest::newRow("sockets") << QByteArray("XDG_RUNTIME_DIR")
                             << int(QStandardPaths::RuntimeLocation);
}

void TestEnvironment::ignoresRelativeFolders()
{
    QFETCH(QByteArray, variable);
    const char *const name = variable.constData();
    QFETCH(int, location);
    const auto folder = [&] {
        return QStandardPaths::writableLocation(QStandardPaths::StandardLocation(location));
    };
    QTemporaryDir own;
    const QByteArray before = qgetenv(name);
    const QString here = QDir::currentPath();
    const auto restore = qScopeGuard([&] {
        qputenv(name, before);
        QDir::setCurrent(here);
    });
    QVERIFY(QDir::setCurrent(own.path()));
    for (const char *relative : {"some/where", ".", "~/data"}) {
        qputenv(name, relative);
        Trivex::mendEnvironment();
        QVERIFY2(QDir::isAbsolutePath(folder()), relative);
        QVERIFY2(!folder().startsWith(own.path()), relative);
    }
    qputenv(name, QFile::encodeName(own.path()));
    Trivex::mendEnvironment();
    QCOMPARE(folder(), own.path());
}

void TestEnvironment::takesFilesAndUrls()
{
    QTemporaryDir own;
    const QString here = QDir::currentPath();
    const auto restore = qScopeGuard([&] { QDir::setCurrent(here); });
    QVERIFY(QDir::setCurrent(own.path()));
    const QString odd = QStringLiteral("file:a %41#?b");
    QFile file(odd);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    // What lies there by just this name is meant, and else a URL is.
    const QString current = QDir::currentPath();
    QCOMPARE(pathsOf({odd}), QStringList{current + QLatin1Char('/') + odd});
    QCOMPARE(pathsOf({QStringLiteral("a %41#?b"), QStringLiteral("file:///x/a%20%2541")}),
             (QStringList{current + QStringLiteral("/a %41#?b"), QStringLiteral("/x/a %41")}));
}

QTEST_GUILESS_MAIN(TestEnvironment)

#include "tst_environment.moc"
