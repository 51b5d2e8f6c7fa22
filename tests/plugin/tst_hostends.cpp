// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/provider/privatehome.h"
#include "tests/plugin/endinghost.h"
#include "tests/support/endingchild.h"
#include "tests/support/endwatch.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"
#include "tests/support/userfiles.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTest>

using namespace TrivexTest;

namespace {

/// When the host ends: at once, while QCA's stores start, while their rows arrive, at rest.
constexpr int Delays[] = {0, 20, 90, 400}; // ms
/// The tools that run a page are started as often as it takes to see a rare end.
constexpr int ToolRounds = 30;

struct Variant {
    const char *name;
    const char *initialiser;
    bool isStatic;
};
constexpr Variant Variants[] = {{"no QCA of its own", "nowhere", false},
                                {"QCA before the application", "before", false},
                                {"QCA after the application", "after", false},
                                {"static QCA", "nowhere", true}};

const char *const QmlWays[] = {"exit",
                               "exit on another thread",
                               "quick_exit",
                               "fork",
                               "page exits",
                               "page quits",
                               "return",
                               "in order",
                               "application first",
                               "application alone",
                               "static",
                               "twice",
                               "twice, the first kept"};
/// Of hosts that use QCA alone, those that do no more than QCA allows: it ends with the
/// application.
const char *const StoreWays[] = {
    "exit",   "exit on another thread", "quick_exit", "fork", "return", "in order",
    "static", "static, asking"};

const char *const QuittingPage = R"(
import QtQuick 2.15
import Trivex.Crypto 1.0
Item {
    property int rows: KeyStoreModel.rowCount()
    Component.onCompleted: { console.log("ending"); Qt.quit(); Qt.callLater(Qt.quit) }
})";

} // namespace

/// Hosts that end in every way that there is, with QCA's own threads at work: none crashes, hangs,
/// loses its status or its output, or leaves a process behind that holds its output.
class TestHostEnds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void host_data();
    void host();
    void tool_data();
    void tool();

private:
    PrivateHome m_home;
    const QByteArray m_pluginPath = qgetenv("QCA_PLUGIN_PATH");
    TestToken m_token{QStringLiteral("Host ends")};
};

void TestHostEnds::initTestCase()
{
    // A row to wait for, and a token whose threads are there too.
    QVERIFY(QDir().mkpath(TrivexTest::userFolder()));
    const TestAuthority authority;
    if (!authority.isValid())
        QSKIP("openssl is not installed");
    QVERIFY(
        QFile::copy(authority.certificateFile(), TrivexTest::userFile(QStringLiteral("root.pem"))));
    if (!m_token.isValid())
        QSKIP(qPrintable(m_token.problem()));
    QVERIFY(m_token.generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("01"),
                                    QStringLiteral("key")));
    m_token.useInThisProcess();
}

void TestHostEnds::host_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("initialiser");
    QTest::addColumn<bool>("isStatic");
    const auto add = [](const char *kind, const char *way, const Variant &variant) {
        QTest::addRow("%s: %s, %s", kind, way, variant.name)
            << QString::fromLatin1(kind) << QString::fromLatin1(way)
            << QString::fromLatin1(variant.initialiser) << variant.isStatic;
    };
    for (const Variant &variant : Variants) {
        for (const char *way : QmlWays)
            add("qml", way, variant);
        if (&variant == &Variants[0])
            continue; // it could not use QCA at all
        for (const char *way : StoreWays)
            add("stores", way, variant);
    }
    // Not with the static one: that has ended with the first application object.
    for (const char *kind : {"stores", "library"}) {
        add(kind, "twice", Variants[1]);
        add(kind, "twice", Variants[2]);
    }
    // Where none of our providers is there.
    for (const char *way : StoreWays)
        add("library", way, Variants[1]);
}

void TestHostEnds::host()
{
    QFETCH(QString, kind);
    QFETCH(QString, way);
    QFETCH(QString, initialiser);
    QFETCH(bool, isStatic);
    qputenv("QCA_PLUGIN_PATH",
            kind == QLatin1String("library") ? QByteArrayLiteral("/nowhere") : m_pluginPath);
    if (isStatic)
        qputenv(StaticQca, "1");
    else
        qunsetenv(StaticQca);
    for (const int delay : Delays) {
        const Ended ended =
            watchEnd(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("--host"), kind, way, initialiser, QString::number(delay)});
        const QString problem = ended.problem(ToldStatus);
        if (!problem.isEmpty())
            QFAIL(qPrintable(QStringLiteral("after %1 ms: %2").arg(delay).arg(problem)));
        if (way != QLatin1String("quick_exit"))
            QVERIFY2(ended.output.contains(BufferedText), ended.output.constData());
    }
}

void TestHostEnds::tool_data()
{
    QTest::addColumn<QString>("tool");
    QTest::newRow("qml") << QStringLiteral("qml");
    QTest::newRow("qmlscene") << QStringLiteral("qmlscene");
}

// A page that quits while it is made, in the programs that others show it with.
void TestHostEnds::tool()
{
    QFETCH(QString, tool);
    const QString program =
        QLibraryInfo::location(QLibraryInfo::BinariesPath) + QLatin1Char('/') + tool;
    if (!QFileInfo(program).isExecutable())
        QSKIP(qPrintable(tool + QStringLiteral(" is not installed")));
    qunsetenv(StaticQca);
    qputenv("QT_QUICK_BACKEND", "software"); // qmlscene makes a window, and there is no display
    if (qstrlen(TRIVEX_TEST_PRELOAD) > 0)
        qputenv("LD_PRELOAD", TRIVEX_TEST_PRELOAD);
    const QString page = m_home.path() + QStringLiteral("/quits.qml");
    QFile file(page);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QuittingPage) > 0);
    file.close();
    for (int round = 0; round < ToolRounds; ++round) {
        const QString problem = watchEnd(program, {page}).problem(0);
        if (!problem.isEmpty())
            QFAIL(qPrintable(QStringLiteral("round %1: %2").arg(round).arg(problem)));
    }
}

int main(int argc, char *argv[])
{
    if (argc == 6 && qstrcmp(argv[1], "--host") == 0) {
        const EndingHost host = {QString::fromLatin1(argv[2]), QString::fromLatin1(argv[3]),
                                 QString::fromLatin1(argv[4]), atoi(argv[5])};
        return runEndingHost(argc, argv, host);
    }
    QCoreApplication application(argc, argv);
    TestHostEnds test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hostends.moc"
